// One pair compared and reported as a command line asks for.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "app/compare_command.h"
#include "app/terminal_window.h"
#include "common/base/side.h"
#include "common/process_state.h"
#include "compare/compare_files_viewer.h"
#include "compare/engine/report_model.h"
#include "compare/run/redline_run.h"

namespace zorvane {

class ConversionService;

/// The numbers are those of the exit status.
enum class CompareStatus : int { Same = 0, Different = 1, Trouble = 2 };

/// Carries out one command, once. Several may be at work at once, each on its own thread.
class CompareRunner {
  public:
    /// Both are borrowed and outlive the runner.
    CompareRunner(Platform& platform, const CompareCommand& command);
    /// Documents are read by `service`, which is no other's meanwhile and stays warm for the next
    /// pair.
    void BorrowReaders(ConversionService& service) { viewer_.BorrowConversions(service); }
    /// What is told waits for `TakeMessages`; else it goes to standard error.
    void KeepMessages();
    std::vector<std::string> TakeMessages();

    CompareStatus Run();

    /// What was found; nothing where nothing could be compared.
    const Comparison* Compared() const { return compared_ ? &viewer_.Compared() : nullptr; }
    const std::vector<std::string>& WrittenFiles() const { return written_; }

  private:
    void BeginCommandLine();
    CompareStatus Trouble(const Status& status);
    bool DiffersBeside() const;
    bool HasText();
    Status TakeSides();
    Status SetOptions();
    void SetExpressions(clsCompareFileOptions& options);
    bool WantsDocument() const;
    std::int32_t Format() const;
    std::string Label(Side side) const;
    std::string DateOf(Side side) const;
    bool WriteReports();
    RedlineInputs RedlineInputsNow() const;
    void BeginRedline();
    bool WriteRedline();
    void Open(ReportType type, const std::string& file);
    ReportModel Model() const;
    bool WriteJson();
    bool Report(const Status& status);
    bool Print();

    const CompareCommand& command_;
    ProcessState process_;
    TerminalWindow window_;
    frmCompareFiles viewer_;
    PerSide<std::string> files_;
    bool compared_ = false;
    std::optional<RedlineRun> redline_;             ///< where one was asked for
    std::vector<RedlineCertificate> certificates_;  ///< of redlines that were written
    std::vector<std::string> written_;
};

}  // namespace zorvane
