// How a kind of difference is marked.
#pragma once

#include <cstdint>

namespace zorvane {

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

}  // namespace zorvane
