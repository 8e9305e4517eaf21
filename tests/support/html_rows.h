// The rows of an HTML report as text, for expectations.
#pragma once

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "common/base/text_encoding.h"
#include "compare/engine/report_model.h"
#include "tests/support/html_page.h"

namespace zorvane {

inline constexpr std::int32_t kAllInOne = 1;
inline constexpr std::int32_t kSideBySide = 2;

inline HtmlNode ParsedPage(const std::string& page) {
    EXPECT_TRUE(IsValidUtf8(page));
    PageTreeParser parser(page);
    HtmlNode root = parser.Run();
    EXPECT_EQ(parser.Fault(), "");
    return root;
}

/// `[-deleted-]`, `{+added+}`, `<link>`, `~moved~`, cells ended by ";"; a blank behind a mark that
/// belongs to it is a middle dot.
inline std::string MarkedText(const HtmlNode& node) {
    std::string text = node.text;
    for (const HtmlNode& child : node.children) {
        const std::string inner = MarkedText(child);
        if (child.Has("\"z\""))
            text += "\u00B7";
        else if (child.name == "del")
            text += "[-" + inner + "-]";
        else if (child.name == "ins")
            text += "{+" + inner + "+}";
        else if (child.name == "a")
            text += "<" + inner + ">";
        else if (child.name == "strong" || child.name == "em")
            text += (child.name == "em" ? "/" : "*") + inner + (child.name == "em" ? "/" : "*");
        else if (child.Has("\"v\""))
            text += "~" + inner + "~";
        else
            text += inner + (node.Has("class=\"t") ? ";" : "");
    }
    return text;
}

/// Elements that are rows of paragraphs, without the column titles.
inline std::vector<HtmlNode> RowsOf(const HtmlNode& page) {
    std::vector<HtmlNode> rows;
    page.ForEach([&](const HtmlNode& node) {
        const bool row = node.Has(" class=\"r\"") || node.Has(" class=\"r ");
        if (row && !node.Has("head"))
            rows.push_back(node);
    });
    return rows;
}

/// The cells of a row parted by "|": number and sign, text; "//" stands for no paragraph.
inline std::string RowText(const HtmlNode& row) {
    std::string text;
    for (const HtmlNode& cell : row.children) {
        text += &cell == &row.children.front() ? "" : "|";
        text += (cell.Has(" class=\"n") ? "//" : "") + MarkedText(cell);
    }
    return text;
}

inline std::vector<std::string> RowTexts(const std::string& page) {
    std::vector<std::string> texts;
    for (const HtmlNode& row : RowsOf(ParsedPage(page)))
        texts.push_back(RowText(row));
    return texts;
}

}  // namespace zorvane
