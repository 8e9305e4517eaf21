// Writes redlines with tracked changes of two files.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "common/base/result.h"
#include "common/base/run_watcher.h"
#include "common/base/side.h"
#include "compare/document/rich_text.h"
#include "load/conversion_message.h"
#include "load/redline_certificate.h"

namespace zorvane {

class ConversionService;
struct ProcessState;

struct RedlineOptions {
    std::vector<std::string> files;  ///< to be written
    std::string author;              ///< empty: the program's name
    std::string date;                ///< "2026-01-31T12:00:00Z"; empty: now, or SOURCE_DATE_EPOCH
    std::int32_t id_prefix = 0;
    bool track_formatting = false;
    bool keep_tracked = false;
    bool no_verify = false;
    friend bool operator==(const RedlineOptions&, const RedlineOptions&) = default;
};

/// A document in which a word processor accepts and rejects changes: .docx or .odt.
bool IsRedlineName(const std::string& file);
/// The latter; a redline of any other name is a .docx inside.
bool IsOpenRedline(const std::string& file);
/// The same name with an extension that a redline may have.
std::string RedlineNameFor(const std::string& file);

/// As a revision's date is written. `epoch` is what SOURCE_DATE_EPOCH holds and goes before `now`,
/// seconds since 1970.
Result<std::string> RevisionDate(const RedlineOptions& options,
                                 const std::optional<std::string>& epoch, std::int64_t now);

/// Two files, as the user named them, what opens them, and what was compared.
struct RedlineInputs {
    PerSide<std::string> files;
    PerSide<std::string> passwords;
    PerSide<std::shared_ptr<const RichText>> texts{};
    /// Laid out as it was compared: sheets, of which a compare takes some and makes columns.
    PerSide<bool> as_compared{false, false};
};

/// All redlines of one pair.
class RedlineRun {
  public:
    /// `process` is borrowed.
    RedlineRun(ProcessState& process, RedlineOptions options);
    ~RedlineRun();

    /// Starts what `Write` will be asked for, beside a compare that needs the same files. Nothing
    /// is written, and who never asks has lost a little time. The texts are not known yet.
    void Begin(const RedlineInputs& inputs);
    /// A certificate for each kind of file that was written. On failure none has been written or
    /// changed. Who watches may stop it.
    Result<std::vector<RedlineCertificate>> Write(const RedlineInputs& inputs,
                                                  RunWatcher* watcher = nullptr);

  private:
    ConversionMessage JobFor(const RedlineInputs& inputs, bool open_document) const;
    std::vector<std::string> Targets(bool open_document) const;

    ProcessState& process_;
    RedlineOptions options_;
    Result<std::string> date_;
    std::unique_ptr<ConversionService> service_;
};

}  // namespace zorvane
