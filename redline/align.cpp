#include "redline/align.h"

#include <algorithm>
#include <memory>
#include <set>

#include "common/base/paragraph_break.h"
#include "common/base/surrogates.h"
#include "compare/engine/compare_texts.h"

namespace zorvane {
namespace {

using SharedText = std::shared_ptr<const std::u16string>;

SharedText Joined(const std::vector<std::u16string>& lines) {
    auto text = std::make_shared<std::u16string>();
    for (const std::u16string& line : lines)
        text->append(&line == &lines.front() ? u"" : kBreak).append(line);
    return text;
}

// All of it: nothing is left out, since what is written is both documents.
Result<Comparison> Compared(const PerSide<SharedText>& texts, bool words, RunWatcher* watcher) {
    CompareOptions options;
    options.find_sections = words;
    options.find_moves = false;
    return CompareTexts(texts, options, watcher);
}

// ---- what stays of a replaced stretch ----

// Where the unit of text ends that begins at `at`: a word, an object, a break, or one letter.
std::size_t UnitEnd(std::u16string_view text, std::size_t at) {
    if (text.substr(at, 2) == kBreak || (IsHighSurrogate(text[at]) && at + 1 < text.size()))
        return at + 2;
    const auto in_word = [&text](std::size_t place) {
        const char16_t unit = text[place];
        return unit > u' ' && unit != u'\u00A0' && !IsSurrogate(unit);
    };
    if (!in_word(at))
        return at + 1;
    std::size_t end = at;
    while (end < text.size() && in_word(end))
        ++end;
    return end;
}

std::vector<std::u16string_view> UnitsOf(std::u16string_view text) {
    std::vector<std::u16string_view> units;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = UnitEnd(text, at);
        units.push_back(text.substr(at, end - at));
        at = end;
    }
    return units;
}

class StretchBuilder {
  public:
    StretchBuilder(std::u16string_view original, std::u16string_view modified)
        : original_(original), modified_(modified) {}

    void KeepTo(std::size_t original, std::size_t modified) {
        const std::size_t length = original - at_original_;
        const bool equal =
            modified - at_modified_ == length &&
            original_.substr(at_original_, length) == modified_.substr(at_modified_, length);
        if (equal)
            Add(TrackMark::Keep, length);
        else
            Replace(original, modified);
    }

    // Words that are the same at both ends of the two texts stay.
    void Replace(std::size_t original, std::size_t modified) {
        const std::u16string_view old_text =
            original_.substr(at_original_, original - at_original_);
        const std::u16string_view new_text =
            modified_.substr(at_modified_, modified - at_modified_);
        const auto old_units = UnitsOf(old_text);
        const auto new_units = UnitsOf(new_text);
        std::size_t front = 0;
        std::size_t back = 0;
        const std::size_t least = std::min(old_units.size(), new_units.size());
        std::size_t head = 0;
        std::size_t tail = 0;
        for (; front < least && old_units[front] == new_units[front]; ++front)
            head += old_units[front].size();
        for (; front + back < least &&
               old_units[old_units.size() - 1 - back] == new_units[new_units.size() - 1 - back];
             ++back)
            tail += old_units[old_units.size() - 1 - back].size();
        Add(TrackMark::Keep, head);
        Add(TrackMark::Delete, old_text.size() - head - tail);
        Add(TrackMark::Insert, new_text.size() - head - tail);
        Add(TrackMark::Keep, tail);
    }

    std::vector<Stretch> Take() { return std::move(stretches_); }

  private:
    void Add(TrackMark mark, std::size_t length) {
        if (length == 0)
            return;
        if (!stretches_.empty() && stretches_.back().mark == mark)
            stretches_.back().length += length;
        else
            stretches_.push_back({mark, at_original_, at_modified_, length});
        at_original_ += mark == TrackMark::Insert ? 0 : length;
        at_modified_ += mark == TrackMark::Delete ? 0 : length;
    }

    std::u16string_view original_;
    std::u16string_view modified_;
    std::size_t at_original_ = 0;
    std::size_t at_modified_ = 0;
    std::vector<Stretch> stretches_;
};

std::u16string TextOfBlocks(const std::vector<StoryBlock>& blocks,
                            const std::vector<std::size_t>& chosen) {
    std::u16string text;
    for (const std::size_t index : chosen)
        text.append(text.empty() && index == chosen.front() ? u"" : kBreak)
            .append(blocks[index].text.View());
    return text;
}

std::vector<Stretch> StretchesOf(const Comparison& comparison, std::size_t record,
                                 const std::u16string& original, const std::u16string& modified) {
    StretchBuilder builder(original, modified);
    for (const SectionDetail& section : comparison.SectionsOf(record)) {
        const auto place = [](std::int32_t unit) { return static_cast<std::size_t>(unit); };
        builder.KeepTo(place(section.places.original.begin), place(section.places.modified.begin));
        builder.Replace(place(section.places.original.end), place(section.places.modified.end));
    }
    builder.KeepTo(original.size(), modified.size());
    return builder.Take();
}

// ---- groups ----

std::vector<std::size_t> Range(std::int32_t first, std::int32_t count) {
    std::vector<std::size_t> indexes;
    indexes.reserve(static_cast<std::size_t>(count));
    for (std::int32_t i = 0; i < count; ++i)
        indexes.push_back(static_cast<std::size_t>(first + i));
    return indexes;
}

bool AnyTable(const std::vector<StoryBlock>& blocks, const std::vector<std::size_t>& chosen) {
    return std::any_of(chosen.begin(), chosen.end(),
                       [&blocks](std::size_t index) { return blocks[index].is_table; });
}

class GroupBuilder {
  public:
    GroupBuilder(const std::vector<StoryBlock>& original, const std::vector<StoryBlock>& modified)
        : original_(original), modified_(modified) {}

