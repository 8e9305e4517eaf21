#include "find/engine/file_search.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "common/base/text_bytes.h"
#include "common/base/text_encoding.h"

namespace zorvane {
namespace {

constexpr std::int32_t kOtherFault = -1;

bool IsUtf8(std::string_view text) {
    return IsAsciiText(text) || IsValidUtf8(text);
}

}  // namespace

std::string WordsOf(FileFault fault, std::int64_t line, const EnglishTo& translate) {
    switch (fault) {
        case FileFault::None:
            break;
        case FileFault::CutLine:
            return translate("a line is longer than 64 MB and was looked through in parts");
        case FileFault::SlowLine:
            return translate("line") + " " + std::to_string(line) + ": " +
                   translate("the expression takes too long here");
    }
    return {};
}

void FoundFile::Reset() {
    FoundFile fresh;
    fresh.lines = std::move(lines);
    fresh.texts = std::move(texts);
    fresh.lines.clear();
    fresh.texts.clear();
    *this = std::move(fresh);
}

FoundFile FoundFile::Take() {
    if (!lines.empty())
        return std::move(*this);
    FoundFile taken;
    taken.path = std::move(path);
    taken.end = end;
    taken.code = code;
    taken.reason = std::move(reason);
    taken.fault = fault;
    taken.fault_line = fault_line;
    taken.hits = hits;
    taken.place = std::move(place);
    return taken;
}

FileSearch::FileSearch(const LineFinder& finder, const FileSearchRules& rules)
    : finder_(finder),
      rules_(rules),
      windows_({!finder.SuitsBytes(), rules.context > 0, rules.locale_encoding}) {}

void FileSearch::Search(OpenedFile& file, FoundFile& found, const std::function<bool()>& stop) {
    line_ = 1;
    windows_.Begin(file);
    std::string_view window;
    WindowEnd end = WindowEnd::Window;
    while ((end = windows_.Next(window, stop)) == WindowEnd::Window) {
        const std::int64_t before = found.hits;
        const bool goes_on = SearchWindow(window, found, stop);
        // Where nothing is found it does not matter what the file is.
        if (found.hits > before && window.find('\0') != std::string_view::npos) {
            end = WindowEnd::Binary;
            break;
        }
        if (!goes_on)
            break;
        if (windows_.MayGoOn())
            CountTo(window, window.size());
    }
    if (end == WindowEnd::Binary) {
        found.end = FileEnd::Binary;
        found.hits = 0;
        found.lines.clear();
        found.texts.clear();
    } else if (end == WindowEnd::Failed) {
        found.end = FileEnd::Failed;
        found.code = windows_.Error().code;
        found.reason = windows_.Error().Words();
    } else if (windows_.CutLine()) {
        Fault(FileFault::CutLine, found);
    }
}

void FileSearch::SearchText(std::string_view text, FoundFile& found,
                            const std::function<bool()>& stop) {
    line_ = 1;
    SearchWindow(text, found, stop);
}

// False when no more of the file is wanted.
bool FileSearch::SearchWindow(std::string_view window, FoundFile& found,
                              const std::function<bool()>& stop) {
    counted_ = 0;
    added_ = 0;
    wanted_behind_ = 0;
    window_text_.reset();
    finder_.Find(
        window, scratch_,
        [&](const LineHit& hit) {
            Take(window, hit, found);
            return rules_.detail != FindDetail::Whether || found.hits == 0;
        },
        stop);
    AddBehind(window, window.size(), found);
    return !stop() && (rules_.detail != FindDetail::Whether || found.hits == 0);
}

void FileSearch::Take(std::string_view window, const LineHit& hit, FoundFile& found) {
    if (hit.failed) {
        CountTo(window, hit.line_begin);
        Fault(FileFault::SlowLine, found);
        return;
    }
    ++found.hits;
    if (rules_.detail == FindDetail::Count || rules_.detail == FindDetail::Whether)
        return;
    if (rules_.context > 0) {
        AddBehind(window, hit.line_begin, found);
        AddBefore(window, hit.line_begin, found);
    }
    CountTo(window, hit.line_begin);
    FoundLine line;
    line.line = line_;
    line.begin = static_cast<std::uint32_t>(found.texts.size());
    const std::string_view before = window.substr(hit.line_begin, hit.match.begin - hit.line_begin);
    const bool whole = rules_.detail == FindDetail::Lines;
    const std::size_t item_begin = found.texts.size();
    line.column = AddText(window, before, found.texts) + 1;
    if (!whole)
        found.texts.resize(item_begin);
    const std::size_t item_at = found.texts.size();
    AddText(window, window.substr(hit.match.begin, hit.match.end - hit.match.begin), found.texts);
    line.item = static_cast<std::uint32_t>(item_at) - line.begin;
    line.item_length = static_cast<std::uint32_t>(found.texts.size() - item_at);
    if (whole && hit.line_end > hit.match.end)
        AddText(window, window.substr(hit.match.end, hit.line_end - hit.match.end), found.texts);
    line.length = static_cast<std::uint32_t>(found.texts.size()) - line.begin;
    found.lines.push_back(line);
    const std::size_t next = window.find('\n', hit.line_end);
    added_ = next == std::string_view::npos ? window.size() : next + 1;
    wanted_behind_ = rules_.context;
}

void FileSearch::Fault(FileFault fault, FoundFile& found) const {
    found.code = kOtherFault;
    found.fault = fault;
    found.fault_line = line_;
    found.reason =
        WordsOf(fault, line_, [](std::string_view english) { return std::string(english); });
}

// How many characters were added. What a window holds is asked once, at its first hit.
std::int32_t FileSearch::AddText(std::string_view window, std::string_view bytes,
                                 std::string& texts) {
    if (!window_text_)
        window_text_ = IsAsciiText(window)   ? WindowText::Ascii
                       : IsValidUtf8(window) ? WindowText::Utf8
                                             : WindowText::Other;
    if (*window_text_ != WindowText::Other || IsUtf8(bytes)) {
        texts += bytes;
        return *window_text_ == WindowText::Ascii ? static_cast<std::int32_t>(bytes.size())
                                                  : CountUtf8(bytes);
    }
    const std::string decoded = windows_.Decoded(bytes);
    texts += decoded;
    return CountUtf8(decoded);
}

// The line number is counted from hit to hit alone.
void FileSearch::CountTo(std::string_view window, std::size_t at) {
    line_ += CountLineEnds(window.substr(counted_, at - counted_));
    counted_ = at;
}

// ---- lines around ----

void FileSearch::AddLine(std::string_view window, std::size_t begin, std::size_t end,
                         FoundFile& found) {
    CountTo(window, begin);
    std::string_view bytes = window.substr(begin, end - begin);
    if (bytes.ends_with('\n'))
        bytes.remove_suffix(1);
    if (bytes.ends_with('\r'))
        bytes.remove_suffix(1);
    FoundLine line;
    line.line = line_;
    line.begin = static_cast<std::uint32_t>(found.texts.size());
    AddText(window, bytes, found.texts);
    line.length = static_cast<std::uint32_t>(found.texts.size()) - line.begin;
    found.lines.push_back(line);
}

void FileSearch::AddBehind(std::string_view window, std::size_t limit, FoundFile& found) {
    for (; wanted_behind_ > 0 && added_ < limit; --wanted_behind_) {
        const std::size_t end = window.find('\n', added_);
        const std::size_t next = end == std::string_view::npos ? window.size() : end + 1;
        AddLine(window, added_, next, found);
        added_ = next;
    }
}

void FileSearch::AddBefore(std::string_view window, std::size_t begin, FoundFile& found) {
    std::size_t first = begin;
    for (std::int32_t count = 0; count < rules_.context && first > added_; ++count) {
        const std::size_t end = first < 2 ? std::string_view::npos : window.rfind('\n', first - 2);
        first = end == std::string_view::npos ? 0 : end + 1;
    }
    first = std::max(first, added_);
    while (first < begin) {
        const std::size_t next = window.find('\n', first) + 1;
        AddLine(window, first, next, found);
        first = next;
    }
}

}  // namespace zorvane
