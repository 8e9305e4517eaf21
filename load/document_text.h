// The text of a document as a search reads it, and where in the document its lines stand.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace zorvane {

enum class PlaceKind : std::uint8_t { Page, Slide, Sheet };

/// A part of a document, from its first line to that of the next.
struct TextPlace {
    PlaceKind kind = PlaceKind::Page;
    std::int64_t line = 1;  ///< its first, from 1
    std::string name;       ///< a number, or a sheet's name
    friend bool operator==(const TextPlace&, const TextPlace&) = default;
};

struct DocumentText {
    std::string text;  ///< UTF-8, lines ended by LF
    std::vector<TextPlace> places;
    friend bool operator==(const DocumentText&, const DocumentText&) = default;
};

/// The text of an editor as a search and a Unix tool want it: lines ended by LF, those in a
/// paragraph too, the cells of a row parted by tabs.
std::string PlainLines(std::u16string text);

/// The form in which a text comes out of a loader, told apart from its places.
enum class PlaceMarks {
    None,
    FormFeeds,     ///< one in front of each page but the first
    SlideNumbers,  ///< a line for each slide and shape, which go
    SheetNames     ///< a line for each sheet, which stays
};
DocumentText WithPlaces(std::string text, PlaceMarks marks);

/// "page 3", "slide 2", "Costs!B7", or "Costs" for a sheet's head. Asked for lines in any order,
/// fastest from first to last. For one thread; `document` outlives it.
class PlaceFinder {
  public:
    explicit PlaceFinder(const DocumentText& document) : document_(document) {}
    /// `column`: in characters from 1. Empty where nothing is known.
    std::string PlaceOf(std::int64_t line, std::int32_t column);

  private:
    std::string CellOf(const TextPlace& sheet, std::int64_t line, std::int32_t column);
    void Step();
    void GoTo(std::int64_t line, std::int64_t sheet_line);

    const DocumentText& document_;
    std::int64_t line_ = 1;  // that begins at `at_`
    std::size_t at_ = 0;
    std::int64_t row_ = 0;    // of the sheet, at `line_`
    std::size_t row_at_ = 0;  // where that row begins
    bool quoted_ = false;     // a cell that holds a line end goes on
};

}  // namespace zorvane
