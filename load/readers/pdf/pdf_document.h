// Opening of a PDF with poppler, and the walk over its pages: what both roads share. Only for the
// units that read PDF; it includes poppler's headers.
#pragma once

#include <PDFDoc.h>
#include <cstdint>
#include <ctime>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "load/readers/pdf/pdf_reader.h"

namespace zorvane {

/// Bound on the time of the processor that one page takes. Forms that call one another can stand
/// for any number of operators in a small file; a map with a million takes a second.
inline constexpr double kMaxPageSeconds = 3;

/// The same for a document: some seconds, and more only for what the file really holds. Many pages
/// alone give no time, since a small file may have any number of pages that unpack to gigabytes.
inline constexpr double kDocumentSeconds = 6;
inline constexpr double kDocumentSecondsPerMegabyte = 5;

/// Thrown through poppler, which has no other way out of forms within forms. `WalkPages` catches
/// it; what poppler leaves behind goes with the process.
struct PdfPageTimeIsOver {};

/// The time that a page may take, started by `WalkPages`. A device ticks it in what it is told
/// often.
class PdfPageClock {
  public:
    void Start() {
        start_ = std::clock();
        ticks_ = 0;
    }
    void Tick() {
        constexpr std::uint32_t kSteps = 256;  // a look at the clock has its price
        if (++ticks_ % kSteps == 0 && IsOver())
            throw PdfPageTimeIsOver();
    }
    bool IsOver() const {
        return std::clock() - start_ > static_cast<std::clock_t>(kMaxPageSeconds * CLOCKS_PER_SEC);
    }

  private:
    std::clock_t start_ = std::clock();
    std::uint32_t ticks_ = 0;
};

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

struct PdfWalk {
    PdfPages pages;
    PageBox box = PageBox::Crop;
    OutputDev& device;
    PdfPageClock& clock;  ///< the one that the device ticks
};

/// Shows the pages to the device, one point a unit, with progress and cancel between them.
ReadEnd WalkPages(PDFDoc& document, const PdfWalk& walk, ReadMonitor& monitor,
                  const PageDone& page_done);
/// Whether the library told of faults in the content when `WalkPages` showed the page last.
bool WasReadInPart(std::int32_t page);

/// The pages that `pages` stands for: 1-based and within the document.
PdfPages PagesWithin(const PdfPages& pages, std::int32_t count);

}  // namespace zorvane
