// The folder of a process's temporary files.
#pragma once

#include <atomic>
#include <cstdint>
#include <mutex>
#include <string>
#include <string_view>

#include "common/platform/file_descriptor.h"
#include "common/platform/services.h"

namespace zorvane {

/// Its owner holds a lock in it, so that what a killed process left is told from a living one's;
/// the first folder that a process makes removes the dead ones of the same user. May be asked by
/// two threads at once.
class PrivateTempFiles : public TempFiles {
  public:
    ~PrivateTempFiles() override;
    Result<std::string> Folder() override;
    Result<std::string> NewName(std::string_view prefix, std::string_view extension) override;
    Result<std::string> LastingFolder() override;

  private:
    std::mutex lock_;
    std::string folder_;
    FileDescriptor owner_;
    std::atomic<std::int32_t> count_{0};
};

}  // namespace zorvane
