// The words of a command, as the system takes them.
#pragma once

#include <string>
#include <vector>

namespace zorvane {

/// Into `words`, which stay as they are as long as the pointers are used; a null pointer ends them.
inline std::vector<char*> ArgumentPointers(std::vector<std::string>& words) {
    std::vector<char*> pointers;
    pointers.reserve(words.size() + 1);
    for (std::string& word : words)
        pointers.push_back(word.data());
    pointers.push_back(nullptr);
    return pointers;
}

}  // namespace zorvane
