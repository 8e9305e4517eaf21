// The rows of the HTML report: paragraphs with their numbers and signs, side by side or all in one.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "compare/engine/cut_text.h"
#include "compare/engine/html_text.h"
#include "compare/engine/report_model.h"

namespace zorvane {

/// Paragraphs beside each other by their numbers; 0: none on that side.
struct PageRow {
    std::int32_t original = 0;
    std::int32_t modified = 0;
};

class HtmlRows {
  public:
    /// Writes behind what `page` holds. `hand_on` is called between two rows of a record and may
    /// take what is there. After a stop the rest of a record is missing.
    HtmlRows(const ReportModel& model, bool all_in_one, std::string& page,
             std::function<void()> hand_on);

    void Unchanged(PageRow row);
    /// All rows of a record, in runs where they are many.
    void Difference(std::size_t record);

    /// Rows that a browser lays out only when they are near: for each this many a block.
    static constexpr std::size_t kRun = 60;

  private:
    /// How the paragraphs of a record look that stand on one side.
    struct OneSidedLook {
        std::string label;               ///< of the place beside them, or above them
        std::int32_t linked_record = 0;  ///< where they went or came from; 0: nowhere
        std::string_view classes;
        std::string_view sign;
        CellMark mark = CellMark::Pieces;
    };

    OneSidedLook LookOf(std::size_t record, Side side) const;
    void OneSided(std::size_t record, Side side);
    void OneSidedInOne(const OneSidedLook& look, Side side, std::int32_t number);
    void OneSidedInTwo(const OneSidedLook& look, Side side, std::int32_t number, bool first);
    void MovedHere(std::size_t record, const Move& move);
    void Change(std::size_t record);
    void OneToOne(const ChangeText& change, const DifferenceRecord& record);
    void Pairs(const ChangeText& change, const DifferenceRecord& record);
    void Merged(const ChangeText& change, PerSide<std::int32_t> numbers);
    void PairRow(const ChangeText& change, const DifferenceRecord& record, ParagraphPair pair,
                 std::int32_t merged_row);
    /// The place in a row of pairs that a side leaves empty.
    void PairGap(CutKind kind);
    CutKind KindOf(ParagraphPair pair) const;
    std::vector<std::int32_t> CleanRows(const DifferenceRecord& record) const;

    void Begin(std::string_view classes);
    void Gutter(std::int32_t number, CutKind kind);
    void Gutter(std::int32_t number, std::string_view sign);
    void Nothing(std::string_view label, std::int32_t linked_record, bool first);
    void MoveLink(const std::string& label, std::int32_t linked_record);
    std::string MoveLabel(const Move& move, Side shown) const;

    const ReportModel& model_;
    const Comparison& comparison_;
    bool one_;
    std::string& page_;
    std::function<void()> hand_on_;
    StopCheck stop_;
    HtmlText text_;
    std::size_t run_ = 0;     // rows in the open block
    bool cuts_runs_ = false;  // the record at hand has so many rows that it is cut
    PerSide<std::u16string> buffers_;
    std::vector<PiecePlace> places_;
    CutText left_;
    CutText right_;
    CutText merged_;
};

}  // namespace zorvane
