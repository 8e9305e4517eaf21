// Text of OpenDocument presentations as paragraphs: lists, tables, fields.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "load/readers/opendocument/open_blanks.h"
#include "load/readers/opendocument/open_lists.h"
#include "load/readers/opendocument/open_styles.h"
#include "load/readers/sink/document_sink.h"

namespace zorvane {

/// What fields on a slide show. Page 0 is a background: it has no number yet.
struct OpenFields {
    std::int32_t page = 0;
    std::int32_t pages = 0;
    std::string footer;
    std::string header;
    std::string date;
};

/// The styles that lie under the text of a shape.
struct OpenShapeStyle {
    std::string_view family = "graphic";  ///< or "presentation"
    std::string_view name;
};

class OpenTextWriter {
  public:
    OpenTextWriter(ParagraphWriter& writer, OpenStyles& styles, const OpenFields& fields)
        : writer_(writer), styles_(styles), fields_(fields) {}

    /// True when something below would be seen as text.
    bool HasText(const pugi::xml_node& holder) const;
    /// The paragraphs and lists in `holder`.
    void Blocks(const pugi::xml_node& holder, const OpenShapeStyle& shape);
    void Table(const pugi::xml_node& table);
    void Line(std::string_view text);

  private:
    void Walk(const pugi::xml_node& holder, int depth);
    void List(const pugi::xml_node& list, int depth);
    void Paragraph(const pugi::xml_node& paragraph);
    void Format(const pugi::xml_node& paragraph, OpenChars& chars, ParagraphFormat& layout);
    void Label(const CharFormat& format);
    void Inline(const pugi::xml_node& node, const OpenChars& style, int depth);
    bool Special(const pugi::xml_node& node, const OpenChars& style);
    void Put(std::string_view text, const OpenChars& style);
    void Write(std::string_view text, const OpenChars& style);
    void Rows(const pugi::xml_node& holder, int depth);
    void Row(const pugi::xml_node& row);

    ParagraphWriter& writer_;
    OpenStyles& styles_;
    const OpenFields& fields_;
    OpenShapeStyle shape_;
    bool in_cell_ = false;
    bool cell_has_paragraph_ = false;
    OpenBlanks blanks_;
    OpenLists lists_;  // of the shape
    OpenListPlace list_;
    std::string shown_;  // kept from text to text, as is the next
    std::string scratch_;
};

/// True for a chart and a formula.
bool HasOpenObjectWords(const pugi::xml_node& root);
/// The words of a chart or a formula that a slide holds: `root` of its own part.
void WriteOpenObject(const pugi::xml_node& root, OpenTextWriter& text);

}  // namespace zorvane
