#include "load/readers/sandbox/open_tables.h"

#include <algorithm>
#include <cstring>
#include <fcntl.h>
#include <filesystem>

namespace zorvane {

void OpenTables::AddAllBelow(const std::string& folder) {
    constexpr std::size_t kMostTables = 900;  // a process may have 1024 files open
    namespace fs = std::filesystem;
    std::error_code error;
    fs::recursive_directory_iterator entry(folder, error);
    for (; !error && entry != fs::recursive_directory_iterator(); entry.increment(error)) {
        if (tables_.size() >= kMostTables)
            return;
        if (entry->is_directory(error))
            continue;
        const int file = open(entry->path().c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
        if (file >= 0)
            Add(entry->path(), file);
    }
}

int OpenTables::Find(const char* path) const {
    for (const Table& table : tables_) {
        if (std::strcmp(table.path.c_str(), path) == 0)
            return table.file;
    }
    return -1;
}

int OpenTables::HighestFile() const {
    int highest = -1;
    for (const Table& table : tables_)
        highest = std::max(highest, table.file);
    return highest;
}

}  // namespace zorvane
