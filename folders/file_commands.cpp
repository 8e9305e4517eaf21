#include "folders/file_commands.h"

#include <algorithm>
#include <filesystem>
#include <vector>

#include "common/file_utilities.h"
#include "common/platform/copy_file.h"
#include "common/platform/native_path.h"
#include "common/platform/trash.h"
#include "common/process_state.h"

namespace zorvane {
namespace {

Side SideOf(FolderColumn column) {
    return column == FolderColumn::Original ? Side::Original : Side::Modified;
}

Status Gone(bool deleted, const std::string& path) {
    return deleted ? Status::Ok() : Status(Failure{path + ": cannot be deleted"});
}

// Also one that its user may not write to.
Status DeleteForGood(const std::string& path) {
    std::error_code error;
    const bool deleted = std::filesystem::remove(NativePath(path), error);
    return error ? Status(Failure{path + ": " + error.message()}) : Gone(deleted, path);
}

}  // namespace

FileCommands::FileCommands(ProcessState& process, FolderRows& rows, CompareFoldersWindow& window)
    : process_(process),
      rows_(rows),
      window_(window),
      recycle_([](const std::string& path) { return MoveToTrash(path, UserDataHome()); }) {}

std::string FileCommands::Translate(const char* english) {
    return process_.Translate(english);
}

// A link counts as what stands there, wherever it leads.
bool FileCommands::Exists(const std::string& path) const {
    std::error_code error;
    const auto status = std::filesystem::symlink_status(NativePath(path), error);
    return std::filesystem::exists(status) && !std::filesystem::is_directory(status);
}

std::optional<FileCommands::Target> FileCommands::TargetOf(std::int32_t row,
                                                           FolderColumn column) const {
    const std::optional<FolderRecord> record = row < 0 ? std::nullopt : rows_.Record(row);
    if (!record || record->IsFile != 1)
        return std::nullopt;
    return Target{row, SideOf(column), {record->Original(), record->Modified()}};
}

void FileCommands::TellMissing(const std::string& path) {
    window_.ShowMessage(path + ":\n\n" + Translate("File does not exist"), Translate("Error"));
}

void FileCommands::TellFailure(const std::string& reason) {
    window_.ShowMessage(Translate("An error occured: ") + reason, Translate("Error"));
}

void FileCommands::CompareSelectedFiles(std::int32_t row, bool new_window) {
    const std::optional<Target> target = TargetOf(row, FolderColumn::Original);
    if (!target)
        return;
    for (const Side side : kBothSides) {
        if (!Exists(target->files[side])) {
            TellMissing(target->files[side]);
            return;
        }
    }
    window_.CompareFiles(target->files, new_window);
}

void FileCommands::Launch(std::int32_t row, FolderColumn column) {
    const std::optional<Target> target = TargetOf(row, column);
    if (!target)
        return;
    if (!Exists(target->Path())) {
        TellMissing(target->Path());
        return;
    }
    if (const Status opened = process_.platform.shell->Open(target->Path()); !opened.ok())
        TellFailure(opened.failure().reason);
}

void FileCommands::CopyToFolder(std::int32_t row, FolderColumn column) {
    const std::optional<Target> target = TargetOf(row, column);
    if (!target)
        return;
    const Side to = OtherSide(target->side);
    if (!Exists(target->Path())) {
        TellMissing(target->Path());
        return;
    }
    if (Exists(target->files[to]) &&
        !window_.AskYesNo(
            Translate("Are you sure you want to replace this file") + " \n\n" + target->files[to],
            Translate("Copy File to Other Folder")))
        return;
    const Status copied = CopyFileKeeping(target->Path(), target->files[to]);
    if (!copied.ok()) {
        TellFailure(copied.failure().reason);
        return;
    }
    rows_.MarkCopied(row, to);
    window_.RowsChanged(row, 1);
}

void FileCommands::Delete(const Target& target, const std::string& title,
                          const std::string& question,
                          const std::function<Status(const std::string&)>& remove) {
    if (!Exists(target.Path())) {
        TellMissing(target.Path());
        return;
    }
    if (!window_.AskYesNo(question + " \n\n" + target.Path(), title))
        return;
    if (const Status removed = remove(target.Path()); !removed.ok()) {
        TellFailure(removed.failure().reason);
        return;
    }
    rows_.MarkGone(target.record, target.side, Exists(target.files[OtherSide(target.side)]));
    window_.RowsChanged(target.record, 1);
}

void FileCommands::RecycleDelete(std::int32_t row, FolderColumn column) {
    if (const std::optional<Target> target = TargetOf(row, column))
        Delete(*target, Translate("Recycle Bin Confirmation"),
               Translate("Are you sure you want to send to the Recycle Bin"), recycle_);
}

void FileCommands::PermanentDelete(std::int32_t row, FolderColumn column) {
    if (const std::optional<Target> target = TargetOf(row, column))
        Delete(*target, Translate("Permanent Delete Confirmation"),
               Translate("Are you sure you want to Permanently Delete"),
               [this](const std::string& path) {
                   return Gone(DeleteFileWithRetry(*process_.platform.clock, path), path);
               });
}

void FileCommands::DeleteSelected(const GridSelection& selection) {
    std::vector<FolderColumn> columns{selection.column};
    if (selection.column != selection.column_end)
        columns = {FolderColumn::Original, FolderColumn::Modified};
    else if (selection.column > FolderColumn::Modified)
        return;
    const std::int32_t first = std::min(selection.row, selection.row_end);
    const std::int32_t last = std::max(selection.row, selection.row_end);
    std::vector<GridCell> cells;
    for (const FolderColumn column : columns) {
        for (std::int32_t row = first; row <= last; ++row)
            cells.push_back({row, column});
    }
    if (first >= 0)
        DeleteCells(cells);
}

void FileCommands::DeleteCells(const std::vector<GridCell>& cells) {
    // Kept: these two texts are not translated.
    if (cells.empty() ||
        !window_.AskYesNo("Are you sure you want to Permanently Delete All Selected Files?",
                          "Permanent Delete Confirmation"))
        return;
    std::string failures;
    for (const GridCell& cell : cells) {
        const std::optional<Target> target = TargetOf(cell.row, cell.column);
        if (!target || !Exists(target->Path()))
            continue;
        const Status removed = DeleteForGood(target->Path());
        if (removed.ok())
            rows_.MarkGone(cell.row, target->side, Exists(target->files[OtherSide(target->side)]));
        else
            failures += (failures.empty() ? "" : "\n") + removed.failure().reason;
    }
    const auto [first, last] = std::minmax_element(
        cells.begin(), cells.end(),
        [](const GridCell& one, const GridCell& other) { return one.row < other.row; });
    window_.RowsChanged(first->row, last->row - first->row + 1);
    if (!failures.empty())
        TellFailure(failures);
}

}  // namespace zorvane
