// A path is kept as the user gave it; `\` and `/` both separate. This unit alone turns it into the
// system's form, at the moment a file is touched.
#pragma once

#include <string>
#include <string_view>

namespace zorvane {

/// `\` becomes `/`, a drive such as "C:" in front of a separator is dropped. A path that exists as
/// it stands (a POSIX name may hold a `\`) is left alone.
std::string NativePath(std::string_view path);

constexpr bool IsPathSeparator(char character) {
    return character == '\\' || character == '/';
}
/// Joined by one separator of the kind that `folder` uses ("/" if it uses none).
std::string JoinPath(std::string_view folder, std::string_view name);
/// What follows the last separator.
std::string_view FileNameOf(std::string_view path);
/// Up to the last separator, without it unless it is the root's; empty if there is none.
std::string_view ParentOf(std::string_view path);
/// What follows the last "." of the file's name; empty if there is none.
std::string_view ExtensionOf(std::string_view path);
bool IsAbsolutePath(std::string_view path);
/// Against the current directory; "." and ".." are resolved by text alone.
std::string AbsolutePath(std::string_view path);
/// True when both name one file on the disk now, by whatever road.
bool IsSameFile(std::string_view first, std::string_view second);

/// The name behind links, also that of a file that is still to come; `native` itself for what is no
/// link, or leads to something without a name such as a pipe.
std::string BehindLinks(const std::string& native);

}  // namespace zorvane
