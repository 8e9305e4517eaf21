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

constexpr std::string_view kFormatting = "formatting";
constexpr int kKindRow = 36;

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
    setAccessibleName(text_("Difference Panel"));
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(kLarge, kSmall, kLarge, kLarge);
    rows->setSpacing(0);
    rows->addWidget(MakeHead(commands));
    rows->addWidget(MakeLabel(text_("Kinds counted"), look::kBeside, this));
    rows->addSpacing(kTiny);
    using Kinds = KindCounts;
    rows->addWidget(
        MakeKind(commands, "compare.count_case", "Case", "formatting", &Kinds::letter_case));
    rows->addWidget(MakeKind(commands, "compare.count_blanks", "Blanks", "blanks", &Kinds::blanks));
    rows->addWidget(
        MakeKind(commands, "compare.count_numbering", "Numbering", "numbering", &Kinds::numbering));
    rows->addWidget(MakeKind(commands, "compare.count_formatting", "Formatting", "formatting",
                             &Kinds::formatting));
    rows->addWidget(MakeKind(commands, "compare.count_moves", "Moves", "moved", &Kinds::moves));
    rows->addWidget(
        MakeLabel(text_("A kind that is off stays in the text, unmarked."), look::kHint, this));
    rows->addSpacing(kMedium);
    rows->addWidget(MakeHairline(this));
    rows->addSpacing(kLarge);
    MakeBesidePart(*rows);
    not_compared_line_ = MakeHairline(this);
    rows->addSpacing(kSmall);
    rows->addWidget(not_compared_line_);
    rows->addSpacing(kMedium);
    not_compared_head_ = MakeLabel(text_("Not compared"), look::kHeading, this);
    rows->addWidget(not_compared_head_);
    not_compared_ = MakeLabel(QString(), look::kHint, this);
    rows->addWidget(not_compared_);
    rows->addStretch(1);
    Show({});
}

// As high as the row of files beside it.
QWidget* DifferencePanel::MakeHead(CommandSet& commands) {
    auto* head = new QWidget(this);
    head->setFixedHeight(kFileRowHeight - kSmall);
    auto* line = new QHBoxLayout(head);
    line->setContentsMargins(0, 0, 0, kSmall);
    line->addWidget(MakeLabel(text_("Differences"), look::kHeading, head), 1);
    auto* close = new IconButton(QStringLiteral("close"), text_("Close Panel"), QString(),
                                 text_("The panel comes back by its button in the bar"), head);
    connect(close, &QToolButton::clicked, this, [&commands] { commands.Run("view.panel"); });
    line->addWidget(close);
    return head;
}

QWidget* DifferencePanel::MakeKind(CommandSet& commands, const char* id, const char* words,
                                   const char* icon, std::int32_t KindCounts::*count) {
    auto* row = new QWidget(this);
    row->setFixedHeight(kKindRow);
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(10);
    layout->addWidget(new KindIcon(QString::fromLatin1(icon), row));
    auto* name = new QLabel(text_(words), row);
    layout->addWidget(name, 1);
    KindRow kind;
    kind.of = count;
    kind.name = text_(words);
    kind.count = new QLabel(row);
    kind.count->setProperty(look::kProperty, QString::fromLatin1(look::kBeside));
    layout->addWidget(kind.count);
    kind.on = new Switch(text_(words), row);
    LinkButton(*kind.on, commands, id);
    name->setBuddy(kind.on);
    layout->addWidget(kind.on);
    kinds_.push_back(kind);
    return row;
}

void DifferencePanel::MakeBesidePart(QVBoxLayout& rows) {
    auto* head = new QHBoxLayout;
    head->addWidget(MakeLabel(text_("Beside the words"), look::kHeading, this), 1);
    beside_count_ = new QLabel(this);
    beside_count_->setProperty(look::kProperty, QString::fromLatin1(look::kBeside));
    head->addWidget(beside_count_);
    rows.addLayout(head);
    rows.addSpacing(kTiny);
    nothing_ = MakeLabel(text_("Nothing else differs"), look::kHint, this);
    rows.addWidget(nothing_);
    beside_ = new BesideEntries(text_, this);
    beside_->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum);
    rows.addWidget(beside_);
}

void DifferencePanel::Show(const PanelContents& contents) {
    const bool known = contents.comparison != nullptr;
    for (const KindRow& kind : kinds_) {
        const QString count = known ? QString::number(contents.kinds.*kind.of) : QString();
        kind.count->setText(count);
        kind.on->setAccessibleName(known ? text_("Count %1, %2 found").arg(kind.name, count)
                                         : kind.name);
    }
    const auto notes = known ? NotesOf(*contents.comparison, contents.with_formatting)
                             : std::vector<const BesideNote*>();
    beside_->SetEntries(EntriesOf(notes));
    beside_->setVisible(!notes.empty());
    beside_count_->setText(notes.empty() ? QString() : QString::number(notes.size()));
    nothing_->setVisible(known && notes.empty());
    not_compared_->setText(contents.not_compared.join(u'\n'));
    for (QWidget* part : {static_cast<QWidget*>(not_compared_), not_compared_line_,
                          static_cast<QWidget*>(not_compared_head_)})
        part->setVisible(!contents.not_compared.isEmpty());
}

void DifferencePanel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), Tokens()[Token::Surface]);
    const bool rightward = layoutDirection() == Qt::LeftToRight;
    painter.fillRect(QRect(rightward ? 0 : width() - 1, 0, 1, height()), Tokens()[Token::Hairline]);
}

}  // namespace zorvane
