// The options of a compare of two folders: names are settings keys, field names and the user's
// vocabulary at once.
#pragma once

#include <string>

#include "options/option_values.h"

namespace zorvane {

class clsCompareFolderOptions : public OptionSet {
  public:
    /// Reports of single files go to a folder in `data_folder` until the user says otherwise.
    explicit clsCompareFolderOptions(const std::string& data_folder)
        : OptionSet("CompareFolderOptions"),
          sReportFolder(*this, "sReportFolder", data_folder + "\\Reports\\") {}
    clsCompareFolderOptions(const clsCompareFolderOptions& other) : clsCompareFolderOptions("") {
        CopyFrom(other);
    }
    clsCompareFolderOptions& operator=(const clsCompareFolderOptions& other) {
        CopyFrom(other);
        return *this;
    }
    friend bool operator==(const clsCompareFolderOptions& one, const clsCompareFolderOptions& two) {
        return one.HasSameData(two);
    }

    clsVarString sFolderOriginal{*this, "sFolderOriginal", "C:\\"};
    clsVarString sFolderModified{*this, "sFolderModified", "C:\\"};
    clsVarString sReportFolder;
    clsVarString sExtension{*this, "sExtension", "*.*"};  ///< patterns with blanks between
    clsVarBoolean bBeepWhenDone{*this, "bBeepWhenDone", false};
    clsVarBoolean bStreamFindings{*this, "bStreamFindings", true};  ///< show while it runs
    // What "different" means.
    clsVarBoolean bContentCompare{*this, "bContentCompare", true};           ///< bytes
    clsVarBoolean bContentCompareText{*this, "bContentCompareText", false};  ///< words
    // Which entries are listed.
    clsVarBoolean bShowOnlyInMaster{*this, "bShowOnlyInMaster", true};
    clsVarBoolean bShowOnlyInSource{*this, "bShowOnlyInSource", true};
    clsVarBoolean bShowSameInBothPlaces{*this, "bShowSameInBothPlaces", true};
    clsVarBoolean bShowDifferentInBothPlaces{*this, "bShowDifferentInBothPlaces", true};
    clsVarBoolean bIgnoreDateDifferences{*this, "bIgnoreDateDifferences", false};
    clsVarBoolean bDoSubDirectories{*this, "bDoSubDirectories", true};
    clsVarBoolean bShowDateOnlyDifferent{*this, "bShowDateOnlyDifferent", true};
    clsVarBoolean bCreateReport{*this, "bCreateReport", false};  ///< for each pair of files
};

/// Which of the dependent controls can be used, and which of their boxes are ticked.
struct FolderOptionControls {
    bool frameFileContent = false;
    bool cbCompareFileTextualContents = false;
    bool ticked_text = false;
    bool cmdTextCompareOptions = false;
    bool cbCreateReport = false;
    bool ticked_report = false;
    bool cmdReportOptions = false;
    bool frameReportOptions = false;
    friend bool operator==(const FolderOptionControls&, const FolderOptionControls&) = default;
};
FolderOptionControls ControlsOf(const clsCompareFolderOptions& options);

/// A box that the user clicked. What depends on a box that is no longer ticked goes off with it, so
/// that it does not come back with the box.
void SetShowDifferentInBothPlaces(clsCompareFolderOptions& options, bool on);
void SetContentCompareText(clsCompareFolderOptions& options, bool on);

}  // namespace zorvane
