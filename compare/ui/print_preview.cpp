#include "compare/ui/print_preview.h"

#include <algorithm>

#include <QHBoxLayout>

#include "common/ui/measures.h"
#include "common/ui/style_sheet.h"

namespace zorvane {

using namespace measures;

namespace {

constexpr int kWide = 900;
constexpr int kTall = 760;

}  // namespace

PrintPreviewDialog::PrintPreviewDialog(const UiText& text, PreviewSteps steps, QPrinter& printer,
                                       QWidget* parent)
    : QDialog(parent),
      text_(text),
      steps_(std::move(steps)),
      pages_(new QPrintPreviewWidget(&printer, this)) {
    setWindowTitle(text_("Print Preview"));
    pages_->setAccessibleName(text_("Pages"));
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(0);
    rows->addWidget(MakeBar());
    rows->addWidget(pages_, 1);
    connect(pages_, &QPrintPreviewWidget::paintRequested, this,
            [this](QPrinter* paper) { steps_.paint(*paper); });
    connect(pages_, &QPrintPreviewWidget::previewChanged, this, [this] { ShowPlace(); });
    pages_->fitInView();
    const QSize room = parent == nullptr ? QSize(kWide, kTall) : parent->window()->size();
    resize(std::min(kWide, room.width()), std::min(kTall, room.height()));
    ShowPlace();  // the widget makes its pages when it is shown
}

QWidget* PrintPreviewDialog::MakeBar() {
    auto* bar = new QWidget(this);
    bar->setFixedHeight(kToolBarHeight);
    auto* line = new QHBoxLayout(bar);
    line->setContentsMargins(kWindowEdge, 0, kWindowEdge, 0);
    line->setSpacing(kSmall);
    const auto word = [&](const char* words, ButtonLook look, const char* icon,
                          const std::function<void()>& step) {
        auto* button = new Button(text_(words), look, QString::fromLatin1(icon), bar);
        connect(button, &QPushButton::clicked, this, [step] { step(); });
        line->addWidget(button);
        return button;
    };
    word("Print...", ButtonLook::Primary, "print", steps_.print)->setDefault(true);
    word("Save as PDF...", ButtonLook::Plain, "save", steps_.save_pdf);
    word("Page Setup...", ButtonLook::Plain, "options", [this] {
        if (steps_.page_setup())
            pages_->updatePreview();
    });
    line->addStretch(1);
    AddIcon(*line, "previous", "Previous page",
            [this] { pages_->setCurrentPage(pages_->currentPage() - 1); });
    place_ = new QLabel(bar);
    place_->setProperty(look::kProperty, QString::fromLatin1(look::kBeside));
    line->addWidget(place_);
    AddIcon(*line, "next", "Next page",
            [this] { pages_->setCurrentPage(pages_->currentPage() + 1); });
    line->addStretch(1);
    word("Whole page", ButtonLook::Flat, "", [this] { pages_->fitInView(); });
    word("Page width", ButtonLook::Flat, "", [this] { pages_->fitToWidth(); });
    word("Close", ButtonLook::Plain, "", [this] { reject(); });
    return bar;
}

IconButton* PrintPreviewDialog::AddIcon(QLayout& bar, const char* icon, const char* name,
                                        std::function<void()> step) {
    auto* button = new IconButton(QString::fromLatin1(icon), text_(name), QString(), QString(),
                                  bar.parentWidget());
    connect(button, &QToolButton::clicked, this, [this, step = std::move(step)] {
        step();
        ShowPlace();
    });
    bar.addWidget(button);
    return button;
}

void PrintPreviewDialog::ShowPlace() {
    place_->setText(text_("Page %1 of %2").arg(pages_->currentPage()).arg(pages_->pageCount()));
}

}  // namespace zorvane
