// The settings file: private-profile reads and writes, key by key, in UTF-8.
#pragma once

#include <chrono>
#include <memory>
#include <string>
#include <string_view>

#include "common/base/result.h"

namespace zorvane {

/// One INI file. Sections and keys are found without regard to case; the first of two equal keys
/// counts; a value loses blanks around it and one pair of quotes, and a read is cut at the given
/// length. Unknown lines, comments and the order of keys stay as they are.
class IniProfile {
  public:
    virtual ~IniProfile() = default;
    /// Values are read at most 499 bytes long unless told otherwise, and cut at a whole character.
    virtual std::string Read(std::string_view section, std::string_view key,
                             std::string_view default_value, std::size_t max_bytes = 499) = 0;
    /// In memory until `Flush`; a read sees it at once. A line break ends a value.
    virtual void Write(std::string_view section, std::string_view key, std::string_view value) = 0;
    /// Writes the pending keys, and only those, into the file as it then stands: under a lock,
    /// whole to a new file of mode 0600, renamed over the old one. So the last writer wins key by
    /// key. What others wrote since is read from then on. After a failure the keys stay pending.
    virtual Status Flush() = 0;
    /// Reads the file again if it is another one than was read, keeping what is pending. Between
    /// two calls, and flushes, every read sees one state of the file.
    virtual void Refresh() = 0;
    /// The last flush failed because another program held the lock.
    virtual bool IsLockedElsewhere() const = 0;
};

/// How long a flush waits for another program's lock. A program that writes holds it for
/// milliseconds; one that hangs must not take this one with it.
constexpr std::chrono::milliseconds kSettingsLockPatience{5000};

/// Missing file: every read gives its default, the first flush makes it. Read at first use. A
/// profile that waited in vain once only tries from then on, until it got the lock again.
std::unique_ptr<IniProfile> OpenIniProfile(
    const std::string& path, std::chrono::milliseconds lock_patience = kSettingsLockPatience);
/// Lives in memory; for tests and for runs that shall not touch the user's settings.
std::unique_ptr<IniProfile> MakeMemoryIniProfile();

}  // namespace zorvane
