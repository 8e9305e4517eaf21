#include "common/platform/native_path.h"

#include <filesystem>

#include "common/base/ascii.h"
#include "common/base/text_encoding.h"

namespace zorvane {
namespace {

constexpr std::string_view kSeparators = "\\/";

bool ExistsAsItStands(const std::string& path) {
    std::error_code error;
    return std::filesystem::exists(std::filesystem::symlink_status(path, error));
}

bool HasDrive(std::string_view path) {
    return path.size() >= 3 && IsAsciiLetter(path[0]) && path[1] == ':' && IsPathSeparator(path[2]);
}

bool IsLink(const std::string& native) {
    std::error_code error;
    return std::filesystem::is_symlink(native, error);
}

// The name that a link gives to a file that is still to come.
std::string EndOfLinks(std::filesystem::path place) {
    constexpr int kMostLinks = 40;  // as the system
    std::error_code error;
    for (int links = 0; links < kMostLinks && IsLink(place.string()); ++links)
        place = place.parent_path() / std::filesystem::read_symlink(place, error);
    return place.string();
}

}  // namespace

std::string NativePath(std::string_view path) {
    std::string native(path);
    if (native.find('\\') == std::string::npos && !HasDrive(path))
        return native;
    if (ExistsAsItStands(native))
        return native;
    if (HasDrive(path))
        native.erase(0, 2);
    for (char& character : native) {
        if (character == '\\')
            character = '/';
    }
    return native;
}

std::string JoinPath(std::string_view folder, std::string_view name) {
    if (folder.empty())
        return std::string(name);
    std::string joined(folder);
    if (!IsPathSeparator(joined.back()))
        joined += folder.find('/') == std::string_view::npos &&
                          folder.find('\\') != std::string_view::npos
                      ? '\\'
                      : '/';
    return joined.append(name);
}

std::string_view FileNameOf(std::string_view path) {
    const std::size_t last = path.find_last_of(kSeparators);
    return last == std::string_view::npos ? path : path.substr(last + 1);
}

std::string_view ParentOf(std::string_view path) {
    const std::size_t last = path.find_last_of(kSeparators);
    if (last == std::string_view::npos)
        return {};
    const bool root = last == 0 || (last == 2 && HasDrive(path));  // "/" and "C:\\" stay folders
    return path.substr(0, root ? last + 1 : last);
}

std::string_view ExtensionOf(std::string_view path) {
    const std::string_view name = FileNameOf(path);
    const std::size_t dot = name.rfind('.');
    return dot == std::string_view::npos ? std::string_view() : name.substr(dot + 1);
}

bool IsAbsolutePath(std::string_view path) {
    return (!path.empty() && IsPathSeparator(path.front())) || HasDrive(path);
}

std::string AbsolutePath(std::string_view path) {
    if (IsAbsolutePath(path))
        return std::string(path);
    std::error_code error;
    const std::filesystem::path folder = std::filesystem::current_path(error);
    return (folder / NativePath(path)).lexically_normal().string();
}

bool IsSameFile(std::string_view first, std::string_view second) {
    std::error_code error;
    return std::filesystem::equivalent(NativePath(first), NativePath(second), error) && !error;
}

std::string BehindLinks(const std::string& native) {
    if (!IsLink(native))
        return native;
    std::error_code error;
    std::string target = std::filesystem::canonical(native, error).string();
    if (!error)
        return target;
    std::error_code missing;
    const bool leads_somewhere = std::filesystem::exists(native, missing);  // to a pipe, say
    return leads_somewhere || missing ? native : EndOfLinks(native);
}

}  // namespace zorvane
