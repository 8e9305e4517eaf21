#include "load/readers/ooxml/docx_numbering.h"

#include <algorithm>

#include "load/readers/sink/list_numbers.h"
#include "load/readers/sink/symbol_fonts.h"

namespace zorvane {
namespace {

std::string OrdinalNumber(std::int32_t number) {
    const std::int32_t tens = number / 10 % 10;
    const std::int32_t ones = number % 10;
    std::string_view end = "th";
    if (tens != 1 && ones >= 1 && ones <= 3)
        end = ones == 1 ? "st" : ones == 2 ? "nd" : "rd";
    return std::to_string(number) + std::string(end);
}

struct FormRow {
    std::string_view form;
    NumberStyle style;
};
constexpr FormRow kForms[] = {{"none", NumberStyle::None},
                              {"bullet", NumberStyle::None},
                              {"lowerRoman", NumberStyle::LowerRoman},
                              {"upperRoman", NumberStyle::UpperRoman},
                              {"lowerLetter", NumberStyle::LowerLetter},
                              {"upperLetter", NumberStyle::UpperLetter},
                              {"decimalZero", NumberStyle::LeadingZero}};

// An unknown form counts in digits.
std::string FormatListNumber(std::int32_t number, std::string_view form) {
    if (form == "ordinal")
        return OrdinalNumber(number);
    for (const FormRow& row : kForms) {
        if (row.form == form)
            return NumberText(number, row.style, true);
    }
    return std::to_string(number);
}

}  // namespace

DocxNumbering::Level DocxNumbering::ReadLevel(const pugi::xml_node& node) {
    Level level;
    level.paragraph = Child(node, "pPr");
    level.run = Child(node, "rPr");
    if (const pugi::xml_node form = Child(node, "numFmt"))
        level.form = Attribute(form, "val");
    level.text = Attribute(Child(node, "lvlText"), "val");
    level.start = NumberOf(Attribute(Child(node, "start"), "val"), 0);
    level.restarts = Attribute(Child(node, "lvlRestart"), "val") != "0";
    level.legal = static_cast<bool>(Child(node, "isLgl"));
    const pugi::xml_node fonts = Child(level.run, "rFonts");
    const std::string_view font = Attribute(fonts, "ascii");
    level.symbol_font = font.empty() ? Attribute(fonts, "hAnsi") : font;
    return level;
}

void DocxNumbering::ReadDefinition(const pugi::xml_node& node) {
    const std::int32_t id = NumberOf(Attribute(node, "abstractNumId"), -1);
    Definition& definition = definitions_[id];
    for (const pugi::xml_node& child : node.children()) {
        if (Is(child, "lvl")) {
            const std::int32_t level = NumberOf(Attribute(child, "ilvl"), -1);
            if (level >= 0 && level < static_cast<std::int32_t>(kLevels))
                definition.levels[static_cast<std::size_t>(level)] = ReadLevel(child);
        } else if (Is(child, "numStyleLink")) {
            definition.style_link = Attribute(child, "val");
        } else if (Is(child, "styleLink")) {
            linked_[std::string(Attribute(child, "val"))] = id;
        }
    }
}

void DocxNumbering::ReadList(const pugi::xml_node& node) {
    List& list = lists_[NumberOf(Attribute(node, "numId"), -1)];
    for (const pugi::xml_node& child : node.children()) {
        if (Is(child, "abstractNumId"))
            list.definition = NumberOf(Attribute(child, "val"), -1);
        if (!Is(child, "lvlOverride"))
            continue;
        const std::int32_t level = NumberOf(Attribute(child, "ilvl"), -1);
        if (level < 0 || level >= static_cast<std::int32_t>(kLevels))
            continue;
        if (const pugi::xml_node start = Child(child, "startOverride")) {
            list.starts_over[static_cast<std::size_t>(level)] = true;
            list.start[static_cast<std::size_t>(level)] = NumberOf(Attribute(start, "val"), 1);
        }
        if (const pugi::xml_node own = Child(child, "lvl"))
            list.own_levels[level] = ReadLevel(own);
    }
}

// A definition may hold nothing but the name of a list style, which leads to another definition.
void DocxNumbering::FollowStyleLinks() {
    for (auto& [id, definition] : definitions_) {
        const auto link = linked_.find(definition.style_link);
        if (definition.style_link.empty() || link == linked_.end() || link->second == id)
            continue;
        if (const auto other = definitions_.find(link->second); other != definitions_.end())
            definition.levels = other->second.levels;
    }
}

void DocxNumbering::Read(Package& package, std::string_view part) {
    if (!XmlPart::Read(package, part, part_).ok())
        return;
    for (const pugi::xml_node& node : part_.Root().children()) {
        if (Is(node, "abstractNum"))
            ReadDefinition(node);
        else if (Is(node, "num"))
            ReadList(node);
    }
    FollowStyleLinks();
}

const DocxNumbering::Level& DocxNumbering::LevelOf(const Definition& definition, const List& list,
                                                   std::size_t level) {
    const auto own = list.own_levels.find(static_cast<std::int32_t>(level));
    return own == list.own_levels.end() ? definition.levels[level] : own->second;
}

// Where the level begins, and begins anew below the next number of an upper one.
std::int32_t DocxNumbering::StartOf(const Definition& definition, const List& list,
                                    std::size_t level) {
    return list.start[level].value_or(LevelOf(definition, list, level).start);
}

void DocxNumbering::Count(Definition& definition, List& list, std::size_t level) {
    if (list.starts_over[level]) {
        definition.counts[level] = StartOf(definition, list, level);
        list.starts_over[level] = false;  // at the list's first paragraph only
    } else if (definition.begun[level]) {
        ++definition.counts[level];
    } else {
        definition.counts[level] = StartOf(definition, list, level);
    }
    definition.begun[level] = true;
    for (std::size_t deeper = level + 1; deeper < kLevels; ++deeper) {
        if (LevelOf(definition, list, deeper).restarts)
            definition.begun[deeper] = false;
    }
    // A level that was passed over counts as if it stood at its start.
    for (std::size_t upper = 0; upper < level; ++upper) {
        if (!definition.begun[upper]) {
            definition.counts[upper] = StartOf(definition, list, upper);
            definition.begun[upper] = true;
        }
    }
}

std::string DocxNumbering::Label(const Definition& definition, const List& list,
                                 std::size_t level) {
    const Level& own = LevelOf(definition, list, level);
    if (own.form == "bullet")
        return SymbolBullet(own.text, own.symbol_font);
    std::string label;
    for (std::size_t at = 0; at < own.text.size(); ++at) {
        const char next = at + 1 < own.text.size() ? own.text[at + 1] : '\0';
        if (own.text[at] != '%' || next < '1' || next > '9') {
            label += own.text[at];
            continue;
        }
        const auto shown = static_cast<std::size_t>(next - '1');
        const std::string& form = LevelOf(definition, list, shown).form;
        label += FormatListNumber(definition.counts[shown],
                                  own.legal ? std::string_view("decimal") : form);
        ++at;
    }
    return label;
}

std::string DocxNumbering::Next(const DocxStyles& styles, DocxParagraphLook& look, RunLook& label) {
    const auto list = lists_.find(look.list);
    if (look.list == 0 || list == lists_.end())
        return {};
    const auto definition = definitions_.find(list->second.definition);
    if (definition == definitions_.end())
        return {};
    const auto level = static_cast<std::size_t>(std::clamp(look.level, 0, 8));
    Count(definition->second, list->second, level);
    const Level& own = LevelOf(definition->second, list->second, level);
    DocxStyles::ApplyListIndent(own.paragraph, look);
    styles.ApplyRun(own.run, label);
    return Label(definition->second, list->second, level);
}

}  // namespace zorvane
