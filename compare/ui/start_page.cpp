#include "compare/ui/start_page.h"

#include <QClipboard>
#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLocale>
#include <QPainter>
#include <QScrollArea>
#include <QVBoxLayout>

#include "common/ui/cards.h"
#include "common/ui/file_box.h"
#include "common/ui/icons.h"
#include "common/ui/look_paint.h"
#include "common/ui/look_style.h"
#include "common/ui/measures.h"
#include "common/ui/style_sheet.h"
#include "compare/ui/command_buttons.h"

namespace zorvane {

using namespace measures;

namespace {

constexpr int kWidestPage = 920;
constexpr int kBetweenSides = 64;
constexpr int kRecentHeight = 46;
constexpr int kMostRecent = 3;

QString FolderOf(const QString& path) {
    QString folder = QFileInfo(path).path();
    const QString home = QDir::homePath();
    if (folder.startsWith(home + u'/'))
        folder = folder.mid(home.size() + 1);
    return folder;
}

// Today by its word, the last week by its day, else by its date.
QString AgeOf(const QString& path, const UiText& text) {
    const QDate day = QFileInfo(path).lastModified().date();
    if (!day.isValid())
        return {};
    const qint64 days = day.daysTo(QDate::currentDate());
    if (days == 0)
        return text("today");
    const QLocale locale;
    if (days > 0 && days < 7)
        return locale.dayName(day.dayOfWeek());
    return locale.toString(day, QLocale::ShortFormat);
}

// Name above folder, and how old it is.
class RecentRow : public QAbstractButton {
  public:
    RecentRow(const QString& path, const UiText& text, QWidget* parent)
        : QAbstractButton(parent),
          name_(FileNameOf(path)),
          folder_(FolderOf(path)),
          age_(AgeOf(path, text)) {
        setFixedHeight(kRecentHeight);
        setAccessibleName(name_);
        setAccessibleDescription(folder_);
        setToolTip(path);
        setFocusPolicy(Qt::StrongFocus);
        setAttribute(Qt::WA_Hover);
        setCursor(Qt::PointingHandCursor);
    }

  protected:
    void paintEvent(QPaintEvent*) override {
        constexpr int kText = 26;
        QPainter painter(this);
        const ColorTokens& tokens = Tokens();
        if (underMouse())
            PaintBox(painter, rect(), kControlCorner, tokens[Token::On], QColor());
        PaintIcon(painter, QStringLiteral("file"), QRectF(0, 14, kIconSize, kIconSize),
                  tokens[Token::Text2]);
        const QFont small = Sized(font(), kSmallType);
        const int age = QFontMetrics(small).horizontalAdvance(age_) + kMedium;
        const QRect words(kText, 0, width() - kText - age, height());
        const int half = height() / 2;
        painter.setPen(tokens[Token::Text]);
        painter.drawText(words.adjusted(0, 2, 0, -half), Qt::AlignLeft | Qt::AlignVCenter,
                         fontMetrics().elidedText(name_, Qt::ElideMiddle, words.width()));
        painter.setFont(small);
        painter.setPen(tokens[Token::Text2]);
        painter.drawText(words.adjusted(0, half, 0, -2), Qt::AlignLeft | Qt::AlignVCenter,
                         QFontMetrics(small).elidedText(folder_, Qt::ElideLeft, words.width()));
        painter.drawText(rect(), Qt::AlignRight | Qt::AlignVCenter, age_);
        if (ShowsFocus(*this))
            PaintFocus(painter, rect(), kControlCorner);
    }

