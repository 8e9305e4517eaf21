// Two folders and a process of fakes, for what works on a folder compare.
#pragma once

#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "common/process_state.h"
#include "folders/compare_folders_viewer.h"
#include "tests/support/fakes.h"
#include "tests/support/folder_trees.h"

namespace zorvane {

class RecordingFoldersWindow : public SilentFoldersWindow {
  public:
    void ShowStatus(FoldersPanel panel, const std::string& text) override {
        status[static_cast<std::size_t>(panel)] = text;
    }
    void RowsCleared() override { ++cleared; }
    void RowsChanged(std::int32_t first, std::int32_t count) override {
        changed.emplace_back(first, count);
    }
    void FocusFolder(Side side) override { focus = side; }
    void FlashFrame() override { ++flashes; }
    void ShowMessage(const std::string& text, const std::string& title) override {
        messages.push_back(title + "|" + text);
    }
    bool AskYesNo(const std::string& text, const std::string& title) override {
        questions.push_back(title + "|" + text);
        return answer;
    }
    bool ShowNotice(const std::string&, const std::string& title) override {
        notices.push_back(title);
        return answer;
    }
    std::string BrowseForFolder(const std::string& start) override {
        browsed_from = start;
        return picked;
    }
    void CompareFiles(const PerSide<std::string>& files, bool new_window) override {
        compared.push_back((new_window ? "new " : "first ") + files.original + " " +
                           files.modified);
    }
    std::string status[6];
    int cleared = 0;
    int flashes = 0;
    std::vector<std::pair<std::int32_t, std::int32_t>> changed;
    Side focus = Side::Original;
    bool answer = false;
    std::string picked;
    std::string browsed_from;
    std::vector<std::string> messages;
    std::vector<std::string> questions;
    std::vector<std::string> notices;
    std::vector<std::string> compared;
};

struct FolderViewerSetup {
    FolderViewerSetup() : process(fakes.platform), viewer(process, window, false) {
        process.gsDataFolder = fakes.folder.Path("data");
        viewer.Setup("1_CompareDir", true);
        viewer.cbSelectOriginal = trees.Root(Side::Original);
        viewer.cbSelectModified = trees.Root(Side::Modified);
    }
    bool RunWhole() {
        if (!viewer.RefreshDiffViewer())
            return false;
        while (viewer.Busy() && !viewer.Poll())
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        return true;
    }
    std::int32_t RowOf(const std::string& below) {
        for (std::int32_t row = 0; row < viewer.RowCount(); ++row) {
            if (viewer.VestrelX1().Folders().PathBelow(static_cast<std::size_t>(row)) == below)
                return row;
        }
        return -1;
    }

    FakePlatform fakes;
    ProcessState process;
    FolderTrees trees;
    RecordingFoldersWindow window;
    frmCompareDir viewer;
};

}  // namespace zorvane
