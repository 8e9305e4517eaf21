// PDF by two roads: quick plain text, and rich text with fonts, paragraphs and columns. Uses
// poppler.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "load/file_signature.h"
#include "load/readers/reader.h"
#include "load/readers/sink/document_sink.h"

namespace zorvane {

class OpenTables;

struct PdfPages {
    std::int32_t first = 0;  ///< 1-based; 0 and 0: all pages
    std::int32_t last = 0;
};

struct PdfPasswords {
    std::string user;
    std::string owner;
};

/// Field names are settings keys.
struct PdfRichOptions {
    std::int32_t lBCLConversionMethod = 3;  ///< 0 scanned with text, 1 layout by blanks and tabs,
                                            ///< 3 text flow
    std::int32_t lBCLDocumentType = 1;      ///< 1 one column, 2 several columns, 3 pleading (line
                                            ///< numbers at the left edge are left out)
    bool bBCLMergeParagraph = true;         ///< lines become paragraphs, across pages too
    bool bBCLShrinkFonts = false;
    bool bBCLAdjustFontNames = false;  ///< embedded subset names become those of the family
    bool bBCLExtractHyperlinks = false;
    bool bBCLDetectHeader = false;  ///< running heads and page numbers are left out
    bool bRemoveHiddenText = true;
    bool bConnectHyphens = false;
    friend bool operator==(const PdfRichOptions&, const PdfRichOptions&) = default;
};

/// Loads what the calls below would load when it is wanted: after the sandbox is closed nothing can
/// be. `tables` gets the files that the library opens by names that stand in a document. A failure
/// is told again by each of those calls; without this call none of them reads.
ReadEnd PreparePdf(OpenTables& tables);

/// Readers of the format accept a header within the first 1024 bytes; a file that has lost it is
/// still told by the pointer to its cross-reference table.
inline bool LooksLikePdf(std::string_view bytes) {
    constexpr std::size_t kReach = 1024;
    if (HasSignature(bytes, Signature::Pdf))
        return true;
    const std::size_t tail = bytes.size() > kReach ? bytes.size() - kReach : 0;
    return bytes.substr(tail).find("startxref") != std::string_view::npos;
}

/// Number of pages, or how the opening failed (`PasswordNeeded`, `Damaged`, `WrongFormat`).
ReadEnd CountPdfPages(std::string_view bytes, const PdfPasswords& passwords, std::int32_t& pages);

/// Plain UTF-8 text in reading order, a line of the page a line, a form feed between pages;
/// ligatures as their letters. `max_delta_x`: largest horizontal distance in points at which two
/// equal characters on top of one another count as one. No permission to copy is
/// `ReadError::Unsupported`.
ReadEnd ReadPdfText(std::string_view bytes, const PdfPasswords& passwords, const PdfPages& pages,
                    double max_delta_x, std::string& text, ReadMonitor& monitor);

/// What lies beside that text, which tells the pages without words. Every item is one of the whole
/// document.
ReadEnd ReadPdfBeside(std::string_view bytes, const PdfPasswords& passwords, const PdfPages& pages,
                      std::string_view text, DocumentSink& sink);

/// Rich text. Either password opens the document.
ReadEnd ReadPdfRich(std::string_view bytes, const PdfPasswords& passwords, const PdfPages& pages,
                    const PdfRichOptions& options, DocumentSink& sink, ReadMonitor& monitor);

}  // namespace zorvane
