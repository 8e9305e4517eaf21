// What is cut, copied and pasted, in the two forms that programs exchange.
#pragma once

#include <string>
#include <string_view>

#include "compare/document/rich_text.h"

namespace zorvane {

/// Both forms of one text; a form that is not there is empty.
struct ClipboardText {
    std::string rtf;
    std::u16string plain;  ///< breaks as CR LF
    friend bool operator==(const ClipboardText&, const ClipboardText&) = default;
};

class Clipboard {
  public:
    virtual ~Clipboard() = default;
    virtual void Put(ClipboardText text) = 0;
    virtual ClipboardText Get() const = 0;
};

/// Of this process alone.
class MemoryClipboard : public Clipboard {
  public:
    void Put(ClipboardText text) override { text_ = std::move(text); }
    ClipboardText Get() const override { return text_; }

  private:
    ClipboardText text_;
};

/// The text as other programs take it: tabs between cells, lines of a paragraph as lines.
std::u16string PlainTextOf(std::u16string_view text);

ClipboardText ClipboardTextOf(const RichText& text);
/// The rich form where it is RTF that holds something, else the plain one in `format`. Programs end
/// the RTF of some words with the end of their paragraph; where the plain form shows that none was
/// copied, it is left out.
RichText RichTextOf(const ClipboardText& text, const CharFormat& format);

}  // namespace zorvane
