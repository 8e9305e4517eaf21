// Renders the kit to PNG, light and dark, at 1x and 2x, so that somebody can look at it.
#include <array>
#include <cstdio>
#include <memory>

#include <QApplication>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPainter>
#include <QVBoxLayout>

#include "app/ui/frame_commands.h"
#include "common/ui/bars.h"
#include "common/ui/buttons.h"
#include "common/ui/cards.h"
#include "common/ui/check_boxes.h"
#include "common/ui/combo_boxes.h"
#include "common/ui/command_palette.h"
#include "common/ui/drop_area.h"
#include "common/ui/file_box.h"
#include "common/ui/icons.h"
#include "common/ui/look_paint.h"
#include "common/ui/mark_style_row.h"
#include "common/ui/measures.h"
#include "common/ui/progress_card.h"
#include "common/ui/question.h"
#include "common/ui/theme.h"
#include "compare/ui/compare_commands.h"
#include "tests/ui/gallery_dialogs.h"

namespace zorvane {
namespace {

using namespace measures;

/// Where there is nothing yet: the ground of documents.
class Paper : public QWidget {
  public:
    using QWidget::QWidget;

  protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.fillRect(rect(), Tokens()[Token::Paper]);
        PaintHatch(painter, QRect(0, 60, width() / 2, 48));
    }
};

QWidget* MakeToolBar(bool german, QWidget* parent) {
    auto* bar = new ToolBar(QStringLiteral("Compare"), parent);
    auto* compare = new Button(Words(german, "Compare", "Vergleichen"), ButtonLook::Primary,
                               QStringLiteral("refresh"));
    compare->SetDot(german);
    bar->Add(compare);
    bar->AddSeparator();
    const auto icon = [&](const char* name) {
        bar->Add(new IconButton(QString::fromLatin1(name), QString::fromLatin1(name), QString(),
                                QString()));
    };
    icon("first");
    icon("previous");
    auto* list = new DifferenceBox(QStringLiteral("Differences"));
    list->SetRows(
        50'000,
        [](int row) {
            return ListRow{
                .text = QStringLiteral("[%1] 1 change at paragraph (6) :\"The Client shall "
                                       "pay the Supplier a monthly fee of EUR 4,200\"")
                            .arg(row + 1),
                .icon = QStringLiteral("changed"),
                .icon_color = Token::ChangedText};
        },
        QString());
    list->SetCurrent(1);
    bar->Add(list, 1);
    icon("next");
    icon("last");
    bar->Add(MakeLabel(Words(german, "2 of 17", "2 von 17"), "caption"));
    bar->AddSeparator();
    bar->Add(new Button(Words(german, "View All In One", "Alles in einem zeigen"), ButtonLook::Flat,
                        QStringLiteral("all-in-one")));
    auto* layouts = new SegmentedGroup(QStringLiteral("Layout"));
    layouts->Add(1, QString(), QStringLiteral("layout-both"), QStringLiteral("Both"));
    layouts->Add(2, QString(), QStringLiteral("layout-result"), QStringLiteral("Result"));
    layouts->Add(3, QString(), QStringLiteral("layout-editors"), QStringLiteral("Editors"));
    bar->Add(layouts);
    bar->AddSeparator();
    icon("find");
    icon("report");
    icon("print");
    auto* options = new Button(Words(german, "Options", "Einstellungen"), ButtonLook::Flat,
                               QStringLiteral("options"));
    options->setCheckable(true);
    options->setChecked(true);
    bar->Add(options);
    icon("panel");
    return bar;
}

QWidget* MakeComparePage(bool german) {
    auto* page = new QWidget;
    auto* columns = new QHBoxLayout(page);
    columns->setContentsMargins(0, 0, 0, 0);
    columns->setSpacing(kColumnGap);
    auto* leave_out = new FormColumn(page);
    leave_out->AddHeading(Words(german, "Leave out", "Nicht beachten"));
    auto* ignore_case = new WrappingCheckBox(
        Words(german, "Ignore Case", "Groß- und Kleinschreibung nicht beachten"));
    ignore_case->setChecked(true);
    leave_out->AddWidget(ignore_case);
    leave_out->AddWidget(new WrappingCheckBox(Words(german, "Ignore Whitespace", "Leerraum")));
    auto* greyed = new WrappingCheckBox(Words(german, "Ignore Empty Lines", "Leere Zeilen"));
    greyed->setEnabled(false);
    leave_out->AddWidget(greyed);
    auto* expression = new QLineEdit(QStringLiteral("Draft \\d+@@Page \\d+"));
    leave_out->AddAbove(
        Words(german, "Ignore regular expression", "Regulären Ausdruck nicht beachten"),
        expression);
    columns->addWidget(leave_out, 1, Qt::AlignTop);
    auto* how = new FormColumn(page);
    how->AddHeading(Words(german, "How to compare", "Wie verglichen wird"));
    how->AddWidget(new WrappingRadioButton(Words(german, "By Word", "Wort für Wort")));
    auto* by_letter = new WrappingRadioButton(Words(
        german, "Compare By Character",
        "Zeichen für Zeichen vergleichen, auch dort, wo ganze Sätze nicht mehr übereinstimmen"));
    by_letter->setChecked(true);
    how->AddWidget(by_letter);
    auto* least = new NumberBox(0, 100);
    least->setValue(12);
    how->AddBeside(Words(german, "Line bracket", "Zeilenklammer"), least);
    auto* kind = new ComboBox;
    kind->addItems({Words(german, "All", "Alle"), QStringLiteral("None")});
    how->AddBeside(Words(german, "Kinds", "Arten"), kind);
    columns->addWidget(how, 1, Qt::AlignTop);
    auto* look_column = new FormColumn(page);
    look_column->AddHeading(Words(german, "Look of differences", "Aussehen der Unterschiede"));
    constexpr std::array kKinds{LookMark::Changed, LookMark::Deleted, LookMark::Added,
                                LookMark::Moved};
    const QStringList names{"Changed, original", "Deleted", "Added", "Moved"};
    for (std::size_t at = 0; at < kKinds.size(); ++at) {
        auto* row = new MarkStyleRow(kKinds[at], names[static_cast<int>(at)], UiText());
        row->SetChoice({.colors = DefaultColors(kKinds[at]), .bold = true, .strike = at < 2});
        row->setContentsMargins(0, 0, 0, kTiny);
        look_column->AddWidget(row);
    }
    columns->addWidget(look_column, 1, Qt::AlignTop);
    return page;
}

QWidget* MakeFileRow(bool german, QWidget* parent) {
    auto* row = new QWidget(parent);
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(kWindowEdge, 6, kWindowEdge, 6);
    layout->setSpacing(kSmall);
    for (const bool first : {true, false}) {
        layout->addWidget(MakeLabel(
            first ? QStringLiteral("Original") : Words(german, "Modified", "Geändert"), "heading"));
        auto* box = new FileBox(QStringLiteral("File"), QStringLiteral("file"));
        box->SetPath(first ? QStringLiteral("/srv/contracts/2026/Harrow and Lindqvist/Services "
                                            "Agreement with all annexes, draft 3.docx")
                           : QStringLiteral("/srv/draft 4.docx"));
        layout->addWidget(box, 1);
        layout->addWidget(
            new IconButton(QStringLiteral("open"), QStringLiteral("Open"), QString(), QString()));
        if (first)
            layout->addWidget(new IconButton(QStringLiteral("swap"), QStringLiteral("Swap"),
                                             QStringLiteral("F9"), QString()));
    }
    return row;
}

QWidget* MakeResultHead(bool german, QWidget* parent) {
    auto* head = new QWidget(parent);
    auto* layout = new QHBoxLayout(head);
    layout->setContentsMargins(kWindowEdge, 5, kWindowEdge, 5);
    layout->setSpacing(kMedium);
    auto* filter = new SegmentedGroup(QStringLiteral("Show"));
    filter->Add(0, Words(german, "All", "Alle"), QString(), QString());
    filter->Add(1, Words(german, "Changes", "Änderungen"), QString(), QString());
    filter->Add(2, Words(german, "Additions", "Zusätze"), QString(), QString());
    filter->Add(3, Words(german, "Deletions", "Löschungen"), QString(), QString());
    const int counts[] = {17, 8, 9, 0};
    for (int id = 0; id < 4; ++id)
        filter->SetCount(id, counts[id]);
    filter->SetSegmentEnabled(3, false);
    layout->addWidget(filter);
    layout->addWidget(MakeLabel(Words(german, "17 differences, 4 beside the words",
                                      "17 Unterschiede, 4 neben den Wörtern"),
                                "caption"),
                      1);
    auto* chip = new Chip;
    chip->SetWords(Words(german, "Ignoring: case, blanks", "Ohne: Groß/klein, Leerraum"), 2);
    layout->addWidget(chip);
    auto* fold = new Button(Words(german, "Fold Unchanged", "Gleiches falten"), ButtonLook::Flat,
                            QStringLiteral("fold"));
    fold->setCheckable(true);
    fold->setChecked(true);
    layout->addWidget(fold);
    layout->addWidget(new Switch(QStringLiteral("Case")));
    auto* on = new Switch(QStringLiteral("Blanks"));
    on->setChecked(true);
    layout->addWidget(on);
    return head;
}

std::unique_ptr<QWidget> MakeFrame(Theme& theme, bool german) {
    auto window = std::make_unique<QWidget>();
    theme.Dress(*window);
    auto* commands = new CommandSet({FrameCommands(), CompareCommands()}, UiText(), *window);
    auto* menus = new QMenuBar(window.get());
    commands->FillMenuBar(*menus, MenuOrder());
    auto* rows = new QVBoxLayout(window.get());
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(0);
    rows->addWidget(menus);
    rows->addWidget(MakeToolBar(german, window.get()));
    auto* options = new OptionArea(UiText(), window.get());
    options->AddPage(MakeComparePage(german), Words(german, "Compare Options", "Vergleich"));
    options->AddPage(new QWidget, Words(german, "Report Options", "Bericht"));
    options->AddPage(new QWidget, Words(german, "View Options", "Ansicht"));
    options->SetUnfolded(true);
    rows->addWidget(options);
    rows->addWidget(MakeFileRow(german, window.get()));
    auto* message = new MessageBar(window.get());
    message->ShowMessage(Words(german, "Another program changed this file.",
                               "Ein anderes Programm hat diese Datei geändert."),
                         {new Button(Words(german, "Load Again", "Neu laden")),
                          new Button(Words(german, "Keep", "Behalten"))});
    rows->addWidget(message);
    auto* splitter = new Splitter(Qt::Vertical, QStringLiteral("Editors and result"));
    splitter->addWidget(new Paper);
    auto* below = new QWidget;
    auto* below_rows = new QVBoxLayout(below);
    below_rows->setContentsMargins(0, 0, 0, 0);
    below_rows->addWidget(MakeResultHead(german, below));
    below_rows->addWidget(new Paper, 1);
    splitter->addWidget(below);
    rows->addWidget(splitter, 1);
    auto* status = new StatusBar(4, window.get());
    status->SetPanel(1, QStringLiteral("Row: 6   Column: 41"));
    status->SetPanel(2, QStringLiteral("Ready"));
    status->SetPanel(3, QStringLiteral("[2] Change at paragraph: 6"));
    status->SetPanel(4, QStringLiteral("00:00:00"));
    rows->addWidget(status);
    window->resize(1440, 900);
    return window;
}

void Save(QWidget& widget, const QString& folder, const QString& name) {
    QApplication::processEvents();
    const QString file = QStringLiteral("%1/%2.png").arg(folder, name);
    if (!widget.grab().save(file))
        std::fprintf(stderr, "%s could not be written\n", qPrintable(file));
}

void SaveWindows(Theme& theme, bool german, const QString& folder, const QString& end) {
    const std::unique_ptr<QWidget> frame = MakeFrame(theme, german);
    frame->show();
    Save(*frame, folder, QStringLiteral("frame") + end);
    ProgressCard progress(UiText(), frame.get());
    progress.Begin(QStringLiteral("Comparing the documents"));
    progress.SetProgress(46.2, QStringLiteral("Document: 46.2 % Done."));
    progress.setGeometry(frame->rect());
    progress.show();
    Save(*frame, folder, QStringLiteral("progress") + end);
    progress.End();
    auto* commands = frame->findChild<CommandSet*>();
    for (const char* id : {"view.fold", "view.unfold_all", "window.new_compare_folders"})
        commands->Bind(id, {.run = [] {}});
    CommandPalette palette(*commands, UiText(), *frame);
    palette.Open();
    palette.Line().setText(QStringLiteral("fold"));
    Save(*frame, folder, QStringLiteral("palette") + end);
    palette.Close();
    QMenu* menu = commands->Menu("&View");
    menu->popup(QPoint(50, 50));
    Save(*menu, folder, QStringLiteral("menu") + end);
    menu->close();
    auto* list = frame->findChild<DifferenceBox*>();
    list->showPopup();
    Save(*list->view()->window(), folder, QStringLiteral("list") + end);
    list->hidePopup();
}

void SaveDialogs(Theme& theme, bool german, const QString& folder, const QString& end) {
    const auto show = [&](QDialog& dialog, const char* name) {
        theme.Dress(dialog);
        dialog.show();
        Save(dialog, folder, QString::fromLatin1(name) + end);
    };
    show(*MakeFormDialog(german), "form");
    show(*MakeWideDialog(german), "wide");
    QuestionDialog question(
        {.title = QStringLiteral("Compare"),
         .text = QStringLiteral("Original has edits that are not saved. Loading it again loses "
                                "them."),
         .choices = {QStringLiteral("Cancel"), QStringLiteral("Load Again"),
                     QStringLiteral("Compare My Edits")},
         .usual = 2},
        nullptr);
    show(question, "question");
    QWidget start;
    theme.Dress(start);
    auto* rows = new QVBoxLayout(&start);
    auto* drop = new DropArea(QStringLiteral("Drop the original here"));
    drop->AddButton(
        new Button(QStringLiteral("Choose File..."), ButtonLook::Plain, QStringLiteral("open")));
    drop->AddButton(
        new Button(QStringLiteral("Paste Text"), ButtonLook::Plain, QStringLiteral("paste")));
    rows->addWidget(drop);
    auto* card = new Card(QStringLiteral("check"), QStringLiteral("No differences in the words"),
                          QStringLiteral("342 paragraphs compared"));
    card->AddLine(QStringLiteral("warning"),
                  QStringLiteral("8 differences in case and blanks are not counted"),
                  new Button(QStringLiteral("Count Them")), true);
    card->AddLine(QStringLiteral("picture"),
                  QStringLiteral("Beside the words: 1 picture, formatting in 4 paragraphs"),
                  new Button(QStringLiteral("Show Them")));
    rows->addWidget(card);
    start.resize(680, 480);
    start.show();
    Save(start, folder, QStringLiteral("cards") + end);
}

}  // namespace
}  // namespace zorvane

int main(int argc, char** argv) {
    if (argc < 2) {
        std::fprintf(stderr, "kit_gallery <folder>; QT_SCALE_FACTOR=2 for twice the pixels\n");
        return 2;
    }
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    zorvane::Theme theme(application);
    const QString folder = QString::fromLocal8Bit(argv[1]);
    const QString ratio = application.devicePixelRatio() > 1 ? QStringLiteral("-2x") : QString();
    for (const bool dark : {false, true}) {
        theme.Force(dark ? zorvane::ColorTokens::Dark() : zorvane::ColorTokens::Light());
        for (const bool german : {false, true}) {
            const QString end = QStringLiteral("-%1%2%3").arg(
                dark ? QStringLiteral("dark") : QStringLiteral("light"),
                german ? QStringLiteral("-german") : QString(), ratio);
            zorvane::SaveWindows(theme, german, folder, end);
            zorvane::SaveDialogs(theme, german, folder, end);
        }
    }
    return 0;
}
