#include "folders/ui/folder_order.h"

#include <algorithm>
#include <array>

#include "common/base/ascii.h"

namespace zorvane {
namespace {

std::int64_t Difference(const PerSide<std::int64_t>& values) {
    return values.modified - values.original;
}

// Upper and lower case of ASCII stand together, as in a list of files.
int CompareNames(const ScannedEntry& one, const ScannedEntry& other) {
    const std::string_view names[] = {one.Name(), other.Name()};
    const std::size_t both = std::min(names[0].size(), names[1].size());
    for (std::size_t at = 0; at < both; ++at) {
        const auto left = static_cast<unsigned char>(AsciiLower(names[0][at]));
        const auto right = static_cast<unsigned char>(AsciiLower(names[1][at]));
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

/// What mostly decides, without a look at the record: the records of a large scan lie far apart.
using SortKey = std::array<std::uint64_t, 2>;
struct Keyed {
    SortKey key{};
    std::int32_t record = 0;
};

// The begin of a name as `CompareNames` has it; what ends sooner stands in front.
SortKey KeyOfName(const ScannedEntry& entry) {
    constexpr unsigned kBitsOfByte = 8;
    SortKey key{};
    const std::string_view name = entry.Name();
    for (std::size_t at = 0; at < sizeof(key); ++at) {
        const auto letter =
            at < name.size() ? static_cast<unsigned char>(AsciiLower(name[at])) : 0U;
        std::uint64_t& part = key[at / sizeof(std::uint64_t)];
        part = part << kBitsOfByte | letter;
    }
    return key;
}

SortKey KeyOf(const ScannedEntry& entry, FolderColumn by) {
    // At least as great as the key of any name; `Compare` decides where one has it too.
    constexpr SortKey kMissing{~std::uint64_t{0}, ~std::uint64_t{0}};
    constexpr std::uint64_t kSignBit = std::uint64_t{1} << 63U;
    const auto ascending = [](std::int64_t value) {
        return SortKey{static_cast<std::uint64_t>(value) ^ kSignBit, 0};
    };
    switch (by) {
        case FolderColumn::Original:
            return entry.Has(Side::Original) ? KeyOfName(entry) : kMissing;
        case FolderColumn::Modified:
            return entry.Has(Side::Modified) ? KeyOfName(entry) : kMissing;
        case FolderColumn::Contents:
            return {~static_cast<std::uint64_t>(entry.content), 0};
        case FolderColumn::Size:
            return ascending(entry.InBoth() ? Difference(entry.sizes) : 0);
        case FolderColumn::Date:
            break;
    }
    return ascending(entry.InBoth() ? Difference(entry.seconds) : 0);
}

constexpr std::ptrdiff_t kPiece = 1 << 15;
constexpr std::int32_t kRecordsBetweenStops = 1 << 15;

// In pieces, so that a stop is heard between them.
template <class Place, class Before>
bool SortInPieces(Place first, Place last, const Before& before,
                  const std::function<bool()>& stop) {
    const std::ptrdiff_t size = last - first;
    const auto place = [&](std::ptrdiff_t at) { return first + std::min(at, size); };
    for (std::ptrdiff_t at = 0; at < size; at += kPiece) {
        if (stop())
            return false;
        std::sort(place(at), place(at + kPiece), before);
    }
    for (std::ptrdiff_t piece = kPiece; piece < size; piece *= 2) {
        for (std::ptrdiff_t at = 0; at + piece < size; at += 2 * piece) {
            if (stop())
                return false;
            std::inplace_merge(place(at), place(at + piece), place(at + 2 * piece), before);
        }
    }
    return true;
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

void FolderOrder::Take(std::int32_t count) {
    for (; known_ < count; ++known_) {
        const ScannedEntry& entry = scan_->Entry(static_cast<std::size_t>(known_));
        if (!entry.IsFolder()) {
            ++files_[static_cast<std::size_t>(KindOf(entry, ignore_dates_))];
            ++files_[static_cast<std::size_t>(FolderFilter::All)];
        }
        Add(known_);
    }
}

// A folder stands above its files where one of them stands there, or where it is told itself. One
// that could not be read has none.
void FolderOrder::Add(std::int32_t record) {
    const ScannedEntry& entry = scan_->Entry(static_cast<std::size_t>(record));
    const FolderFilter kind = KindOf(entry, ignore_dates_);
    if (entry.IsFolder()) {
        const bool failed = entry.content == PairContent::Failed && Shows(kind);
        head_ = record;
        head_stands_ = !sort_.on &&
                       (filter_ == FolderFilter::All || failed || (!entry.InBoth() && Shows(kind)));
        if (head_stands_ || failed)
            rows_.push_back(record);
        return;
    }
    if (!Shows(kind))
        return;
    const bool under_head =
        head_ >= 0 && scan_->Entry(static_cast<std::size_t>(head_)).folder == entry.folder;
    if (!sort_.on && under_head && !head_stands_) {
        rows_.push_back(head_);
        head_stands_ = true;
    }
    rows_.push_back(record);
}

bool FolderOrder::Show(FolderFilter filter, const FolderSort& sort,
                       const std::function<bool()>& stop) {
    filter_ = filter;
    sort_ = sort;
    rows_.clear();
    head_ = -1;
    head_stands_ = false;
    for (std::int32_t record = 0; record < known_; ++record) {
        if (record % kRecordsBetweenStops == 0 && stop())
            return false;
        Add(record);
    }
    return !sort_.on || SortRows(stop);
}

bool FolderOrder::SortRows(const std::function<bool()>& stop) {
    std::vector<Keyed> keyed;
    keyed.reserve(rows_.size());
    for (const std::int32_t record : rows_)
        keyed.push_back({KeyOf(scan_->Entry(static_cast<std::size_t>(record)), sort_.by), record});
    const int sign = sort_.downward ? -1 : 1;
    const auto before = [&](const Keyed& one, const Keyed& other) {
        if (one.key != other.key)
            return (one.key < other.key) == (sign > 0);
        const int order = Compare(scan_->Entry(static_cast<std::size_t>(one.record)),
                                  scan_->Entry(static_cast<std::size_t>(other.record)), sort_.by);
        return order != 0 ? order * sign < 0 : one.record < other.record;
    };
    if (!SortInPieces(keyed.begin(), keyed.end(), before, stop))
        return false;
    std::transform(keyed.begin(), keyed.end(), rows_.begin(),
                   [](const Keyed& one) { return one.record; });
    return true;
}

std::int32_t FolderOrder::RowOf(std::int32_t record) const {
    const auto found = sort_.on ? std::find(rows_.begin(), rows_.end(), record)
                                : std::lower_bound(rows_.begin(), rows_.end(), record);
    return found == rows_.end() || *found != record
               ? -1
               : static_cast<std::int32_t>(found - rows_.begin());
}

}  // namespace zorvane
