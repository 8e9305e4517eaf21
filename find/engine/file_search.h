// One file looked through.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "common/english_to.h"
#include "common/platform/folder_handle.h"
#include "find/engine/line_finder.h"
#include "find/engine/text_windows.h"

namespace zorvane {

/// What is kept of each file.
enum class FindDetail : std::uint8_t {
    Items,   ///< each hit with its place
    Lines,   ///< with its line too
    Count,   ///< how many lines have one
    Whether  ///< whether there is one
};

/// A line with a hit, or one beside such a line.
struct FoundLine {
    std::int64_t line = 0;    ///< from 1
    std::int32_t column = 0;  ///< in characters from 1; 0 of a line without a hit
    std::uint32_t begin = 0;  ///< of its text, or of the item, in `FoundFile::texts`
    std::uint32_t length = 0;
    std::uint32_t item = 0;  ///< offset of the text found in it
    std::uint32_t item_length = 0;
};

enum class FileEnd : std::uint8_t { Searched, Binary, Failed };

/// What of a file could not be looked through.
enum class FileFault : std::uint8_t {
    None,     ///< or another one, which `reason` tells
    CutLine,  ///< was looked through in parts
    SlowLine  ///< the expression takes too long in that line
};
/// In a user's words.
std::string WordsOf(FileFault fault, std::int64_t line, const EnglishTo& translate);

/// Page, sheet and cell, or slide of a place in a document's text. Fastest from first to last; for
/// one thread at a time.
using FoundPlace = std::function<std::string(std::int64_t line, std::int32_t column)>;

struct FoundFile {
    std::string path;
    FileEnd end = FileEnd::Searched;
    std::int32_t code = 0;  ///< with a reason
    std::string reason;     ///< why it could not be read, or what of it could not be looked through
    FileFault fault = FileFault::None;
    std::int64_t fault_line = 0;
    std::int64_t hits = 0;
    std::vector<FoundLine> lines;
    std::string texts;  ///< UTF-8
    FoundPlace place;   ///< empty for what is no document

    /// As at first, with the memory of lines and texts kept.
    void Reset();
    /// What is there; the memory of lines and texts stays where they are empty.
    FoundFile Take();
    std::string_view Text(const FoundLine& line) const {
        return std::string_view(texts).substr(line.begin, line.length);
    }
    std::string_view Item(const FoundLine& line) const {
        return std::string_view(texts).substr(line.begin + line.item, line.item_length);
    }
};

struct FileSearchRules {
    FindDetail detail = FindDetail::Items;
    std::int32_t context = 0;  ///< lines around each, with `Lines`
    std::string locale_encoding;
};

/// Of one thread. `finder` outlives it.
class FileSearch {
  public:
    FileSearch(const LineFinder& finder, const FileSearchRules& rules);

    /// Fills all of `found` but its path. What was found before a stop is whole.
    void Search(OpenedFile& file, FoundFile& found, const std::function<bool()>& stop);
    void SearchText(std::string_view text, FoundFile& found, const std::function<bool()>& stop);

  private:
    bool SearchWindow(std::string_view window, FoundFile& found, const std::function<bool()>& stop);
    void Take(std::string_view window, const LineHit& hit, FoundFile& found);
    std::int32_t AddText(std::string_view window, std::string_view bytes, std::string& texts);
    void AddLine(std::string_view window, std::size_t begin, std::size_t end, FoundFile& found);
    void AddBehind(std::string_view window, std::size_t limit, FoundFile& found);
    void AddBefore(std::string_view window, std::size_t begin, FoundFile& found);
    void Fault(FileFault fault, FoundFile& found) const;
    void CountTo(std::string_view window, std::size_t at);

    const LineFinder& finder_;
    FileSearchRules rules_;
    TextWindows windows_;
    MatchScratch scratch_;
    std::int64_t line_ = 1;    // number of the line at `counted_`
    std::size_t counted_ = 0;  // a line's begin in the window
    std::size_t added_ = 0;    // behind the last line that was added
    std::int32_t wanted_behind_ = 0;
    enum class WindowText : std::uint8_t { Ascii, Utf8, Other };
    std::optional<WindowText> window_text_;
};

}  // namespace zorvane
