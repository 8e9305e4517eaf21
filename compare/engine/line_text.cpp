#include "compare/engine/line_text.h"

#include <algorithm>
#include <cstring>

#include "common/base/text_encoding.h"
#include "common/base/unit_search.h"

namespace zorvane {
namespace {

// More than prose needs: memory that is not touched costs nothing, moving a grown list does.
constexpr std::size_t kShortLine = 8;

template <class View, class Find>
void CutAtBreaks(View text, std::vector<std::uint32_t>& starts, Find find_feed,
                 RunWatcher* watcher = nullptr) {
    starts.clear();
    starts.reserve(text.size() / kShortLine + 2);
    starts.push_back(0);
    StopCheck stop(watcher);
    std::size_t at = 0;
    while (at < text.size() && stop.KeepGoing()) {
        const std::size_t feed = find_feed(text, at);
        if (feed == View::npos)
            break;
        at = feed + 1;
        if (feed > 0 && text[feed - 1] == '\r')
            starts.push_back(static_cast<std::uint32_t>(at));
    }
}

template <class View>
View WithoutEnd(View line) {
    if (line.size() >= 2 && line[line.size() - 2] == '\r' && line[line.size() - 1] == '\n')
        line.remove_suffix(2);
    return line;
}

std::string_view BytesOf(std::u16string_view text) {
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): compared and hashed as bytes
    return {reinterpret_cast<const char*>(text.data()), text.size() * 2};
}

}  // namespace

void LineText::SplitFile(std::string_view utf8) {
    utf8_ = utf8;
    utf16_ = {};
    wide_ = false;
    CutAtBreaks(utf8, starts_, [](std::string_view text, std::size_t at) {
        const void* feed = std::memchr(text.data() + at, '\n', text.size() - at);
        return feed == nullptr
                   ? std::string_view::npos
                   : static_cast<std::size_t>(static_cast<const char*>(feed) - text.data());
    });
    if (starts_.back() != utf8.size())
        starts_.push_back(static_cast<std::uint32_t>(utf8.size()));
}

void LineText::SplitEditor(std::u16string_view utf16, RunWatcher* watcher) {
    utf8_ = {};
    utf16_ = utf16;
    wide_ = true;
    CutAtBreaks(
        utf16, starts_,
        [](std::u16string_view text, std::size_t at) { return FindUnit(text, u'\n', at); },
        watcher);
    starts_.push_back(static_cast<std::uint32_t>(utf16.size()));
}

std::u16string_view LineText::Wide(std::int32_t line) const {
    const auto at = static_cast<std::size_t>(line);
    return WithoutEnd(utf16_.substr(starts_[at], starts_[at + 1] - starts_[at]));
}

std::string_view LineText::Narrow(std::int32_t line) const {
    const auto at = static_cast<std::size_t>(line);
    return WithoutEnd(utf8_.substr(starts_[at], starts_[at + 1] - starts_[at]));
}

std::string_view LineText::Bytes(std::int32_t line) const {
    return wide_ ? BytesOf(Wide(line)) : Narrow(line);
}

std::string_view LineText::AllBytes() const {
    return wide_ ? BytesOf(utf16_) : utf8_;
}

std::u16string_view LineText::Text(std::int32_t line, std::u16string& buffer) const {
    if (wide_)
        return Wide(line);
    buffer = ToUtf16(Narrow(line));
    return buffer;
}

void LineText::AppendUtf8(std::int32_t line, std::string& out) const {
    if (wide_)
        zorvane::AppendUtf8(Wide(line), out);
    else
        out.append(Narrow(line));
}

std::string LineText::Utf8(std::int32_t line) const {
    std::string text;
    AppendUtf8(line, text);
    return text;
}

std::u16string_view LineText::Joined(std::int32_t first, std::int32_t end,
                                     std::u16string& buffer) const {
    if (wide_) {
        // An empty last paragraph has no break, so the one in front of it must stay.
        const std::u16string_view last = Wide(end - 1);
        const char16_t* begin = utf16_.data() + starts_[static_cast<std::size_t>(first)];
        return {begin, static_cast<std::size_t>(last.data() + last.size() - begin)};
    }
    buffer = Joined(first, end);
    return buffer;
}

std::u16string LineText::Joined(std::int32_t first, std::int32_t end) const {
    std::u16string text;
    std::u16string buffer;
    for (std::int32_t line = first; line < end; ++line) {
        if (line > first)
            text += u"\r\n";
        text += Text(line, buffer);
    }
    return text;
}

}  // namespace zorvane