    // Equal lines of text; a table and a paragraph may look alike.
    void Equal(std::size_t original, std::size_t modified) {
        const bool table = original_[original].is_table;
        if (table != modified_[modified].is_table)
            return Apart({original}, {modified});
        BlockGroup group{{original}, {modified}, true, table, {}};
        const std::size_t length = modified_[modified].text.size();
        if (!table && length > 0)
            group.stretches.push_back({TrackMark::Keep, 0, 0, length});
        groups_.push_back(std::move(group));
    }

    void Changed(const Comparison& comparison, std::size_t index, std::vector<std::size_t> original,
                 std::vector<std::size_t> modified) {
        const bool tables = AnyTable(original_, original) || AnyTable(modified_, modified);
        const bool single = original.size() == 1 && modified.size() == 1;
        if (tables &&
            !(single && original_[original[0]].is_table && modified_[modified[0]].is_table))
            return Apart(original, modified);
        BlockGroup group{std::move(original), std::move(modified), true, tables, {}};
        if (!tables)
            group.stretches =
                StretchesOf(comparison, index, TextOfBlocks(original_, group.original),
                            TextOfBlocks(modified_, group.modified));
        groups_.push_back(std::move(group));
    }

    void Apart(const std::vector<std::size_t>& original, const std::vector<std::size_t>& modified) {
        if (groups_.empty() || groups_.back().kept)
            groups_.emplace_back();
        BlockGroup& group = groups_.back();
        group.original.insert(group.original.end(), original.begin(), original.end());
        group.modified.insert(group.modified.end(), modified.begin(), modified.end());
    }

    // Tables without a partner that stand between the same partners: alike, or alone.
    std::vector<BlockGroup> Take() {
        std::vector<BlockGroup> groups = std::exchange(groups_, {});
        for (BlockGroup& group : groups) {
            if (group.kept)
                groups_.push_back(std::move(group));
            else
                PairTables(group);
        }
        return std::move(groups_);
    }

  private:
    void PairTables(const BlockGroup& group) {
        std::size_t old_at = 0;
        std::size_t new_at = 0;
        const auto part = [](const std::vector<std::size_t>& all, std::size_t from,
                             std::size_t to) {
            return std::vector<std::size_t>(all.begin() + static_cast<std::ptrdiff_t>(from),
                                            all.begin() + static_cast<std::ptrdiff_t>(to));
        };
        for (std::size_t i = 0; i < group.original.size(); ++i) {
            for (std::size_t j = new_at; j < group.modified.size(); ++j) {
                const bool alone = TablesFrom(original_, group.original, i) ==
                                   TablesFrom(modified_, group.modified, j);
                if (!Alike(group.original[i], group.modified[j], alone))
                    continue;
                Apart(part(group.original, old_at, i), part(group.modified, new_at, j));
                groups_.push_back({{group.original[i]}, {group.modified[j]}, true, true, {}});
                old_at = i + 1;
                new_at = j + 1;
                break;
            }
        }
        if (old_at < group.original.size() || new_at < group.modified.size())
            Apart(part(group.original, old_at, group.original.size()),
                  part(group.modified, new_at, group.modified.size()));
    }

    static std::ptrdiff_t TablesFrom(const std::vector<StoryBlock>& blocks,
                                     const std::vector<std::size_t>& chosen, std::size_t from) {
        return std::count_if(chosen.begin() + static_cast<std::ptrdiff_t>(from), chosen.end(),
                             [&blocks](std::size_t index) { return blocks[index].is_table; });
    }

    // A third of the words of the shorter one; or, where as many tables follow on each side, the
    // same rows of as many cells, whatever stands in them.
    bool Alike(std::size_t original, std::size_t modified, bool in_step) const {
        if (!original_[original].is_table || !modified_[modified].is_table)
            return false;
        if (in_step && original_[original].grid == modified_[modified].grid)
            return true;
        const auto old_units = UnitsOf(original_[original].text.View());
        const auto new_units = UnitsOf(modified_[modified].text.View());
        const std::multiset<std::u16string_view> old_words(old_units.begin(), old_units.end());
        std::multiset<std::u16string_view> left = old_words;
        std::size_t shared = 0;
        std::size_t words = 0;
        for (const std::u16string_view word : new_units) {
            if (word == u" ")
                continue;
            ++words;
            if (const auto found = left.find(word); found != left.end()) {
                left.erase(found);
                ++shared;
            }
        }
        const std::size_t old_count = old_units.size() - old_words.count(u" ");
        return 3 * shared >= std::min(words, old_count);
    }

