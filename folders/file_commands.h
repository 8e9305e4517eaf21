// What a user does to the files of a row: open, copy across, delete. Nothing is overwritten or
// deleted without a question.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "common/base/side.h"
#include "folders/folder_rows.h"
#include "folders/folders_window.h"

namespace zorvane {

/// A stretch of the grid: rows and columns, from where it was begun to where it ends.
struct GridSelection {
    std::int32_t row = -1;  ///< 0-based, without the head
    FolderColumn column = FolderColumn::Original;
    std::int32_t row_end = -1;
    FolderColumn column_end = FolderColumn::Original;
};

/// A cell of the grid that a file may stand in.
struct GridCell {
    std::int32_t row = -1;  ///< 0-based, without the head
    FolderColumn column = FolderColumn::Original;
};

/// All borrowed. A row that is no file does nothing. Each works on the record of the row.
class FileCommands {
  public:
    using Recycle = std::function<Status(const std::string& path)>;

    FileCommands(ProcessState& process, FolderRows& rows, CompareFoldersWindow& window);
    /// In place of the desktop's trash.
    void SetRecycle(Recycle recycle) { recycle_ = std::move(recycle); }

    void CompareSelectedFiles(std::int32_t row, bool new_window);
    /// The column tells the side, here and below: the first the Original, any other the Modified.
    void Launch(std::int32_t row, FolderColumn column);
    void CopyToFolder(std::int32_t row, FolderColumn column);
    void RecycleDelete(std::int32_t row, FolderColumn column);
    void PermanentDelete(std::int32_t row, FolderColumn column);
    /// The Delete key: all files of the selection, for good, after one question.
    void DeleteSelected(const GridSelection& selection);
    /// The same of cells that need not stand beside each other: a grid may leave rows out.
    void DeleteCells(const std::vector<GridCell>& cells);

    /// "File does not exist", for whoever works on a file that is not there.
    void TellMissing(const std::string& path);

  private:
    struct Target {
        std::int32_t record = 0;
        Side side = Side::Original;
        PerSide<std::string> files;
        const std::string& Path() const { return files[side]; }
    };
    std::optional<Target> TargetOf(std::int32_t row, FolderColumn column) const;
    bool Exists(const std::string& path) const;
    void Delete(const Target& target, const std::string& title, const std::string& question,
                const std::function<Status(const std::string&)>& remove);
    void TellFailure(const std::string& reason);
    std::string Translate(const char* english);

    ProcessState& process_;
    FolderRows& rows_;
    CompareFoldersWindow& window_;
    Recycle recycle_;
};

}  // namespace zorvane
