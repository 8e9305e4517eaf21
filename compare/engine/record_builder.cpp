#include "compare/engine/record_builder.h"

#include <algorithm>

namespace zorvane {
namespace {

using Flags = std::vector<std::uint8_t>;

// A run of changed lines [begin, end) of one side, and the run of the other side at the same place.
struct Group {
    std::int32_t begin = 0;
    std::int32_t end = 0;
    bool Empty() const { return begin == end; }
};

bool At(const Flags& flags, std::int32_t place) {
    return flags[static_cast<std::size_t>(place)] != 0;
}

// Walks the groups of one side; between two groups lies exactly one unchanged line, so that both
// sides have as many groups and the k-th of one lies beside the k-th of the other.
class GroupCursor {
  public:
    GroupCursor(Flags& changed, std::int32_t size) : changed_(changed), size_(size) {
        group_.end = RunEnd(0);
    }
    const Group& group() const { return group_; }
    bool Next() {
        if (group_.end == size_)
            return false;
        group_.begin = group_.end + 1;
        group_.end = RunEnd(group_.begin);
        return true;
    }
    bool Previous() {
        if (group_.begin == 0)
            return false;
        group_.end = group_.begin - 1;
        group_.begin = RunBegin(group_.end);
        return true;
    }
    // One line up, if the line in front equals the last; joins a group that it meets.
    bool SlideUp(const SideLines& lines) {
        if (group_.begin == 0 || !lines.equal(group_.begin - 1, group_.end - 1))
            return false;
        changed_[static_cast<std::size_t>(--group_.begin)] = 1;
        changed_[static_cast<std::size_t>(--group_.end)] = 0;
        group_.begin = RunBegin(group_.begin);
        return true;
    }
    bool SlideDown(const SideLines& lines) {
        if (group_.end == size_ || !lines.equal(group_.begin, group_.end))
            return false;
        changed_[static_cast<std::size_t>(group_.begin++)] = 0;
        changed_[static_cast<std::size_t>(group_.end++)] = 1;
        group_.end = RunEnd(group_.end);
        return true;
    }

  private:
    std::int32_t RunEnd(std::int32_t place) const {
        while (place < size_ && At(changed_, place))
            ++place;
        return place;
    }
    std::int32_t RunBegin(std::int32_t place) const {
        while (place > 0 && At(changed_, place - 1))
            --place;
        return place;
    }

    Flags& changed_;
    std::int32_t size_;
    Group group_;
};

class Slider {
  public:
    Slider(Flags& changed, Flags& other, const SideLines& lines)
        : own_(changed, static_cast<std::int32_t>(changed.size())),
          other_(other, static_cast<std::int32_t>(other.size())),
          lines_(lines) {}

    void Run() {
        while (true) {
            if (!own_.group().Empty())
                Settle();
            if (!own_.Next())
                return;
            other_.Next();
        }
    }

  private:
    // How far the group can go, found until joining with neighbours ends.
    struct Reach {
        std::int32_t highest_end = 0;
        std::int32_t beside_other_end = -1;  // the lowest place beside a block of the other side
    };

    Reach FindReach() {
        Reach reach;
        std::int32_t length = 0;
        do {
            length = own_.group().end - own_.group().begin;
            while (own_.SlideUp(lines_))
                other_.Previous();
            reach = {own_.group().end, other_.group().Empty() ? -1 : own_.group().end};
            while (own_.SlideDown(lines_)) {
                other_.Next();
                if (!other_.group().Empty())
                    reach.beside_other_end = own_.group().end;
            }
        } while (own_.group().end - own_.group().begin != length);
        return reach;
    }

    // The lower the better: 0 begins a paragraph behind a blank line, 1 ends with one.
    int Badness() const {
        const Group& group = own_.group();
        const bool blank_last = lines_.blank(group.end - 1);
        const bool blank_in_front = group.begin > 0 && lines_.blank(group.begin - 1);
        if (blank_in_front && !lines_.blank(group.begin))
            return 0;
        return blank_last ? 1 : 2;
    }

    void Settle() {
        const Reach reach = FindReach();
        const std::int32_t lowest_end = own_.group().end;
        if (reach.highest_end == lowest_end)
            return;
        std::int32_t wanted = reach.beside_other_end;
        if (wanted < 0)
            wanted = BestEnd(reach.highest_end);
        while (own_.group().end > wanted && own_.SlideUp(lines_))
            other_.Previous();
    }

    // Looked for from the lowest place upward; the group goes back down before the answer.
    std::int32_t BestEnd(std::int32_t highest_end) {
        std::int32_t best_end = own_.group().end;
        int best = Badness();
        std::int32_t slid = 0;
        while (best > 0 && own_.group().end > highest_end && slid < kMostTried &&
               own_.SlideUp(lines_)) {
            ++slid;
            other_.Previous();
            if (Badness() < best) {
                best = Badness();
                best_end = own_.group().end;
            }
        }
        for (; slid > 0 && own_.SlideDown(lines_); --slid)
            other_.Next();
        return best_end;
    }

