#include "load/readers/ooxml/slide_text.h"

#include <algorithm>

#include "common/base/text_encoding.h"
#include "load/readers/ooxml/alternate_content.h"
#include "load/readers/sink/list_numbers.h"
#include "load/readers/sink/symbol_fonts.h"

namespace zorvane {
namespace {

std::string Circled(std::int32_t number) {
    if (number > 20)
        return std::to_string(number);
    return ToUtf8(std::u16string(1, static_cast<char16_t>(u'\u2460' + number - 1)));
}

bool IsBlank(std::string_view text) {
    return text.find_first_not_of(" \t\n\r") == std::string_view::npos;
}

// Any text element below: those of runs and fields, and those of formulas.
bool HoldsText(const pugi::xml_node& node, bool with_fields, int depth) {
    const bool field = Is(node, "fld");
    if (depth > kMaxDepth || (field && !with_fields))
        return false;
    if (Is(node, "AlternateContent"))
        return HoldsText(ChosenForm(node), with_fields, depth + 1);
    for (const pugi::xml_node& child : node.children()) {
        if (Is(child, "t") ? !IsBlank(child.child_value())
                           : HoldsText(child, with_fields, depth + 1))
            return true;
    }
    return field && Attribute(node, "type") == "slidenum";
}

std::int32_t LevelOf(const pugi::xml_node& properties) {
    return std::clamp(NumberOf(Attribute(properties, "lvl"), 0), 0, kSlideLevels - 1);
}

bool IsOn(std::string_view value) {
    return value == "1" || value == "true";
}

}  // namespace

std::string SlideNumberText(std::string_view scheme, std::int32_t number) {
    std::string text;
    if (scheme.starts_with("alphaLc"))
        text = NumberText(number, NumberStyle::LowerLetter, true);
    else if (scheme.starts_with("alphaUc"))
        text = NumberText(number, NumberStyle::UpperLetter, true);
    else if (scheme.starts_with("romanLc"))
        text = NumberText(number, NumberStyle::LowerRoman);
    else if (scheme.starts_with("romanUc"))
        text = NumberText(number, NumberStyle::UpperRoman);
    else if (scheme.starts_with("circleNum"))
        text = Circled(number);
    else
        text = std::to_string(number);
    if (scheme.ends_with("ParenBoth"))
        return "(" + text + ")";
    if (scheme.ends_with("ParenR"))
        return text + ")";
    if (scheme.ends_with("Period"))
        return text + ".";
    return scheme.ends_with("Minus") ? text + "-" : text;
}

std::string SlideNumbering::Next(const SlideBullet& bullet, std::int32_t level) {
    const auto own = static_cast<std::size_t>(std::clamp(level, 0, kSlideLevels - 1));
    for (std::size_t deeper = own + 1; deeper < counters_.size(); ++deeper)
        counters_[deeper] = {};
    Counter& counter = counters_[own];
    if (bullet.kind != SlideBullet::Kind::Number) {
        counter = {};
        return bullet.kind == SlideBullet::Kind::None ? std::string()
                                                      : SymbolBullet(bullet.text, bullet.font);
    }
    if (counter.scheme != bullet.scheme || counter.start != bullet.start)
        counter = {bullet.scheme, bullet.start, 0};
    const std::int32_t number = counter.start + counter.count;
    ++counter.count;
    return SlideNumberText(bullet.scheme, number);
}

bool SlideTextWriter::HasText(const pugi::xml_node& body) const {
    return HoldsText(body, slide_number_ != kNoSlideNumber, 0);
}

void SlideTextWriter::Body(const pugi::xml_node& body, const SlideStyleChain& chain,
                           const SlideLevelStyle& base) {
    SlideNumbering numbering;
    std::array<std::optional<SlideLevelStyle>, kSlideLevels> levels;
    for (const pugi::xml_node& paragraph : body.children()) {
        if (!Is(paragraph, "p"))
            continue;
        const pugi::xml_node properties = Child(paragraph, "pPr");
        const std::int32_t level = LevelOf(properties);
        std::optional<SlideLevelStyle>& inherited = levels[static_cast<std::size_t>(level)];
        if (!inherited) {
            inherited = base;
            ApplyChain(chain, level, theme_, *inherited);
        }
        SlideLevelStyle style = *inherited;
        ApplyParagraph(properties, theme_, style);
        writer_.SetFormat(style.paragraph);
        // An empty paragraph shows no bullet and takes no number.
        if (HasText(paragraph)) {
            const std::string numbered = numbering.Next(style.bullet, level);
            const std::string_view label = CleanText(numbered, scratch_);
            SlideRunStyle first = style.run;
            ApplyRun(Child(Child(paragraph, "r"), "rPr"), theme_, first);
            first.format.underline = Underline::None;
            first.format.strikeout = false;
            if (!label.empty())
                writer_.ListLabel(label, first.format);
        }
        Paragraph(paragraph, style);
        writer_.End();
    }
}

void SlideTextWriter::Paragraph(const pugi::xml_node& paragraph, const SlideLevelStyle& style) {
    Runs(paragraph, style.run, 0);
}

void SlideTextWriter::Runs(const pugi::xml_node& paragraph, const SlideRunStyle& style, int depth) {
    if (depth > kMaxDepth)
        return;
    for (const pugi::xml_node& child : paragraph.children()) {
        if (Is(child, "r") || Is(child, "fld"))
            Run(child, style);
        else if (Is(child, "br"))
            Put(kLineText, style);
        else if (Is(child, "AlternateContent"))
            Runs(ChosenForm(child), style, depth + 1);
        else if (Is(child, "t"))  // of a formula
            Put(CleanText(child.child_value(), scratch_), style);
        else if (!Is(child, "pPr") && !Is(child, "endParaRPr"))
            Runs(child, style, depth + 1);
    }
}

void SlideTextWriter::Run(const pugi::xml_node& run, const SlideRunStyle& style) {
    SlideRunStyle own = style;
    ApplyRun(Child(run, "rPr"), theme_, own);
    // What is kept of the slide's number is from the last time that it was shown.
    const bool field = Is(run, "fld");
    if (field && slide_number_ == kNoSlideNumber)
        return;
    if (field && Attribute(run, "type") == "slidenum") {
        Put(std::to_string(slide_number_), own);
        return;
    }
    for (const pugi::xml_node& text : run.children()) {
        if (Is(text, "t"))
            Put(CleanText(text.child_value(), scratch_), own);
    }
}

void SlideTextWriter::Put(std::string_view text, const SlideRunStyle& style) {
    if (text.empty())
        return;
    if (IsSymbolFont(style.symbol_font) && text.find('\xEF') != std::string_view::npos)
        writer_.Text(SymbolText(text, style.symbol_font), style.format);
    else if (style.capitals)
        writer_.Text(ToUpper(text), style.format);
    else
        writer_.Text(text, style.format);
}

void SlideTextWriter::Table(const pugi::xml_node& table, const SlideStyleChain& chain,
                            const SlideLevelStyle& base) {
    for (const pugi::xml_node& row : table.children()) {
        if (!Is(row, "tr"))
            continue;
        writer_.BeginRow();
        for (const pugi::xml_node& cell : row.children()) {
            if (!Is(cell, "tc"))
                continue;
            // A cell that is merged into its neighbour shows nothing of what it may hold.
            if (!IsOn(Attribute(cell, "hMerge")) && !IsOn(Attribute(cell, "vMerge")))
                Cell(cell, chain, base);
            writer_.EndCell(PlainSlideStyle().run.format);
        }
        writer_.End();
    }
}

void SlideTextWriter::Cell(const pugi::xml_node& cell, const SlideStyleChain& chain,
                           const SlideLevelStyle& base) {
    SlideNumbering numbering;
    const pugi::xml_node body = Child(cell, "txBody");
    bool first = true;
    for (const pugi::xml_node& paragraph : body.children()) {
        if (!Is(paragraph, "p"))
            continue;
        const pugi::xml_node properties = Child(paragraph, "pPr");
        const std::int32_t level = LevelOf(properties);
        SlideLevelStyle style = base;
        ApplyChain(chain, level, theme_, style);
        ApplyParagraph(properties, theme_, style);
        if (!first)
            Put(kLineText, style.run);
        first = false;
        // A label in the middle of a row would end in a tab, as cells do.
        if (HasText(paragraph)) {
            const std::string label = numbering.Next(style.bullet, level);
            if (!label.empty())
                writer_.Text(CleanText(label + " ", scratch_), style.run.format);
        }
        Paragraph(paragraph, style);
    }
}

void SlideTextWriter::Line(std::string_view text) {
    writer_.SetFormat({});
    writer_.Text(CleanText(text, scratch_), PlainSlideStyle().run.format);
    writer_.End();
}

}  // namespace zorvane
