#include "find/find_rows.h"

#include <algorithm>

#include "common/platform/native_path.h"
#include "find/engine/text_windows.h"
#include "find/string_to_code.h"

namespace zorvane {
namespace {

constexpr std::int32_t kAround = 100;  // lines that are this far away are not shown
constexpr std::int32_t kAbove = 3;     // lines in sight above the hit

constexpr std::size_t kMostOfLine = 10'000;  // of a line without breaks nobody reads more
constexpr const char* kDots = "\xE2\x80\xA6";

bool InsideCharacter(std::string_view text, std::size_t at) {
    constexpr int kTop = 0xC0;
    constexpr int kFollows = 0x80;
    return at < text.size() && (static_cast<unsigned char>(text[at]) & kTop) == kFollows;
}

// Of the character with this number, from 1.
std::size_t ByteOf(std::string_view text, std::int32_t column) {
    std::size_t at = 0;
    for (std::int32_t passed = 1; passed < column && at < text.size(); ++passed) {
        ++at;
        while (InsideCharacter(text, at))
            ++at;
    }
    return at;
}

struct CutLine {
    std::string_view text;
    bool before = false;
    bool behind = false;
};

// So much of a long line that what begins at `wanted` is in it.
CutLine Cut(std::string_view text, std::size_t wanted) {
    std::size_t begin = wanted < kMostOfLine / 2 ? 0 : wanted - kMostOfLine / 2;
    while (InsideCharacter(text, begin))
        ++begin;
    std::size_t end = std::min(begin + kMostOfLine, text.size());
    while (InsideCharacter(text, end))
        ++end;
    return {text.substr(begin, end - begin), begin > 0, end < text.size()};
}

void AddRow(std::string_view text, std::int64_t number, const ShownHit& hit, ContextRows& context) {
    if (text.ends_with('\r'))
        text.remove_suffix(1);
    if (context.rows.empty())
        context.first_line = number;
    const bool marked = number == hit.line;
    const std::size_t wanted = marked ? ByteOf(text, hit.column) : 0;
    const CutLine line = Cut(text, text.size() > kMostOfLine ? wanted : 0);
    std::string row = line.before ? kDots + std::string(" ") : std::string();
    if (marked) {
        const std::size_t begin = wanted - static_cast<std::size_t>(line.text.data() - text.data());
        const CodePlace place = PlaceInCode(line.text, begin, hit.item);
        context.marked_text = line.text;
        context.marked = static_cast<std::int32_t>(context.rows.size());
        context.item_at = place.at < 0 ? -1 : place.at + static_cast<std::int32_t>(row.size());
        context.item_length = place.length;
    }
    row += StringToCode(line.text);
    if (line.behind)
        row += std::string(" ") + kDots;
    context.rows.push_back(std::move(row));
}

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

bool ReadContextRows(const std::string& sFile, const ShownHit& hit,
                     const std::string& locale_encoding, const std::function<bool()>& stop,
                     ContextRows& context) {
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
    std::string_view window;
    WindowEnd end = WindowEnd::Window;
    std::int64_t number = 0;
    const std::int64_t last = std::int64_t{hit.line} + kAround - 1;
    while (number < last && !stop() && (end = windows.Next(window, stop)) == WindowEnd::Window) {
        while (number < last && !window.empty()) {
            const std::size_t size = std::min(window.find('\n'), window.size());
            std::string_view text = window.substr(0, size);
            window.remove_prefix(std::min(size + 1, window.size()));
            if (++number > std::int64_t{hit.line} - kAround)
                AddRow(text, number, hit, context);
        }
    }
    context.top = std::max(0, context.marked - kAbove);
    return !stop() && (end == WindowEnd::Window || end == WindowEnd::End);
}

}  // namespace zorvane