    static constexpr std::int32_t kMostTried = 100;  // a reader does not look further either

    GroupCursor own_;
    GroupCursor other_;
    const SideLines& lines_;
};

std::int32_t LineOf(std::span<const std::int32_t> lines, std::int32_t place) {
    return lines.empty() ? place : lines[static_cast<std::size_t>(place)];
}

// 1-based lines of the places [begin, end), or the line in front of them twice.
struct LinePair {
    std::int32_t first = 0;
    std::int32_t last = 0;
};
LinePair LinesOf(std::span<const std::int32_t> lines, std::int32_t begin, std::int32_t end,
                 std::int32_t lines_in_front) {
    if (begin < end)
        return {LineOf(lines, begin) + 1, LineOf(lines, end - 1) + 1};
    const std::int32_t in_front = begin == 0 ? lines_in_front : LineOf(lines, begin - 1) + 1;
    return {in_front, in_front};
}

// First and last line that a record covers, or an empty range behind the line it names.
LinePair OriginalCover(const DifferenceRecord& record) {
    return record.type == DifferenceType::Addition
               ? LinePair{record.first_original + 1, record.first_original}
               : LinePair{record.first_original, record.last_original};
}

}  // namespace

void SlideBlocks(Flags& changed, const Flags& other, const SideLines& lines) {
    Flags beside = other;
    Slider(changed, beside, lines).Run();
}

void BuildRecords(const ChangedPlaces& changed, std::span<const std::int32_t> original_lines,
                  std::span<const std::int32_t> modified_lines, std::int32_t lines_in_front,
                  std::vector<DifferenceRecord>& records) {
    records.clear();
    const auto originals = static_cast<std::int32_t>(changed.original.size());
    const auto modifieds = static_cast<std::int32_t>(changed.modified.size());
    std::int32_t original = 0;
    std::int32_t modified = 0;
    while (original < originals || modified < modifieds) {
        const std::int32_t first_original = original;
        const std::int32_t first_modified = modified;
        while (original < originals && At(changed.original, original))
            ++original;
        while (modified < modifieds && At(changed.modified, modified))
            ++modified;
        if (original > first_original || modified > first_modified) {
            const LinePair left = LinesOf(original_lines, first_original, original, lines_in_front);
            const LinePair right =
                LinesOf(modified_lines, first_modified, modified, lines_in_front);
            const DifferenceType type = original == first_original   ? DifferenceType::Addition
                                        : modified == first_modified ? DifferenceType::Deletion
                                                                     : DifferenceType::Change;
            records.push_back({type, left.first, left.last, right.first, right.last});
        }
        ++original;
        ++modified;
    }
}

namespace {

// With the unchanged lines between them both sides have lines, so the two become one change.
void Join(DifferenceRecord& record, const DifferenceRecord& next) {
    if (record.type == DifferenceType::Addition)
        ++record.first_original;
    if (record.type == DifferenceType::Deletion)
        ++record.first_modified;
    record.type = DifferenceType::Change;
    record.last_original = next.last_original;
    record.last_modified = next.last_modified;
}

std::int32_t UnchangedBetween(const DifferenceRecord& record, const DifferenceRecord& next) {
    return OriginalCover(next).first - OriginalCover(record).last - 1;
}

template <class Belong>
void JoinWhere(std::vector<DifferenceRecord>& records, const Belong& belong_together) {
    std::size_t kept = 0;
    for (std::size_t i = 1; i < records.size(); ++i) {
        if (belong_together(records[kept], records[i]))
            Join(records[kept], records[i]);
        else
            records[++kept] = records[i];
    }
    if (!records.empty())
        records.resize(kept + 1);
}

}  // namespace

void MergeNearRecords(std::vector<DifferenceRecord>& records, std::int32_t gap) {
    JoinWhere(records, [gap](const DifferenceRecord& record, const DifferenceRecord& next) {
        return UnchangedBetween(record, next) <= gap;
    });
}

void JoinAcrossCoincidences(std::vector<DifferenceRecord>& records) {
    constexpr std::int32_t kLarge = 64;  // lines on each side
    const auto large = [](const DifferenceRecord& record) {
        return record.OriginalCount() >= kLarge && record.ModifiedCount() >= kLarge;
    };
    JoinWhere(records, [&large](const DifferenceRecord& record, const DifferenceRecord& next) {
        return UnchangedBetween(record, next) == 1 && large(record) && large(next);
    });
}

}  // namespace zorvane
