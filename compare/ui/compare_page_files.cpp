// Saving, printing, and questions about files, for a Compare Files viewer.
#include <algorithm>
#include <cmath>

#include <QDir>
#include <QFileInfo>
#include <QPageSetupDialog>
#include <QPrintDialog>
#include <QPrinterInfo>

#include "common/base/number.h"
#include "common/ui/file_dialogs.h"
#include "common/ui/qt_text.h"
#include "common/ui/question.h"
#include "compare/ui/compare_files_page.h"
#include "compare/ui/print_preview.h"
#include "compare/ui/printer_painter.h"
#include "compare/viewer_printing.h"
#include "compare/viewer_saving.h"

namespace zorvane {
namespace {

constexpr double kTwipsPerMillimeter = 1440 / 25.4;

void TellPaper(const QPrinter& printer, PageSetup& page) {
    const QSizeF paper = printer.pageLayout().fullRect(QPageLayout::Point).size();
    page.width = paper.width() * kTwipsPerPoint;
    page.height = paper.height() * kTwipsPerPoint;
}

QMarginsF MarginsIn(const QPrinter& printer) {
    // Points would be whole ones.
    return printer.pageLayout().margins(QPageLayout::Millimeter);
}

// Where pages are set up the margins stand beside the paper.
void OfferMargins(QPrinter& printer, const PageSetup& page) {
    printer.setPageMargins(
        QMarginsF(page.left, page.top, page.right, page.bottom) / kTwipsPerMillimeter,
        QPageLayout::Millimeter);
}

// What was not touched keeps its exact value: a dialog rounds, and a printer has margins of its
// own.
void TakeChanged(const QMarginsF& before, const QMarginsF& now, PageSetup& page) {
    constexpr double kRounded = 0.1;  // millimetres
    const auto take = [](double was, double is, double& margin) {
        if (std::abs(is - was) > kRounded)
            margin = std::round(is * kTwipsPerMillimeter);
    };
    take(before.left(), now.left(), page.left);
    take(before.top(), now.top(), page.top);
    take(before.right(), now.right(), page.right);
    take(before.bottom(), now.bottom(), page.bottom);
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

// Walking selects differences, which nobody means to print alone; what is selected in a result is
// not what the marked text behind it has selected.
bool CompareFilesPage::HasOwnSelection() const {
    const RichTextView* view = FocusedView();
    for (const Side side : kBothSides)
        if (view == &editors_->View(side))
            return view->Document().Selection() != walked_to_[side];
    return false;
}

// A preview, or a file that was named already, needs no dialog; both show the whole text.
std::unique_ptr<PagePainter> CompareFilesPage::PickPrinter(PrintQuestion& question) {
    if (paper_ != nullptr) {
        question.range = PrintRange::Whole;
        TellPaper(*paper_, question.page);
        return std::make_unique<PrinterPainter>(*paper_);
    }
    auto printer = std::make_unique<QPrinter>(QPrinter::HighResolution);
    if (paper_layout_)
        printer->setPageLayout(*paper_layout_);
    OfferMargins(*printer, question.page);
    const QMarginsF margins = MarginsIn(*printer);
    if (QPrinterInfo::availablePrinterNames().isEmpty())
        printer->setOutputFileName(PdfName());
    printer->setDocName(Caption());
    QPrintDialog dialog(printer.get(), this);
    dialog.setWindowTitle(ToQt(question.title) + QStringLiteral(" – ") +
                          FocusedView()->accessibleName());
    const bool selection = question.has_selection && HasOwnSelection();
    dialog.setOption(QAbstractPrintDialog::PrintSelection, selection);
    if (selection)
        dialog.setPrintRange(QAbstractPrintDialog::Selection);
    theme_.Dress(dialog);
    if (dialog.exec() != QDialog::Accepted)
        return nullptr;
    question.range = dialog.printRange() == QAbstractPrintDialog::Selection ? PrintRange::Selection
                                                                            : PrintRange::Whole;
    paper_layout_ = printer->pageLayout();
    TellPaper(*printer, question.page);
    TakeChanged(margins, MarginsIn(*printer), question.page);
    return std::make_unique<PrinterPainter>(std::move(printer));
}

std::string CompareFilesPage::DefaultPrinter() {
    return FromQt(QPrinterInfo::defaultPrinterName());
}

// Beside the user's documents, named after what is printed.
QString CompareFilesPage::PdfName() const {
    QString name =
        FileNameOf(ToQt(SuggestedName(viewer_->mlActiveEditor(), viewer_->ShownFiles())));
    if (name.isEmpty())
        name = Caption();
    name.replace(u'/', u'-');
    return DocumentsFolder() + u'/' + name + QStringLiteral(".pdf");
}

void CompareFilesPage::PrintPreview() {
    TellActiveEditor();
    QPrinter printer(QPrinter::HighResolution);
    if (paper_layout_)
        printer.setPageLayout(*paper_layout_);
    PreviewSteps steps;
    bool print = false;
    bool save = false;
    PrintPreviewDialog* shown = nullptr;
    steps.paint = [this](QPrinter& paper) { PrintOn(paper); };
    steps.page_setup = [&] { return SetUpPages(printer); };
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

// Paper and margins; false when it was cancelled.
bool CompareFilesPage::SetUpPages(QPrinter& printer) {
    CompareFilesSettings& settings = viewer_->Settings();
    const PageSetup before = MarginsOf(settings);
    OfferMargins(printer, before);
    const QMarginsF margins = MarginsIn(printer);
    QPageSetupDialog dialog(&printer, this);
    dialog.setWindowTitle(text_("Page Setup"));
    theme_.Dress(dialog);
    if (dialog.exec() != QDialog::Accepted)
        return false;
    paper_layout_ = printer.pageLayout();
    PageSetup now = before;
    TakeChanged(margins, MarginsIn(printer), now);
    TakeMargins(before, now, settings);
    RefreshMargins();
    return true;
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
    if (paper_layout_)
        printer.setPageLayout(*paper_layout_);
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
    if (std::find(summaries_.begin(), summaries_.end(), view) != summaries_.end())
        return;  // the text before; the lists of a kind are no documents
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
