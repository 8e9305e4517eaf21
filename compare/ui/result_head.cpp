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

constexpr int kSentenceFrom = 1150;
constexpr int kChipWordsFrom = 900;

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
    if (counts.all < 0)
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
    layout->addWidget(MakeCommandButton(commands, "view.fold", text_("Fold Unchanged"),
                                        ButtonLook::Flat, "fold", this));
    SetCounts({});
}

void ResultHead::SetCounts(const ResultCounts& counts) {
    for (const FilterRow& row : kFilters)
        filters_->SetCount(static_cast<int>(row.filter), counts.*row.count);
    sentence_->setText(Sentence(text_, counts));
    filters_->updateGeometry();
}

void ResultHead::SetFilter(ViewFilter filter) {
    filters_->SetCurrent(static_cast<int>(filter));
}

void ResultHead::SetFilterEnabled(ViewFilter filter, bool enabled) {
    filters_->SetSegmentEnabled(static_cast<int>(filter), enabled);
}

void ResultHead::SetIgnored(const QStringList& kinds) {
    chip_->SetWords(text_("Ignoring: ") + kinds.join(QStringLiteral(", ")),
                    static_cast<int>(kinds.size()));
}

void ResultHead::FitTo(int width) {
    sentence_->setVisible(width >= kSentenceFrom);
    chip_->SetShort(width < kChipWordsFrom);
}

void ResultHead::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), Tokens()[Token::Surface]);
    painter.setPen(Tokens()[Token::Hairline]);
    painter.drawLine(0, height() - 1, width(), height() - 1);
}

}  // namespace zorvane
