// Columns of sheets as people call them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace zorvane {

/// "A" for 0, "Z" for 25, "AA" for 26.
inline void AppendColumn(std::int64_t column, std::string& out) {
    char letters[8];
    std::size_t count = 0;
    for (std::int64_t rest = column + 1; rest > 0 && count < sizeof letters; rest = (rest - 1) / 26)
        letters[count++] = static_cast<char>('A' + (rest - 1) % 26);
    while (count > 0)
        out += letters[--count];
}

}  // namespace zorvane
