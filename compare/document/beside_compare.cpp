#include "compare/document/beside_compare.h"

#include <algorithm>
#include <map>
#include <string>
#include <unordered_map>
#include <utility>

namespace zorvane {
namespace {

// An item of one kind, with what was found for it.
struct Entry {
    const BesideItem* item = nullptr;
    bool done = false;
};
using Entries = std::vector<Entry>;

// A kind that shows at a place of the page and not at a word.
bool Floats(BesideKind kind) {
    return kind == BesideKind::Picture || kind == BesideKind::Drawing ||
           kind == BesideKind::Chart || kind == BesideKind::Object;
}

class KindCompare {
  public:
    KindCompare(BesideKind kind, Entries original, Entries modified,
                const ParagraphPartners& partners, std::vector<BesideDifference>& out)
        : kind_(kind),
          original_(std::move(original)),
          modified_(std::move(modified)),
          partners_(partners),
          out_(out) {}

    void Run() {
        std::int32_t number = 0;
        for (const std::int32_t partner : partners_) {
            ++number;
            if (partner > 0)
                source_[partner] = number;
        }
        // Damage of both sides is no likeness: nobody can say what was there.
        if (kind_ != BesideKind::DamagedPart) {
            EqualInPlace();
            EqualOfWholeDocument();
            EqualElsewhere();
            ChangedInPlace();
            Moved();
        }
        Rest();
    }

  private:
    std::int32_t PartnerAt(std::int32_t paragraph) const {
        const bool known = paragraph > 0 && paragraph <= std::ssize(partners_);
        return known ? partners_[static_cast<std::size_t>(paragraph - 1)] : 0;
    }

    void Report(BesideChange change, const BesideItem* old_item, const BesideItem* new_item) {
        BesideDifference difference{kind_, change, {}, {}, {}};
        if (old_item != nullptr) {
            difference.paragraphs.original.value = std::max(old_item->paragraph, 0);
            difference.old_text = old_item->text;
        }
        if (new_item != nullptr) {
            difference.paragraphs.modified.value = std::max(new_item->paragraph, 0);
            difference.new_text = new_item->text;
        }
        out_.push_back(std::move(difference));
    }

    // Calls `take` for the first pair of each item that is still open: `key` of both is equal.
    template <class OldKey, class NewKey, class Take>
    void Pair(OldKey&& old_key, NewKey&& new_key, Take&& take) {
        std::unordered_map<std::string, std::vector<Entry*>> waiting;
        // NOLINTNEXTLINE(modernize-loop-convert): backwards
        for (auto entry = modified_.rbegin(); entry != modified_.rend(); ++entry) {
            if (!entry->done)
                waiting[new_key(*entry->item)].push_back(&*entry);
        }
        for (Entry& entry : original_) {
            const std::string key = entry.done ? std::string() : old_key(*entry.item);
            const auto found = key.empty() ? waiting.end() : waiting.find(key);
            if (found == waiting.end() || found->second.empty() ||
                !take(*entry.item, *found->second.back()->item))
                continue;
            entry.done = found->second.back()->done = true;
            found->second.pop_back();
        }
    }

    // The place in the Modified where an item is looked for; empty for none.
    std::string OldPlace(const BesideItem& item) const {
        if (item.paragraph <= 0)
            return "=" + std::string(BesidePlace(item));
        const std::int32_t partner = PartnerAt(item.paragraph);
        return partner > 0 ? std::to_string(partner) : std::string();
    }
    static std::string NewPlace(const BesideItem& item) {
        return item.paragraph > 0 ? std::to_string(item.paragraph)
                                  : "=" + std::string(BesidePlace(item));
    }

    void EqualInPlace() {
        Pair(
            [this](const BesideItem& item) {
                const std::string place = OldPlace(item);
                return place.empty() || item.paragraph <= 0 ? std::string()
                                                            : place + " " + item.digest;
            },
            [](const BesideItem& item) { return NewPlace(item) + " " + item.digest; },
            [](const BesideItem&, const BesideItem&) { return true; });
    }

