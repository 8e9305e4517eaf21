// Any bytes as RTF: reading ends, the value is sound, and what is written from it reads back the
// same.
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "compare/document/rtf_reader.h"
#include "compare/document/rtf_writer.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace zorvane;
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);  // NOLINT
    const RichText text = ReadRtf(bytes);
    std::int64_t length = 0;
    for (const CharRun& run : text.char_runs)
        length += run.length > 0 ? run.length : 1 << 30;
    if (length != text.Length())
        std::abort();
    if (ReadRtf(WriteRtf(text)).text != text.text)
        std::abort();
    return 0;
}
