#include "load/text_cache.h"

#include <algorithm>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <memory>
#include <sys/stat.h>
#include <utility>
#include <vector>
#include <xxhash.h>
#include <zstd.h>

#include "common/base/parse_number.h"
#include "common/platform/file_descriptor.h"
#include "common/platform/file_lock.h"
#include "common/platform/files.h"
#include "common/platform/terminal.h"

namespace zorvane {
namespace {

namespace fs = std::filesystem;

constexpr std::array<char, 8> kCacheMagic{'Z', 'V', 'T', 'E', 'X', 'T', '0', '1'};
constexpr std::uint64_t kMostBytes = std::uint64_t{1} << 30;
constexpr int kLevel = 1;  // reading is what should be fast
constexpr std::uint32_t kOwnerOnly = 0600;
constexpr std::int64_t kDay = std::int64_t{24} * 60 * 60;  // seconds
constexpr const char* kSuffix = ".text";

struct Header {
    std::array<char, 8> magic = kCacheMagic;
    TextKey key;
    std::uint64_t text_bytes = 0;
    std::uint64_t place_bytes = 0;
    std::uint64_t packed_bytes = 0;
    std::uint64_t checksum = 0;  // of what is packed
};
static_assert(std::has_unique_object_representations_v<Header>);

std::string Hex(std::uint64_t number) {
    std::string text(16, '0');
    for (std::size_t digit = 16; digit-- > 0; number >>= 4U)
        text[digit] = "0123456789abcdef"[number & 15U];
    return text;
}

// A line each: kind, first line, name.
std::string EncodePlaces(const std::vector<TextPlace>& places) {
    std::string text;
    for (const TextPlace& place : places) {
        text += std::to_string(static_cast<int>(place.kind)) + ' ' + std::to_string(place.line) +
                ' ' + place.name + '\n';
    }
    return text;
}

std::vector<TextPlace> DecodePlaces(std::string_view text) {
    std::vector<TextPlace> places;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        const std::string_view line = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));
        const std::size_t name = line.find(' ', 2);
        if (name == std::string_view::npos || line[0] < '0' || line[0] > '2')
            break;
        places.push_back({static_cast<PlaceKind>(line[0] - '0'),
                          ReadNumber<std::int64_t>(line.substr(2)).value.value_or(0),
                          std::string(line.substr(name + 1))});
    }
    return places;
}

std::optional<DocumentText> Unpack(const std::string& bytes, const TextKey& key) {
    Header header;
    if (bytes.size() < sizeof header)
        return std::nullopt;
    std::memcpy(&header, bytes.data(), sizeof header);
    const std::string_view packed = std::string_view(bytes).substr(sizeof header);
    if (header.magic != kCacheMagic || header.key != key || header.packed_bytes != packed.size() ||
        header.text_bytes > kMostBytes || header.place_bytes > kMostBytes ||
        header.checksum != XXH3_64bits(packed.data(), packed.size()))
        return std::nullopt;
    std::string whole(header.text_bytes + header.place_bytes, '\0');
    if (ZSTD_decompress(whole.data(), whole.size(), packed.data(), packed.size()) != whole.size())
        return std::nullopt;
    DocumentText document;
    document.places = DecodePlaces(std::string_view(whole).substr(header.text_bytes));
    whole.resize(header.text_bytes);
    document.text = std::move(whole);
    return document;
}

std::string Pack(const TextKey& key, const DocumentText& document) {
    const std::string places = EncodePlaces(document.places);
    const std::string whole = document.text + places;
    std::string bytes(sizeof(Header) + ZSTD_compressBound(whole.size()), '\0');
    const std::size_t packed =
        ZSTD_compress(bytes.data() + sizeof(Header), bytes.size() - sizeof(Header), whole.data(),
                      whole.size(), kLevel);
    if (ZSTD_isError(packed) != 0)
        return {};
    bytes.resize(sizeof(Header) + packed);
    const Header header{kCacheMagic,   key,    document.text.size(),
                        places.size(), packed, XXH3_64bits(bytes.data() + sizeof(Header), packed)};
    std::memcpy(bytes.data(), &header, sizeof header);
    return bytes;
}

struct Entry {
    fs::path path;
    std::int64_t bytes = 0;
    fs::file_time_type used;
};

void AddEntriesOf(const fs::path& shelf, std::vector<Entry>& entries) {
    std::error_code error;
    for (fs::directory_iterator file(shelf, error), end; !error && file != end;
         file.increment(error)) {
        std::error_code gone;
        if (file->path().extension() != kSuffix)
            continue;
        Entry entry{file->path(), 0, {}};
        entry.bytes = static_cast<std::int64_t>(file->file_size(gone));
        entry.used = gone ? fs::file_time_type() : file->last_write_time(gone);
        if (!gone)
            entries.push_back(std::move(entry));
    }
}

