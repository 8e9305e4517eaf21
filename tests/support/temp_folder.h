// A fresh folder that goes with the test.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

namespace zorvane {

class TempFolder {
  public:
    TempFolder() {
        std::string pattern = (std::filesystem::temp_directory_path() / "zvtest-XXXXXX").string();
        path_ = mkdtemp(pattern.data());
    }
    ~TempFolder() {
        std::error_code error;
        std::filesystem::remove_all(path_, error);
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    std::string Path(std::string_view name = "") const {
        return name.empty() ? path_ : path_ + "/" + std::string(name);
    }
    std::string Write(std::string_view name, std::string_view bytes) const {
        const std::filesystem::path path(Path(name));
        std::filesystem::create_directories(path.parent_path());
        std::ofstream(path, std::ios::binary) << bytes;
        return path;
    }
    std::string Read(std::string_view name) const {
        std::stringstream bytes;
        bytes << std::ifstream(Path(name), std::ios::binary).rdbuf();
        return bytes.str();
    }

  private:
    std::string path_;
};

}  // namespace zorvane
