// Commands about files: to make and look at them, to save and to print.
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>

#include "tools/viewer_driver/driver.h"

namespace zorvane {
namespace {

std::string ReadWhole(const std::string& path) {
    std::stringstream bytes;
    bytes << std::ifstream(path, std::ios::binary).rdbuf();
    return bytes.str();
}

Status WriteWhole(const std::string& path, const std::string& bytes) {
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file << bytes;
    file.flush();
    if (!file)
        return Failure{"cannot write " + path};
    return Status::Ok();
}

// The same text for the same seed; with `edits`, that many words of it are others.
std::string LongText(int paragraphs, unsigned seed, int edits) {
    constexpr int kWords = 12;
    std::mt19937 random(seed);
    std::vector<std::string> words(static_cast<std::size_t>(paragraphs) * kWords);
    for (std::string& word : words)
        word = "word" + std::to_string(random() % 2000);
    for (int edit = 0; edit < edits; ++edit)
        words[random() % words.size()] = "other" + std::to_string(random() % 2000);
    std::string text;
    for (std::size_t at = 0; at < words.size(); ++at)
        text += words[at] + (at % kWords == kWords - 1 ? "\n" : " ");
    return text;
}

constexpr const char* kSaveTypes[] = {"rtf", "txt", "doc", "html"};

}  // namespace

/// write FILE TEXT
Status Driver::Write(const Words& words) {
    return WriteWhole(Path(words[0]), words[1]);
}

/// write-long FILE PARAGRAPHS SEED [EDITS]
Status Driver::WriteLong(const Words& words) {
    const int edits = words.size() > 3 ? std::stoi(words[3]) : 0;
    return WriteWhole(Path(words[0]), LongText(std::stoi(words[1]),
                                               static_cast<unsigned>(std::stoul(words[2])), edits));
}

/// remove FILE
Status Driver::Remove(const Words& words) {
    std::error_code error;
    if (!std::filesystem::remove(Path(words[0]), error))
        return Failure{"there is no such file"};
    return Status::Ok();
}

/// exists FILE yes|no
Status Driver::Exists(const Words& words) {
    const bool there = std::filesystem::exists(Path(words[0]));
    if (there != (words[1] == "yes"))
        return Failure{there ? "it is there" : "it is not there"};
    return Status::Ok();
}

/// holds FILE TEXT...
Status Driver::Holds(const Words& words) {
    const std::string bytes = ReadWhole(Path(words[0]));
    for (std::size_t at = 1; at < words.size(); ++at) {
        if (bytes.find(words[at]) == std::string::npos)
            return Failure{"\"" + words[at] + "\" is not in it"};
    }
    return Status::Ok();
}

namespace {

std::optional<EditorTarget> TargetNamed(const std::string& name) {
    constexpr std::pair<const char*, EditorTarget> kTargets[] = {
        {"original", EditorTarget::Original},
        {"modified", EditorTarget::Modified},
        {"left", EditorTarget::OriginalDiffFinal},
        {"right", EditorTarget::ModifiedDiffFinal},
        {"merged", EditorTarget::AllInOneDiff}};
    for (const auto& [known, target] : kTargets) {
        if (name == known)
            return target;
    }
    return std::nullopt;
}

}  // namespace

/// save EDITOR FILE rtf|txt|doc|html
Status Driver::Save(const Words& words) {
    const Result<frmCompareFiles*> viewer = Viewer();
    if (!viewer.ok())
        return viewer.status();
    const std::optional<EditorTarget> target = TargetNamed(words[0]);
    const auto type = std::find(std::begin(kSaveTypes), std::end(kSaveTypes), words[2]);
    if (!target || type == std::end(kSaveTypes))
        return Failure{"save EDITOR FILE rtf|txt|doc|html"};
    ScriptedWindow& window = session_->WindowOf(*viewer.value());
    window.picked_file = Path(words[1]);
    window.picked_type = static_cast<std::int32_t>(type - std::begin(kSaveTypes)) + 1;
    viewer.value()->SetActiveEditor(*target);
    constexpr const char* kEnds[] = {"cancelled", "stopped", "failed", "saved"};
    const SaveOutcome saved = viewer.value()->SaveActiveEditorAs();
    own_["last-save"] = kEnds[static_cast<std::size_t>(saved.end)];
    window.picked_file.clear();
    return Status::Ok();
}

/// print EDITOR FILE.pdf [selection]
Status Driver::Print(const Words& words) {
    const Result<frmCompareFiles*> viewer = Viewer();
    if (!viewer.ok())
        return viewer.status();
    const std::optional<EditorTarget> target = TargetNamed(words[0]);
    if (!target)
        return Failure{"there is no editor \"" + words[0] + "\" to print"};
    ScriptedWindow& window = session_->WindowOf(*viewer.value());
    window.printed_file = Path(words[1]);
    window.print_selection = words.size() > 2 && words[2] == "selection";
    viewer.value()->SetActiveEditor(*target);
    constexpr const char* kEnds[] = {"cancelled", "stopped", "failed", "printed"};
    own_["last-print"] = kEnds[static_cast<std::size_t>(viewer.value()->PrintActiveEditor())];
    window.printed_file.clear();
    return Status::Ok();
}

/// What the window's timer does; behind a change a file is to be still for a moment.
Status Driver::CheckFiles(const Words&) {
    const Result<frmCompareFiles*> viewer = Viewer();
    if (!viewer.ok())
        return viewer.status();
    viewer.value()->CheckFilesOnDisk();
    return Status::Ok();
}

}  // namespace zorvane
