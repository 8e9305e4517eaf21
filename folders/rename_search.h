// The search for renamed files beside a window that lives on meanwhile.
#pragma once

#include <atomic>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "folders/rename_finder.h"
#include "load/text_cache.h"

namespace zorvane {

struct ProcessState;

class RenameSearch {
  public:
    /// Borrowed.
    explicit RenameSearch(ProcessState& process) : process_(process) {}
    ~RenameSearch() { Stop(); }
    RenameSearch(const RenameSearch&) = delete;
    RenameSearch& operator=(const RenameSearch&) = delete;

    /// Of a finished scan, which stays as it is until the search has ended or `Stop` came back.
    /// With `documents` the texts of documents are compared too, else those of plain files alone.
    void Start(const FolderScan& scan, PerSide<std::string> roots,
               std::optional<TextCache> documents);
    void Stop();
    bool Busy() const { return thread_.joinable(); }
    /// What was found, once, when the search has ended.
    std::optional<std::vector<RenamedEntry>> Take();

  private:
    ProcessState& process_;
    std::thread thread_;
    std::atomic<bool> stopped_{false};
    std::atomic<bool> ended_{false};
    std::vector<RenamedEntry> found_;
};

}  // namespace zorvane
