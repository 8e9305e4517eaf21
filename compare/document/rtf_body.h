// The pieces of an RTF document as they are written one after another; the tables of fonts and
// colours, which stand in front, are made at the end.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "common/base/run_watcher.h"
#include "compare/document/beside.h"
#include "compare/document/rich_text.h"

namespace zorvane {

/// A document in 7-bit ASCII: the one behind the other.
struct RtfParts {
    std::string head;
    std::string body;
};

class RtfBody {
  public:
    void Reserve(std::size_t bytes) { body_.reserve(bytes); }
    /// What may become large is not moved as it grows: room for so many bytes more, made in a way
    /// that can be stopped.
    void MakeRoom(std::size_t bytes, StopCheck& stop) {
        if (body_.capacity() - body_.size() < bytes)
            Grow(bytes, stop);
    }
    /// In front of the paragraph that holds a table's row: where its cells end, in twips.
    void RowStart(const std::vector<std::int32_t>& cell_ends);
    /// Behind `ParagraphStart`: the paragraph belongs to the row.
    void InRow() { body_ += "\\intbl "; }
    void CellEnd() { body_ += "\\cell "; }
    void RowEnd() { body_ += "\\row\r\n"; }
    /// Formats hold until the next call.
    void ParagraphStart(const ParagraphFormat& format);
    void Chars(const CharFormat& format);
    /// CR is a paragraph break and LF nothing; 11 a line in the paragraph; 7 the end of a cell.
    void Units(std::u16string_view text);
    /// UTF-8, otherwise as `Units`.
    void Text(std::string_view utf8);
    /// A generated number in a group of its own that readers may pass over, with a tab behind it.
    void ListLabel(std::string_view utf8, const CharFormat& format);
    /// What lies beside the text here, in a group that every reader but ours passes over.
    void Beside(const BesideItem& item);
    std::size_t Size() const { return body_.size(); }
    /// The whole document; nothing is left here.
    std::string Finish();
    RtfParts FinishInParts();

  private:
    void Grow(std::size_t bytes, StopCheck& stop);
    void Number(std::string_view word, std::int32_t number);
    void NonZero(std::string_view word, std::int32_t number);
    void WriteColor(std::string_view word, const std::optional<Color>& color);
    void EndBaseline();
    void WriteSpecial(char16_t unit);
    std::int32_t FontNumber(const FontName& font);
    std::int32_t ColorNumber(Color color);

    std::string body_;
    bool off_baseline_ = false;
    std::vector<FontName> fonts_;
    std::vector<Color> colors_;
};

}  // namespace zorvane
