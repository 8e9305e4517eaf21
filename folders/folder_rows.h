// The grid of a Compare Folders viewer as a model: a row is made when somebody looks at it.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "common/base/side.h"
#include "compare/engine/folder_record.h"
#include "compare/engine/vestrel_x.h"
#include "folders/rename_finder.h"
#include "folders/text_check.h"

namespace zorvane {

/// In front of the name of a file, which may begin with blanks of its own.
inline constexpr std::string_view kFileBlanks = "       ";

struct ProcessState;
class TextChecks;

enum class FolderColumn : std::int32_t { Original, Modified, Contents, Size, Date };
inline constexpr std::size_t kFolderColumns = 5;
constexpr FolderColumn ColumnOf(Side side) {
    return side == Side::Original ? FolderColumn::Original : FolderColumn::Modified;
}

/// `Moved`: where the file of the row stands on that side, under another name or in another place.
enum class CellInk { Plain, Changed, OnlyOriginal, OnlyModified, Gone, Moved };
enum class CellPicture { None, File, Folder };

struct FolderCell {
    std::string text;  ///< the blanks in front leave room for the picture
    CellInk ink = CellInk::Plain;
    bool shaded = false;
    CellPicture picture = CellPicture::None;
    friend bool operator==(const FolderCell&, const FolderCell&) = default;
};
struct FolderRow {
    std::array<FolderCell, kFolderColumns> cells;
    FolderCell& operator[](FolderColumn column) { return cells[static_cast<std::size_t>(column)]; }
    const FolderCell& operator[](FolderColumn column) const {
        return cells[static_cast<std::size_t>(column)];
    }
};

/// Row k, from 0, is record k. Everything is borrowed.
class FolderRows {
  public:
    FolderRows(ProcessState& process, const VestrelX& engine)
        : process_(process), engine_(engine) {}

    /// What the cells are made from. `checks` nullptr: words are not compared.
    void Begin(const TextChecks* checks, bool ignore_dates);
    FolderRow Row(std::int32_t record) const;
    /// The record as the rows tell of it; nothing when there is none.
    std::optional<FolderRecord> Record(std::int32_t record) const;
    /// Nothing without a text check of that record.
    std::optional<TextCheck> Check(std::int32_t record) const;
    std::string ContentsCell(const FolderRecord& record) const;
    /// The heads of the columns, in the language in force.
    std::string Head(FolderColumn column) const;

    /// What is the same file under another name: each of its two rows tells of the other.
    /// Nothing else stays.
    void TellRenamed(const std::vector<RenamedEntry>& renamed);

    // What was done to files since; the records stay as they are.
    void MarkGone(std::int32_t record, Side side, bool other_exists);
    void MarkCopied(std::int32_t record, Side to);

  private:
    struct Changed {
        PerSide<std::optional<FolderCell>> cells;
    };
    void Paint(const FolderRecord& record, FolderRow& row) const;
    void PutPartner(std::int32_t record, FolderRow& row) const;

    ProcessState& process_;
    const VestrelX& engine_;
    const TextChecks* checks_ = nullptr;
    bool ignore_dates_ = false;
    std::map<std::int32_t, Changed> changed_;
    std::unordered_map<std::int32_t, RenamedEntry> renamed_;  ///< by both of its records
};

}  // namespace zorvane
