// ZIP files made in memory.
#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>
#include <vector>
#include <zip.h>

namespace zorvane {

using ZipParts = std::vector<std::pair<std::string, std::string>>;

/// Name and content of each part, in that order; nothing when it cannot be made.
inline std::string MakeZip(const ZipParts& parts) {
    zip_error_t error;
    zip_error_init(&error);
    zip_source_t* target = zip_source_buffer_create(nullptr, 0, 0, &error);
    zip_source_keep(target);
    zip_t* archive = zip_open_from_source(target, ZIP_TRUNCATE, &error);
    for (const auto& [name, content] : parts) {
        zip_source_t* source = zip_source_buffer(archive, content.data(), content.size(), 0);
        zip_file_add(archive, name.c_str(), source, ZIP_FL_ENC_UTF_8);
    }
    std::string bytes;
    if (zip_close(archive) == 0 && zip_source_open(target) == 0) {
        zip_source_seek(target, 0, SEEK_END);
        bytes.resize(static_cast<std::size_t>(zip_source_tell(target)));
        zip_source_seek(target, 0, SEEK_SET);
        zip_source_read(target, bytes.data(), bytes.size());
        zip_source_close(target);
    }
    zip_source_free(target);
    zip_error_fini(&error);
    return bytes;
}

inline std::string MakeZip(
    std::initializer_list<std::pair<std::string_view, std::string_view>> parts) {
    ZipParts copies;
    for (const auto& [name, content] : parts)
        copies.emplace_back(name, content);
    return MakeZip(copies);
}

}  // namespace zorvane
