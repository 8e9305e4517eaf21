// Saving, printing, and questions about files, for a Compare Files viewer.
#include <QPrintDialog>

#include "common/ui/file_dialogs.h"
#include "common/ui/qt_text.h"
#include "common/ui/question.h"
#include "compare/ui/compare_files_page.h"
#include "compare/ui/printer_painter.h"

namespace zorvane {
namespace {

constexpr double kTwipsPerPoint = 20;

}  // namespace

std::int32_t CompareFilesPage::Choose(const WindowQuestion& question) {
    Question asked{.title = ToQt(question.title),
                   .text = ToQt(question.text),
                   .usual = question.first,
                   .escape = question.safe};
    for (const std::string& answer : question.answers)
        asked.choices.push_back(ToQt(answer));
    return Ask(asked, this);
}

// Whoever saves asks about a file that stands there.
std::string CompareFilesPage::PickFile(FileQuestion& question) {
    FileRequest request{.title = ToQt(question.title),
                        .filter = ToQt(question.filter),
                        .filter_index = question.filter_index,
                        .saving = question.saving,
                        .start = ToQt(question.start)};
    const QString path = zorvane::PickFile(request, text_, this);
    question.filter_index = request.filter_index;
    return FromQt(path);
}

std::unique_ptr<PagePainter> CompareFilesPage::PickPrinter(PrintQuestion& question) {
    auto printer = std::make_unique<QPrinter>(QPrinter::HighResolution);
    QPrintDialog dialog(printer.get(), this);
    dialog.setWindowTitle(ToQt(question.title));
    dialog.setOption(QAbstractPrintDialog::PrintSelection, question.has_selection);
    if (question.has_selection)
        dialog.setPrintRange(QAbstractPrintDialog::Selection);
    if (dialog.exec() != QDialog::Accepted)
        return nullptr;
    question.range = dialog.printRange() == QAbstractPrintDialog::Selection ? PrintRange::Selection
                                                                            : PrintRange::Whole;
    const QSizeF paper = printer->pageLayout().fullRect(QPageLayout::Point).size();
    question.paper_width = paper.width() * kTwipsPerPoint;
    question.paper_height = paper.height() * kTwipsPerPoint;
    return std::make_unique<PrinterPainter>(std::move(printer));
}

void CompareFilesPage::RefreshMargins() {
    if (rooms_ != nullptr)
        view_options_->Binding().Show();
}

void CompareFilesPage::RefreshFileList(Side) {
    if (rooms_ != nullptr)
        ShowFiles();
}

void CompareFilesPage::RefreshCaption() {
    host_.caption_changed();
}

void CompareFilesPage::TellActiveEditor() {
    const RichTextView* view = FocusedView();
    EditorTarget target = EditorTarget::Original;
    if (view == &editors_->View(Side::Modified))
        target = EditorTarget::Modified;
    else if (view == &pane_->View(Side::Original))
        target = EditorTarget::OriginalDiffFinal;
    else if (view == &pane_->View(Side::Modified))
        target = EditorTarget::ModifiedDiffFinal;
    else if (view == &pane_->MergedView())
        target = EditorTarget::AllInOneDiff;
    viewer_->SetActiveEditor(target);
}

void CompareFilesPage::SaveAs() {
    TellActiveEditor();
    viewer_->SaveActiveEditorAs();
}

void CompareFilesPage::Print() {
    TellActiveEditor();
    viewer_->PrintActiveEditor();
}

}  // namespace zorvane
