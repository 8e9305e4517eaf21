// A folder that an office suite keeps its settings and its session in.
#pragma once

#include <string>

#include "common/platform/file_descriptor.h"

namespace zorvane {

/// One that no other worker of this process uses, for as long as it lives: a second session in the
/// same folder empties it under the first.
class OfficeProfile {
  public:
    /// Nothing is taken yet.
    OfficeProfile() = default;
    /// The first free one in `parent`, so that the settings of an ended session serve the next.
    /// Empty where none can be taken. The same folder from the second call on.
    const std::string& Take(const std::string& parent);

  private:
    std::string folder_;
    FileDescriptor lock_;
};

}  // namespace zorvane
