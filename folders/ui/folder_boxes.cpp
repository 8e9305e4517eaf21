#include "folders/ui/folder_boxes.h"

#include <algorithm>

#include <QHBoxLayout>
#include <QLineEdit>
#include <QPainter>

#include "common/ui/cards.h"
#include "common/ui/look_style.h"
#include "common/ui/measures.h"
#include "common/ui/style_sheet.h"
#include "compare/ui/command_buttons.h"

namespace zorvane {

using namespace measures;

namespace {

constexpr int kTypesWidth = 120;
constexpr int kNamesOnlyBelow = 900;
constexpr const char* kNobodysFolder = "C:\\";  // of a new window

std::string& TextOf(frmCompareDir& viewer, Side side) {
    return side == Side::Original ? viewer.cbSelectOriginal : viewer.cbSelectModified;
}

void ShowRecent(FileBox& box, const clsMRU& list, const std::string& chosen) {
    QStringList recent;
    const auto& items = list.Items();
    for (auto item = items.rbegin(); item != items.rend(); ++item)
        recent.append(ToQt(*item));
    box.SetRecent(recent);
    box.SetPath(ToQt(chosen));
}

}  // namespace

FolderBoxes::FolderBoxes(CommandSet& commands, frmCompareDir& viewer, const UiText& text,
                         QWidget* parent)
    : QFrame(parent), viewer_(viewer) {
    setFixedHeight(kFileRowHeight);
    halves_ = new QHBoxLayout(this);
    halves_->setContentsMargins(kWindowEdge, 0, kWindowEdge, 0);
    halves_->setSpacing(kSmall);
    for (const Side side : kBothSides) {
        auto* half = new QWidget(this);
        QHBoxLayout* line = MakeSide(commands, text, side);
        if (side == Side::Modified)
            MakeTypes(text, *line);
        half->setLayout(line);
        halves_->addWidget(half, 1);
    }
}

QHBoxLayout* FolderBoxes::MakeSide(CommandSet& commands, const UiText& text, Side side) {
    const bool original = side == Side::Original;
    auto* line = new QHBoxLayout;
    line->setContentsMargins(0, 0, 0, 0);
    line->setSpacing(kSmall);
    line->addWidget(MakeLabel(text(original ? "Original" : "Modified"), look::kHeading, this));
    boxes_[side] = MakeBox(commands, text, side);
    line->addWidget(boxes_[side], 1);
    line->addWidget(MakeCommandIcon(
        commands, original ? "file.open_original" : "file.open_modified", "open", this));
    if (original)
        line->addWidget(MakeCommandIcon(commands, "compare.swap", "swap", this));
    return line;
}

void FolderBoxes::MakeTypes(const UiText& text, QHBoxLayout& line) {
    line.addSpacing(kSmall);
    auto* words = MakeLabel(text("File Types:"), look::kBeside, this);
    words->setWordWrap(false);
    types_words_ = words;
    line.addWidget(types_words_);
    types_ = new FileBox(text("File Types:"), QString(), this);
    types_->setFixedWidth(kTypesWidth);
    types_->setAcceptDrops(false);
    line.addWidget(types_);
    connect(types_, &FileBox::PathChosen, this, [this](const QString& types) {
        types_->SetPath(types);
        TakeTexts();
        run_wanted();
    });
}

FileBox* FolderBoxes::MakeBox(CommandSet& commands, const UiText& text, Side side) {
    const bool original = side == Side::Original;
    auto* box = new FileBox(text(original ? "Original Folder" : "Modified Folder"),
                            QStringLiteral("open"), this);
    connect(box, &FileBox::PathChosen, this,
            [this, side](const QString& path) { folder_chosen(side, path); });
    connect(box, &FileBox::Entered, this, [this, side] { EndByEnter(side); });
    connect(box, &FileBox::FilesDropped, this,
            [this, side](const QStringList& paths) { dropped(side, paths); });
    connect(box->lineEdit(), &QLineEdit::textEdited, this,
            [this, side](const QString& path) { TextOf(viewer_, side) = FromQt(path); });
    connect(box->lineEdit(), &QLineEdit::textEdited, &commands, &CommandSet::Refresh);
    return box;
}

// Where only one folder is named as yet, the other one is next.
void FolderBoxes::EndByEnter(Side side) {
    const Side other = OtherSide(side);
    const std::string& named = TextOf(viewer_, other);
    if (!named.empty() && named != kNobodysFolder) {
        run_wanted();
        return;
    }
    boxes_[other]->setFocus();
    boxes_[other]->lineEdit()->selectAll();
}

void FolderBoxes::ShowTexts() {
    for (const Side side : kBothSides)
        ShowRecent(*boxes_[side], viewer_.RecentFolders(side), TextOf(viewer_, side));
    ShowRecent(*types_, viewer_.RecentTypes(), viewer_.cbFileExt);
    ShowWords();
}

void FolderBoxes::ShowWords() {
    types_->setToolTip(ToQt(viewer_.FileTypesLabel()));
}

void FolderBoxes::TakeTexts() {
    for (const Side side : kBothSides)
        TextOf(viewer_, side) = FromQt(boxes_[side]->Path());
    viewer_.cbFileExt = FromQt(types_->Path());
}

void FolderBoxes::AlignTo(int column_left) {
    column_left_ = column_left;
    ShareRoom();
}

// By stretch, which gives way where a side has no more room.
void FolderBoxes::ShareRoom() {
    const int room = width() - 2 * kWindowEdge - kSmall;
    const int original = std::clamp(column_left_ - kWindowEdge, 1, std::max(1, room - 1));
    halves_->setStretch(0, original);
    halves_->setStretch(1, std::max(1, room - original));
}

void FolderBoxes::resizeEvent(QResizeEvent*) {
    ShareRoom();
    for (const Side side : kBothSides)
        boxes_[side]->SetNamesOnly(width() < kNamesOnlyBelow);
    types_words_->setVisible(width() >= kNamesOnlyBelow);
}

void FolderBoxes::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), Tokens()[Token::Surface]);
    painter.setPen(Tokens()[Token::Hairline]);
    painter.drawLine(0, height() - 1, width(), height() - 1);
}

}  // namespace zorvane
