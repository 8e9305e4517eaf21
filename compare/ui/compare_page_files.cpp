// Saving, printing, and questions about files, for a Compare Files viewer.
#include <QDir>
#include <QFileInfo>
#include <QPrintDialog>
#include <QPrinterInfo>
#include <QStandardPaths>

#include "common/ui/file_dialogs.h"
#include "common/ui/qt_text.h"
#include "common/ui/question.h"
#include "compare/ui/compare_files_page.h"
#include "compare/ui/print_preview.h"
#include "compare/ui/printer_painter.h"

namespace zorvane {
namespace {

constexpr double kTwipsPerPoint = 20;

void TellPaper(const QPrinter& printer, PrintQuestion& question) {
    const QSizeF paper = printer.pageLayout().fullRect(QPageLayout::Point).size();
    question.paper_width = paper.width() * kTwipsPerPoint;
    question.paper_height = paper.height() * kTwipsPerPoint;
}

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

// A preview, or a file that was named already, needs no dialog; both show the whole text.
std::unique_ptr<PagePainter> CompareFilesPage::PickPrinter(PrintQuestion& question) {
    if (paper_ != nullptr) {
        question.range = PrintRange::Whole;
        TellPaper(*paper_, question);
        return std::make_unique<PrinterPainter>(*paper_);
    }
    auto printer = std::make_unique<QPrinter>(QPrinter::HighResolution);
    if (QPrinterInfo::availablePrinterNames().isEmpty())
        printer->setOutputFileName(PdfName());
    printer->setDocName(Caption());
    QPrintDialog dialog(printer.get(), this);
    dialog.setWindowTitle(ToQt(question.title));
    dialog.setOption(QAbstractPrintDialog::PrintSelection, question.has_selection);
    if (question.has_selection)
        dialog.setPrintRange(QAbstractPrintDialog::Selection);
    theme_.Dress(dialog);
    if (dialog.exec() != QDialog::Accepted)
        return nullptr;
    question.range = dialog.printRange() == QAbstractPrintDialog::Selection ? PrintRange::Selection
                                                                            : PrintRange::Whole;
    TellPaper(*printer, question);
    return std::make_unique<PrinterPainter>(std::move(printer));
}

std::string CompareFilesPage::DefaultPrinter() {
    return FromQt(QPrinterInfo::defaultPrinterName());
}

// Beside the user's documents, named after what is printed.
QString CompareFilesPage::PdfName() const {
    QString name = Caption();
    name.replace(u'/', u'-');
    // The folder of documents is a promise that not every desktop keeps.
    QString folder = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    if (!QFileInfo(folder).isDir())
        folder = QDir::homePath();
    return folder + u'/' + name + QStringLiteral(".pdf");
}

void CompareFilesPage::PrintPreview() {
    TellActiveEditor();
    QPrinter printer(QPrinter::HighResolution);
    PreviewSteps steps;
    bool print = false;
    bool save = false;
    PrintPreviewDialog* shown = nullptr;
    steps.paint = [this](QPrinter& paper) { PrintOn(paper); };
    steps.print = [&] {
        print = true;
        shown->accept();
    };
    steps.save_pdf = [&] {
        save = true;
        shown->accept();
    };
    PrintPreviewDialog dialog(text_, steps, printer, this);
    shown = &dialog;
    theme_.Dress(dialog);
    if (dialog.exec() != QDialog::Accepted || viewer_ == nullptr)
        return;
    if (print)
        viewer_->PrintActiveEditor();
    else if (save)
        SavePdf();
}

void CompareFilesPage::SavePdf() {
    FileRequest request{.title = text_("Save as PDF"),
                        .filter = QStringLiteral("PDF (*.pdf)|*.pdf"),
                        .saving = true,
                        .start = PdfName(),
                        .confirm = true};
    const QString file = zorvane::PickFile(request, text_, this);
    if (file.isEmpty() || viewer_ == nullptr)
        return;
    QPrinter printer(QPrinter::HighResolution);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(file);
    printer.setDocName(Caption());
    PrintOn(printer);
}

void CompareFilesPage::PrintOn(QPrinter& paper) {
    paper_ = &paper;
    viewer_->PrintActiveEditor();
    paper_ = nullptr;
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
