#include "compare/ui/difference_panel.h"

#include <QHBoxLayout>
#include <QPainter>
#include <QVBoxLayout>

#include "common/ui/cards.h"
#include "common/ui/icons.h"
#include "common/ui/look_style.h"
#include "common/ui/measures.h"
#include "common/ui/style_sheet.h"
#include "compare/ui/command_buttons.h"

namespace zorvane {

using namespace measures;

namespace {

constexpr int kWidth = 304;
constexpr int kSideRole = Qt::UserRole;
constexpr int kParagraphRole = Qt::UserRole + 1;
constexpr std::string_view kFormatting = "formatting";

class KindIcon : public QWidget {
  public:
    KindIcon(QString icon, QWidget* parent) : QWidget(parent), icon_(std::move(icon)) {
        setFixedSize(kIconSize, kIconSize);
    }

  protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        PaintIcon(painter, icon_, rect(), Tokens()[Token::Text2]);
    }

  private:
    QString icon_;
};

}  // namespace

std::vector<const BesideNote*> NotesOf(const Comparison& comparison, bool with_formatting) {
    std::vector<const BesideNote*> notes;
    for (const BesideNote& note : comparison.beside) {
        if (with_formatting || note.kind != kFormatting)
            notes.push_back(&note);
    }
    return notes;
}

DifferencePanel::DifferencePanel(CommandSet& commands, UiText text, QWidget* parent)
    : QFrame(parent), text_(std::move(text)) {
    setFixedWidth(kWidth);
    setAccessibleName(text_("Difference Panel"));
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(kLarge, kMedium, kLarge, kMedium);
    rows->setSpacing(kSmall);
    rows->addWidget(MakeLabel(text_("Kinds counted"), look::kHeading, this));
    rows->addWidget(MakeKind(commands, "compare.count_case", "Case", "formatting"));
    rows->addWidget(MakeKind(commands, "compare.count_blanks", "Blanks", "blanks"));
    rows->addWidget(MakeKind(commands, "compare.count_formatting", "Formatting", "formatting"));
    rows->addWidget(MakeKind(commands, "compare.count_moves", "Moves", "moved"));
    rows->addSpacing(kMedium);
    rows->addWidget(MakeLabel(text_("Beside the words"), look::kHeading, this));
    nothing_ = MakeLabel(text_("Nothing else differs"), look::kHint, this);
    rows->addWidget(nothing_);
    beside_ = new QListWidget(this);
    beside_->setAccessibleName(text_("Beside the words"));
    beside_->setFrameShape(QFrame::NoFrame);
    beside_->setWordWrap(true);
    beside_->setTextElideMode(Qt::ElideNone);
    beside_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    connect(beside_, &QListWidget::itemActivated, this, &DifferencePanel::Choose);
    connect(beside_, &QListWidget::itemClicked, this, &DifferencePanel::Choose);
    rows->addWidget(beside_, 1);
    not_compared_head_ = MakeLabel(text_("Not compared"), look::kHeading, this);
    rows->addWidget(not_compared_head_);
    not_compared_ = MakeLabel(QString(), look::kHint, this);
    rows->addWidget(not_compared_);
    rows->addStretch(0);
    Show(nullptr, true, {});
}

QWidget* DifferencePanel::MakeKind(CommandSet& commands, const char* id, const char* words,
                                   const char* icon) {
    auto* row = new QWidget(this);
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(kSmall);
    layout->addWidget(new KindIcon(QString::fromLatin1(icon), row));
    layout->addWidget(new QLabel(text_(words), row), 1);
    auto* on = new Switch(text_(words), row);
    LinkButton(*on, commands, id);
    layout->addWidget(on);
    return row;
}

void DifferencePanel::Show(const Comparison* comparison, bool with_formatting,
                           const PerSide<std::string>& not_compared) {
    beside_->clear();
    const auto notes = comparison == nullptr ? std::vector<const BesideNote*>()
                                             : NotesOf(*comparison, with_formatting);
    for (const BesideNote* note : notes) {
        const bool modified = note->modified_paragraph > 0;
        const int paragraph = modified ? note->modified_paragraph : note->original_paragraph;
        QString words = text_(note->what) + u' ' + text_(note->change);
        if (paragraph > 0)
            words += QStringLiteral(", ") + text_("paragraph %1").arg(paragraph);
        const std::string& told = note->new_text.empty() ? note->old_text : note->new_text;
        if (!told.empty())
            words += u'\n' + ToQt(told);
        auto* item = new QListWidgetItem(words, beside_);
        item->setData(kSideRole, modified);
        item->setData(kParagraphRole, paragraph);
    }
    beside_->setVisible(!notes.empty());
    nothing_->setVisible(comparison != nullptr && notes.empty());
    QStringList reasons;
    for (const std::string* reason : {&not_compared.original, &not_compared.modified}) {
        if (!reason->empty())
            reasons.append(ToQt(*reason));
    }
    not_compared_->setText(reasons.join(u'\n'));
    not_compared_->setVisible(!reasons.isEmpty());
    not_compared_head_->setVisible(!reasons.isEmpty());
}

void DifferencePanel::Choose(const QListWidgetItem* item) {
    const int paragraph = item->data(kParagraphRole).toInt();
    if (place_chosen && paragraph > 0)
        place_chosen(item->data(kSideRole).toBool() ? Side::Modified : Side::Original,
                     ParagraphNumber{paragraph});
}

void DifferencePanel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), Tokens()[Token::Surface]);
    painter.setPen(Tokens()[Token::Hairline]);
    painter.drawLine(0, 0, 0, height());
}

}  // namespace zorvane
