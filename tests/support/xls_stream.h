// The stream of a small binary workbook, record by record: BIFF5 or BIFF8.
#pragma once

#include <bit>
#include <cstdint>
#include <string>
#include <string_view>

#include "tests/support/compound_bytes.h"

namespace zorvane {

/// Bytes of numbers, lowest first: 16 bits each unless told otherwise.
inline std::string Low(std::uint64_t number, int bytes = 2) {
    std::string text;
    for (int i = 0; i < bytes; ++i)
        text += static_cast<char>(number >> (8 * i) & 0xFF);
    return text;
}

inline std::string LowDouble(double number) {
    return Low(std::bit_cast<std::uint64_t>(number), 8);
}

inline std::string XlsRecord(std::uint16_t id, std::string_view data) {
    return Low(id) + Low(data.size()) + std::string(data);
}

struct XlsParts {
    bool biff8 = true;
    std::string globals;  ///< records behind those of the code page and the sheets
    std::string cells;    ///< records of the first sheet
    std::string second;   ///< those of the second, which is hidden
};

inline std::string XlsText(bool biff8, std::string_view text) {
    return (biff8 ? std::string(1, '\0') : "") + std::string(text);
}

inline std::string MakeXlsStream(const XlsParts& parts) {
    const auto begin = [&parts](std::uint16_t type) {
        return XlsRecord(0x809,
                         Low(parts.biff8 ? 0x600 : 0x500) + Low(type) + std::string(12, '\0'));
    };
    const auto sheet = [&parts](std::size_t offset, std::uint8_t state, std::string_view name) {
        return XlsRecord(0x85, Low(offset, 4) + Low(state, 1) + Low(0, 1) + Low(name.size(), 1) +
                                   XlsText(parts.biff8, name));
    };
    const std::string end = XlsRecord(0x0A, "");
    const std::string head = begin(5) + XlsRecord(0x42, Low(1251));
    const std::string first = begin(0x10) + parts.cells + end;
    const std::size_t size = head.size() + sheet(0, 0, "One").size() +
                             sheet(0, 1, "My two").size() + parts.globals.size() + end.size();
    return head + sheet(size, 0, "One") + sheet(size + first.size(), 1, "My two") + parts.globals +
           end + first + begin(0x10) + parts.second + end;
}

inline std::string MakeXls(const XlsParts& parts) {
    CompoundWriter writer;
    writer.Add(parts.biff8 ? "Workbook" : "Book", MakeXlsStream(parts));
    return writer.Finish();
}

}  // namespace zorvane
