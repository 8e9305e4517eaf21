#include "app/set_names.h"

#include <algorithm>

#include "options/compare_file_options.h"
#include "options/compare_files_settings.h"

namespace zorvane {
namespace {

struct RefusedName {
    std::string_view name;  // or how it begins, before a "*"
    const char* why;
};
constexpr const char* kOfWindows = "it is for windows; this command has none";
constexpr const char* kNameReport = "name the report with -o";
constexpr RefusedName kRefused[] = {
    {"sFileOriginal", "the first file of the command is the original"},
    {"sFileModified", "the second file of the command is the modified"},
    {"msgReportTitleHTM_MD", "write --title"},
    {"txtReportMasterTitleHTML", "write --original-label"},
    {"txtReportSourceTitleHTML", "write --modified-label"},
    {"mlReportDefaultStyle_MD", "write --view"},
    {"mlReportDefaultFileType_MD", "write --report-type"},
    {"msgReportFile*", kNameReport},
    {"bReportHTMLShowHighDetailSummary", "the reports of this command have it always"},
    {"bReloadOnRefresh", "this command loads its files always"},
    {"bOptimizeFileLoading", "this command loads its files once"},
    {"bQuickCompare", "write --faster"},
    {"sFontName", kOfWindows},
    {"dFontSize", kOfWindows},
    {"bSelectTextInDiffViewer", kOfWindows},
    {"rbReloadOnRefresh", kOfWindows},
    {"lLastSelectedFileFilterIndex", kOfWindows},
    {"bWarnedAbout*", kOfWindows},
    {"mnuWordWrap", kOfWindows},
    {"TextSynchType", kOfWindows},
    {"WindowState", kOfWindows},
    {"Left", kOfWindows},
    {"Top", kOfWindows},
    {"Width", kOfWindows},
    {"Height", kOfWindows},
    {"txtRightMargin", kOfWindows},
    {"txtLeftMargin", kOfWindows},
    {"txtBottomMargin", kOfWindows},
    {"txtTopMargin", kOfWindows},
    {"dRatioTopEditor", kOfWindows},
    {"bBCLLockPageRange", kOfWindows},
};

// What says how a file is loaded; the text of a file depends on nothing else.
constexpr std::string_view kOfLoading[] = {
    "bRemoveFormatting",
    "bModifyOriginalDocuments",
    "lLoadDelay",
    "bRemoveBlankLines",
    "lPadLength",
    "bHTMLCompareSource",
    "bExcel*",
    "sExcel*",
    "sDOC*",
    "bBCL*",
    "sBCL*",
    "lBCL*",
    "bConnectHyphens",
    "bRemoveHiddenText",
    "bDoQuickTextExtraction",
    "lDupMaxDeltaX",
    "bConvertAllSlides",
    "lFromSlide*",
    "lToSlide*",
    "bShowSlideAndShapeNumber",
    "bIncludeNotes*",
};

struct ImpliedName {
    std::string_view name;
    const char* other;
    const char* value;
};
constexpr ImpliedName kImplied[] = {
    {"sExcelRowsMaster", "bExcelUseRowsMaster", "TRUE"},
    {"sExcelRowsSource", "bExcelUseRowsSource", "TRUE"},
    {"sExcelColsMaster", "bExcelUseColsMaster", "TRUE"},
    {"sExcelColsSource", "bExcelUseColsSource", "TRUE"},
    {"bExcelIncludeValues", "bExcelCompareFormulas", "TRUE"},
    {"lBCLPage*", "bBCLUsingPageRange", "TRUE"},
    {"lFromSlide*", "bConvertAllSlides", "FALSE"},
    {"lToSlide*", "bConvertAllSlides", "FALSE"},
    {"lLineBracket", "bUseLineBracket", "TRUE"},
    {"bIncludeNotesOnly", "bIncludeNotes", "TRUE"},
};

bool Fits(std::string_view name, std::string_view pattern) {
    if (!pattern.ends_with('*'))
        return name == pattern;
    return name.starts_with(pattern.substr(0, pattern.size() - 1));
}

bool IsOfModified(std::string_view name) {
    return name.ends_with("Source") || name.find("Modified") != std::string_view::npos;
}

// Nothing for a name that the command obeys.
const char* WhyRefused(std::string_view name, SetBy command) {
    for (const RefusedName& row : kRefused) {
        if (Fits(name, row.name))
            return row.why;
    }
    if (command == SetBy::Compare)
        return nullptr;
    const bool loads = std::any_of(std::begin(kOfLoading), std::end(kOfLoading),
                                   [name](std::string_view row) { return Fits(name, row); });
    if (!loads)
        return "it says nothing about how a file is loaded";
    return IsOfModified(name) ? "there is one file, which takes the options of the original"
                              : nullptr;
}

Status SetOne(const std::string& name, const std::string& value, clsCompareFileOptions& options,
              CompareFilesSettings& settings) {
    return HasSetting(name) ? SetSettingByName(settings, name, value)
                            : options.SetByName(name, value);
}

}  // namespace

Status ApplySets(const NamedValues& sets, SetBy command, clsCompareFileOptions& options,
                 CompareFilesSettings& settings) {
    const auto is_set = [&sets](std::string_view name) {
        return std::any_of(sets.begin(), sets.end(),
                           [name](const auto& set) { return set.first == name; });
    };
    for (const auto& [name, value] : sets) {
        if (Status set = SetOne(name, value, options, settings); !set.ok())
            return set.failure().WithContext("--set");
        if (const char* why = WhyRefused(name, command))
            return Failure{"--set " + name + ": " + why};
        for (const ImpliedName& row : kImplied) {
            const bool off = name.starts_with('b') && value.find_first_of("fFnN0") == 0;
            if (!Fits(name, row.name) || is_set(row.other) || off)
                continue;
            if (Status set = SetOne(row.other, row.value, options, settings); !set.ok())
                return set;
        }
    }
    return Status::Ok();
}

}  // namespace zorvane
