// A PDF document by the quick road or the robust one, and by the other one when that fails.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "common/base/side.h"
#include "load/load_context.h"
#include "load/word_conversion.h"

namespace zorvane {

struct PageRange {
    std::int32_t from = 1;
    std::int32_t to = 1;
    friend bool operator==(PageRange, PageRange) = default;
};
/// Swaps a range that runs backward; an end outside 1 to `pages` becomes that end of the document.
PageRange NormalisedRange(PageRange range, std::int32_t pages);

class PdfConversion {
  public:
    /// `notice(text)` tells of the change of roads and gives back whether it is never to be shown
    /// again; only called in a graphical run.
    PdfConversion(LoadContext& context, std::function<bool(const std::string&)> notice)
        : context_(context), notice_(std::move(notice)) {}

    /// True when `sTempFile` holds plain or rich text. Each failure has been logged;
    /// `bDoQuickTextExtraction` is as it was.
    bool Convert(const std::string& sFile, const std::string& sTempFile, Side side,
                 WordConversion& word, const WordPasswords& passwords);
    bool ConverterPDFToTxt(const std::string& sFile, const std::string& sTempFile, Side side,
                           std::string& sError);
    bool ConverterPDFToRTF(const std::string& sFile, const std::string& sTempFile, Side side,
                           std::string& sError);

  private:
    bool RunRoad(const std::string& sFile, const std::string& sTempFile, Side side,
                 std::string& sError);
    void ToPlainText(const std::string& sTempFile, WordConversion& word,
                     const WordPasswords& passwords, const std::string& sFile);
    void TellOfOtherRoad(const std::string& sFile);
    PageRange RangeOf(Side side) const;
    std::string FailedText(Side side) const;
    ConversionObserver Observer();
    void StartTime(const std::string& sFile);
    bool OutOfTime(std::int32_t percent);
    bool SecondRoadHasTime() const;

    LoadContext& context_;
    std::function<bool(const std::string&)> notice_;
    bool aborted_ = false;
    // The count of the pages and both roads share one limit.
    std::uint32_t started_ = 0;
    std::uint32_t limit_ = 0;  // milliseconds
    bool out_of_time_ = false;
    std::int32_t percent_ = -1;
    std::uint32_t moved_ = 0;  // when the percentage changed
    std::string detail_;       // the reader's own words on the last failure
};

}  // namespace zorvane
