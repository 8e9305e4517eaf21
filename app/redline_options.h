// What `zorvane compare` may be told of a redline with tracked changes.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "common/base/result.h"

namespace CLI {
class App;
}

namespace zorvane {

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

void AddRedlineOptions(CLI::App& app, RedlineOptions& options);

/// A document in which a word processor accepts and rejects changes: .docx or .odt.
bool IsRedlineName(const std::string& file);
/// The latter; a redline of any other name is a .docx inside.
bool IsOpenRedline(const std::string& file);

/// As a revision's date is written. `epoch` is what SOURCE_DATE_EPOCH holds and goes before `now`,
/// seconds since 1970.
Result<std::string> RevisionDate(const RedlineOptions& options,
                                 const std::optional<std::string>& epoch, std::int64_t now);

}  // namespace zorvane
