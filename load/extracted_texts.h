// Texts of documents for a search: read once and kept, by several threads.
#pragma once

#include <atomic>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "load/document_text.h"
#include "load/text_cache.h"

namespace zorvane {

class ConversionService;
struct ProcessState;

/// Whether a search asks a reader for that file's text, by its name. Text, tables of text and
/// sources of pages with marks of their own are read as they are.
bool IsReadAsDocument(std::string_view name);

/// The cache of the user who runs the program.
TextCache UserTextCache(ProcessState& process);

struct ExtractedText {
    std::shared_ptr<const DocumentText> document;  ///< nothing: `reason` tells why
    std::string reason;                            ///< in a user's words
    bool wants_password = false;                   ///< none that is known opens it
};

class ExtractedTexts {
  public:
    using Stop = std::function<bool()>;
    /// `process` outlives this.
    ExtractedTexts(ProcessState& process, TextCache cache);
    ~ExtractedTexts();  ///< who wrote into the cache tests its size
    ExtractedTexts(const ExtractedTexts&) = delete;
    ExtractedTexts& operator=(const ExtractedTexts&) = delete;

    /// While no text is asked for: tried in turn where a document cannot be read without. What they
    /// open is not left where none is asked for.
    void UsePasswords(std::vector<std::string> passwords) { passwords_ = std::move(passwords); }
    /// On any thread, several at once; of two that want one content the second waits. After a stop
    /// there is no text.
    ExtractedText TextOf(const std::string& path, const Stop& stop);
    /// Texts that no reader had to be asked for.
    std::int64_t Hits() const { return hits_.load(); }
    const TextCache& Cache() const { return cache_; }

  private:
    class InWork;
    Result<TextKey> KeyOfFile(const std::string& path) const;
    ExtractedText Extract(const std::string& path, const std::string& password, const Stop& stop);
    std::unique_ptr<ConversionService> TakeService(bool office, const Stop& stop);
    void GiveBack(std::unique_ptr<ConversionService> service, bool office);

    ProcessState& process_;
    TextCache cache_;
    std::string reading_;  ///< how texts are made, and the programs and libraries that do it
    std::vector<std::string> passwords_;
    std::atomic<std::int64_t> hits_{0};
    std::atomic<bool> wrote_{false};
    std::mutex guard_;  ///< over all below
    std::condition_variable changed_;
    std::set<TextKey> in_work_;
    std::vector<std::unique_ptr<ConversionService>> services_;
    int free_slots_;           ///< readers that may be started: one a core
    bool office_free_ = true;  ///< an office suite reads one document at a time
};

}  // namespace zorvane
