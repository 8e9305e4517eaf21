// Lists of a WordprocessingML document: from a paragraph's list and level to its label. Source:
// ECMA-376 part 1, 17.9.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

#include "load/readers/container/xml_part.h"
#include "load/readers/ooxml/docx_styles.h"

namespace zorvane {

class DocxNumbering {
  public:
    /// Without such a part there are no labels.
    void Read(Package& package, std::string_view part);
    /// Counts the paragraph in and gives its label in UTF-8; empty for none. Paragraphs come in
    /// document order. Puts the level's indent over a look that has none of its own, and its
    /// character formats over `label`.
    std::string Next(const DocxStyles& styles, DocxParagraphLook& look, RunLook& label);

  private:
    static constexpr std::size_t kLevels = 9;
    struct Level {
        pugi::xml_node paragraph;
        pugi::xml_node run;
        std::string form = "decimal";
        std::string text;
        std::string symbol_font;
        std::int32_t start = 1;
        bool restarts = true;
        bool legal = false;
    };
    struct Definition {
        std::array<Level, kLevels> levels;
        std::array<std::int32_t, kLevels> counts{};
        std::array<bool, kLevels> begun{};
        std::string style_link;
    };
    struct List {
        std::int32_t definition = -1;
        std::array<std::optional<std::int32_t>, kLevels> start;  ///< of its own
        std::array<bool, kLevels> starts_over{};
        std::unordered_map<std::int32_t, Level> own_levels;
    };
    static Level ReadLevel(const pugi::xml_node& node);
    void ReadDefinition(const pugi::xml_node& node);
    void ReadList(const pugi::xml_node& node);
    void FollowStyleLinks();
    static std::int32_t StartOf(const Definition& definition, const List& list, std::size_t level);
    static void Count(Definition& definition, List& list, std::size_t level);
    static std::string Label(const Definition& definition, const List& list, std::size_t level);
    static const Level& LevelOf(const Definition& definition, const List& list, std::size_t level);

    XmlPart part_;
    std::unordered_map<std::int32_t, Definition> definitions_;
    std::unordered_map<std::string, std::int32_t> linked_;  ///< style id to its definition
    std::unordered_map<std::int32_t, List> lists_;
};

}  // namespace zorvane