    const std::vector<StoryBlock>& original_;
    const std::vector<StoryBlock>& modified_;
    std::vector<BlockGroup> groups_;
};

// A walk over the records and over the equal lines between them.
template <class OnEqual, class OnRecord>
void WalkComparison(const Comparison& comparison, std::size_t original_count,
                    const OnEqual& on_equal, const OnRecord& on_record) {
    std::int32_t original = 0;
    std::int32_t modified = 0;
    for (std::size_t i = 0; i < comparison.records.size(); ++i) {
        const DifferenceRecord& record = comparison.records[i];
        const std::int32_t first = record.InFront(Side::Original).value;
        while (original < first)
            on_equal(static_cast<std::size_t>(original++), static_cast<std::size_t>(modified++));
        on_record(i, Range(original, record.Count(Side::Original)),
                  Range(modified, record.Count(Side::Modified)));
        original += record.Count(Side::Original);
        modified += record.Count(Side::Modified);
    }
    while (static_cast<std::size_t>(original) < original_count)
        on_equal(static_cast<std::size_t>(original++), static_cast<std::size_t>(modified++));
}

// Most cells of most tables.
bool SameTexts(const std::vector<StoryBlock>& original, const std::vector<StoryBlock>& modified) {
    return std::equal(original.begin(), original.end(), modified.begin(), modified.end(),
                      [](const StoryBlock& one, const StoryBlock& other) {
                          return one.is_table == other.is_table &&
                                 one.text.View() == other.text.View();
                      });
}

}  // namespace

std::vector<BlockGroup> AlignBlocks(const std::vector<StoryBlock>& original,
                                    const std::vector<StoryBlock>& modified, RunWatcher* watcher) {
    GroupBuilder builder(original, modified);
    if (SameTexts(original, modified)) {
        for (std::size_t i = 0; i < original.size(); ++i)
            builder.Equal(i, i);
        return builder.Take();
    }
    // No text at all would be compared as one empty line.
    const bool nothing = original.empty() || modified.empty();
    const Result<Comparison> compared =
        nothing ? Failure{}
                : Compared({original.front().text.Shared(), modified.front().text.Shared()}, true,
                           watcher);
    if (!compared.ok()) {
        builder.Apart(Range(0, static_cast<std::int32_t>(original.size())),
                      Range(0, static_cast<std::int32_t>(modified.size())));
        return builder.Take();
    }
    const Comparison& comparison = compared.value();
    WalkComparison(
        comparison, original.size(),
        [&builder](std::size_t o, std::size_t m) { builder.Equal(o, m); },
        [&](std::size_t record, std::vector<std::size_t> o, std::vector<std::size_t> m) {
            if (comparison.records[record].type == DifferenceType::Change)
                builder.Changed(comparison, record, std::move(o), std::move(m));
            else
                builder.Apart(o, m);
        });
    return builder.Take();
}

void TextsAlone::Align(RunWatcher* watcher) {
    groups = AlignBlocks(blocks.original, blocks.modified, watcher);
    for (std::vector<StoryBlock>* side : {&blocks.original, &blocks.modified}) {
        for (StoryBlock& block : *side)
            block.text.LetGo();
    }
}

bool TextsAlone::GiveTo(std::vector<StoryBlock>& read_again, Side side) {
    std::vector<StoryBlock> texts = std::exchange(blocks[side], std::vector<StoryBlock>());
    if (texts.size() != read_again.size())
        return false;
    for (std::size_t i = 0; i < texts.size(); ++i)
        read_again[i].text = std::move(texts[i].text);
    return true;
}

std::vector<std::pair<std::size_t, std::size_t>> AlignLines(
    const std::vector<std::u16string>& original, const std::vector<std::u16string>& modified,
    RunWatcher* watcher) {
    std::vector<std::pair<std::size_t, std::size_t>> pairs;
    const bool nothing = original.empty() || modified.empty();
    const Result<Comparison> compared =
        nothing ? Failure{} : Compared({Joined(original), Joined(modified)}, false, watcher);
    if (!compared.ok())
        return pairs;
    WalkComparison(
        compared.value(), original.size(),
        [&pairs](std::size_t o, std::size_t m) { pairs.emplace_back(o, m); },
        [&pairs](std::size_t, const std::vector<std::size_t>& o,
                 const std::vector<std::size_t>& m) {
            // As many on each side: one for one, whatever they share.
            for (std::size_t i = 0; o.size() == m.size() && i < o.size(); ++i)
                pairs.emplace_back(o[i], m[i]);
        });
    return pairs;
}

}  // namespace zorvane