    // Items without a paragraph keep their order: a row that was put in moves the cells below, two
    // cells that changed places are a change.
    void EqualOfWholeDocument() {
        std::vector<Entry*> left;
        std::vector<Entry*> right;
        for (Entry& entry : original_) {
            if (!entry.done && entry.item->paragraph <= 0)
                left.push_back(&entry);
        }
        for (Entry& entry : modified_) {
            if (!entry.done && entry.item->paragraph <= 0)
                right.push_back(&entry);
        }
        CommonSequence(left, right);
    }

    static bool Same(const Entry* left, const Entry* right) {
        return left->item->digest == right->item->digest;
    }
    static bool SameInPlace(const Entry* left, const Entry* right) {
        return Same(left, right) && BesidePlace(*left->item) == BesidePlace(*right->item);
    }

    static void CommonSequence(std::vector<Entry*> left, std::vector<Entry*> right) {
        constexpr std::size_t kMostCells = kMostBesideItems * kMostBesideItems;  // 64 MB
        while (!left.empty() && !right.empty() && SameInPlace(left.back(), right.back())) {
            left.back()->done = right.back()->done = true;
            left.pop_back();
            right.pop_back();
        }
        std::size_t at = 0;
        for (; at < std::min(left.size(), right.size()) && SameInPlace(left[at], right[at]); ++at)
            left[at]->done = right[at]->done = true;
        left.erase(left.begin(), left.begin() + static_cast<std::ptrdiff_t>(at));
        right.erase(right.begin(), right.begin() + static_cast<std::ptrdiff_t>(at));
        if (left.size() * right.size() <= kMostCells)
            LongestCommon(left, right);
    }

    // As many pairs as there can be; of ways to the same number, that with the most pairs in place:
    // of two equal pictures the one that stands where it stood is the one that is left.
    static void LongestCommon(const std::vector<Entry*>& left, const std::vector<Entry*>& right) {
        const std::size_t width = right.size() + 1;
        const auto pair = static_cast<std::uint32_t>(width);  // worth more than all places
        std::vector<std::uint32_t> worth((left.size() + 1) * width);
        const auto paired = [&](std::size_t i, std::size_t j) {
            if (!Same(left[i], right[j]))
                return std::uint32_t{0};
            return worth[(i + 1) * width + j + 1] + pair + (SameInPlace(left[i], right[j]) ? 1 : 0);
        };
        for (std::size_t i = left.size(); i-- > 0;) {
            for (std::size_t j = right.size(); j-- > 0;)
                worth[i * width + j] =
                    std::max({worth[(i + 1) * width + j], worth[i * width + j + 1], paired(i, j)});
        }
        for (std::size_t i = 0, j = 0; i < left.size() && j < right.size();) {
            const std::uint32_t best = worth[i * width + j];
            if (best > 0 && best == paired(i, j))
                left[i++]->done = right[j++]->done = true;
            else if (best == worth[(i + 1) * width + j])
                ++i;
            else
                ++j;
        }
    }

    // The words around one of the two are gone or new, so nobody can say that the item moved.
    void EqualElsewhere() {
        Pair([](const BesideItem& item) { return item.digest; },
             [](const BesideItem& item) { return item.digest; },
             [this](const BesideItem& old_item, const BesideItem& new_item) {
                 const bool placed = old_item.paragraph > 0 && new_item.paragraph > 0;
                 return placed && (PartnerAt(old_item.paragraph) == 0 ||
                                   SourceOf(new_item.paragraph) == 0 || Hopped(old_item, new_item));
             });
    }

    // The Original's paragraph that is compared with this one; 0 for none.
    std::int32_t SourceOf(std::int32_t modified) const {
        const auto found = source_.find(modified);
        return found == source_.end() ? 0 : found->second;
    }

