// Paragraphs and tables to a sink: inside a table's row, paragraphs become lines of their cell, and
// a table in a cell becomes lines with tabs between its cells.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "load/readers/sink/document_sink.h"

namespace zorvane {

class RowWriter {
  public:
    explicit RowWriter(DocumentSink& sink) : sink_(sink) {}

    void BeginParagraph(const ParagraphFormat& format);
    void Text(std::string_view utf8, const CharFormat& format);
    void ListLabel(std::string_view utf8, const CharFormat& format);
    void EndParagraph();

    void BeginRow();
    void BeginCell();
    void EndCell(const CharFormat& format);
    void EndRow();

    DocumentSink& Sink() { return sink_; }

  private:
    void Put(std::string_view utf8, const CharFormat& format);

    DocumentSink& sink_;
    std::vector<std::size_t> cells_;  ///< so far, of each open row
    bool line_waits_ = false;         ///< in a cell, in front of the next paragraph
};

}  // namespace zorvane
