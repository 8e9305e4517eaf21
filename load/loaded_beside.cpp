#include "load/loaded_beside.h"

#include <algorithm>

namespace zorvane {

void KeepBesideInText(const Editor& editor, std::vector<BesideItem>& beside) {
    if (beside.empty())
        return;
    std::int32_t paragraphs = 1;
    char16_t last = 0;
    for (const std::u16string_view piece : editor.TextPieces()) {
        paragraphs += static_cast<std::int32_t>(std::count(piece.begin(), piece.end(), u'\n'));
        last = piece.empty() ? last : piece.back();
    }
    if (last == u'\n')
        --paragraphs;
    for (BesideItem& item : beside)
        item.paragraph = std::clamp(item.paragraph, 0, paragraphs);
}

}  // namespace zorvane
