#include "folders/ui/folder_order.h"

#include <algorithm>

namespace zorvane {
namespace {

std::int64_t Difference(const PerSide<std::int64_t>& values) {
    return values.modified - values.original;
}

// Upper and lower case of ASCII stand together, as in a list of files.
int CompareNames(const ScannedEntry& one, const ScannedEntry& other) {
    const auto lower = [](char letter) {
        return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
    };
    const std::string_view names[] = {one.Name(), other.Name()};
    const std::size_t both = std::min(names[0].size(), names[1].size());
    for (std::size_t at = 0; at < both; ++at) {
        const auto left = static_cast<unsigned char>(lower(names[0][at]));
        const auto right = static_cast<unsigned char>(lower(names[1][at]));
        if (left != right)
            return left < right ? -1 : 1;
    }
    return static_cast<int>(names[0].size() > names[1].size()) -
           static_cast<int>(names[0].size() < names[1].size());
}

int Sign(std::int64_t one, std::int64_t other) {
    return static_cast<int>(one > other) - static_cast<int>(one < other);
}

// What one side does not have stands behind what it has.
int Compare(const ScannedEntry& one, const ScannedEntry& other, FolderColumn by) {
    switch (by) {
        case FolderColumn::Original:
        case FolderColumn::Modified: {
            const Side side = by == FolderColumn::Original ? Side::Original : Side::Modified;
            if (one.Has(side) != other.Has(side))
                return one.Has(side) ? -1 : 1;
            return CompareNames(one, other);
        }
        case FolderColumn::Contents:
            return Sign(static_cast<int>(other.content), static_cast<int>(one.content));
        case FolderColumn::Size:
            return Sign(one.InBoth() ? Difference(one.sizes) : 0,
                        other.InBoth() ? Difference(other.sizes) : 0);
        case FolderColumn::Date:
            break;
    }
    return Sign(one.InBoth() ? Difference(one.seconds) : 0,
                other.InBoth() ? Difference(other.seconds) : 0);
}

}  // namespace

FolderFilter KindOf(const ScannedEntry& entry, bool ignore_dates) {
    if (!entry.InBoth())
        return entry.Has(Side::Original) ? FolderFilter::OnlyOriginal : FolderFilter::OnlyModified;
    const bool differs = entry.content != PairContent::Same || entry.SizeSign() != 0 ||
                         (!ignore_dates && entry.DateSign() != 0);
    return differs ? FolderFilter::Changed : FolderFilter::Same;
}

void FolderOrder::Clear(bool ignore_dates) {
    ignore_dates_ = ignore_dates;
    known_ = 0;
    rows_.clear();
    files_ = {};
    head_ = -1;
    head_stands_ = false;
}

bool FolderOrder::Take(std::int32_t count) {
    for (; known_ < count; ++known_) {
        const ScannedEntry& entry = scan_.Entry(static_cast<std::size_t>(known_));
        if (!entry.IsFolder()) {
            ++files_[static_cast<std::size_t>(KindOf(entry, ignore_dates_))];
            ++files_[static_cast<std::size_t>(FolderFilter::All)];
        }
        Add(known_);
    }
    if (sort_.on)
        SortRows();
    return !sort_.on;
}

// A folder stands above its files where one of them stands there, or where it is told itself.
void FolderOrder::Add(std::int32_t record) {
    const ScannedEntry& entry = scan_.Entry(static_cast<std::size_t>(record));
    const FolderFilter kind = KindOf(entry, ignore_dates_);
    if (entry.IsFolder()) {
        head_ = record;
        head_stands_ =
            !sort_.on && (filter_ == FolderFilter::All || (!entry.InBoth() && Shows(kind)));
        if (head_stands_)
            rows_.push_back(record);
        return;
    }
    if (!Shows(kind))
        return;
    const bool under_head =
        head_ >= 0 && scan_.Entry(static_cast<std::size_t>(head_)).folder == entry.folder;
    if (!sort_.on && under_head && !head_stands_) {
        rows_.push_back(head_);
        head_stands_ = true;
    }
    rows_.push_back(record);
}

void FolderOrder::Show(FolderFilter filter, const FolderSort& sort) {
    filter_ = filter;
    sort_ = sort;
    rows_.clear();
    head_ = -1;
    head_stands_ = false;
    for (std::int32_t record = 0; record < known_; ++record)
        Add(record);
    if (sort_.on)
        SortRows();
}

void FolderOrder::SortRows() {
    const int sign = sort_.downward ? -1 : 1;
    std::sort(rows_.begin(), rows_.end(), [&](std::int32_t one, std::int32_t other) {
        const int order = Compare(scan_.Entry(static_cast<std::size_t>(one)),
                                  scan_.Entry(static_cast<std::size_t>(other)), sort_.by);
        return order != 0 ? order * sign < 0 : one < other;
    });
}

std::int32_t FolderOrder::RowOf(std::int32_t record) const {
    const auto found = sort_.on ? std::find(rows_.begin(), rows_.end(), record)
                                : std::lower_bound(rows_.begin(), rows_.end(), record);
    return found == rows_.end() || *found != record
               ? -1
               : static_cast<std::int32_t>(found - rows_.begin());
}

}  // namespace zorvane
