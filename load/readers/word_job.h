// From the bytes of a file to the reader that fits what they hold.
#pragma once

#include <memory>
#include <string_view>

#include "load/conversion_message.h"
#include "load/readers/reader.h"
#include "load/readers/sheets/workbook.h"
#include "load/readers/sink/document_sink.h"
#include "load/readers/slides/slide_reader.h"

namespace zorvane {

// Each takes "name", "password" and "locale" of the request. After `ReadError::NeedsOffice` the
// answer's "office" tells the format to which an office suite is to convert the file first.

ReadEnd ReadWordDocument(std::string_view bytes, const ConversionMessage& job, DocumentSink& sink,
                         ReadMonitor& monitor, ConversionMessage& answer);
ReadEnd ReadSlideDocument(std::string_view bytes, const ConversionMessage& job,
                          const SlideOptions& options, DocumentSink& sink, ReadMonitor& monitor,
                          ConversionMessage& answer);
ReadEnd OpenSheets(std::string_view bytes, const ConversionMessage& job,
                   std::unique_ptr<Workbook>& book, ConversionMessage& answer);

}  // namespace zorvane
