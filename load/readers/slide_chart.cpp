// The words of a chart. Source: ECMA-376 part 1, 21.2.
#include <string>
#include <vector>

#include "load/readers/slide_page.h"

namespace zorvane {
namespace {

constexpr std::size_t kMostNames = 10'000;  // of one list; far beyond what a chart can show

// The points of the copy that a chart keeps of its sheet.
std::vector<std::string_view> CachedTexts(const pugi::xml_node& source) {
    std::vector<std::string_view> texts;
    for (const pugi::xml_node& reference : source.children()) {
        pugi::xml_node cache = Child(reference, "strCache");
        if (!cache && Is(reference, "strLit"))
            cache = reference;
        for (const pugi::xml_node& point : cache.children()) {
            const std::string_view text = Child(point, "v").child_value();
            if (Is(point, "pt") && !text.empty() && texts.size() < kMostNames)
                texts.push_back(text);
        }
    }
    return texts;
}

void WriteTexts(const pugi::xml_node& source, SlideTextWriter& text) {
    for (const std::string_view line : CachedTexts(source))
        text.Line(line);
}

void WriteTitle(const pugi::xml_node& title, SlideTextWriter& text) {
    const pugi::xml_node source = Child(title, "tx");
    if (const pugi::xml_node rich = Child(source, "rich"); SlideTextWriter::HasText(rich))
        text.Body(rich, {}, PlainSlideStyle());
    WriteTexts(source, text);
}

void WriteSeriesNames(const pugi::xml_node& plot, SlideTextWriter& text) {
    for (const pugi::xml_node& series : plot.children()) {
        if (!Is(series, "ser"))
            continue;
        const pugi::xml_node name = Child(series, "tx");
        WriteTexts(name, text);
        if (const std::string_view literal = Child(name, "v").child_value(); !literal.empty())
            text.Line(literal);
    }
}

}  // namespace

void WriteChart(const pugi::xml_node& chart_space, SlideTextWriter& text) {
    const pugi::xml_node chart = Child(chart_space, "chart");
    WriteTitle(Child(chart, "title"), text);
    bool categories_written = false;
    for (const pugi::xml_node& plot : Child(chart, "plotArea").children()) {
        if (LocalName(plot).ends_with("Ax"))
            WriteTitle(Child(plot, "title"), text);
        if (!LocalName(plot).ends_with("Chart"))
            continue;
        WriteSeriesNames(plot, text);
        // All series of a chart stand over the same categories.
        if (!categories_written)
            WriteTexts(Child(Child(plot, "ser"), "cat"), text);
        categories_written = true;
    }
}

}  // namespace zorvane
