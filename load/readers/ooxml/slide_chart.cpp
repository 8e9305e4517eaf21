// The words of a chart. Source: ECMA-376 part 1, 21.2.
#include <string>
#include <vector>

#include "common/base/parse_number.h"
#include "load/readers/ooxml/slide_page.h"
#include "load/readers/sheets/number_format.h"

namespace zorvane {
namespace {

constexpr std::size_t kMostNames = 10'000;  // of one list; far beyond what a chart can show

void AddTexts(const pugi::xml_node& cache, std::vector<std::string>& texts) {
    for (const pugi::xml_node& point : cache.children()) {
        const std::string_view text = Child(point, "v").child_value();
        if (Is(point, "pt") && !text.empty() && texts.size() < kMostNames)
            texts.emplace_back(text);
    }
}

// Numbers look as their format tells; years and dates are the usual ones.
void AddNumbers(const pugi::xml_node& cache, std::vector<std::string>& texts) {
    const NumberFormat format(Child(cache, "formatCode").child_value());
    for (const pugi::xml_node& point : cache.children()) {
        const std::string_view text = Child(point, "v").child_value();
        const auto value = ReadNumber<double>(text).value;
        if (!Is(point, "pt") || texts.size() >= kMostNames || !value)
            continue;
        texts.emplace_back();
        format.Apply(*value, false, texts.back());
    }
}

// The points of the copy that a chart keeps of its sheet.
std::vector<std::string> CachedTexts(const pugi::xml_node& source) {
    std::vector<std::string> texts;
    for (const pugi::xml_node& reference : source.children()) {
        AddTexts(Is(reference, "strLit") ? reference : Child(reference, "strCache"), texts);
        AddNumbers(Is(reference, "numLit") ? reference : Child(reference, "numCache"), texts);
        for (const pugi::xml_node& level : Child(reference, "multiLvlStrCache").children())
            AddTexts(level, texts);
    }
    return texts;
}

void WriteTexts(const pugi::xml_node& source, SlideTextWriter& text) {
    for (const std::string& line : CachedTexts(source))
        text.Line(line);
}

void WriteTitle(const pugi::xml_node& title, SlideTextWriter& text) {
    const pugi::xml_node source = Child(title, "tx");
    if (const pugi::xml_node rich = Child(source, "rich"); text.HasText(rich))
        text.Body(rich, {}, PlainSlideStyle());
    WriteTexts(source, text);
}

void WriteSeriesName(const pugi::xml_node& series, SlideTextWriter& text) {
    const pugi::xml_node name = Child(series, "tx");
    WriteTexts(name, text);
    if (const std::string_view literal = Child(name, "v").child_value(); !literal.empty())
        text.Line(literal);
}

bool IsTrue(const pugi::xml_node& node) {
    const std::string_view value = Attribute(node, "val");
    return node && value != "0" && value != "false";
}

// The slices of a pie are its categories; its legend names those.
bool IsPie(const pugi::xml_node& plot) {
    return LocalName(plot).starts_with("pie") || LocalName(plot).starts_with("doughnut") ||
           LocalName(plot).starts_with("ofPie");
}

// What the legend names; the only series is also the title of a chart without its own.
bool ShowsSeries(const pugi::xml_node& chart, const pugi::xml_node& plot, std::size_t series) {
    if (Child(chart, "legend") && !IsPie(plot))
        return true;
    return series == 1 && !Child(Child(chart, "title"), "tx") &&
           !IsTrue(Child(chart, "autoTitleDeleted"));
}

// Values are seen where points are labelled with them.
void WriteLabelledValues(const pugi::xml_node& plot, const pugi::xml_node& series,
                         SlideTextWriter& text) {
    const pugi::xml_node own = Child(series, "dLbls");
    if (IsTrue(Child(own ? own : Child(plot, "dLbls"), "showVal")))
        WriteTexts(Child(series, "val"), text);
}

std::vector<pugi::xml_node> SeriesOf(const pugi::xml_node& plot) {
    std::vector<pugi::xml_node> all;
    for (const pugi::xml_node& series : plot.children()) {
        if (Is(series, "ser") && all.size() < kMostNames)
            all.push_back(series);
    }
    return all;
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
        const std::vector<pugi::xml_node> all = SeriesOf(plot);
        if (ShowsSeries(chart, plot, all.size())) {
            for (const pugi::xml_node& series : all)
                WriteSeriesName(series, text);
        }
        // All series of a chart stand over the same categories.
        if (!categories_written)
            WriteTexts(Child(Child(plot, "ser"), "cat"), text);
        categories_written = true;
        for (const pugi::xml_node& series : all)
            WriteLabelledValues(plot, series, text);
    }
}

}  // namespace zorvane
