#include "find/find_rows.h"

#include <algorithm>

#include "common/platform/native_path.h"
#include "find/engine/text_windows.h"
#include "find/string_to_code.h"

namespace zorvane {
namespace {

constexpr std::int32_t kAround = 100;  // lines that are this far away are not shown
constexpr std::int32_t kAbove = 3;     // lines in sight above the hit

}  // namespace

std::string HitRows::Cell(std::int32_t row, Column column) const {
    std::string file;
    std::string item;
    std::int32_t line = 0;
    std::int32_t place = 0;
    if (row >= count_ || !engine_.GetHit(row, file, line, place, item))
        return {};
    switch (column) {
        case Number:
            return std::to_string(row + 1);
        case File:
            return file;
        case Line:
            return std::to_string(line);
        case Col:
            return std::to_string(place);
        case Item:
            return item;
        case kColumns:
            break;
    }
    return {};
}

bool ReadContextRows(const std::string& sFile, std::int32_t line,
                     const std::string& locale_encoding, ContextRows& context) {
    context = {};
    const std::string path = AbsolutePath(NativePath(sFile));
    const std::string name(FileNameOf(path));
    std::unique_ptr<FolderHandle> folder;
    std::unique_ptr<OpenedFile> file;
    if (OpenFolder(path.substr(0, path.size() - name.size()), folder) ||
        folder->OpenFile(name.c_str(), FollowLink::Yes, file))
        return false;
    TextWindows windows({true, false, locale_encoding});
    windows.Begin(*file);
    const auto never = [] { return false; };
    std::string_view window;
    WindowEnd end = WindowEnd::Window;
    std::int64_t number = 0;
    const std::int64_t last = std::int64_t{line} + kAround - 1;
    while (number < last && (end = windows.Next(window, never)) == WindowEnd::Window) {
        while (number < last && !window.empty()) {
            const std::size_t size = std::min(window.find('\n'), window.size());
            std::string_view text = window.substr(0, size);
            window.remove_prefix(std::min(size + 1, window.size()));
            ++number;
            if (number <= std::int64_t{line} - kAround)
                continue;
            if (text.ends_with('\r'))
                text.remove_suffix(1);
            if (number == line)
                context.marked = static_cast<std::int32_t>(context.rows.size());
            if (context.rows.empty())
                context.first_line = number;
            context.rows.push_back(StringToCode(text));
        }
    }
    context.top = std::max(0, context.marked - kAbove);
    return end == WindowEnd::Window || end == WindowEnd::End;
}

}  // namespace zorvane
