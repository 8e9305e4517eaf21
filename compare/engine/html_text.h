// The text cells of the HTML report: words and their marks in the document's own look, tables as
// cells.
#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>

#include "compare/engine/cut_text.h"
#include "compare/engine/report_model.h"

namespace zorvane {

/// A stretch of one side's text in one cell of the page.
struct TextPart {
    PieceKind kind = PieceKind::Same;
    std::u16string_view text;
    const DocumentLook* look = nullptr;
    std::size_t place = 0;  ///< of its first unit in the whole text of its side
};

/// How the words of a cell are marked: by their pieces, as a paragraph that stands on one side
/// only, or as one that moved.
enum class CellMark : std::uint8_t { Pieces, WholeDeleted, WholeAdded, Moved };

class HtmlText {
  public:
    /// `hand_on` is called inside long paragraphs and may take what the page holds.
    HtmlText(const ReportModel& model, std::string& page, const std::function<void()>& hand_on)
        : model_(model), page_(page), hand_on_(hand_on) {}

    /// One paragraph as it stands on `side`.
    void Paragraph(Side side, std::int32_t number, CellMark mark);
    /// The pieces of one paragraph of `text`; `paragraph` is the first of the change and `shown`
    /// the one whose look the cell has, each by side, 0 for none.
    void Pieces(const ChangeText& change, const CutText& text, std::size_t index,
                PerSide<std::int32_t> first, PerSide<std::int32_t> shown, CellMark mark);

  private:
    const ParagraphLook* LookOf(Side side, std::int32_t number) const;
    void Open(Side side, std::int32_t number, bool table);
    void Close(bool table);
    void Part(const TextPart& part, CellMark mark, bool table);
    void PutIntoCells(const TextPart& part, PerSide<std::size_t>& at);
    void Marked(const TextPart& part, CellMark mark);
    void Words(const TextPart& part);
    void Text(std::u16string_view text);
    void LookedWords(const WordsLook& look, std::u16string_view text);
    std::size_t PlaceOf(Side side, std::int32_t number) const;
    const std::string& ColumnsOf(Side side, std::int32_t number);

    /// The columns of a table are laid out once for all its rows.
    struct Table {
        std::int32_t first = 0;
        std::int32_t last = 0;
        std::string columns;
    };

    const ReportModel& model_;
    std::string& page_;
    const std::function<void()>& hand_on_;
    StopCheck stop_{model_.watcher, kUnitsBetweenStops};
    PerSide<Table> tables_;
    std::u16string buffer_;
    std::vector<std::vector<TextPart>> cells_;  // of the row at hand
};

}  // namespace zorvane
