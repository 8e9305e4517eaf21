// The PDF readers as a module that is loaded when the first PDF comes: its library and all that
// this draws in take longer to load than a small document takes to read.
#pragma once

#include "load/readers/pdf/pdf_reader.h"

namespace zorvane {

struct PdfModule {
    decltype(&PreparePdf) prepare;
    decltype(&CountPdfPages) count_pages;
    decltype(&ReadPdfText) read_text;
    decltype(&ReadPdfBeside) read_beside;
    decltype(&ReadPdfRich) read_rich;
};

/// The module's one entry, and its name.
using PdfModuleEntry = const PdfModule* (*)();
inline constexpr const char* kPdfModuleEntry = "ZorvanePdfModule";
inline constexpr const char* kPdfModuleFile = "zorvane-convert-pdf.so";

}  // namespace zorvane
