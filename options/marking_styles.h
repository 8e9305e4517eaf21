// How the four kinds of difference are marked.
#pragma once

#include <cstdint>

namespace zorvane {

class clsCompareFileOptions;

enum class Mark { Addition, Deletion, ChangeOriginal, ChangeModified };

/// Colours have red in the low byte.
struct MarkStyle {
    std::int32_t ForeColor = 0;
    std::int32_t BackColor = 0xFFFFFF;
    bool bBold = false;
    bool bUnderline = false;
    bool bStrikeout = false;
    bool bItalic = false;
    friend bool operator==(const MarkStyle&, const MarkStyle&) = default;
};

MarkStyle StyleFor(const clsCompareFileOptions& options, Mark mark);
/// The style of an addition or deletion inside a changed paragraph: that of a change of the
/// modified side under `bShowSubParagraphChangesSimilarly`.
MarkStyle SubParagraphStyleFor(const clsCompareFileOptions& options, Mark mark);

}  // namespace zorvane
