// PPTX, PPTM, PPSX, POTX: the text of each slide in reading order.
#pragma once

#include <cstdint>

#include "load/readers/container/package.h"
#include "load/readers/reader.h"
#include "load/readers/sink/document_sink.h"

namespace zorvane {

struct SlideOptions {
    std::int32_t first = 0;  ///< 1-based; 0 and 0: all slides
    std::int32_t last = 0;
    bool show_numbers = false;  ///< slide and shape numbers as text
    bool notes = false;         ///< the notes behind each slide
    bool notes_only = false;
};

/// Titles, text, tables (a row a paragraph), groups, diagrams, notes. Hidden slides are read.
ReadEnd ReadSlides(Package& package, const SlideOptions& options, DocumentSink& sink,
                   ReadMonitor& monitor);
/// ODP in the same form.
ReadEnd ReadOpenDocumentSlides(Package& package, const SlideOptions& options, DocumentSink& sink,
                               ReadMonitor& monitor);

}  // namespace zorvane
