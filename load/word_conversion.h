// One document through the word processor's contract, with the log that each failure has.
#pragma once

#include <array>
#include <functional>
#include <string>

#include "load/trellis_page.h"

namespace zorvane {

struct ProcessState;
class RunTelling;

/// Passwords of one side: to open, to write, and the same two of the template.
using WordPasswords = std::array<std::string, 4>;

struct WordConversion {
    ProcessState& process;
    RunTelling& telling;
    TrellisPage& page;
    /// Called when the word processor was started for this run, so that its start does not count
    /// as time of the compare. May be empty.
    std::function<void()> restart_time_count;

    /// True when the target is written. The cause of a failure has been logged.
    bool ConverterWordDoc(const std::string& sFile, const std::string& sTarget, WordFormat lFormat,
                          const WordPasswords& passwords);
    void TakePasswords(const WordPasswords& passwords);
    /// The log of a result other than 0.
    void ReportTrellisPageError(WordResult result, const std::string& sFile);
    std::string ReasonOf(WordResult result, const std::string& sFile) const;
    /// The reason of the last failure as far as its log has not told it yet.
    std::string UnsaidReason() const { return told_whole_reason ? "" : page.ErrorString(); }
    /// False, with its log, when the word processor is too new to be driven.
    bool CheckVersion() const;

    bool told_whole_reason = false;  ///< the log of the last failure said all there is
};

}  // namespace zorvane
