// The walk through an OpenDocument text, from its elements to paragraphs.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "load/readers/container/package.h"
#include "load/readers/container/xml_part.h"
#include "load/readers/opendocument/odt_beside.h"
#include "load/readers/opendocument/open_blanks.h"
#include "load/readers/opendocument/open_lists.h"
#include "load/readers/opendocument/open_styles.h"
#include "load/readers/sink/note_brackets.h"
#include "load/readers/sink/row_writer.h"

namespace zorvane {

/// Frames, drawings and what else may hold text of its own.
bool IsOdtShape(std::string_view local_name);

class OdtBody {
  public:
    OdtBody(Package& package, RowWriter& writer, ReadMonitor& monitor)
        : package_(package), writer_(writer), monitor_(monitor), beside_(package, writer.Sink()) {}

    /// The paragraphs, lists, tables, ... that are children of `parent`.
    void Blocks(const pugi::xml_node& parent, OpenStyles& styles);
    /// Names of the master pages in the order of their first use.
    const std::vector<std::string>& MasterPages() const { return master_pages_; }
    /// The text begins on a page that no style names.
    bool StartsOnDefaultPage() const { return starts_on_default_; }
    ReadError Error() const { return error_; }

  private:
    /// What a paragraph's text is, the strongest last.
    enum class Sight { Nothing, Hidden, Seen };

    /// What a cell covers, from its first column; of rows, those from the one at work on.
    struct Area {
        std::int32_t column = 0;
        std::int32_t more_columns = 0;
        std::int32_t rows = 1;
    };
    struct PlaceInRow {
        std::int32_t column = 0;
        std::int32_t covered = 0;  ///< columns from here on, by the cell to the left
    };

    bool Enter();
    Sight SightOf(const pugi::xml_node& parent, const OpenChars& chars, int depth) const;
    Sight SightOfNode(const pugi::xml_node& node, const OpenChars& chars, int depth) const;
    bool IsHiddenParagraph(const pugi::xml_node& paragraph, const OpenChars& chars) const;
    bool IsHiddenRow(const pugi::xml_node& row) const;
    static bool IsDeletedRow(const pugi::xml_node& row);
    void Block(const pugi::xml_node& node);
    void Container(const pugi::xml_node& node);
    void Paragraph(const pugi::xml_node& node, bool heading);
    void Label(const pugi::xml_node& node, bool heading, const OpenParagraphStyle& style,
               ParagraphFormat& format, std::string& label);
    void List(const pugi::xml_node& node);
    void Table(const pugi::xml_node& table);
    void TableRows(const pugi::xml_node& parent);
    void Row(const pugi::xml_node& row);
    void Cells(const pugi::xml_node& row);
    void CellsAt(PlaceInRow& place, const pugi::xml_node& cell);
    bool LiesInArea(std::int32_t column) const;
    void Cell(const pugi::xml_node& cell);
    void TakeShape(const pugi::xml_node& shape);
    void Shape(const pugi::xml_node& shape);
    void Inline(const pugi::xml_node& parent, const OpenChars& chars);
    void InlineElement(const pugi::xml_node& node, const OpenChars& chars);
    void Span(const pugi::xml_node& node, bool link, const OpenChars& chars);
    bool Blank(const pugi::xml_node& node, std::string_view name, const OpenChars& chars);
    void Note(const pugi::xml_node& note, const OpenChars& chars);
    void NoteBlocks(const pugi::xml_node& parent);
    void LineBreak(const OpenChars& chars);
    void Write(std::string_view text, const CharFormat& format);
    void Formula(const pugi::xml_node& frame, const OpenChars& chars);
    void Ruby(const pugi::xml_node& ruby, const OpenChars& chars);
    void Characters(std::string_view text, const OpenChars& chars);
    void Exact(std::string_view text, const OpenChars& chars);
    void Anchored(std::size_t from);
    void UseMasterPage(const std::string& name);
    std::int32_t Repeats(const pugi::xml_node& node, std::string_view attribute, bool filled);

    Package& package_;
    RowWriter& writer_;
    NoteBrackets brackets_;
    ReadMonitor& monitor_;
    OpenStyles* styles_ = nullptr;
    OpenLists lists_;
    OpenCounters outline_;
    OpenListPlace list_;
    std::vector<Area> areas_;  ///< of the table at work
    OpenBlanks blanks_;
    std::string scratch_;
    std::vector<pugi::xml_node> anchored_;  ///< shown behind the paragraph
    std::vector<std::string> master_pages_;
    ReadError error_ = ReadError::None;
    int depth_ = 0;
    int entered_ = 0;  ///< counts up to the next word to the monitor
    std::int64_t done_ = 0;
    std::int64_t total_ = 1;
    std::int32_t repeats_left_ = 100'000;
    std::int32_t formulas_left_ = 1000;
    int open_rows_ = 0;
    bool starts_on_default_ = false;
    bool started_ = false;
    OdtBeside beside_;
};

}  // namespace zorvane
