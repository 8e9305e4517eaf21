#include "load/readers/slide_reader.h"
#include "load/readers/word_readers.h"
namespace zorvane {
namespace {
ReadEnd No() {
    return ReadEnd::Fault(ReadError::Unsupported, "not read yet");
}
}  // namespace
ReadEnd ReadOpenDocument(Package&, DocumentSink&, ReadMonitor&) {
    return No();
}
ReadEnd ReadXml(std::string_view, DocumentSink&, ReadMonitor&) {
    return No();
}
ReadEnd ReadEpub(Package&, DocumentSink&, ReadMonitor&) {
    return No();
}
ReadEnd ReadMarkdown(std::string_view, DocumentSink&, ReadMonitor&) {
    return No();
}
ReadEnd ReadMessage(std::string_view, std::string_view, DocumentSink&, ReadMonitor&) {
    return No();
}
ReadEnd ReadOpenDocumentSlides(Package&, const SlideOptions&, DocumentSink&, ReadMonitor&) {
    return No();
}
}  // namespace zorvane
