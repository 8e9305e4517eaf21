// Any parts as a deck, of either format: reading ends, paragraphs do not nest, and the text is
// UTF-8 without line ends.
#include <cstdint>
#include <string_view>

#include "bench/fuzz_package.h"
#include "bench/strict_sink.h"
#include "load/readers/slides/slide_reader.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace zorvane;
    if (size == 0)
        return 0;
    const std::string_view bytes(reinterpret_cast<const char*>(data) + 1, size - 1);  // NOLINT
    FuzzPackage package(bytes);
    SlideOptions options;
    options.show_numbers = (data[0] & 1) != 0;
    options.notes = (data[0] & 2) != 0;
    options.notes_only = (data[0] & 4) != 0;
    StrictSink sink;
    Patient monitor;
    const ReadEnd end = (data[0] & 8) != 0 ? ReadOpenDocumentSlides(package, options, sink, monitor)
                                           : ReadSlides(package, options, sink, monitor);
    if (end.ok())
        sink.Finish();
    return 0;
}
