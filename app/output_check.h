// What a command writes must not be what it reads, nor two things in one file.
#pragma once

#include <string>
#include <vector>

#include "common/base/result.h"

namespace zorvane {

struct CompareCommand;
struct FoldersCommand;
struct TextCommand;

struct NamedOutput {
    std::string option;  ///< "--log"
    std::string file;
};

/// Fails, naming the file and what to do, when an output is one of `inputs` or of the other
/// outputs, by whatever name. Devices and pipes may be written twice.
Status CheckOutputs(const std::vector<std::string>& inputs,
                    const std::vector<NamedOutput>& outputs);
Status CheckOutputs(const CompareCommand& command);
Status CheckOutputs(const TextCommand& command);
/// Nor may a report of it lie in one of the two folders, where it would be compared next time.
Status CheckOutputs(const FoldersCommand& command);

}  // namespace zorvane
