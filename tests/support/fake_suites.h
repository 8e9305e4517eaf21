// Folders that look like office suites, and nothing else; and a variable of the environment.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <optional>
#include <string>

#include "tests/support/temp_folder.h"

namespace zorvane {

class FakeSuites {
  public:
    FakeSuites() {
        AddFile("whole/program/libmergedlo.so", std::string(200, 'x'));
        AddFile("parts/program/libsofficeapp.so", std::string(200, 'x'));
        AddFile("parts/program/libsclo.so", "");
        // The library's name taken by a note on where it went.
        AddFile("program/program/libsofficeapp.so", "invalid - merged lib\n");
        AddScript("program/program/soffice", "exit 0");
        AddFile("rest/program/soffice", "not to be executed");
        AddScript("script/soffice", "exit 0");
        for (int number = 0; number < 20; ++number)
            AddFile("parts/share/config/soffice.cfg/modules/scalc/ui/" + std::to_string(number),
                    "");
        // A library that was parted from its windows, with and without the program.
        for (const std::string name : {"headless", "useless"}) {
            AddFile(name + "/program/libmergedlo.so", std::string(200, 'x'));
            AddFile(name + "/share/config/soffice.cfg/modules/swriter/ui/one.ui", "");
        }
        AddScript("headless/program/soffice", "exit 0");
        std::filesystem::create_directories(Path("links"));
        std::filesystem::create_symlink("../whole/program/soffice", Path("links/libreoffice"));
        std::filesystem::create_symlink("libreoffice", Path("links/soffice"));
        AddScript("whole/program/soffice", "exit 0");
    }
    void AddFile(const std::string& name, const std::string& bytes) const {
        std::filesystem::create_directories(std::filesystem::path(Path(name)).parent_path());
        root_.Write(name, bytes);
    }
    void AddScript(const std::string& name, const std::string& commands) const {
        AddFile(name, "#!/bin/sh\n" + commands + "\n");
        std::filesystem::permissions(Path(name), std::filesystem::perms::owner_all);
    }
    std::string Path(const std::string& name) const { return root_.Path(name); }

  private:
    TempFolder root_;
};

/// Sets a variable of the environment for as long as it lives.
class Environment {
  public:
    Environment(const char* name, const std::string& value) : name_(name) {
        if (const char* before = std::getenv(name))
            before_ = before;
        setenv(name, value.c_str(), 1);
    }
    ~Environment() {
        if (before_)
            setenv(name_, before_->c_str(), 1);
        else
            unsetenv(name_);
    }
    Environment(const Environment&) = delete;
    Environment& operator=(const Environment&) = delete;

  private:
    const char* name_;
    std::optional<std::string> before_;
};

}  // namespace zorvane
