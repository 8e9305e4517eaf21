#include "redline/zip_writer.h"

#include <memory>
#include <zip.h>

namespace zorvane {
namespace {

struct SourceEnd {
    void operator()(zip_source_t* source) const { zip_source_free(source); }
};
using Source = std::unique_ptr<zip_source_t, SourceEnd>;

// The next level takes half as much time again for a twentieth less bytes.
constexpr zip_uint32_t kLevel = 5;
constexpr zip_uint16_t kFirstDay = 0x21;  // the first that the format knows, 1980-01-01

bool Put(zip_t* archive, const ZipEntry& entry, bool packed) {
    zip_source_t* content =
        zip_source_buffer(archive, entry.content.data(), entry.content.size(), 0);
    if (content == nullptr)
        return false;
    const zip_int64_t place = zip_file_add(archive, entry.name.c_str(), content, ZIP_FL_ENC_UTF_8);
    if (place < 0) {
        zip_source_free(content);
        return false;
    }
    const auto index = static_cast<zip_uint64_t>(place);
    return zip_file_set_dostime(archive, index, 0, kFirstDay, 0) == 0 &&
           zip_set_file_compression(archive, index, packed ? ZIP_CM_DEFLATE : ZIP_CM_STORE,
                                    kLevel) == 0;
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

std::optional<std::string> WriteZip(const std::vector<ZipEntry>& entries) {
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
        if (!Put(archive, entry, !(first && entry.name == "mimetype"))) {
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
