#include "load/readers/word_readers.h"

namespace zorvane {

ReadEnd ReadXml(std::string_view, DocumentSink&, ReadMonitor&) {
    return ReadEnd::Fault(ReadError::Unsupported, "not read yet");
}

ReadEnd ReadEpub(Package&, DocumentSink&, ReadMonitor&) {
    return ReadEnd::Fault(ReadError::Unsupported, "not read yet");
}

ReadEnd ReadMarkdown(std::string_view, DocumentSink&, ReadMonitor&) {
    return ReadEnd::Fault(ReadError::Unsupported, "not read yet");
}

ReadEnd ReadMessage(std::string_view, std::string_view, DocumentSink&, ReadMonitor&) {
    return ReadEnd::Fault(ReadError::Unsupported, "not read yet");
}

}  // namespace zorvane
