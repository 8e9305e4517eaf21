// What the readers of all formats share: how they end, and how they tell of their progress.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include "load/conversion_error.h"

namespace zorvane {

/// How a reading ended. `detail` is for a user, in one line, without the file's name.
struct [[nodiscard]] ReadEnd {
    ReadError error = ReadError::None;
    std::string detail;

    bool ok() const { return error == ReadError::None; }
    static ReadEnd Ok() { return {}; }
    static ReadEnd Fault(ReadError error, std::string detail = {}) {
        return {error, std::move(detail)};
    }
    friend bool operator==(const ReadEnd&, const ReadEnd&) = default;
};

/// Told between pages, sheets, slides or chunks. A reader that gets false ends at once with
/// `ReadError::Cancelled`.
class ReadMonitor {
  public:
    virtual ~ReadMonitor() = default;
    virtual bool Progress(std::int64_t done, std::int64_t total) = 0;
};

/// Bounds that hold for every reader, so that no input makes it take the machine.
inline constexpr std::size_t kMaxPartBytes = std::size_t{192} << 20;   ///< one unpacked part
inline constexpr std::size_t kMaxPackageBytes = std::size_t{2} << 30;  ///< all parts together
inline constexpr int kMaxDepth = 256;                                  ///< nesting of elements

}  // namespace zorvane
