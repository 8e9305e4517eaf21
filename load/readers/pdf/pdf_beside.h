// What the pages of a PDF hold beside their text. Only for the units that read PDF; it includes
// poppler's headers.
#pragma once

#include <PDFDoc.h>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "load/readers/pdf/pdf_pictures.h"
#include "load/readers/sink/document_sink.h"

namespace zorvane {

/// Everything is told of the whole document, with its page in front: a page's items have no place
/// among its words.
class PdfBeside {
  public:
    PdfBeside(PDFDoc& document, DocumentSink& sink) : document_(document), sink_(sink) {}

    /// Title, author, ... and the files inside.
    void Document();
    /// 1-based. `has_text`: a letter was found on it.
    void Page(std::int32_t number, bool has_text);
    /// Behind the last page: the pictures of those with text.
    void EndPages();

  private:
    struct DrawnPicture {
        std::int32_t page = 0;
        PdfPicture picture;
    };

    void Info(const char* key, std::string_view name);
    void EmbeddedFiles();
    void Annotation(const Object& annotation);
    void Link(const Object& action);
    void Drawn(PdfPicture picture);
    void OnPage(const PdfPicture& picture);
    std::string ContentDigest(::Page& page, const std::vector<PdfPicture>& pictures);
    void Send(BesideKind kind, std::string_view text, std::string digest);

    PDFDoc& document_;
    DocumentSink& sink_;
    PdfPictures pictures_{document_};
    std::int32_t page_ = 0;
    std::int32_t pages_with_text_ = 0;
    std::vector<DrawnPicture> drawn_;                         ///< in the order of the pages
    std::unordered_map<std::string, std::int32_t> pages_of_;  ///< by what it shows and how often
};

}  // namespace zorvane
