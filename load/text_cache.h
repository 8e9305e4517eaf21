// Texts of documents that were read before, in a private folder, by what the documents hold.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "common/base/result.h"
#include "load/document_text.h"

namespace zorvane {

/// No name and no date: a copy shares an entry, and a stale one cannot be served.
struct TextKey {
    std::array<std::uint64_t, 2> content{};  ///< a hash of all bytes
    std::uint64_t size = 0;                  ///< of the document
    std::uint64_t reading = 0;               ///< a hash of how it is read
    friend auto operator<=>(const TextKey&, const TextKey&) = default;
};
/// `reading`: the version of the readers and all options that change the text.
TextKey KeyOf(std::string_view bytes, std::string_view reading);

struct CacheSize {
    std::int64_t entries = 0;
    std::int64_t bytes = 0;
};

inline constexpr std::int64_t kCacheBound = std::int64_t{512} << 20;

/// Several threads and several processes may use one folder at once: an entry is a file that is
/// written beside and renamed, and one that is not whole is a miss and goes.
class TextCache {
  public:
    /// An empty name: nothing is kept and nothing found.
    explicit TextCache(std::string folder, std::int64_t bound = kCacheBound);
    std::optional<DocumentText> Find(const TextKey& key) const;
    /// What fails is only not kept.
    void Keep(const TextKey& key, const DocumentText& document) const;
    /// Deletes the oldest down to nine tenths of the bound, where it is passed.
    void Trim() const;
    CacheSize Size() const;
    Status Clear() const;
    const std::string& Folder() const { return folder_; }

  private:
    std::string FileOf(const TextKey& key) const;

    std::string folder_;
    std::int64_t bound_;
};

/// Of the user: in $XDG_CACHE_HOME or below `home`.
std::string UserTextCacheFolder(const std::string& home);

}  // namespace zorvane
