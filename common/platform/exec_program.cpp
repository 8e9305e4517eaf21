#include "common/platform/exec_program.h"

#include <sys/stat.h>
#include <unistd.h>

#include "common/platform/argument_pointers.h"
#include "common/platform/native_path.h"
#include "common/platform/system_failure.h"

namespace zorvane {

bool IsProgram(const std::string& file) {
    const std::string path = NativePath(file);
    struct stat facts {};
    return stat(path.c_str(), &facts) == 0 && S_ISREG(facts.st_mode) &&
           access(path.c_str(), X_OK) == 0;
}

Status BecomeProgram(const std::string& program, const std::vector<std::string>& arguments) {
    std::vector<std::string> words{NativePath(program)};
    words.insert(words.end(), arguments.begin(), arguments.end());
    const std::vector<char*> pointers = ArgumentPointers(words);
    execv(pointers[0], pointers.data());
    return SystemFailure(program);
}

}  // namespace zorvane
