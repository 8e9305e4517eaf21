// Any bytes as a page, a page of strict syntax or an XML file, by the first byte: reading ends,
// paragraphs do not nest, and the text is UTF-8 without line ends.
#include <cstdint>
#include <string_view>

#include "bench/strict_sink.h"
#include "load/readers/web/html_reader.h"
#include "load/readers/word_readers.h"

namespace {

zorvane::ReadEnd ReadAs(unsigned kind, std::string_view bytes, zorvane::StrictSink& sink,
                        zorvane::Patient& monitor) {
    using namespace zorvane;
    switch (kind % 4) {
        case 0:
            return ReadXml(bytes, sink, monitor);
        case 1:
            return ShowHtml(HtmlAsUtf8(bytes, "UTF-8"), HtmlSyntax::Xhtml, sink, monitor);
        default:
            return ReadHtml(bytes, "windows-1252", sink, monitor);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0)
        return 0;
    const std::string_view bytes(reinterpret_cast<const char*>(data) + 1, size - 1);  // NOLINT
    zorvane::StrictSink sink;
    zorvane::Patient monitor;
    if (ReadAs(data[0], bytes, sink, monitor).ok())
        sink.Finish();
    return 0;
}
