#include "load/readers/word_readers.h"
namespace zorvane {
namespace {
ReadEnd No() {
    return ReadEnd::Fault(ReadError::Unsupported, "not read yet");
}
}  // namespace
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
}  // namespace zorvane
