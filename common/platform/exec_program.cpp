#include "common/platform/exec_program.h"

#include <cerrno>
#include <cstring>
#include <sys/stat.h>
#include <unistd.h>

#include "common/platform/native_path.h"

namespace zorvane {

bool IsProgram(const std::string& file) {
    const std::string path = NativePath(file);
    struct stat facts {};
    return stat(path.c_str(), &facts) == 0 && S_ISREG(facts.st_mode) &&
           access(path.c_str(), X_OK) == 0;
}

Status BecomeProgram(const std::string& program, const std::vector<std::string>& arguments) {
    std::string path = NativePath(program);
    std::vector<std::string> words = arguments;
    std::vector<char*> pointers{path.data()};
    for (std::string& word : words)
        pointers.push_back(word.data());
    pointers.push_back(nullptr);
    execv(path.c_str(), pointers.data());
    return Failure{program + ": " + std::strerror(errno)};
}

}  // namespace zorvane
