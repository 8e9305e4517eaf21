// zorvane-driver: drives viewers without a display by a script, one command a line.
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>

#include "tools/viewer_driver/driver.h"

namespace {

namespace fs = std::filesystem;

constexpr int kNotSo = 1;
constexpr int kTrouble = 2;

/// Goes with the program.
class Scratch {
  public:
    Scratch() {
        std::string pattern = (fs::temp_directory_path() / "zvdriver-XXXXXX").string();
        const char* made = mkdtemp(pattern.data());
        path_ = made == nullptr ? std::string() : made;
    }
    ~Scratch() {
        std::error_code error;
        if (!path_.empty())
            fs::remove_all(path_, error);
    }
    Scratch(const Scratch&) = delete;
    Scratch& operator=(const Scratch&) = delete;
    const std::string& Path() const { return path_; }

  private:
    std::string path_;
};

int RunScript(const std::string& name, std::istream& script, const std::string& folder,
              const std::string& here) {
    zorvane::Driver driver(folder, here, std::cout);
    std::string line;
    for (int number = 1; std::getline(script, line); ++number) {
        const zorvane::Status done = driver.Do(line);
        if (!done.ok()) {
            std::cerr << name << ":" << number << ": " << line << ": " << done.failure().reason
                      << "\n";
            return kNotSo;
        }
    }
    return 0;
}

}  // namespace

int main(int count, char** values) {
    if (count != 2) {
        std::cerr << "Usage: zorvane-driver SCRIPT, or - for standard input\n";
        return kTrouble;
    }
    const std::string name = values[1];
    const Scratch scratch;
    if (scratch.Path().empty()) {
        std::cerr << "zorvane-driver: no folder can be made\n";
        return kTrouble;
    }
    if (name == "-")
        return RunScript(name, std::cin, scratch.Path(), fs::current_path().string());
    std::ifstream script(name);
    if (!script) {
        std::cerr << "zorvane-driver: cannot read " << name << "\n";
        return kTrouble;
    }
    return RunScript(name, script, scratch.Path(), fs::absolute(name).parent_path().string());
}
