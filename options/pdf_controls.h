// Which of the settings for PDF documents have a say, as the others stand.
#pragma once

#include "options/compare_files_settings.h"

namespace zorvane {

struct PdfControls {
    bool robust = false;         ///< the settings of the road that keeps formats
    bool quick = false;          ///< those of the one that does not
    bool layout = false;         ///< columns, and what is done to the text
    bool detect_header = false;  ///< only where the layout is preserved
    bool pages = false;
    bool modified_pages = false;  ///< they are the original's while both are tied
    friend bool operator==(const PdfControls&, const PdfControls&) = default;
};

inline PdfControls PdfControlsOf(const CompareFilesSettings& settings) {
    constexpr std::int32_t kScannedImage = 0;
    constexpr std::int32_t kPreserveLayout = 1;
    const bool robust = !settings.bDoQuickTextExtraction;
    return {.robust = robust,
            .quick = !robust,
            .layout = robust && settings.lBCLConversionMethod != kScannedImage,
            .detect_header = robust && settings.lBCLConversionMethod == kPreserveLayout,
            .pages = settings.bBCLUsingPageRange,
            .modified_pages = settings.bBCLUsingPageRange && !settings.bBCLLockPageRange};
}

/// While both are tied, the modified document's pages are the original's.
inline void TiePages(CompareFilesSettings& settings) {
    if (!settings.bBCLLockPageRange)
        return;
    settings.lBCLPageFromModified = settings.lBCLPageFrom;
    settings.lBCLPageToModified = settings.lBCLPageTo;
}

}  // namespace zorvane
