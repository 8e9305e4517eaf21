// Tables of a story: rows and cells.
#include <algorithm>

#include "redline/row_weaver.h"
#include "redline/story_writer.h"
#include "redline/xml_tools.h"

namespace zorvane {
namespace {

using Node = pugi::xml_node;

void Collect(const Node& parent, std::string_view wanted, std::vector<Node>& found) {
    for (const Node& child : parent.children()) {
        if (Is(child, wanted))
            found.push_back(child);
        else if (IsBlockWrapper(LocalName(child)))
            Collect(child, wanted, found);
    }
}

std::string RowShapeOf(const Node& row) {
    std::string shape;
    for (const Node& cell : CellsOf(row)) {
        const Node look = Child(cell, "tcPr");
        const Node merge = Child(look, "vMerge");
        shape += "|" + std::string(Attribute(Child(look, "gridSpan"), "val"));
        if (merge)
            shape += Attribute(merge, "val") == "restart" ? "v" : "^";
    }
    return shape;
}

std::int32_t GridColumnsOf(const Node& row) {
    std::int32_t columns = 0;
    for (const Node& cell : CellsOf(row))
        columns +=
            std::max(1, NumberOf(Attribute(Child(Child(cell, "tcPr"), "gridSpan"), "val"), 1));
    return columns;
}

// Readers cut off cells beyond the grid.
void WidenGrid(Node table) {
    Node grid = Child(table, "tblGrid");
    if (!grid)
        return;
    std::int32_t there = 0;
    for (const Node& column : grid.children())
        there += Is(column, "gridCol") ? 1 : 0;
    std::int32_t wanted = 0;
    for (const Node& row : RowsOf(table))
        wanted = std::max(wanted, GridColumnsOf(row));
    constexpr std::int32_t kMostColumns = 63;  // what word processors take in one table
    for (; there > 0 && there < std::min(wanted, kMostColumns); ++there)
        grid.insert_copy_after(Child(grid, "gridCol"), Child(grid, "gridCol"));
}

}  // namespace

std::vector<Node> RowsOf(const Node& table) {
    std::vector<Node> rows;
    Collect(table, "tr", rows);
    return rows;
}

std::vector<Node> CellsOf(const Node& row) {
    std::vector<Node> cells;
    Collect(row, "tc", cells);
    return cells;
}

void StoryWriter::MergeTable(const Node& original, Node modified) {
    const std::int32_t rows_before = state_.marks.Counts().rows;
    state_.rows_twice += WeaveRows(
        {RowsOf(original), RowsOf(modified)}, modified, {CellsOf, DocxTextOf, RowShapeOf},
        {[this](const Node& row, Node place, bool in_front) {
             return CopyRow(row, place, in_front);
         },
         [this](Node row) { MarkRowWhole(row, TrackMark::Insert); },
         [this](const Node& old_cell, const Node& new_cell) { Merge(old_cell, new_cell); }},
        state_.watcher);
    if (state_.marks.Counts().rows != rows_before)
        WidenGrid(modified);
}

Node StoryWriter::CopyRow(const Node& row, Node place, bool in_front) {
    Node copy = CopyBeside(row, place, in_front);
    MarkRowWhole(copy, TrackMark::Delete);
    return copy;
}

// A row that goes takes everything with it, the last ends of its cells too.
void StoryWriter::MarkRowWhole(Node row, TrackMark mark) {
    if (mark == TrackMark::Delete) {
        for (const char* name : {"trPr", "tblPrEx"}) {
            if (const Node look = Child(row, name))
                state_.importer.Adapt(look, parts_);
        }
    }
    state_.marks.MarkRow(row, mark);
    for (Node cell : CellsOf(row)) {
        if (const Node look = Child(cell, "tcPr"); look && mark == TrackMark::Delete)
            state_.importer.Adapt(look, parts_);
        MarkAll(cell, mark, true);
    }
}

void StoryWriter::MarkTable(Node table, TrackMark mark) {
    if (const Node look = Child(table, "tblPr"); look && mark == TrackMark::Delete)
        state_.importer.Adapt(look, parts_);
    for (const Node& row : RowsOf(table))
        MarkRowWhole(row, mark);
}

}  // namespace zorvane
