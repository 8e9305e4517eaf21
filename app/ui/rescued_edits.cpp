#include "app/ui/rescued_edits.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "common/platform/native_path.h"

namespace zorvane {
namespace {

namespace fs = std::filesystem;

constexpr const char* kUntold = ".new.rtf";  // is told by its ending, so that a told one is opened
constexpr const char* kTold = ".rtf";
constexpr int kMost = 1000;

// A name that is free, of what is written and of what will be made of it.
std::string FreePath(const std::string& stem) {
    for (int number = 1; number <= kMost; ++number) {
        const std::string name = number == 1 ? stem : stem + " " + std::to_string(number);
        std::error_code error;
        if (!fs::exists(NativePath(name + kUntold), error) &&
            !fs::exists(NativePath(name + kTold), error))
            return name + kUntold;
    }
    return stem + kUntold;
}

std::string StemOf(frmCompareFiles& viewer, Side side) {
    const std::string path = viewer.ChosenFile(side);
    const std::string stem = fs::path(NativePath(path)).stem().string();
    return (stem.empty() ? "untitled" : stem) +
           (side == Side::Original ? "-original" : "-modified");
}

}  // namespace

void RescuedEdits::Keep(frmCompareFiles& viewer) const {
    for (const Side side : kBothSides) {
        ViewerEditors& texts = viewer.Editors();
        const RichDocument& text =
            (side == Side::Original ? texts.rtbOriginal : texts.rtbModified).editor;
        if (!text.IsModified())
            continue;
        std::error_code error;
        fs::create_directories(NativePath(folder_), error);
        IgnoreFailure(
            text.SaveFile(FreePath(folder_ + "/" + StemOf(viewer, side)), FileFormat::RichText),
            "there is nobody to tell");
    }
}

std::vector<std::string> RescuedEdits::TakeUntold() const {
    std::vector<std::string> names;
    std::error_code error;
    for (const fs::directory_entry& entry : fs::directory_iterator(NativePath(folder_), error)) {
        std::string name = entry.path().filename().string();
        if (!name.ends_with(kUntold))
            continue;
        name.replace(name.size() - std::string_view(kUntold).size(), std::string::npos, kTold);
        fs::rename(entry.path(), entry.path().parent_path() / name, error);
        names.push_back(std::move(name));
    }
    std::sort(names.begin(), names.end());
    return names;
}

}  // namespace zorvane
