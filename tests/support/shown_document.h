// What a reader of documents shows, in the readable form of rich_text_notation.h.
#pragma once

#include <string>

#include "compare/document/rtf_reader.h"
#include "load/readers/reader.h"
#include "load/readers/sink/document_sink.h"
#include "tests/support/rich_text_notation.h"

namespace zorvane {

class SilentMonitor : public ReadMonitor {
  public:
    bool Progress(std::int64_t /*done*/, std::int64_t /*total*/) override { return true; }
};

/// `read` takes a sink and a monitor and tells how it ended; `tell` makes words of the text.
template <class Read>
std::string Shown(Read&& read, std::string (*tell)(const RichText&) = Notation) {
    const auto sink = MakeRtfSink();
    SilentMonitor monitor;
    const ReadEnd end = read(*sink, monitor);
    if (!end.ok())
        return "error " + std::to_string(static_cast<int>(end.error)) + ": " + end.detail;
    return tell(ReadRtf(sink->Finish()));
}

}  // namespace zorvane
