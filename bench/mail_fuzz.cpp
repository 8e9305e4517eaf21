// Any bytes as a message of e-mail: reading ends, paragraphs do not nest, and the text is UTF-8
// without line ends.
#include <cstdint>
#include <string_view>

#include "bench/strict_sink.h"
#include "load/readers/word_readers.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);  // NOLINT
    zorvane::StrictSink sink;
    zorvane::Patient monitor;
    if (zorvane::ReadMessage(bytes, "windows-1252", sink, monitor).ok())
        sink.Finish();
    return 0;
}
