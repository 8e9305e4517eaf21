// The pictures of a PDF's pages, as their content draws them. Only for the units that read PDF; it
// includes poppler's headers.
#pragma once

#include <PDFDoc.h>
#include <cstdint>
#include <ctime>
#include <map>
#include <string>
#include <vector>

#include "compare/document/beside.h"

namespace zorvane {

struct PdfPicture {
    std::string digest;  ///< of the bytes, and of what turns them into colours
    std::string size;    ///< "3 x 1", in pixels
    std::int32_t times = 1;
    friend bool operator==(const PdfPicture&, const PdfPicture&) = default;
};

/// Lists of resources don't tell what a page shows: many programs give all pages the same one.
class PdfPictures {
  public:
    explicit PdfPictures(PDFDoc& document);

    /// What the page draws, each picture once, in the order of the first times; what a form draws
    /// is the page's. Annotations and the cells of patterns are left out.
    std::vector<PdfPicture> Of(Page& page);
    /// Whether the last page held more than was looked at: bytes of a picture, forms within forms,
    /// or operators for `kMaxPageSeconds`.
    bool InPart() const { return in_part_; }
    /// Of the bytes of a stream as the file holds them, decrypted but not unpacked.
    std::string DigestOf(Object& stream);

  private:
    using Drawn = std::vector<PdfPicture>;

    Drawn Scan(Object& contents, Dict* resources, int depth);
    void Draw(const char* name, Dict* resources, int depth, Drawn& drawn);
    const PdfPicture& Picture(Object& stream, int number);
    Drawn Form(Object& stream, int number, Dict* resources, int depth);
    void AddValue(const Object& value, int depth, BesideHash& hash);
    std::string Unpacked(Object& contents);
    void AddUnpacked(Object& stream, std::string& text);
    bool TimeIsOver();

    XRef* xref_;
    std::clock_t left_;  // of the processor, for all pages
    std::clock_t page_end_ = 0;
    std::int64_t bytes_left_ = std::int64_t{512} << 20;
    bool in_part_ = false;
    bool time_is_over_ = false;           // for a page
    std::map<int, PdfPicture> pictures_;  // by the number of their object
    std::map<int, Drawn> forms_;          // those with resources of their own
};

}  // namespace zorvane
