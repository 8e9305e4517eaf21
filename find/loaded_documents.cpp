#include "find/loaded_documents.h"

#include <utility>

#include "common/process_state.h"

namespace zorvane {
LoadedDocuments::LoadedDocuments(ProcessState& process, TextCache cache)
    : texts_(process, std::move(cache)) {}

LoadedDocuments::LoadedDocuments(ProcessState& process)
    : LoadedDocuments(process, UserTextCache(process)) {}

DocumentTexts::Text LoadedDocuments::TextOf(const std::string& path,
                                            const std::function<bool()>& stop) {
    ExtractedText read = texts_.TextOf(path, stop);
    // Whoever shows the reason names the file.
    if (read.reason.starts_with(path + ": "))
        read.reason.erase(0, path.size() + 2);
    if (!read.document)
        return {nullptr, read.reason, {}, read.wants_password};
    Text text{{read.document, &read.document->text}, "", {}};
    if (!read.document->places.empty()) {
        auto finder = std::make_shared<PlaceFinder>(*read.document);
        text.place = [document = read.document, finder](std::int64_t line, std::int32_t column) {
            return finder->PlaceOf(line, column);
        };
    }
    return text;
}

}  // namespace zorvane
