// The layout of a page's elements into paragraphs: white space, blocks, lists, tables and formats
// as a browser shows them.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "load/readers/sink/document_sink.h"
#include "load/readers/web/css_style.h"
#include "load/readers/web/html_beside.h"
#include "load/readers/web/html_parser.h"

namespace zorvane {

class HtmlFlow : public HtmlHandler {
  public:
    /// `digest_of` tells of files that come with the page; it may be empty.
    HtmlFlow(DocumentSink& sink, ReadMonitor& monitor, HtmlFileDigest digest_of = {})
        : writer_(sink), monitor_(monitor), beside_(sink, std::move(digest_of)) {}

    void Open(const HtmlElement& element) override;
    void Close() override;
    void Lift(std::size_t level) override;
    void Text(std::string_view utf8) override;
    void Style(std::string_view css) override { sheet_.Add(css); }
    bool Proceed(std::size_t done, std::size_t total) override;
    /// Behind the last of the page.
    void Finish();
    ReadError Error() const { return error_; }

  private:
    /// What an element hands down to those inside it.
    struct Box {
        GumboTag tag = GUMBO_TAG_UNKNOWN;
        CssDisplay display = CssDisplay::Inline;
        CssSpace space = CssSpace::Normal;
        CssTransform transform = CssTransform::None;
        bool hidden = false;
        bool never_shown = false;        ///< hidden by its kind, not by the page
        bool line_is_paragraph = false;  ///< of text whose line breaks are kept
        bool drawing = false;            ///< where text is no part of the picture
        bool cell = false;               ///< a table's cell that ends with a mark
        bool row = false;                ///< a table's row, outside of any cell
        bool picked = false;  ///< ruby with parentheses of its own; a select with its choice made
        bool listed = false;  ///< a select that shows all its options
        CharFormat chars;
        Alignment alignment = Alignment::Left;
        bool right_to_left = false;
        std::int32_t left = 0;
        std::int32_t text_indent = 0;
        std::int32_t block_space = 0;  ///< behind its paragraphs
        CssListType list;
        std::int32_t number = 1;  ///< of the list's next item
        std::int32_t step = 1;
    };
    struct Label {
        std::string text;
        CharFormat chars;
    };

    // How an element shows.
    static const Box& RootBox();
    void SetUp(const HtmlElement& element, const Box& outer, Box& box);
    static void KeepParagraph(const Box& outer, Box& box);
    static void ApplyDefaults(const HtmlElement& element, Box& box);
    static void DefaultBlock(const HtmlElement& element, Box& box);
    static void DefaultChars(const HtmlElement& element, CharFormat& chars);
    static void DefaultList(const HtmlElement& element, Box& box);
    void ApplyAttributes(const HtmlElement& element, Box& box);
    void ApplyAttribute(GumboTag tag, const HtmlAttribute& attribute, Box& box);
    void ApplyFontAttribute(const HtmlAttribute& attribute, Box& box);
    static void ApplyListType(GumboTag tag, std::string_view type, Box& box);
    void StyleRoot(Box& html);
    void ApplySheet(const HtmlElement& element, const Box& outer, Box& box);
    static void ApplyStyle(const CssStyle& style, const Box& outer, Box& box);
    std::string Decoded(const std::string_view* value);
    static std::int32_t ParseNumber(std::string_view text, std::int32_t otherwise);

    // What an element shows beside the text inside it.
    void Begin(const HtmlElement& element, Box& box);
    void BeginSpecial(const HtmlElement& element, Box& box);
    void BeginItem(const HtmlElement& element, const Box& box);
    void BeginOption(const HtmlElement& element, Box& box);
    void BeginRow(Box& box);
    void EndRow();
    void BeginCell(Box& box);
    void EndCell();
    void InputText(const HtmlElement& element, const Box& box);
    void Rule(const Box& box);
    std::size_t ListLevel() const;

    // Lines and paragraphs.
    void Break();
    void Line();
    void StartLine();
    void Prepare(const Box& box);
    ParagraphFormat FormatOf(const Box& box) const;
    void Write(std::string_view utf8, const Box& box);
    void WriteCollapsed(std::string_view utf8, const Box& box);
    void WriteKept(std::string_view utf8, const Box& box);
    void TakeBlank(const Box& box);
    void FlushScratch(const Box& box);
    void Emit(std::string_view utf8, const CharFormat& chars, const Box& box);

    ParagraphWriter writer_;
    ReadMonitor& monitor_;
    HtmlBeside beside_;
    ReadError error_ = ReadError::None;
    CssSheet sheet_;
    HtmlReferences references_;
    std::vector<Box> boxes_;
    std::vector<Label> labels_;  ///< wait for the item's first text
    CharFormat blank_format_;    ///< of the white space that waits for text behind it
    bool blank_waits_ = false;
    bool line_has_text_ = false;   ///< a blank counts only behind text
    bool has_text_ = false;        ///< of the paragraph or the cell
    bool has_tab_ = false;         ///< between cells of a row inside the cell at work
    bool block_waits_ = false;     ///< in a cell, a paragraph has ended
    std::size_t line_breaks_ = 0;  ///< wait for text behind them
    std::string scratch_;
    std::size_t look_ahead_left_ = std::size_t{1} << 24;
    std::size_t cells_ = 0;  ///< nested open cells
    std::size_t rows_ = 0;
    std::size_t row_cells_ = 0;  ///< of the outermost open row
};

}  // namespace zorvane
