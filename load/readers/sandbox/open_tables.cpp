#include "load/readers/sandbox/open_tables.h"

#include <algorithm>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>

namespace zorvane {

namespace {

constexpr std::size_t kMostTables = 900;  // a process may have 1024 files open
constexpr int kDeepest = 3;               // folders within folders

struct FolderCloser {
    void operator()(DIR* folder) const { closedir(folder); }
};

// Not every file system tells it with the name.
bool IsFolder(unsigned char told, int file) {
    struct stat facts {};
    return told == DT_DIR ||
           (told == DT_UNKNOWN && fstat(file, &facts) == 0 && S_ISDIR(facts.st_mode));
}

// From folder to folder by descriptor, since hundreds of whole paths take their time.
void AddBelow(const std::string& path, int folder, int depth, OpenTables& tables) {
    const std::unique_ptr<DIR, FolderCloser> entries(fdopendir(folder));
    if (!entries) {
        close(folder);
        return;
    }
    while (const dirent* entry = readdir(entries.get())) {
        const std::string name = entry->d_name;
        if (name == "." || name == ".." || tables.Count() >= kMostTables)
            continue;
        const int file = openat(folder, name.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
        if (file < 0)
            continue;
        const bool is_folder = IsFolder(entry->d_type, file);
        if (is_folder && depth > 0)
            AddBelow(path + "/" + name, file, depth - 1, tables);
        else if (is_folder)
            close(file);
        else
            tables.Add(path + "/" + name, file);
    }
}

}  // namespace

void OpenTables::AddAllBelow(const std::string& folder) {
    tables_.reserve(kMostTables / 2);
    const int file = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (file >= 0)
        AddBelow(folder, file, kDeepest, *this);
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
