// Which records of a folder compare stand in the grid, and in which order. Numbers of records alone
// are moved about; the records stay as they are.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <vector>

#include "compare/engine/folder_scan.h"
#include "folders/folder_rows.h"

namespace zorvane {

enum class FolderFilter : std::int32_t { All, Changed, OnlyOriginal, OnlyModified, Same };
inline constexpr std::size_t kFolderFilters = 5;

/// Not `All`.
FolderFilter KindOf(const ScannedEntry& entry, bool ignore_dates);

struct FolderSort {
    bool on = false;  ///< else records stand as they came, files under their folder
    FolderColumn by = FolderColumn::Original;
    bool downward = false;
    friend bool operator==(const FolderSort&, const FolderSort&) = default;
};

class FolderOrder {
  public:
    /// Borrowed.
    explicit FolderOrder(const FolderScan& scan) : scan_(&scan) {}

    /// Nothing is known any more.
    void Clear(bool ignore_dates);
    /// Records below `count` are known from now on. Unsorted ones stand behind all that stood
    /// there; sorted ones have no place before the next `Show`.
    void Take(std::int32_t count);
    /// On any thread, of a copy that is its own. False after a stop, and the order is none then.
    bool Show(FolderFilter filter, const FolderSort& sort, const std::function<bool()>& stop);

    FolderFilter Filter() const { return filter_; }
    const FolderSort& Sort() const { return sort_; }
    std::int32_t Known() const { return known_; }
    std::int32_t Count() const { return static_cast<std::int32_t>(rows_.size()); }
    std::int32_t RecordAt(std::int32_t row) const { return rows_[static_cast<std::size_t>(row)]; }
    /// -1: it does not stand there.
    std::int32_t RowOf(std::int32_t record) const;
    /// Files of a kind, shown or not; of `All`: all files.
    std::int32_t Files(FolderFilter filter) const {
        return files_[static_cast<std::size_t>(filter)];
    }

  private:
    void Add(std::int32_t record);
    bool SortRows(const std::function<bool()>& stop);
    bool Shows(FolderFilter kind) const { return filter_ == FolderFilter::All || filter_ == kind; }

    const FolderScan* scan_;
    bool ignore_dates_ = false;
    FolderFilter filter_ = FolderFilter::All;
    FolderSort sort_;
    std::int32_t known_ = 0;
    std::vector<std::int32_t> rows_;
    std::array<std::int32_t, kFolderFilters> files_{};
    // While records are added in their own order: the folder that files belong to.
    std::int32_t head_ = -1;  ///< its record
    bool head_stands_ = false;
};

}  // namespace zorvane
