#include "redline/zip_writer.h"

#include <memory>
#include <zip.h>
#include <zlib.h>

namespace zorvane {
namespace {

struct SourceEnd {
    void operator()(zip_source_t* source) const { zip_source_free(source); }
};
using Source = std::unique_ptr<zip_source_t, SourceEnd>;

// The next level takes half as much time again for a twentieth less bytes.
constexpr zip_uint32_t kLevel = 5;
constexpr zip_uint16_t kFirstDay = 0x21;  // the first that the format knows, 1980-01-01

// A package that lends what it has packed already.
class PackedEntries {
  public:
    explicit PackedEntries(std::string_view package) {
        zip_source_t* bytes =
            package.empty() ? nullptr
                            : zip_source_buffer_create(package.data(), package.size(), 0, nullptr);
        if (bytes == nullptr)
            return;
        archive_ = zip_open_from_source(bytes, ZIP_RDONLY, nullptr);
        if (archive_ == nullptr)
            zip_source_free(bytes);
    }
    ~PackedEntries() {
        if (archive_ != nullptr)
            zip_discard(archive_);
    }
    PackedEntries(const PackedEntries&) = delete;
    PackedEntries& operator=(const PackedEntries&) = delete;

    /// Its packed bytes, and in `method` how; null when they are not those of the entry.
    zip_source_t* Lend(zip_t* to, const ZipEntry& entry, zip_int32_t& method) const {
        constexpr zip_uint64_t kNeeded =
            ZIP_STAT_INDEX | ZIP_STAT_SIZE | ZIP_STAT_CRC | ZIP_STAT_COMP_METHOD;
        zip_stat_t facts;
        if (archive_ == nullptr || zip_stat(archive_, entry.name.c_str(), 0, &facts) != 0 ||
            (facts.valid & kNeeded) != kNeeded || facts.size != entry.content.size())
            return nullptr;
        method = facts.comp_method;
        const bool same = (method == ZIP_CM_STORE || method == ZIP_CM_DEFLATE) &&
                          facts.crc == Checksum(entry.content);
        return same ? zip_source_zip(to, archive_, facts.index, ZIP_FL_COMPRESSED, 0, -1) : nullptr;
    }

  private:
    static zip_uint32_t Checksum(std::string_view content) {
        const auto* bytes = reinterpret_cast<const unsigned char*>(content.data());
        return static_cast<zip_uint32_t>(crc32_z(0, bytes, content.size()));
    }

    zip_t* archive_ = nullptr;
};

bool Put(zip_t* archive, const ZipEntry& entry, bool pack, const PackedEntries& packed) {
    zip_int32_t method = pack ? ZIP_CM_DEFLATE : ZIP_CM_STORE;
    zip_source_t* content = pack ? packed.Lend(archive, entry, method) : nullptr;
    if (content == nullptr) {
        method = pack ? ZIP_CM_DEFLATE : ZIP_CM_STORE;
        content = zip_source_buffer(archive, entry.content.data(), entry.content.size(), 0);
    }
    if (content == nullptr)
        return false;
    const zip_int64_t place = zip_file_add(archive, entry.name.c_str(), content, ZIP_FL_ENC_UTF_8);
    if (place < 0) {
        zip_source_free(content);
        return false;
    }
    const auto index = static_cast<zip_uint64_t>(place);
    return zip_file_set_dostime(archive, index, 0, kFirstDay, 0) == 0 &&
           zip_set_file_compression(archive, index, method, kLevel) == 0;
}

std::optional<std::string> WholeOf(zip_source_t* source) {
    if (zip_source_open(source) != 0)
        return std::nullopt;
    std::string bytes;
    zip_source_seek(source, 0, SEEK_END);
    const zip_int64_t size = zip_source_tell(source);
    zip_source_seek(source, 0, SEEK_SET);
    bytes.resize(static_cast<std::size_t>(size < 0 ? 0 : size));
    const zip_int64_t got = zip_source_read(source, bytes.data(), bytes.size());
    zip_source_close(source);
    if (got != size)
        return std::nullopt;
    return bytes;
}

}  // namespace

std::optional<std::string> WriteZip(const std::vector<ZipEntry>& entries, std::string_view packed) {
    const PackedEntries packed_entries(packed);
    zip_error_t error;
    zip_error_init(&error);
    const Source target(zip_source_buffer_create(nullptr, 0, 0, &error));
    if (!target)
        return std::nullopt;
    zip_source_keep(target.get());
    zip_t* archive = zip_open_from_source(target.get(), ZIP_TRUNCATE, &error);
    zip_error_fini(&error);
    if (archive == nullptr) {
        zip_source_free(target.get());
        return std::nullopt;
    }
    bool first = true;
    for (const ZipEntry& entry : entries) {
        if (!Put(archive, entry, !(first && entry.name == "mimetype"), packed_entries)) {
            zip_discard(archive);
            return std::nullopt;
        }
        first = false;
    }
    if (zip_close(archive) != 0) {
        zip_discard(archive);
        return std::nullopt;
    }
    return WholeOf(target.get());
}

}  // namespace zorvane
