// The writing of one report, as a computation beside the screen.
#pragma once

#include <optional>
#include <string>

#include "compare/document/rich_text.h"
#include "compare/run/redline_run.h"
#include "load/document_loader.h"
#include "reports/report_driver.h"
#include "reports/rich_report.h"

namespace zorvane {

/// The texts of a word-processor report as they were when it was asked for.
struct DocumentReportTexts {
    std::optional<RichText> all_in_one;
    std::optional<RichText> additions;
    std::optional<RichText> deletions;
    std::optional<RichText> changes;
    std::optional<RichReportHead> head;
    CharFormat format;
};

/// The viewer's default report, or one that is named.
struct ReportWanted {
    bool defaults = false;
    Launch launch = Launch::No;  ///< of the default one
    std::string file;
    ReportType type = ReportType::Html;
    std::int32_t style = 1;
};

/// An office suite that stays for the next file goes, where the user's own copy is about to open
/// `file`.
void LetGoOfOffice(ConversionService& service, const std::string& file);

/// What is borrowed is of no other run meanwhile; the rest is the run's own.
struct ReportInput {
    ProcessState& process;
    RunTelling& telling;
    VestrelX& engine;
    clsCompareFileOptions options;
    CompareFilesSettings settings;
    std::string title;  ///< of a command line
    DocumentReportTexts texts;
    ReportWanted wanted;
    LoadQuestions* questions = nullptr;
    ConversionService* service = nullptr;  ///< whose office suite is let go of
    RedlineInputs redline{};               ///< what tracked changes are made of
    bool edited = false;                   ///< a side's text is not that of its file
};

struct ReportOutcome {
    ReportResult result = ReportResult::Aborted;
    std::string file;                               ///< its tokens replaced
    std::string document_target;                    ///< where later word-processor reports go
    std::optional<RedlineCertificate> certificate;  ///< of a report with tracked changes
};

ReportOutcome RunReport(ReportInput input, RunWatcher& watcher);

}  // namespace zorvane
