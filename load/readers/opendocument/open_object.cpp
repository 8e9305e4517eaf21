// Charts and formulas inside OpenDocument files.
#include "load/readers/opendocument/open_math.h"
#include "load/readers/opendocument/open_text.h"

namespace zorvane {
namespace {

constexpr int kMostNames = 10'000;

void AddParagraphText(const pugi::xml_node& node, int depth, std::string& text) {
    if (depth > kMaxDepth || Is(node, "annotation"))
        return;
    for (const pugi::xml_node& child : node.children()) {
        if (child.type() == pugi::node_pcdata || child.type() == pugi::node_cdata)
            text += child.value();
        else
            AddParagraphText(child, depth + 1, text);
    }
}

void WriteText(const pugi::xml_node& node, OpenTextWriter& writer) {
    std::string text;
    AddParagraphText(node, 0, text);
    if (text.find_first_not_of(" \t\r\n") != std::string::npos)
        writer.Line(text);
}

void WriteTitles(const pugi::xml_node& holder, OpenTextWriter& writer) {
    for (const pugi::xml_node& child : holder.children()) {
        if (Is(child, "title") || Is(child, "subtitle"))
            WriteText(child, writer);
        else if (Is(child, "plot-area") || Is(child, "axis"))
            WriteTitles(child, writer);
    }
}

// The chart's copy of its sheet: names of series stand in the first row and are seen in the legend
// (that of a pie names the categories), categories stand in the first column.
void WriteNames(const pugi::xml_node& chart, OpenTextWriter& writer) {
    const pugi::xml_node table = Child(chart, "table");
    const std::string_view kind = Attribute(chart, "class");
    const bool pie = kind.ends_with("circle") || kind.ends_with("ring");
    int left = kMostNames;
    pugi::xml_node head;
    if (Child(chart, "legend") && !pie)
        head = Child(Child(table, "table-header-rows"), "table-row");
    for (const pugi::xml_node& cell : head.children()) {
        if (left-- > 0)
            WriteText(cell, writer);
    }
    left = kMostNames;
    for (const pugi::xml_node& row : Child(table, "table-rows").children()) {
        const pugi::xml_node cell = Child(row, "table-cell");
        if (Attribute(cell, "value-type") == "string" && left-- > 0)
            WriteText(cell, writer);
    }
}

pugi::xml_node ChartOf(const pugi::xml_node& root) {
    return Child(Child(Child(root, "body"), "chart"), "chart");
}

}  // namespace

bool HasOpenObjectWords(const pugi::xml_node& root) {
    return Is(root, "math") || ChartOf(root);
}

void WriteOpenObject(const pugi::xml_node& root, OpenTextWriter& text) {
    if (Is(root, "math")) {
        text.Line(OpenMathText(root));
        return;
    }
    const pugi::xml_node chart = ChartOf(root);
    WriteTitles(chart, text);
    WriteNames(chart, text);
}

}  // namespace zorvane
