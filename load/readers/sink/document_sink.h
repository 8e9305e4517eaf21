// Where a reader of a document puts what it finds, paragraph by paragraph, and the forms in which
// that is written: RTF, plain text, HTML.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "compare/document/beside.h"
#include "compare/document/rich_text.h"

namespace zorvane {

/// Marks inside the text of a paragraph. A table row is one paragraph, each of its cells ended by
/// `kCellEnd`, which `EndCell` writes; a paragraph break inside a cell is a `kLineInParagraph`.
inline constexpr char kCellEnd = '\x07';
inline constexpr char kLineInParagraph = '\x0B';
inline constexpr std::string_view kLineText(&kLineInParagraph, 1);

/// The text is UTF-8 without CR and LF; other control characters but tab and the two marks above
/// are dropped. Calls come as BeginParagraph (Text | ListLabel)* EndParagraph, not nested, and
/// those of a table as BeginRow ((Text | ListLabel)* EndCell)* EndRow.
class DocumentSink {
  public:
    virtual ~DocumentSink() = default;
    virtual void BeginParagraph(const ParagraphFormat& format) = 0;
    virtual void Text(std::string_view utf8, const CharFormat& format) = 0;
    /// A generated number or bullet, without the tab that stands behind it.
    virtual void ListLabel(std::string_view utf8, const CharFormat& format) = 0;
    virtual void EndParagraph() = 0;
    void BeginRow() { BeginParagraph(ParagraphFormat()); }
    void EndCell(const CharFormat& format) { Text(std::string_view(&kCellEnd, 1), format); }
    void EndRow() { EndParagraph(); }
    /// What lies beside the text at this place, in a paragraph or between two (then it belongs to
    /// the next one), or in the whole document when the item's paragraph is 0.
    virtual void Beside(const BesideItem& /*item*/) {}
    /// The items, numbered by the paragraphs of `Finish`, of a form that cannot hold them itself.
    virtual std::vector<BesideItem> TakeBeside() { return {}; }
    /// Bytes written so far; a reader of hostile input stops at a bound.
    virtual std::size_t Size() const = 0;
    /// Ends the document and hands it over. Once.
    virtual std::string Finish() = 0;
};

/// RTF in 7-bit ASCII. Labels stand in \pntext groups, so that a reader may pass over them.
std::unique_ptr<DocumentSink> MakeRtfSink();
/// UTF-8, paragraphs ended by CR LF, cells apart by a tab, lines in a paragraph by LF, labels as
/// text.
std::unique_ptr<DocumentSink> MakePlainSink();
/// A whole page in UTF-8 with the formats inline.
std::unique_ptr<DocumentSink> MakeHtmlSink();

/// Sends a text that is already rich to a sink, with what lies beside it.
void Replay(const RichText& text, DocumentSink& sink, const std::vector<BesideItem>& beside = {});

/// Opens paragraphs by itself: for readers that meet text before they know of a paragraph.
class ParagraphWriter {
  public:
    explicit ParagraphWriter(DocumentSink& sink) : sink_(sink) {}
    /// For the next paragraph; it is opened by its first text or by its end.
    void SetFormat(const ParagraphFormat& format) { format_ = format; }
    void Text(std::string_view utf8, const CharFormat& format);
    void ListLabel(std::string_view utf8, const CharFormat& format);
    bool InParagraph() const { return open_; }
    /// Ends the paragraph, an empty one too.
    void End();
    /// Ends the paragraph only when it has begun.
    void EndIfBegun();
    /// The next paragraph is a row; it ends as paragraphs do.
    void BeginRow() { SetFormat(ParagraphFormat()); }
    void EndCell(const CharFormat& format);
    DocumentSink& Sink() { return sink_; }

  private:
    void Open();

    DocumentSink& sink_;
    ParagraphFormat format_;
    bool open_ = false;
};

}  // namespace zorvane
