#include "load/reading_faults.h"

#include <algorithm>
#include <iterator>

namespace zorvane {
namespace {

constexpr std::string_view kReadingFaults[] = {
    "the file is larger than allowed",
    "the document holds too much text",
    "the document holds more text than allowed",
    "the document needs more memory than allowed",
    "the document is nested too deeply",
    "elements are nested too deeply",
    "the tables are nested too deeply",
    "parts are nested too deeply",
    "the file is damaged",
    "a part of the document is damaged",
    "a part of the document ends too early",
    "a part of the document is too large",
    "the package (ZIP) is cut off or broken",
    "the package is broken",
    "the part content.xml is broken",
    "an encrypted ZIP file",
    "a ZIP file that holds no document",
    "no META-INF/container.xml in the package",
    "no content.xml in the package",
    "no document in the package",
    "no document text in the package",
    "no document text",
    "no package",
    "no memory for the package",
    "no text that can be read",
    "the book is protected",
    "the book names no chapter that is there",
    "the message holds too much text",
    "the file does not begin as a message does",
    "the file holds no slides",
    "no slides in this file",
    "the slides hold too much text",
    "a slide is missing",
    "no such sheet",
    "no sheets inside",
    "no workbook inside",
    "no workbook",
    "a binary workbook (XLSB)",
    "a workbook of an old version",
    "an encrypted workbook of an old version",
    "a sheet is missing",
    "the sheet ends too early",
    "the sheet has more cells than any can",
    "the sheet holds more than can be shown",
    "the sheet is too large",
    "the sheets are too large",
    "too many cells",
    "the table of texts ends too early",
    "the texts of the sheets are too large",
    "the workbook has no sheets",
    "the workbook needs more memory than allowed",
    "the workbook's stream is broken",
    "the document's encryption cannot be read",
    ("the document is encrypted in a way that is not read (only AES with PBKDF2 is); save it "
     "without a password"),
    "the document is protected by rights management",
    "the encryption of the document is damaged",
    "the encryption of the file is not supported",
    "the file holds no encrypted document",
    "the file does not permit its text to be copied without the owner's password",
    "the file is not a PDF file",
    "the PDF file is damaged",
    "the PDF file has no pages",
    "the PDF file needs too much memory",
    "the page catalog could not be read",
    "a PDF inside another document",
    "a page holds too much",
    "the pages hold too much",
    "the text is too long",
    "the text needs too much memory",
    "its answer makes no sense",
    "the changes stand where no mark can be placed",
    ("the documents hold tracked changes already; without --keep-tracked they are compared as "
     "accepted"),
    "the modified holds macros, which a .docx may not",
    "the two documents name different things alike",
    "The file cannot be opened.",
    "The file is empty.",
    "There is no temporary folder.",
    "The office suite could not be started.",
    "The office suite could not read it.",
    "The office suite could not write it.",
    "The office suite did not end in time.",
    "The office suite reads it as another kind of document.",
    "This part of the office suite is not installed.",
    "No such format to convert to.",
};

}  // namespace

std::string ReadingFault(std::string_view detail, const EnglishTo& translate) {
    const auto* const known =
        std::find(std::begin(kReadingFaults), std::end(kReadingFaults), detail);
    return known == std::end(kReadingFaults) || !translate ? std::string(detail)
                                                           : translate(*known);
}

}  // namespace zorvane
