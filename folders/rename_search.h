// The search for renamed files beside a window that lives on meanwhile.
#pragma once

#include <atomic>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "folders/rename_finder.h"

namespace zorvane {

class RenameSearch {
  public:
    RenameSearch() = default;
    ~RenameSearch() { Stop(); }
    RenameSearch(const RenameSearch&) = delete;
    RenameSearch& operator=(const RenameSearch&) = delete;

    /// Of a finished scan, which stays as it is until the search has ended or `Stop` came back.
    void Start(const FolderScan& scan, PerSide<std::string> roots);
    void Stop();
    bool Busy() const { return thread_.joinable(); }
    /// What was found, once, when the search has ended.
    std::optional<std::vector<RenamedEntry>> Take();

  private:
    std::thread thread_;
    std::atomic<bool> stopped_{false};
    std::atomic<bool> ended_{false};
    std::vector<RenamedEntry> found_;
};

}  // namespace zorvane
