// The two sides of a compare, and fields that exist once for each.
#pragma once

namespace zorvane {

/// Original is the master of a command line, Modified its source.
enum class Side { Original, Modified };

inline constexpr Side kBothSides[] = {Side::Original, Side::Modified};

constexpr Side OtherSide(Side side) {
    return side == Side::Original ? Side::Modified : Side::Original;
}

/// One value for each side.
template <class T>
struct PerSide {
    T original{};
    T modified{};

    constexpr T& operator[](Side side) { return side == Side::Original ? original : modified; }
    constexpr const T& operator[](Side side) const {
        return side == Side::Original ? original : modified;
    }
    friend bool operator==(const PerSide&, const PerSide&) = default;
};

}  // namespace zorvane
