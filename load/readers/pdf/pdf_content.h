// What the content of a PDF page draws, without drawing it. Knows no library.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace zorvane {

struct PdfDrawing {
    std::string name;        ///< of the external object; empty for an inline picture
    std::string_view bytes;  ///< of an inline picture, with its keys; into the content
    std::string_view width;  ///< the same picture's, as it stands there
    std::string_view height;
};

/// Goes over a content stream's operators for external objects and inline pictures. Anything may
/// stand in it. Source: ISO 32000-1, 7.2 (words), 8.8 and 8.9.7.
class PdfContent {
  public:
    /// `content`, unpacked, is borrowed.
    explicit PdfContent(std::string_view content) : content_(content) {}
    /// False at the end.
    bool Next(PdfDrawing& drawing);

  private:
    enum class Word : std::uint8_t { End, Name, Plain, Other };

    Word NextWord();
    void SkipString();
    void SkipTo(char end);
    void Inline(PdfDrawing& drawing);
    void FindInlineEnd();

    std::string_view content_;
    std::size_t at_ = 0;
    std::string_view word_;  // the last one, without a name's slash
};

}  // namespace zorvane
