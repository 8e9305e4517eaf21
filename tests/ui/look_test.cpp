#include <QAbstractScrollArea>
#include <QApplication>
#include <QImage>
#include <QLineEdit>
#include <QPainter>
#include <QPushButton>

#include <gtest/gtest.h>

#include "common/ui/color_tokens.h"
#include "common/ui/contrast.h"
#include "common/ui/icons.h"
#include "common/ui/mark_colors.h"
#include "common/ui/style_sheet.h"
#include "common/ui/theme.h"
#include "compare/ui/theme_colors.h"

namespace zorvane {
namespace {

struct PairRow {
    const char* name;
    Token fore;
    std::vector<Token> grounds;
    double least;
};

// Who stands on what. Disabled text, hairlines and hatching need not be read.
const std::vector<PairRow>& Pairs() {
    using enum Token;
    static const std::vector<PairRow> kPairs = {
        {"text",
         Text,
         {Window, Surface, Paper, On, ChangedRow, DeletedRow, AddedRow, MovedRow, HatchGround},
         kTextContrast},
        {"labels", Text2, {Window, Surface, Paper, On, HatchGround}, kTextContrast},
        {"muted",
         Muted,
         {Window, Surface, Paper, ChangedRow, DeletedRow, AddedRow, MovedRow},
         kTextContrast},
        {"primary button", InkText, {Ink}, kTextContrast},
        {"border", Border, {Window, Surface, Paper}, kEdgeContrast},
        {"ink", Ink, {Window, Surface, Paper, On, ChangedRow, DeletedRow, AddedRow}, kEdgeContrast},
        {"changed",
         ChangedText,
         {ChangedWord, ChangedRow, Paper, Surface, Window, On},
         kTextContrast},
        {"deleted",
         DeletedText,
         {DeletedWord, DeletedRow, ChangedRow, Paper, Surface, Window, On},
         kTextContrast},
        {"added",
         AddedText,
         {AddedWord, AddedRow, ChangedRow, Paper, Surface, Window, On},
         kTextContrast},
        {"moved", MovedText, {MovedWord, MovedRow, Paper, Surface, Window}, kTextContrast},
        {"selection", SelectionText, {Selection}, kTextContrast},
        {"hit", HitText, {Hit}, kTextContrast},
        {"this hit", ThisHitText, {ThisHit}, kTextContrast},
        {"amber", AmberText, {AmberGround, Surface, Window, Paper}, kTextContrast},
        {"error", ErrorText, {ErrorGround, Surface, Window, Paper}, kTextContrast},
    };
    return kPairs;
}

void ExpectReadable(const ColorTokens& tokens) {
    for (const PairRow& row : Pairs())
        for (const Token ground : row.grounds)
            EXPECT_GE(Contrast(tokens[row.fore], tokens[ground]), row.least)
                << row.name << ": " << tokens[row.fore].name().toStdString() << " on "
                << tokens[ground].name().toStdString();
}

QPalette PaletteWith(QRgb window, QRgb text, QRgb highlight, QRgb highlighted) {
    QPalette palette;
    palette.setColor(QPalette::Window, QColor(window));
    palette.setColor(QPalette::Base, QColor(window));
    palette.setColor(QPalette::WindowText, QColor(text));
    palette.setColor(QPalette::Text, QColor(text));
    palette.setColor(QPalette::Highlight, QColor(highlight));
    palette.setColor(QPalette::HighlightedText, QColor(highlighted));
    return palette;
}

TEST(Contrast, IsThatOfTheKnownPairs) {
    EXPECT_NEAR(Contrast(Qt::black, Qt::white), 21, 0.01);
    EXPECT_NEAR(Contrast(QColor(0x77, 0x77, 0x77), Qt::white), 4.48, 0.01);
    EXPECT_NEAR(Contrast(Qt::red, Qt::red), 1, 0.001);
}

TEST(ColorTokens, HoldTheContrastOfEveryPair) {
    {
        SCOPED_TRACE("light");
        ExpectReadable(ColorTokens::Light());
    }
    {
        SCOPED_TRACE("dark");
        ExpectReadable(ColorTokens::Dark());
    }
}

TEST(ColorTokens, HoldItInHighContrastWhateverTheDesktopHighlights) {
    const QRgb black = 0xFF000000;
    const QRgb white = 0xFFFFFFFF;
    const QPalette palettes[] = {
        PaletteWith(black, white, 0xFF1AEBFF, black), PaletteWith(white, black, 0xFF37006E, white),
        PaletteWith(black, 0xFFFFFF00, 0xFF202000, 0xFF303000),  // a highlight nobody can read
        PaletteWith(white, black, white, black),                 // and one nobody can see
    };
    for (const QPalette& palette : palettes) {
        SCOPED_TRACE(palette.color(QPalette::Highlight).name().toStdString());
        EXPECT_EQ(SchemeOf(palette), Scheme::HighContrast);
        ExpectReadable(ColorTokens::For(palette));
    }
}

TEST(ColorTokens, FollowTheLightnessOfTheDesktop) {
    EXPECT_EQ(SchemeOf(PaletteWith(0xFFF6F5F4, 0xFF2E3436, 0xFF3584E4, 0xFFFFFFFF)), Scheme::Light);
    EXPECT_EQ(SchemeOf(PaletteWith(0xFF353535, 0xFFEEEEEC, 0xFF15539E, 0xFFFFFFFF)), Scheme::Dark);
    // Black on light grey is what a desktop without a theme gets, and nobody's choice.
    EXPECT_EQ(SchemeOf(QApplication::style()->standardPalette()), Scheme::Light);
}

TEST(PaintedMark, PaintADefaultByItsToken) {
    for (const ColorTokens& tokens : {ColorTokens::Light(), ColorTokens::Dark()})
        for (const LookMark kind : {LookMark::Changed, LookMark::Deleted, LookMark::Added})
            EXPECT_EQ(PaintedColors(tokens, kind, DefaultColors(kind)),
                      PaintedColors(tokens, kind));
    clsCompareFileOptions options;  // that were never loaded: all black
    options.lViewDeletionForeColor.SetData(0xFF0000);
    const ViewColors marked = MarkedTextColorsOf(ColorTokens::Dark(), options);
    EXPECT_EQ(marked.OfText(Qt::blue), ColorTokens::Dark()[Token::DeletedText]);
    EXPECT_EQ(marked.OfText(QColor(1, 2, 3)), QColor(1, 2, 3)) << "the document's own";
    // Red lowest: an exchange of red and blue would make deletions red.
    EXPECT_EQ(FromStored(0x0000FF), QColor(Qt::red));
    EXPECT_EQ(FromStored(0xFF0000), QColor(Qt::blue));
    EXPECT_EQ(ToStored(QColor(1, 2, 3)), 0x030201);
}

TEST(PaintedMark, KeepWhatCanBeReadAndMoveTheRestAlongItsLightness) {
    const ColorTokens light = ColorTokens::Light();
    const PaintedMark kept =
        PaintedColors(light, LookMark::Changed, {.fore = 0x400040, .back = 0xFFFFFF});
    EXPECT_EQ(kept.text, QColor(0x40, 0, 0x40));
    EXPECT_EQ(kept.word, light[Token::ChangedWord]);
    for (const ColorTokens& tokens : {light, ColorTokens::Dark()}) {
        for (const std::int32_t fore : {0x00FFFF, 0xFFFF00, 0x808080, 0x000000, 0xFFFFFF, 0x0000FE})
            for (const std::int32_t back : {0xFFFFFF, 0x000000, 0x808080, 0x0080FF}) {
                const PaintedMark colors =
                    PaintedColors(tokens, LookMark::Changed, {.fore = fore, .back = back});
                SCOPED_TRACE(QStringLiteral("%1 on %2")
                                 .arg(FromStored(fore).name(), colors.word.name())
                                 .toStdString());
                EXPECT_GE(Contrast(colors.text, colors.word), kTextContrast);
                EXPECT_GE(Contrast(colors.row_text, colors.row), kTextContrast);
            }
    }
    const QColor yellow(Qt::yellow);
    const QColor moved = MovedToContrast(yellow, Qt::white);
    EXPECT_NEAR(moved.hslHue(), yellow.hslHue(), 2);
    // By no more than it takes.
    EXPECT_LT(Contrast(moved, Qt::white), kTextContrast + 0.1);
}

TEST(MovedToContrast, GoesTheShorterWay) {
    // On a middle grey both ways end well; the nearer end is that of the colour's own lightness.
    const QColor ground(0x76, 0x76, 0x76);
    EXPECT_GT(MovedToContrast(QColor(0xE0, 0xE0, 0xE0), ground).lightness(), 0xE0);
    EXPECT_LT(MovedToContrast(QColor(0x20, 0x20, 0x20), ground).lightness(), 0x20);
}

TEST(StyleSheet, NamesNothingThatAViewOfTextIs) {
    const QString sheet = StyleSheetOf(ColorTokens::Light(), 10);
    for (const char* selector : {"*", "QWidget", "QFrame", "QAbstractScrollArea", "QTextEdit",
                                 "QPlainTextEdit", "QAbstractItemView", "::item"})
        EXPECT_FALSE(sheet.contains(QLatin1String(selector))) << selector;
    EXPECT_FALSE(sheet.contains(u'@')) << "a token was not replaced";
    EXPECT_FALSE(sheet.contains(u'%'));
}

class Paper : public QAbstractScrollArea {
  protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(viewport());
        painter.fillRect(rect(), palette().base());
        painter.setPen(palette().text().color());
        painter.drawText(20, 20, QStringLiteral("Words"));
    }
};

TEST(Theme, ChangesOpenWindowsAndLeavesViewsOfTextAlone) {
    auto& application = *static_cast<QApplication*>(QCoreApplication::instance());
    Theme theme(application);
    QWidget window;
    auto* paper = new Paper;
    paper->setParent(&window);
    auto* button = new QPushButton(QStringLiteral("Press"), &window);
    window.resize(300, 200);
    window.ensurePolished();
    const QImage bare = paper->grab().toImage();
    theme.Dress(window);
    EXPECT_EQ(paper->grab().toImage(), bare);

    int changes = 0;
    QObject::connect(&theme, &Theme::Changed, [&] { ++changes; });
    const QImage light = button->grab().toImage();
    theme.Force(ColorTokens::Dark());
    EXPECT_EQ(changes, 1);
    EXPECT_NE(button->grab().toImage(), light);
    EXPECT_EQ(paper->palette().color(QPalette::Base), ColorTokens::Dark()[Token::Paper]);
    theme.Force(ColorTokens::Dark());
    EXPECT_EQ(changes, 1) << "nothing changed";

    // The desktop's own change is heard of, too.
    theme.Force(std::nullopt);
    const QPalette desktop = QGuiApplication::palette();
    QApplication::setPalette(PaletteWith(0xFF353535, 0xFFEEEEEC, 0xFF15539E, 0xFFFFFFFF));
    EXPECT_EQ(theme.GetTokens(), ColorTokens::Dark());
    EXPECT_EQ(paper->palette().color(QPalette::Base), ColorTokens::Dark()[Token::Paper]);
    QApplication::setPalette(desktop);
    EXPECT_EQ(theme.GetTokens(), ColorTokens::Light());
}

TEST(Theme, ReachesWhatIsPutIntoAnOpenWindowLater) {
    auto& application = *static_cast<QApplication*>(QCoreApplication::instance());
    Theme theme(application);
    theme.Force(ColorTokens::Dark());
    QWidget window;
    theme.Dress(window);
    window.show();
    auto* outer = new QWidget(&window);
    auto* inner = new QLineEdit(QStringLiteral("Late"), outer);
    outer->show();
    EXPECT_EQ(inner->palette().color(QPalette::Text), ColorTokens::Dark()[Token::Text]);
    theme.Force(std::nullopt);
    EXPECT_EQ(outer->palette().color(QPalette::Text), ColorTokens::Light()[Token::Text]);
    EXPECT_EQ(inner->palette().color(QPalette::Base), ColorTokens::Light()[Token::Paper]);
}

QColor DarkestOf(const QImage& image) {
    QColor darkest = Qt::white;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (image.pixelColor(x, y).alpha() > 250 &&
                image.pixelColor(x, y).lightness() < darkest.lightness())
                darkest = image.pixelColor(x, y);
    return darkest;
}

TEST(Icons, AreDrawnAtTheRatioInTheTokensColour) {
    const QIcon icon = LookIcon(QStringLiteral("equal"), Token::DeletedText);
    const QPixmap twice = icon.pixmap(QSize(16, 16), 2.0);
    EXPECT_EQ(twice.size(), QSize(32, 32));
    EXPECT_EQ(twice.devicePixelRatio(), 2.0);
    EXPECT_EQ(DarkestOf(twice.toImage()), ColorTokens::Light()[Token::DeletedText]);
    const QImage greyed = icon.pixmap(QSize(16, 16), 2.0, QIcon::Disabled).toImage();
    EXPECT_EQ(DarkestOf(greyed), ColorTokens::Light()[Token::Disabled]);
    // A fixed picture made larger would only have pixels in blocks of two.
    const QImage fine = twice.toImage();
    bool blocks = true;
    for (int y = 0; y < 32; y += 2)
        for (int x = 0; x < 32; ++x)
            blocks = blocks && fine.pixel(x, y) == fine.pixel(x, y + 1);
    EXPECT_FALSE(blocks);
    EXPECT_FALSE(HasIcon(QStringLiteral("no such icon")));
}

}  // namespace
}  // namespace zorvane
