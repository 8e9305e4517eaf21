// Files opened in advance, for a library that opens them by name while nothing can be opened.
#pragma once

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace zorvane {

class OpenTables {
  public:
    /// The descriptor stays open to the end of the process.
    void Add(std::string path, int file) { tables_.push_back({std::move(path), file}); }
    /// Every file below `folder`, by its full path; none for a folder that is not there.
    void AddAllBelow(const std::string& folder);

    std::size_t Count() const { return tables_.size(); }
    /// -1 for none. May be called in a signal handler.
    int Find(const char* path) const;
    /// -1 for none.
    int HighestFile() const;

  private:
    struct Table {
        std::string path;
        int file;
    };
    std::vector<Table> tables_;
};

}  // namespace zorvane
