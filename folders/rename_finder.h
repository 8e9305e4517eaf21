// Which of the files that are on one side only are the same file under another name or in another
// place.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "common/base/side.h"
#include "compare/engine/folder_scan.h"

namespace zorvane {

class ExtractedTexts;

/// Two records of a finished scan, which it never touches.
struct RenamedEntry {
    std::int32_t original = 0;  ///< index of the record that is only in the Original tree
    std::int32_t modified = 0;
    std::int32_t percent = 100;  ///< how much of the text is the same; 100: equal, byte for byte
    bool folder = false;         ///< with all that is in it, each file in its place
    friend bool operator==(const RenamedEntry&, const RenamedEntry&) = default;
};

struct RenameOptions {
    bool by_text = true;  ///< files of plain text that are alike too
    /// The text of a document by its path, asked for on several threads; nothing where it has none.
    /// Empty: documents are alike only where they are equal.
    std::function<std::optional<std::string>(const std::string&)> document_text;
    FollowLink follow = FollowLink::No;  ///< as the scan did: a link to a file stands for it
    int threads = 0;                     ///< 0: one for each core
    std::function<bool()> stop;          ///< asked for each file and buffer; empty: nobody stops it
};

/// Such texts of `texts`, which outlives it.
std::function<std::optional<std::string>(const std::string&)> DocumentTextsOf(
    ExtractedTexts& texts, std::function<bool()> stop);

/// In the order of the Original's records. The files of a folder that moved are not told again.
/// Empty files are nobody's, and so are links that stand for themselves. After a stop what is there
/// is not whole.
std::vector<RenamedEntry> FindRenames(const FolderScan& scan, const PerSide<std::string>& roots,
                                      const RenameOptions& options);

}  // namespace zorvane
