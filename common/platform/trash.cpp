#include "common/platform/trash.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <ctime>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

#include "common/base/ascii.h"
#include "common/platform/file_descriptor.h"
#include "common/platform/native_path.h"
#include "common/platform/system_failure.h"
#include "common/platform/terminal.h"

namespace zorvane {
namespace {

namespace fs = std::filesystem;

// As addresses of files are written.
std::string Escaped(const std::string& path) {
    constexpr const char* kDigits = "0123456789ABCDEF";
    std::string escaped;
    for (const char character : path) {
        const auto byte = static_cast<unsigned char>(character);
        const bool plain = IsAsciiLetter(byte) || IsAsciiDigit(byte) ||
                           std::string_view("/.-_~").find(character) != std::string_view::npos;
        if (plain)
            escaped += character;
        else
            escaped.append({'%', kDigits[byte >> 4U], kDigits[byte & 15U]});
    }
    return escaped;
}

std::string LocalTime() {
    const std::time_t now = std::time(nullptr);
    std::tm parts{};
    localtime_r(&now, &parts);
    std::array<char, 32> text{};
    std::strftime(text.data(), text.size(), "%Y-%m-%dT%H:%M:%S", &parts);
    return text.data();
}

bool OnOneDisk(const std::string& one, const std::string& two) {
    struct stat first {};
    struct stat second {};
    return lstat(one.c_str(), &first) == 0 && stat(two.c_str(), &second) == 0 &&
           first.st_dev == second.st_dev;
}

// The uppermost folder of the disk that the file lies on.
std::string TopOf(const std::string& file) {
    fs::path top = fs::path(file).parent_path();
    while (top.has_relative_path() && OnOneDisk(file, top.parent_path().string()))
        top = top.parent_path();
    return top.string();
}

bool MakePrivate(const std::string& folder) {
    std::error_code error;
    fs::create_directories(fs::path(folder).parent_path(), error);
    return mkdir(folder.c_str(), 0700) == 0 || errno == EEXIST;
}

Status MakeTrash(const std::string& trash) {
    for (const std::string& folder : {trash, trash + "/files", trash + "/info"}) {
        if (!MakePrivate(folder))
            return SystemFailure(folder);
    }
    return Status::Ok();
}

// The note of where it came from is made first: its name is then this file's in the trash.
Status PutInto(const std::string& trash, const std::string& file, const std::string& told_as) {
    if (Status made = MakeTrash(trash); !made.ok())
        return made;
    const std::string name = fs::path(file).filename().string();
    constexpr int kTries = 10000;
    for (int number = 1; number < kTries; ++number) {
        const std::string own = number == 1 ? name : name + "." + std::to_string(number);
        const std::string info = trash + "/info/" + own + ".trashinfo";
        FileDescriptor note(open(info.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
        if (!note.IsOpen() && errno == EEXIST)
            continue;
        if (!note.IsOpen())
            return SystemFailure(info);
        struct stat there {};
        const std::string place = trash + "/files/" + own;
        const bool free = lstat(place.c_str(), &there) != 0;
        const bool noted = free && WriteAll(note.Get(), "[Trash Info]\nPath=" + Escaped(told_as) +
                                                            "\nDeletionDate=" + LocalTime() + "\n");
        if (noted && note.Close() && rename(file.c_str(), place.c_str()) == 0)
            return Status::Ok();
        const int code = errno;
        unlink(info.c_str());
        if (free)
            return SystemFailure(file, code);
    }
    return SystemFailure(file, EEXIST);
}

}  // namespace

std::string UserDataHome() {
    const std::string data = Environment("XDG_DATA_HOME").value_or("");
    return data.empty() ? Environment("HOME").value_or("") + "/.local/share" : data;
}

Status MoveToTrash(const std::string& path, const std::string& data_home) {
    const std::string file = AbsolutePath(NativePath(path));
    struct stat told {};
    if (lstat(file.c_str(), &told) != 0)
        return SystemFailure(path);
    const std::string home = data_home + "/Trash";
    if (!MakePrivate(home))
        return SystemFailure(home);
    if (OnOneDisk(file, home))
        return PutInto(home, file, file);
    const std::string top = TopOf(file);
    const std::string own = (top == "/" ? "" : top) + "/.Trash-" + std::to_string(getuid());
    return PutInto(own, file, fs::path(file).lexically_relative(top).string());
}

}  // namespace zorvane
