// Any bytes as a settings file, then a key written and read: reading ends, what was written is read
// back by another reader, and all other keys stay as they were.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <unistd.h>

#include "common/platform/ini_profile.h"

namespace {

using namespace zorvane;

constexpr std::string_view kSections[] = {"a", "Compare Files", "[b]", ""};
constexpr std::string_view kKeys[] = {"k", "key", "K=", ";x", ""};

void Require(bool holds) {
    if (!holds)
        std::abort();
}

std::string ReadAll(IniProfile& profile) {
    std::string all;
    for (const std::string_view section : kSections) {
        for (const std::string_view key : kKeys)
            all += profile.Read(section, key, "none", 4096) + '\n';
    }
    return all;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const std::string path = "/dev/shm/zorvane-settings-fuzz-" + std::to_string(getpid());
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);  // NOLINT
    std::ofstream(path, std::ios::binary) << bytes;
    const std::string before = ReadAll(*OpenIniProfile(path));
    // A value as it is read somewhere else in the file: no line break, no quotes around it.
    const std::string value = "value " + std::to_string(size);
    {
        const auto writer = OpenIniProfile(path);
        writer->Write("written", "by us", value);
        Require(writer->Flush().ok());
    }
    const auto reader = OpenIniProfile(path);
    Require(reader->Read("WRITTEN", "By Us", "") == value);
    Require(ReadAll(*reader) == before);
    std::filesystem::remove(path);
    return 0;
}
