// Writes redlines with tracked changes of two files.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "common/base/result.h"
#include "common/base/run_watcher.h"
#include "common/base/side.h"

namespace zorvane {

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

/// Two files, as the user named them, and what opens them.
struct RedlineInputs {
    PerSide<std::string> files;
    PerSide<std::string> passwords;
};

/// The certificate, for people. On failure no file has been written or changed. Who watches may
/// stop it.
Result<std::string> WriteRedlines(ProcessState& process, const RedlineOptions& options,
                                  const RedlineInputs& inputs, RunWatcher* watcher = nullptr);

}  // namespace zorvane
