// Writes a ZIP package whose bytes depend on nothing but what is in it. Uses libzip.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zorvane {

struct ZipEntry {
    std::string name;
    std::string_view content;
};

/// In the order given, all of one fixed time; a first entry "mimetype" stays unpacked, as
/// OpenDocument wants it. Where `packed`, another package, holds an entry of the same name and
/// content, its packed bytes are taken over: packing costs more than all else of a document with
/// pictures. Nothing when there is no memory for it.
std::optional<std::string> WriteZip(const std::vector<ZipEntry>& entries,
                                    std::string_view packed = {});

}  // namespace zorvane
