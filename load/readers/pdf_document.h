// Opening of a PDF with poppler, and the walk over its pages: what both roads share. Only for the
// units that read PDF; it includes poppler's headers.
#pragma once

#include <PDFDoc.h>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "load/readers/pdf_reader.h"

namespace zorvane {

/// Bound on the operators of one page. Forms that call one another can stand for any number of
/// them in a small file.
inline constexpr std::int64_t kMaxPageOperators = 20'000'000;

/// A document, and its bytes where they had to be changed before poppler could read them.
struct PdfFile {
    std::unique_ptr<std::string> changed_bytes;
    std::unique_ptr<PDFDoc> document;  // goes before the bytes
};

/// Has no document when it failed as `end` tells. `bytes` must outlive it.
PdfFile OpenPdf(std::string_view bytes, const PdfPasswords& passwords, ReadEnd& end);

/// As `OpenPdf`; no permission to copy text is a failure too.
PdfFile OpenPdfForText(std::string_view bytes, const PdfPasswords& passwords, ReadEnd& end);

/// Which box of a page is shown.
enum class PageBox : std::uint8_t { Media, Crop };

/// What the walk asks after each page: false ends it as `ReadError::TooLarge`.
using PageDone = std::function<bool(std::int32_t page)>;

/// Shows the pages to `device`, one point a unit, with progress and cancel between them.
ReadEnd WalkPages(PDFDoc& document, const PdfPages& pages, PageBox box, OutputDev& device,
                  ReadMonitor& monitor, const PageDone& page_done);

/// The pages that `pages` stands for: 1-based and within the document.
PdfPages PagesWithin(const PdfPages& pages, std::int32_t count);

}  // namespace zorvane
