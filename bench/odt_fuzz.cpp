// Any parts as an OpenDocument text or, by the first byte, a book: reading ends, paragraphs do not
// nest, and the text is UTF-8 without line ends.
#include <cstdint>
#include <string_view>

#include "bench/fuzz_package.h"
#include "bench/strict_sink.h"
#include "load/readers/word_readers.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace zorvane;
    if (size == 0)
        return 0;
    const std::string_view bytes(reinterpret_cast<const char*>(data) + 1, size - 1);  // NOLINT
    FuzzPackage package(bytes);
    StrictSink sink;
    Patient monitor;
    const ReadEnd end = data[0] % 4 == 0 ? ReadEpub(package, sink, monitor)
                                         : ReadOpenDocument(package, sink, monitor);
    if (end.ok())
        sink.Finish();
    return 0;
}
