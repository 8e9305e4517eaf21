#include "common/file_utilities.h"

#include <array>
#include <ctime>
#include <filesystem>
#include <random>
#include <sys/stat.h>
#include <unistd.h>

#include "common/base/text_encoding.h"
#include "common/platform/files.h"
#include "common/platform/native_path.h"
#include "common/platform/services.h"

namespace zorvane {
namespace {

using namespace std::chrono_literals;

constexpr int kRetries = 20;
constexpr std::size_t kNameDigits = 8;

bool DeleteOnce(const std::string& native) {
    if (unlink(native.c_str()) == 0)
        return true;
    // A write-protected file can be kept by its file system; what a link leads to is not touched.
    struct stat facts {};
    if (lstat(native.c_str(), &facts) != 0 || !S_ISREG(facts.st_mode) ||
        chmod(native.c_str(), facts.st_mode | S_IWUSR) != 0)
        return false;
    return unlink(native.c_str()) == 0;
}

}  // namespace

bool bFileExists(std::string_view sPath) {
    struct stat facts {};
    const std::string_view trimmed = Trim(sPath);
    return !trimmed.empty() && stat(NativePath(trimmed).c_str(), &facts) == 0 &&
           !S_ISDIR(facts.st_mode);
}

bool bDirectoryExists(std::string_view sPath) {
    struct stat facts {};
    return !sPath.empty() && stat(NativePath(sPath).c_str(), &facts) == 0 && S_ISDIR(facts.st_mode);
}

std::string sStripTrailingBackslash(std::string_view sPath) {
    if (!sPath.empty() && IsPathSeparator(sPath.back()))
        sPath.remove_suffix(1);
    return std::string(sPath);
}

std::string sGetFolderPart(std::string_view sPath) {
    const std::size_t last = sPath.find_last_of("\\/");
    return std::string(last == std::string_view::npos ? "" : sPath.substr(0, last + 1));
}

void MakeDirectoryTree(std::string_view sPath) {
    std::error_code error;
    std::filesystem::create_directories(NativePath(sPath), error);
}

bool bFolderIsWritable(std::string_view sPath, Clock& clock) {
    std::random_device random;
    const std::string file = JoinPath(sPath, "zv" + std::to_string(random()) + ".tmp");
    return WriteWholeFile(file, "Hello World\r\n").ok() && DeleteFileWithRetry(clock, file);
}

bool DeleteFileWithRetry(Clock& clock, const std::string& sPath) {
    if (!bFileExists(sPath))
        return true;
    const std::string native = NativePath(Trim(sPath));
    for (int attempt = 0; attempt <= kRetries; ++attempt) {
        if (attempt > 0)
            clock.Sleep(1000ms);
        if (DeleteOnce(native))
            return true;
    }
    return false;
}

Status CopyFileReplacingReadOnly(const std::string& sFrom, const std::string& sTo,
                                 std::uint32_t mode, RunWatcher* watcher) {
    const Result<std::string> bytes = ReadWholeFile(sFrom, watcher);
    if (!bytes.ok())
        return bytes.failure();
    Status copied = ReplaceFile(sTo, bytes.value(), mode, watcher);
    const std::string native = NativePath(sTo);
    struct stat facts {};
    if (copied.ok() || !KeepGoing(watcher) || stat(native.c_str(), &facts) != 0 ||
        (facts.st_mode & S_IWUSR) != 0)
        return copied;
    if (chmod(native.c_str(), facts.st_mode | S_IWUSR) != 0)
        return copied;
    Status again = ReplaceFile(sTo, bytes.value(), mode, watcher);
    const mode_t kept = mode == 0666 ? facts.st_mode : facts.st_mode & mode;
    chmod(native.c_str(), kept);
    return again;
}

Status MoveFileByCopy(const std::string& sFrom, const std::string& sTo) {
    Status copied = CopyFileReplacingReadOnly(sFrom, sTo);
    if (!copied.ok())
        return copied;
    if (DeleteOnce(NativePath(sFrom)))
        return Status::Ok();
    return Failure{sFrom + ": copied, but cannot be deleted"};
}

std::string sMakeTempFileName(TempFiles& temp_files, std::string_view sFolder,
                              std::string_view sPrefix, std::string_view sExtension) {
    const std::string prefix(Trim(sPrefix));
    std::string extension(Trim(sExtension));
    if (extension.empty())
        extension = "TMP";
    std::string folder(sFolder);
    if (folder.empty()) {
        const Result<std::string> temporary = temp_files.Folder();
        if (!temporary.ok())
            return {};
        folder = temporary.value();
    }
    const std::size_t digits = prefix.size() >= kNameDigits ? 0 : kNameDigits - prefix.size();
    std::size_t attempts = 1;
    for (std::size_t i = 0; i < digits; ++i)
        attempts *= 10;
    std::mt19937 random(std::random_device{}());
    for (std::size_t attempt = 0; attempt < attempts; ++attempt) {
        const std::string number = std::to_string(100000000U + random() % 100000000U).substr(1);
        std::string name = JoinPath(folder, prefix + number.substr(0, digits) + "." + extension);
        if (!bFileExists(name))
            return name;
    }
    return {};
}

std::string GetTempNameWithDocExtension(TempFiles& temp_files, std::string_view sPrefix) {
    const Result<std::string> name = temp_files.NewName(sPrefix.substr(0, 3), "DOC");
    return name.ok() ? name.value() : std::string();
}

std::string sMakeTimeStamp(std::chrono::system_clock::time_point time) {
    const std::time_t seconds = std::chrono::system_clock::to_time_t(time);
    std::tm fields{};
    localtime_r(&seconds, &fields);
    std::array<char, 32> text{};
    const std::size_t size = std::strftime(text.data(), text.size(), "%Y/%m/%d %H:%M:%S", &fields);
    return {text.data(), size};
}

Result<std::chrono::system_clock::time_point> ParseTimeStamp(const std::string& stamp) {
    std::tm fields{};
    const char* end = strptime(stamp.c_str(), "%Y/%m/%d %H:%M:%S", &fields);
    if (end == nullptr || *end != '\0')
        return Failure{stamp + ": not a time in the form year/month/day hour:minute:second"};
    fields.tm_isdst = -1;
    return std::chrono::system_clock::from_time_t(std::mktime(&fields));
}

}  // namespace zorvane
