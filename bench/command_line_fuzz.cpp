// Any line in the slash form: parsing ends. Values that would open files are left out.
#include <cstdint>
#include <string>

#include "app/command_line_parser.h"
#include "common/platform/platform.h"
#include "common/process_state.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace zorvane;
    std::string line(reinterpret_cast<const char*>(data), size);  // NOLINT
    std::string letters = line;                                   // blanks may stand in a switch
    std::erase_if(letters, [](char byte) { return byte <= ' ' || byte > '~'; });
    for (const char* opens : {"/L", "/l", "/?", "/V", "/v"}) {
        if (letters.find(opens) != std::string::npos)
            return 0;
    }
    Platform platform = MakePosixPlatform();
    ProcessState process(platform);
    CommandLineRequest request;
    ParseCommandLine(process, line, line, request);
    return 0;
}
