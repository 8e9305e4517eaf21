// What the pages of a PDF hold beside their text. Only for the units that read PDF; it includes
// poppler's headers.
#pragma once

#include <PDFDoc.h>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

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

  private:
    void Info(const char* key, std::string_view name);
    void EmbeddedFiles();
    void Annotation(const Object& annotation);
    void Link(const Object& action);
    void Pictures(Dict* resources, int depth);
    void Picture(Object& stream, int number);
    std::string DigestOf(Object& stream);
    std::string ContentDigest(::Page& page);
    void Send(BesideKind kind, std::string_view text, std::string digest);

    PDFDoc& document_;
    DocumentSink& sink_;
    std::int32_t page_ = 0;
    bool silent_ = false;  ///< the pictures of a page without text are told with the page
    std::vector<std::string> page_pictures_;   ///< digests
    std::map<int, std::string> digests_;       ///< of pictures, by the number of their object
    std::map<int, std::int32_t> first_pages_;  ///< where a picture was told
    std::int64_t bytes_left_ = std::int64_t{512} << 20;
    bool picture_in_part_ = false;  ///< of a page: more bytes than are read
    int forms_left_ = 0;
};

}  // namespace zorvane
