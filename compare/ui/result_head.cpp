#include "compare/ui/result_head.h"

#include <QHBoxLayout>
#include <QPainter>

#include "common/ui/look_style.h"
#include "common/ui/measures.h"
#include "common/ui/style_sheet.h"
#include "compare/ui/command_buttons.h"

namespace zorvane {

using namespace measures;

namespace {

struct FilterRow {
    ViewFilter filter;
    const char* words;
    int ResultCounts::*count;
};
constexpr FilterRow kFilters[] = {{ViewFilter::All, "All", &ResultCounts::all},
                                  {ViewFilter::Changes, "Changes", &ResultCounts::changes},
                                  {ViewFilter::Additions, "Additions", &ResultCounts::additions},
                                  {ViewFilter::Deletions, "Deletions", &ResultCounts::deletions}};

QString Sentence(const UiText& text, const ResultCounts& counts) {
    if (counts.all <= 0)
        return {};
    QString words = counts.all == 1 ? text("1 difference") : text("%1 differences").arg(counts.all);
    if (counts.beside > 0)
        words += QStringLiteral(", ") + text("%1 beside the words").arg(counts.beside);
    return words;
}

}  // namespace

ResultHead::ResultHead(CommandSet& commands, UiText text, QWidget* parent)
    : QFrame(parent), text_(std::move(text)) {
    setFixedHeight(kFileRowHeight);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(kWindowEdge, 0, kWindowEdge, 0);
    layout->setSpacing(kMedium);
    filters_ = new SegmentedGroup(text_("Differences shown"), this);
    for (const FilterRow& row : kFilters)
        filters_->Add(static_cast<int>(row.filter), text_(row.words), QString(), QString());
    filters_->SetCurrent(static_cast<int>(ViewFilter::All));
    connect(filters_, &SegmentedGroup::Chosen, this, [this](int id) {
        if (filter_chosen)
            filter_chosen(static_cast<ViewFilter>(id));
    });
    layout->addWidget(filters_);
    box_ = new ComboBox(this);
    box_->setAccessibleName(text_("Differences shown"));
    for (const FilterRow& row : kFilters)
        box_->addItem(text_(row.words), static_cast<int>(row.filter));
    box_->hide();
    connect(box_, &QComboBox::activated, this, [this](int at) {
        if (filter_chosen)
            filter_chosen(kFilters[at].filter);
    });
    layout->addWidget(box_);
    offer_ = MakeCommandButton(commands, "view.all_in_one", text_("View All In One"),
                               ButtonLook::Flat, "all-in-one", this);
    offer_->hide();
    layout->addWidget(offer_);
    sentence_ = new QLabel(this);
    sentence_->setProperty(look::kProperty, QString::fromLatin1(look::kBeside));
    layout->addWidget(sentence_);
    layout->addStretch(1);
    chip_ = new Chip(this);
    chip_->SetWords(QString(), 0);
    connect(chip_, &QToolButton::clicked, this, [this] {
        if (ignored_clicked)
            ignored_clicked();
    });
    layout->addWidget(chip_);
    fold_ = MakeCommandButton(commands, "view.fold", text_("Fold Unchanged"), ButtonLook::Flat,
                              "fold", this);
    layout->addWidget(fold_);
    SetCounts({});
}

void ResultHead::SetCounts(const ResultCounts& counts) {
    for (const FilterRow& row : kFilters)
        filters_->SetCount(static_cast<int>(row.filter), counts.*row.count);
    counts_ = counts;
    fold_->setVisible(counts.all != 0);  // without a difference the card says it all
    sentence_->setText(Sentence(text_, counts));
    filters_->updateGeometry();
    ShowInBox();
}

void ResultHead::ShowInBox() {
    for (int at = 0; at < box_->count(); ++at) {
        const FilterRow& row = kFilters[at];
        const int count = counts_.*row.count;
        box_->setItemText(at, count < 0 ? text_(row.words)
                                        : text_(row.words) + QStringLiteral("  %1").arg(count));
    }
}

void ResultHead::SetFiltersEnabled(bool enabled) {
    filters_->setEnabled(enabled);
    box_->setEnabled(enabled);
}

void ResultHead::SetAllInOne(bool all_in_one) {
    all_in_one_ = all_in_one;
    offer_->setVisible(narrow_ && !all_in_one_);
}

void ResultHead::SetFilter(ViewFilter filter) {
    filters_->SetCurrent(static_cast<int>(filter));
    box_->setCurrentIndex(box_->findData(static_cast<int>(filter)));
}

void ResultHead::SetFilterEnabled(ViewFilter filter, bool enabled) {
    filters_->SetSegmentEnabled(static_cast<int>(filter), enabled);
}

void ResultHead::SetIgnored(const QStringList& kinds) {
    chip_->SetWords(text_("Ignoring: ") + kinds.join(QStringLiteral(", ")),
                    static_cast<int>(kinds.size()));
}

QWidget* ResultHead::FirstStop() const {
    return box_->isVisible() ? static_cast<QWidget*>(box_) : filters_->Segment(filters_->Current());
}

void ResultHead::FitTo(const FoldPlan& plan) {
    sentence_->setVisible(plan.captions);
    chip_->SetShort(!plan.filters_apart);
    filters_->setVisible(plan.filters_apart);
    box_->setVisible(!plan.filters_apart);
    fold_->SetCaptionShown(plan.head_own_line);
    narrow_ = !plan.steps_and_layouts;
    SetAllInOne(all_in_one_);
}

void ResultHead::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), Tokens()[Token::Surface]);
    painter.setPen(Tokens()[Token::Hairline]);
    painter.drawLine(0, height() - 1, width(), height() - 1);
}

}  // namespace zorvane
