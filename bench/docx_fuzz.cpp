// Any parts as a WordprocessingML package: reading ends, paragraphs do not nest, and the text is
// UTF-8 without line ends.
#include <cstdint>
#include <string_view>

#include "bench/fuzz_package.h"
#include "bench/strict_sink.h"
#include "load/readers/word_readers.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace zorvane;
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);  // NOLINT
    FuzzPackage package(bytes);
    StrictSink sink;
    Patient monitor;
    if (ReadWordPackage(package, sink, monitor).ok())
        sink.Finish();
    return 0;
}
