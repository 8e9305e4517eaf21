// What a process that reads a hostile document may still do: compute, read what it was handed, and
// answer. A fault in a library costs one document and nothing else. The steps are taken in the
// order of this header, each is checked alone, and they overlap on purpose.
#pragma once

#include <cstddef>
#include <cstdint>

#include "common/base/result.h"

namespace zorvane {

class OpenTables;
struct FolderRights;

/// First of all: ends this process together with the one that started it, closes it to others of
/// the same user, and lets it gain no rights. False when the starter is gone already.
[[nodiscard]] bool CloseToOthers();

struct ProcessLimits {
    std::uint64_t memory = 0;       ///< bytes of its own from here on
    std::uint64_t file_bytes = 0;   ///< size of any file that it writes
    std::uint64_t cpu_seconds = 0;  ///< of the processor
    int highest_file = -1;          ///< the highest descriptor in use; below 0: no limit
    bool may_start_threads = false;
};
/// An allocation, a write or an open file beyond fails; processor time beyond ends the process.
void SetLimits(const ProcessLimits& limits);

/// From here on no file can be opened, no program or thread started, nobody reached. A read-only
/// open of one of `tables`, which outlive the process's work, gives what was opened before. A
/// forbidden call ends the process, after a message on standard input that holds its number as
/// "call"; a harmless one fails. On failure nothing may be read: the system offers no filter.
Status EnterReaderSandbox(const OpenTables& tables);

/// For an office suite, which starts threads and looks for files: those of `rights` and no others,
/// no network, no other program unless `may_start_programs`. Landlock has to be there.
Status EnterOfficeSandbox(const FolderRights& rights, bool may_start_programs);

}  // namespace zorvane
