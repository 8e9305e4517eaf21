// Styles of a WordprocessingML document, resolved through their inheritance. Source: ECMA-376 part
// 1, 17.7.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

#include "compare/document/rich_text.h"
#include "load/readers/container/xml_part.h"

namespace zorvane {

struct RunLook {
    CharFormat chars;
    bool hidden = false;
};

struct DocxParagraphLook {
    ParagraphFormat format;
    RunLook run;             ///< of text without formats of its own
    std::int32_t list = 0;   ///< number of the list definition; 0: no list
    std::int32_t level = 0;  ///< 0 to 8
    bool own_left = false;   ///< these indents go before those of the list's level
    bool own_right = false;
    bool own_first_line = false;
};

class DocxStyles {
  public:
    /// Reads word/styles.xml and the theme's fonts; both may be missing.
    void Read(Package& package, const std::unordered_map<std::string, Relationship>& parts);
    /// Look of a paragraph with these properties (`pPr`, may be empty).
    DocxParagraphLook Paragraph(const pugi::xml_node& properties) const;
    /// Puts run properties (`rPr`), their character style first, over a look.
    void ApplyRun(const pugi::xml_node& properties, RunLook& look) const;
    /// Puts the indents of a list level (`pPr`) over those that are not the paragraph's own.
    static void ApplyListIndent(const pugi::xml_node& level, DocxParagraphLook& look);

  private:
    struct Style {
        std::string based_on;
        pugi::xml_node run;
        pugi::xml_node paragraph;
    };
    static void ApplyParagraph(const pugi::xml_node& properties, DocxParagraphLook& look);
    void ReadTheme(Package& package, std::string_view part);
    void ApplyChain(const std::string& id, int depth, DocxParagraphLook* paragraph,
                    RunLook& run) const;
    void ApplyCharacterStyle(const std::string& id, RunLook& look) const;
    void ApplyRunOwn(const pugi::xml_node& properties, RunLook& look) const;
    void ApplyFont(const pugi::xml_node& fonts, CharFormat& chars) const;
    const DocxParagraphLook& StyleLook(const std::string& id) const;

    XmlPart part_;
    std::unordered_map<std::string, Style> styles_;
    std::string default_style_;
    DocxParagraphLook defaults_;
    std::string major_font_;
    std::string minor_font_;
    mutable std::unordered_map<std::string, DocxParagraphLook> looks_;  ///< by paragraph style
};

}  // namespace zorvane
