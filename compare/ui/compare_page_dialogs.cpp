// The dialogs that a person opens from a Compare Files window.
#include "common/base/text_encoding.h"
#include "common/file_utilities.h"
#include "common/ui/font_dialog.h"
#include "common/ui/qt_text.h"
#include "compare/ui/advanced_options_dialog.h"
#include "compare/ui/compare_files_page.h"
#include "compare/ui/report_options_dialog.h"
#include "compare/ui/type_dialogs.h"

namespace zorvane {
namespace {

bool HasSheets(frmCompareFiles& viewer, Side side) {
    const std::string file = viewer.ChosenFile(side);
    return ToUpper(file).find(".XLS") != std::string::npos && bFileExists(file);
}

bool Accepted(Dialog& dialog) {
    return dialog.exec() == QDialog::Accepted;
}

}  // namespace

// ---- file types ----

FileTypeOptions CompareFilesPage::OptionsOfSide(Side side) const {
    return OptionsOf(viewer_->KindOfFile(side));
}

// The side that a person works in; a text of both is the original's first.
void CompareFilesPage::OptionsOfThisFile() {
    const RichTextView* view = FocusedView();
    const bool modified =
        view == &editors_->View(Side::Modified) || view == &pane_->View(Side::Modified);
    const bool original =
        view == &editors_->View(Side::Original) || view == &pane_->View(Side::Original);
    FileTypeOptions type = OptionsOfSide(modified ? Side::Modified : Side::Original);
    if (type == FileTypeOptions::None && !original && !modified)
        type = OptionsOfSide(Side::Modified);
    if (type == FileTypeOptions::None)
        ShowOptions(0);
    else
        ShowTypeOptions(type);
}

void CompareFilesPage::ShowTypeOptions(FileTypeOptions type) {
    bool changed = false;
    switch (type) {
        case FileTypeOptions::Text:
            changed = TextOptions();
            break;
        case FileTypeOptions::Spreadsheet:
            changed = SheetOptions();
            break;
        case FileTypeOptions::Word:
            changed = EditOptions<WordOptionsDialog>();
            break;
        case FileTypeOptions::Html:
            changed = EditOptions<HtmlOptionsDialog>();
            break;
        case FileTypeOptions::Pdf:
            changed = EditSettings<PdfOptionsDialog>();
            break;
        case FileTypeOptions::Slides:
            changed = EditSettings<SlideOptionsDialog>();
            break;
        case FileTypeOptions::None:
            return;
    }
    viewer_->FileTypeOptionsClosed();
    if (changed)
        TellNotFresh();
}

// True when it was accepted with another value than before.
template <class Shown>
bool CompareFilesPage::EditOptions() {
    Shown dialog(viewer_->Options(), text_, this);
    if (!Accepted(dialog) || dialog.Options() == viewer_->Options())
        return false;
    viewer_->Options() = dialog.Options();
    return true;
}

template <class Shown>
bool CompareFilesPage::EditSettings() {
    Shown dialog(viewer_->Settings(), text_, this);
    if (!Accepted(dialog) || dialog.Settings() == viewer_->Settings())
        return false;
    viewer_->Settings() = dialog.Settings();
    return true;
}

bool CompareFilesPage::TextOptions() {
    TextOptionsDialog dialog(viewer_->TextFileExtensions(), text_, this);
    if (!Accepted(dialog) || !dialog.State().Changed())
        return false;
    dialog.State().cmdApply_Click(viewer_->TextFileExtensions());
    return true;
}

bool CompareFilesPage::SheetOptions() {
    const auto read = [this](Side side, const std::string& password) {
        return host_.sheet_names(viewer_->ChosenFile(side), password);
    };
    SheetOptionsDialog dialog(
        viewer_->Options(),
        {HasSheets(*viewer_, Side::Original), HasSheets(*viewer_, Side::Modified)}, read, text_,
        this);
    if (!Accepted(dialog) || dialog.Options() == viewer_->Options())
        return false;
    viewer_->Options() = dialog.Options();
    return true;
}

// ---- other options ----

void CompareFilesPage::AdvancedOptions() {
    if (!EditOptions<AdvancedOptionsDialog>())
        return;
    compare_options_->Binding().Show();
    TellNotFresh();
}

void CompareFilesPage::TellNotFresh() {
    OptionChanged();
    ShowStatus(StatusPanel::Main, FromQt(text_("Diff View not fresh")));
}

void CompareFilesPage::ReportOptions() {
    const auto name = [this](Side side) { return FileNameOf(ToQt(viewer_->ChosenFile(side))); };
    const auto ask = [this](const QString& title, const QString& filter, const QString& start) {
        FileQuestion question{.title = FromQt(title),
                              .filter = FromQt(filter),
                              .saving = true,
                              .start = FromQt(start)};
        return ToQt(PickFile(question));
    };
    ReportOptionsDialog dialog(viewer_->Settings(), {name(Side::Original), name(Side::Modified)},
                               ask, text_, this);
    if (!Accepted(dialog))
        return;
    viewer_->Settings() = dialog.Settings();
    report_options_->Binding().Show();
}

void CompareFilesPage::ChooseFont() {
    CompareFilesSettings& settings = viewer_->Settings();
    FontDialog dialog(text_, {ToQt(settings.sFontName), settings.dFontSize}, this);
    if (!Accepted(dialog))
        return;
    settings.sFontName = FromQt(dialog.Choice().family);
    settings.dFontSize = dialog.Choice().points;
    viewer_->FontChanged();
}

}  // namespace zorvane