// Only what has the form of an entry: in a folder that is not ours alone nothing else is touched.
std::vector<Entry> EntriesIn(const std::string& folder) {
    std::vector<Entry> entries;
    std::error_code error;
    for (fs::directory_iterator shelf(folder, error), end; !error && shelf != end;
         shelf.increment(error)) {
        if (shelf->path().filename().string().size() == 2)
            AddEntriesOf(shelf->path(), entries);
    }
    return entries;
}

// The date of an entry is that of its last use, to the day.
void RenewDate(const std::string& path) {
    struct stat facts {};
    if (stat(path.c_str(), &facts) == 0 && time(nullptr) - facts.st_mtime > kDay)
        utimensat(AT_FDCWD, path.c_str(), nullptr, 0);
}

bool MakePrivate(const fs::path& folder) {
    std::error_code error;
    fs::create_directories(folder.parent_path(), error);
    constexpr mode_t kOwnFolder = 0700;
    return mkdir(folder.c_str(), kOwnFolder) == 0 || fs::is_directory(folder, error);
}

}  // namespace

TextKey KeyOf(std::string_view bytes, std::string_view reading) {
    const XXH128_hash_t hash = XXH3_128bits(bytes.data(), bytes.size());
    return {{hash.high64, hash.low64}, bytes.size(), XXH3_64bits(reading.data(), reading.size())};
}

TextCache::TextCache(std::string folder, std::int64_t bound)
    : folder_(std::move(folder)), bound_(bound) {}

std::string TextCache::FileOf(const TextKey& key) const {
    const std::string name = Hex(key.content[0]) + Hex(key.content[1]) + Hex(key.reading);
    return folder_ + "/" + name.substr(0, 2) + "/" + name.substr(2) + kSuffix;
}

std::optional<DocumentText> TextCache::Find(const TextKey& key) const {
    if (folder_.empty())
        return std::nullopt;
    const std::string path = FileOf(key);
    const Result<std::string> bytes = ReadWholeFile(path);
    if (!bytes.ok())
        return std::nullopt;
    std::optional<DocumentText> document = Unpack(bytes.value(), key);
    if (document)
        RenewDate(path);
    else
        unlink(path.c_str());
    return document;
}

void TextCache::Keep(const TextKey& key, const DocumentText& document) const {
    if (folder_.empty())
        return;
    const std::string path = FileOf(key);
    const std::string bytes = Pack(key, document);
    if (bytes.empty() || !MakePrivate(folder_) || !MakePrivate(fs::path(path).parent_path()))
        return;
    IgnoreFailure(ReplaceFile(path, bytes, kOwnerOnly), "the text is read anew next time");
}

void TextCache::Trim() const {
    if (folder_.empty())
        return;
    const FileDescriptor lock = OpenLockFile(folder_ + "/lock");
    // Somebody else who is at it does it for all.
    if (!TryLock(lock))
        return;
    std::vector<Entry> entries = EntriesIn(folder_);
    std::int64_t bytes = 0;
    for (const Entry& entry : entries)
        bytes += entry.bytes;
    if (bytes <= bound_)
        return;
    std::sort(entries.begin(), entries.end(),
              [](const Entry& one, const Entry& two) { return one.used < two.used; });
    for (const Entry& entry : entries) {
        if (bytes <= bound_ / 10 * 9)
            return;
        if (unlink(entry.path.c_str()) == 0)
            bytes -= entry.bytes;
    }
}

CacheSize TextCache::Size() const {
    CacheSize size;
    if (folder_.empty())
        return size;
    for (const Entry& entry : EntriesIn(folder_)) {
        ++size.entries;
        size.bytes += entry.bytes;
    }
    return size;
}

Status TextCache::Clear() const {
    if (folder_.empty())
        return Status::Ok();
    for (const Entry& entry : EntriesIn(folder_)) {
        std::error_code error;
        fs::remove(entry.path, error);
        if (error)
            return Failure{entry.path.string() + ": " + error.message()};
    }
    return Status::Ok();
}

std::string UserTextCacheFolder(const std::string& home) {
    const std::string given = Environment("XDG_CACHE_HOME").value_or("");
    if (!given.empty() && given.front() == '/')
        return given + "/zorvane/texts";
    return home.empty() || home == "(error)" ? std::string() : home + "/.cache/zorvane/texts";
}

}  // namespace zorvane
