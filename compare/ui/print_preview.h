// The pages as they will be printed, before they are.
#pragma once

#include <functional>

#include <QDialog>
#include <QLabel>
#include <QPrintPreviewWidget>

#include "common/ui/buttons.h"
#include "common/ui/ui_text.h"

namespace zorvane {

/// What its buttons and its pages ask for.
struct PreviewSteps {
    std::function<void(QPrinter& printer)> paint;
    std::function<void()> print;
    std::function<void()> save_pdf;
    /// False: nothing was changed.
    std::function<bool()> page_setup;
};

class PrintPreviewDialog : public QDialog {
  public:
    PrintPreviewDialog(const UiText& text, PreviewSteps steps, QPrinter& printer, QWidget* parent);

    int Pages() const { return pages_->pageCount(); }

  private:
    QWidget* MakeBar();
    IconButton* AddIcon(QLayout& bar, const char* icon, const char* name,
                        std::function<void()> step);
    void ShowPlace();

    UiText text_;
    PreviewSteps steps_;
    QPrintPreviewWidget* pages_;
    QLabel* place_ = nullptr;
};

}  // namespace zorvane
