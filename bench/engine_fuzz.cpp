// Any two texts, any switches, any expression: the records stay in order, within both texts, and
// the same.
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "compare/engine/vestrel_x.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace zorvane;
    if (size < 2)
        return 0;
    const std::uint8_t switches = data[0];
    const std::string_view text(reinterpret_cast<const char*>(data) + 2, size - 2);  // NOLINT
    const std::size_t cut = text.size() * data[1] / 256;
    const std::string_view master = text.substr(0, cut);
    const std::string_view source = text.substr(cut);
    VestrelX engine;
    engine.putIgnoreCase((switches & 1) != 0);
    engine.putIgnoreWhitespace((switches & 2) != 0);
    engine.putIgnoreEmptyLines((switches & 4) != 0);
    engine.putCompareFaster((switches & 8) != 0);
    engine.putLargerSections((switches & 16) != 0);
    engine.putUseLineBracket((switches & 32) != 0);
    engine.putFilterEnabled((switches & 64) != 0);
    engine.putFilterExpression(std::string(source.substr(0, 12)));
    if (!engine.CompareText(master, source).ok())
        return 0;
    std::int32_t original = 0;
    std::int32_t modified = 0;
    for (const DifferenceRecord& record : engine.Records()) {
        if (record.InFront(Side::Original).value < original ||
            record.InFront(Side::Modified).value < modified ||
            record.paragraphs.original.last.value > engine.Compared().Paragraphs(Side::Original) ||
            record.paragraphs.modified.last.value > engine.Compared().Paragraphs(Side::Modified))
            std::abort();
        original = record.paragraphs.original.last.value;
        modified = record.paragraphs.modified.last.value;
    }
    return 0;
}
