#include "tools/viewer_driver/script_line.h"

#include <cstddef>

namespace zorvane {
namespace {

char Unescaped(char letter) {
    return letter == 'n' ? '\n' : letter == 't' ? '\t' : letter;
}

// `at` stands behind the opening quote, and afterwards behind the closing one.
bool ReadQuoted(std::string_view line, std::size_t& at, std::string& word) {
    while (at < line.size() && line[at] != '"') {
        if (line[at] == '\\' && at + 1 < line.size())
            word += Unescaped(line[++at]);
        else
            word += line[at];
        ++at;
    }
    return at++ < line.size();
}

}  // namespace

std::optional<ScriptLine> ReadScriptLine(std::string_view line) {
    constexpr std::string_view kBlanks = " \t\r";
    ScriptLine read;
    std::size_t at = line.find_first_not_of(kBlanks);
    if (at == std::string_view::npos || line[at] == '#')
        return read;
    const std::size_t end = std::min(line.find_first_of(kBlanks, at), line.size());
    read.command = line.substr(at, end - at);
    at = line.find_first_not_of(kBlanks, end);
    if (at == std::string_view::npos)
        return read;
    read.rest = line.substr(at, line.find_last_not_of(kBlanks) + 1 - at);
    while (at < line.size()) {
        std::string word;
        while (at < line.size() && kBlanks.find(line[at]) == std::string_view::npos) {
            if (line[at] != '"') {
                word += line[at++];
                continue;
            }
            if (!ReadQuoted(line, ++at, word))
                return std::nullopt;
        }
        read.words.push_back(std::move(word));
        at = std::min(line.find_first_not_of(kBlanks, at), line.size());
    }
    return read;
}

}  // namespace zorvane
