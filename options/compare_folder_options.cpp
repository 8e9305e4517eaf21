#include "options/compare_folder_options.h"

namespace zorvane {

FolderOptionControls ControlsOf(const clsCompareFolderOptions& options) {
    FolderOptionControls controls;
    controls.frameFileContent = options.bContentCompare.Data();
    controls.cbCompareFileTextualContents = options.bShowDifferentInBothPlaces.Data();
    controls.ticked_text =
        controls.cbCompareFileTextualContents && options.bContentCompareText.Data();
    controls.cmdTextCompareOptions = controls.ticked_text;
    controls.cbCreateReport = controls.ticked_text;
    controls.ticked_report = controls.cbCreateReport && options.bCreateReport.Data();
    controls.cmdReportOptions = controls.ticked_report;
    controls.frameReportOptions = controls.ticked_report;
    return controls;
}

void SetShowDifferentInBothPlaces(clsCompareFolderOptions& options, bool on) {
    options.bShowDifferentInBothPlaces.SetData(on);
    if (!on)
        SetContentCompareText(options, false);
}

void SetContentCompareText(clsCompareFolderOptions& options, bool on) {
    options.bContentCompareText.SetData(on);
    if (!on)
        options.bCreateReport.SetData(false);
}

}  // namespace zorvane