    bool Hopped(const BesideItem& old_item, const BesideItem& new_item) const {
        const std::int32_t partner = PartnerAt(old_item.paragraph);
        const std::int32_t source = SourceOf(new_item.paragraph);
        if (!Floats(kind_) || std::abs(partner - new_item.paragraph) != 1)
            return false;
        const auto open_at = [](const Entries& entries, std::int32_t paragraph) {
            return std::any_of(entries.begin(), entries.end(), [paragraph](const Entry& entry) {
                return !entry.done && entry.item->paragraph == paragraph;
            });
        };
        return !open_at(modified_, partner) && !open_at(original_, source);
    }

    void ChangedInPlace() {
        Pair([this](const BesideItem& item) { return OldPlace(item); }, NewPlace,
             [this](const BesideItem& old_item, const BesideItem& new_item) {
                 if (old_item.digest == new_item.digest)
                     return false;  // what stood around it went past it
                 Report(BesideChange::Changed, &old_item, &new_item);
                 return true;
             });
    }

    void Moved() {
        Pair([](const BesideItem& item) { return item.digest; },
             [](const BesideItem& item) { return item.digest; },
             [this](const BesideItem& old_item, const BesideItem& new_item) {
                 Report(BesideChange::Moved, &old_item, &new_item);
                 return true;
             });
    }

    void Rest() {
        for (const Entry& entry : original_) {
            const std::int32_t paragraph = entry.item->paragraph;
            const bool gone = paragraph > 0 && PartnerAt(paragraph) == 0;
            if (!entry.done && (!gone || IsSeenByItself(kind_)))
                Report(BesideChange::Removed, entry.item, nullptr);
        }
        for (const Entry& entry : modified_) {
            if (entry.done)
                continue;
            const std::int32_t paragraph = entry.item->paragraph;
            if (paragraph <= 0 || IsSeenByItself(kind_) || SourceOf(paragraph) > 0)
                Report(BesideChange::Added, nullptr, entry.item);
        }
    }

    BesideKind kind_;
    Entries original_;
    Entries modified_;
    const ParagraphPartners& partners_;
    std::vector<BesideDifference>& out_;
    std::unordered_map<std::int32_t, std::int32_t> source_;  // by the Modified's paragraph
};

Entries OfKind(const std::vector<BesideItem>& items, BesideKind kind) {
    Entries entries;
    for (const BesideItem& item : items) {
        if (item.kind == kind)
            entries.push_back({&item, false});
    }
    return entries;
}

}  // namespace

bool IsSeenByItself(BesideKind kind) {
    return Floats(kind) || kind == BesideKind::Comment || kind == BesideKind::HiddenText ||
           kind == BesideKind::Metadata || kind == BesideKind::PageWithoutText ||
           kind == BesideKind::DamagedPart;
}

std::vector<BesideDifference> CompareBeside(const std::vector<BesideItem>& original,
                                            const std::vector<BesideItem>& modified,
                                            const ParagraphPartners& partners) {
    std::vector<BesideDifference> differences;
    for (const BesideKindName& name : BesideKindNames()) {
        const std::size_t first = differences.size();
        Entries old_items = OfKind(original, name.kind);
        Entries new_items = OfKind(modified, name.kind);
        if (old_items.empty() && new_items.empty())
            continue;
        KindCompare(name.kind, std::move(old_items), std::move(new_items), partners, differences)
            .Run();
        const auto place = [](const BesideDifference& difference) {
            return difference.paragraphs.modified.value > 0 ? difference.paragraphs.modified.value
                                                            : difference.paragraphs.original.value;
        };
        std::stable_sort(differences.begin() + static_cast<std::ptrdiff_t>(first),
                         differences.end(),
                         [&place](const BesideDifference& left, const BesideDifference& right) {
                             return place(left) < place(right);
                         });
    }
    return differences;
}

}  // namespace zorvane
