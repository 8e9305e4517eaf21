// Tables of a story of an OpenDocument text: rows and cells. The format has no marks for rows: all
// text of the row is marked, and the row's style tells that it goes away with its text.
#include <algorithm>

#include "redline/node_kinds.h"
#include "redline/odt_resolve.h"
#include "redline/odt_writer.h"
#include "redline/row_weaver.h"
#include "redline/xml_tools.h"

namespace zorvane {
namespace {

using Node = pugi::xml_node;

std::string OdtRowShapeOf(const Node& row) {
    std::string shape;
    for (const Node& cell : OdtCellsOf(row))
        shape.append("|")
            .append(LocalName(cell))
            .append(Attribute(cell, "number-columns-spanned"))
            .append("/")
            .append(Attribute(cell, "number-rows-spanned"))
            .append("/")
            .append(Attribute(cell, "number-columns-repeated"));
    return shape;
}

std::int32_t ColumnsOf(const Node& table) {
    std::int32_t columns = 0;
    VisitElements(table, [&](const Node& node) {
        const bool own =
            Is(node, "table-column") && (node.parent() == table || node.parent().parent() == table);
        columns += own ? std::max(1, NumberOf(Attribute(node, "number-columns-repeated"), 1)) : 0;
    });
    return columns;
}

}  // namespace

void OdtWriter::MergeTable(const Node& original, Node modified) {
    if (ColumnsOf(original) != ColumnsOf(modified)) {
        // Behind it: what is deleted in front of it goes there later.
        PutDeletedTable(original, modified, false);
        MarkTable(modified, TrackMark::Insert);
        ++state_.tables_twice;
        return;
    }
    state_.rows_twice += WeaveRows(
        {OdtRowsOf(original), OdtRowsOf(modified)}, modified,
        {OdtCellsOf, OdtTextOf, OdtRowShapeOf},
        {[this](const Node& row, Node place, bool in_front) {
             return PutDeletedRow(row, place, in_front);
         },
         [this](Node row) { MarkRow(row, TrackMark::Insert); },
         [this](const Node& old_cell, const Node& new_cell) { Merge(old_cell, new_cell); }},
        state_.watcher);
}

namespace {

Node ElementBeside(Node node, bool in_front) {
    do
        node = in_front ? node.previous_sibling() : node.next_sibling();
    while (node && !IsElement(node));
    return node;
}

// A list, or an item, becomes two: the first takes what stands in front of `second`. The second
// list goes on counting, and the second half of an item gets no number.
void SplitListPart(const Node& second) {
    Node whole = second.parent();
    Node first = whole.parent().insert_child_before(whole.name(), whole);
    for (const pugi::xml_attribute& attribute : whole.attributes())
        first.append_copy(attribute);
    whole.remove_attribute("xml:id");
    while (whole.first_child() != second)
        first.append_move(whole.first_child());
    if (Is(whole, "list"))
        SetAttribute(whole, "text:continue-numbering", "true");
    else
        whole.set_name("text:list-header");
}

}  // namespace

Node OdtWriter::PutDeletedTable(const Node& table, Node place, bool in_front) {
    // Beside the outermost list, or between its halves: a list holds no tables of its own.
    while (LocalName(place.parent()).starts_with("list")) {
        if (const Node beside = ElementBeside(place, in_front))
            SplitListPart(in_front ? place : beside);
        place = place.parent();
    }
    Node copy = CopyBeside(table, place, in_front);
    state_.importer.Adapt(copy, part_);
    MarkTable(copy, TrackMark::Delete);
    return copy;
}

Node OdtWriter::PutDeletedRow(const Node& row, Node place, bool in_front) {
    Node copy = CopyBeside(row, place, in_front);
    state_.importer.Adapt(copy, part_);
    MarkRow(copy, TrackMark::Delete);
    return copy;
}

void OdtWriter::MarkTable(const Node& table, TrackMark mark) {
    for (const Node& row : OdtRowsOf(table))
        MarkRow(row, mark);
}

void OdtWriter::MarkRow(Node row, TrackMark mark) {
    SetAttribute(row, "table:style-name",
                 state_.importer.TrackedRowStyle(std::string(Attribute(row, "style-name")), part_));
    for (const Node& cell : OdtCellsOf(row)) {
        if (mark == TrackMark::Delete)
            MarkCellDeleted(cell);
        else
            MarkCellInserted(cell);
    }
    ++state_.counts.rows;
}

// The blocks of the cell, whatever they are, in one region.
void OdtWriter::MarkCellInserted(const Node& cell) {
    std::vector<Node> paragraphs;
    for (const StoryBlock& block : ReaderOf(state_, Side::Modified).Blocks(cell)) {
        if (!block.is_table)
            paragraphs.push_back(block.node);
        else
            MarkTable(block.node, TrackMark::Insert);
    }
    if (paragraphs.empty())
        return;
    const std::string id = regions_.AddInsertion();
    ++state_.counts.insertions;
    Node start = paragraphs.front().prepend_child("text:change-start");
    start.append_attribute("text:change-id") = id.c_str();
    Node end = paragraphs.back().append_child("text:change-end");
    end.append_attribute("text:change-id") = id.c_str();
}

void OdtWriter::MarkCellDeleted(Node cell) {
    std::vector<Node> blocks;
    for (const Node& child : cell.children()) {
        if (IsElement(child))
            blocks.push_back(child);
    }
    if (blocks.empty())
        return;
    Node content;
    const std::string id = regions_.AddDeletion(content);
    ++state_.counts.deletions;
    std::string style;
    if (IsOdtParagraph(LocalName(blocks.front())))
        style = Attribute(blocks.front(), "style-name");
    for (const Node& block : blocks)
        content.append_move(block);
    Node paragraph = cell.append_child("text:p");
    if (!style.empty())
        paragraph.append_attribute("text:style-name") = style.c_str();
    paragraph.append_child("text:change").append_attribute("text:change-id") = id.c_str();
}

}  // namespace zorvane
