#include "folders/rename_search.h"

#include <system_error>
#include <utility>

#include "common/platform/thread_priority.h"
#include "load/extracted_texts.h"

namespace zorvane {

void RenameSearch::Start(const FolderScan& scan, PerSide<std::string> roots,
                         std::optional<TextCache> documents) {
    Stop();
    stopped_ = ended_ = false;
    const auto search = [this, &scan, roots = std::move(roots), cache = std::move(documents)] {
        StandBehindWindows();
        RenameOptions options;
        options.stop = [this] { return stopped_.load(std::memory_order_relaxed); };
        std::optional<ExtractedTexts> texts;
        if (cache)
            options.document_text = DocumentTextsOf(texts.emplace(process_, *cache), options.stop);
        found_ = FindRenames(scan, roots, options);
        ended_ = true;
    };
    try {
        thread_ = std::thread(search);
    } catch (const std::system_error&) {
        // Without a thread the rows stay as they are.
    }
}

void RenameSearch::Stop() {
    stopped_ = true;
    if (thread_.joinable())
        thread_.join();
}

std::optional<std::vector<RenamedEntry>> RenameSearch::Take() {
    if (!thread_.joinable() || !ended_)
        return std::nullopt;
    thread_.join();
    return std::exchange(found_, {});
}

}  // namespace zorvane
