// Any bytes as an encrypted document, or as the two streams of one: opening ends.
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "load/readers/container/decrypt.h"
#include "load/readers/container/package_cipher.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace zorvane;
    if (size < 2)
        return 0;
    const std::string_view bytes(reinterpret_cast<const char*>(data) + 2, size - 2);  // NOLINT
    // A high count of rounds is allowed and slow; it would only stop the fuzzer.
    const std::size_t spins = bytes.find("spinCount");
    if (spins != std::string_view::npos &&
        bytes.substr(spins, 20).find_first_of("56789") != std::string_view::npos)
        return 0;
    std::string package;
    ReadEnd end;
    if ((data[0] & 1) == 0) {
        end = DecryptPackage(bytes, "pass", package);
    } else {
        const std::size_t cut = std::min(bytes.size(), std::size_t{data[0]} * 256 + data[1]);
        package = bytes.substr(cut);
        end = DecipherPackage(bytes.substr(0, cut), "pass", package);
    }
    // Nothing comes out that did not go in.
    if (end.ok() && package.size() > size)
        std::abort();
    return 0;
}