  private:
    QString name_;
    QString folder_;
    QString age_;
};

QLabel* Heading(const QString& text, double size, QWidget* parent) {
    auto* label = new QLabel(text, parent);
    label->setTextFormat(Qt::PlainText);
    label->setFont(Sized(label->font(), size, true));
    return label;
}

// A page in the middle of the window, scrolled where that is low.
QScrollArea* MakeRoom(QWidget& parent) {
    auto* scroll = new QScrollArea(&parent);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setFocusPolicy(Qt::NoFocus);
    scroll->setWidgetResizable(true);
    auto* room = new QWidget;
    auto* line = new QHBoxLayout(room);
    line->setContentsMargins(kWindowEdge, 0, kWindowEdge, 0);
    auto* page = new QWidget(room);
    page->setObjectName(QStringLiteral("page"));
    page->setMaximumWidth(kWidestPage);
    line->addWidget(page);
    scroll->setWidget(room);
    scroll->viewport()->setAutoFillBackground(false);
    room->setAutoFillBackground(false);
    return scroll;
}

}  // namespace

StartPage::StartPage(CommandSet& commands, UiText text, QWidget* parent)
    : QWidget(parent), text_(std::move(text)), middle_(MakeRoom(*this)) {
    auto* rows = new QVBoxLayout(middle_->findChild<QWidget*>(QStringLiteral("page")));
    rows->setContentsMargins(0, 40, 0, kLarge);
    rows->setSpacing(kMedium);
    rows->addWidget(Heading(text_("Compare two documents"), kStartTitleType, middle_));
    auto* what = new QLabel(text_("Word processor files, PDF, spreadsheets, slides, web pages and "
                                  "plain text, in any mix. They stay on this computer."),
                            middle_);
    what->setProperty(look::kProperty, QString::fromLatin1(look::kBeside));
    what->setWordWrap(true);
    rows->addWidget(what);
    rows->addSpacing(kMedium);
    auto* sides = new QHBoxLayout;
    sides->setSpacing(0);
    sides->addWidget(MakeSide(commands, Side::Original), 1, Qt::AlignTop);
    auto* between = new QWidget(middle_);
    between->setFixedWidth(kBetweenSides);
    auto* swap_rows = new QVBoxLayout(between);
    swap_rows->setContentsMargins(0, 96, 0, 0);
    swap_rows->addWidget(MakeCommandIcon(commands, "compare.swap", "swap", between), 0,
                         Qt::AlignHCenter | Qt::AlignTop);
    sides->addWidget(between, 0, Qt::AlignTop);
    sides->addWidget(MakeSide(commands, Side::Modified), 1, Qt::AlignTop);
    rows->addLayout(sides);
    rows->addSpacing(kMedium);
    auto* go = new QHBoxLayout;
    go->setSpacing(kMedium);
    compare_ = MakeCommandButton(commands, "compare.run", text_("Compare"), ButtonLook::Primary,
                                 "refresh", middle_);
    go->addWidget(compare_);
    go->addWidget(MakeKeyLabel(QStringLiteral("F5"), middle_));
    hint_ = new QLabel(middle_);
    hint_->setProperty(look::kProperty, QString::fromLatin1(look::kBeside));
    go->addWidget(hint_, 1);
    rows->addLayout(go);
    rows->addStretch(1);
    rows->addWidget(MakeHairline(middle_));
    rows->addWidget(MakeFoot(commands));
    ShowReady();
}

QWidget* StartPage::MakeSide(CommandSet& commands, Side side) {
    const bool original = side == Side::Original;
    auto* half = new QWidget(middle_);
    auto* rows = new QVBoxLayout(half);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(kTiny);
    rows->addWidget(MakeLabel(text_(original ? "Original" : "Modified"), look::kHeading, half));
    auto* area = new DropArea(
        text_(original ? "Drop the original here" : "Drop the modified one here"), half);
    areas_[side] = area;
    area->AddButton(MakeCommandButton(commands,
                                      original ? "file.open_original" : "file.open_modified",
                                      text_("Choose File..."), ButtonLook::Plain, "open", area));
    auto* paste = new Button(text_("Paste Text"), ButtonLook::Plain, QStringLiteral("paste"), area);
    area->AddButton(paste);
    connect(paste, &QPushButton::clicked, this, [this, side] {
        if (text_given)
            text_given(side, QGuiApplication::clipboard()->text());
    });
    connect(area, &DropArea::FilesDropped, this, [this, side](const QStringList& paths) {
        if (files_dropped)
            files_dropped(side, paths);
    });
    connect(area, &DropArea::TextDropped, this, [this, side](const QString& words) {
        if (text_given)
            text_given(side, words);
    });
    rows->addWidget(area);
    rows->addSpacing(kMedium);
    recent_heads_[side] = new QLabel(text_("Recent"), half);
    recent_heads_[side]->setProperty(look::kProperty, QString::fromLatin1(look::kHint));
    recent_heads_[side]->hide();
    rows->addWidget(recent_heads_[side]);
    recent_[side] = new QVBoxLayout;
    recent_[side]->setSpacing(kTiny);
    rows->addLayout(recent_[side]);
    return half;
}

QWidget* StartPage::MakeFoot(CommandSet& commands) {
    auto* foot = new QWidget(middle_);
    auto* doors = new QHBoxLayout(foot);
    doors->setContentsMargins(0, kTiny, 0, 0);
    doors->setSpacing(kLarge);
    const auto door = [&](const char* id, const char* words, const char* icon) {
        doors->addWidget(
            MakeCommandButton(commands, id, text_(words), ButtonLook::Flat, icon, foot));
    };
    door("window.new_compare_folders", "Compare Folders...", "folders");
    door("window.new_find", "Find Text In Files...", "find-in-files");
    doors->addStretch(1);
    door("help.example", "Open the Example", "example");
    return foot;
}

void StartPage::SetChosen(Side side, const QString& path) {
    chosen_[side] = path;
    areas_[side]->SetChosen(FileNameOf(path));
    ShowReady();
}

void StartPage::ShowReady() {
    const bool ready = !chosen_.original.isEmpty() && !chosen_.modified.isEmpty();
    hint_->setText(ready ? QString() : text_("Choose both documents first"));
}

void StartPage::SetRecent(Side side, const QStringList& paths) {
    while (QLayoutItem* item = recent_[side]->takeAt(0)) {
        delete item->widget();
        delete item;
    }
    for (const QString& path : paths.mid(0, kMostRecent)) {
        auto* row = new RecentRow(path, text_, this);
        connect(row, &QAbstractButton::clicked, this, [this, side, path] {
            if (recent_chosen)
                recent_chosen(side, path);
        });
        recent_[side]->addWidget(row);
    }
    recent_heads_[side]->setVisible(!paths.isEmpty());
}

void StartPage::paintEvent(QPaintEvent*) {
    QPainter(this).fillRect(rect(), Tokens()[Token::Window]);
}

void StartPage::resizeEvent(QResizeEvent*) {
    middle_->setGeometry(rect());
}

}  // namespace zorvane
