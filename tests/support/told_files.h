// Results that were looked at once and are kept as text beside what they were made of. A change
// shows as the first line that differs; with ZORVANE_WRITE_TOLD=1 in the environment the texts are
// written anew.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include <gtest/gtest.h>

namespace zorvane {

inline std::string ToldBytes(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream bytes;
    bytes << file.rdbuf();
    return bytes.str();
}

/// As it was looked at and as it is now; empty where nothing differs.
inline std::string FirstDifference(const std::string& looked_at, const std::string& now) {
    std::istringstream old_lines(looked_at);
    std::istringstream new_lines(now);
    std::string old_line;
    std::string new_line;
    for (int number = 1; looked_at != now; ++number) {
        const bool more_old = !!std::getline(old_lines, old_line);
        const bool more_new = !!std::getline(new_lines, new_line);
        if (more_old != more_new || old_line != new_line || !more_old)
            return "line " + std::to_string(number) + "\n" + (more_old ? old_line : "(end)") +
                   "\n" + (more_new ? new_line : "(end)");
    }
    return {};
}

/// Fails the running test where `told` is not what `file` holds.
inline void ExpectTold(const std::filesystem::path& file, const std::string& told) {
    SCOPED_TRACE(file.filename().string());
    if (std::getenv("ZORVANE_WRITE_TOLD") != nullptr)
        std::ofstream(file, std::ios::binary) << told;
    EXPECT_EQ(FirstDifference(ToldBytes(file), told), "");
}

}  // namespace zorvane
