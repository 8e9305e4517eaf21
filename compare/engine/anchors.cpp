#include "compare/engine/anchors.h"

#include <algorithm>
#include <bit>

namespace zorvane {
namespace {

// Mixes one number into the hash of a run.
std::uint64_t Mix(std::uint64_t hash, std::uint32_t number) {
    hash ^= number + 0x9E3779B97F4A7C15U;
    hash *= 0xBF58476D1CE4E5B9U;
    return hash ^ (hash >> 29);
}

std::uint64_t HashOfRun(std::span<const std::uint32_t> numbers, std::size_t at,
                        std::int32_t length) {
    std::uint64_t hash = 0;
    for (std::int32_t i = 0; i < length; ++i)
        hash = Mix(hash, numbers[at + static_cast<std::size_t>(i)]);
    return hash;
}

std::size_t RunCount(std::size_t lines, std::int32_t length) {
    const auto wanted = static_cast<std::size_t>(length);
    return lines < wanted ? 0 : lines - wanted + 1;
}

}  // namespace

AnchorFinder::Slot& AnchorFinder::SlotOf(std::uint64_t hash) {
    std::size_t at = hash & mask_;
    while (slots_[at].original != kFree && slots_[at].hash != hash)
        at = (at + 1) & mask_;
    return slots_[at];
}

void AnchorFinder::CollectOriginal(std::span<const std::uint32_t> original, std::int32_t length) {
    const std::size_t count = RunCount(original.size(), length);
    const std::size_t size = std::bit_ceil(std::max<std::size_t>(2 * count, 16));
    // In parts: to clear the table of a long text takes longer than a stop may wait.
    constexpr std::size_t kPart = 1 << 18;
    slots_.clear();
    slots_.reserve(size);
    while (slots_.size() < size && stop_.KeepGoing(kPart))
        slots_.resize(std::min(slots_.size() + kPart, size));
    mask_ = size - 1;
    for (std::size_t at = 0; at < count && stop_.KeepGoing(length); ++at) {
        const std::uint64_t hash = HashOfRun(original, at, length);
        Slot& slot = SlotOf(hash);
        slot.original = slot.original == kFree ? static_cast<std::int32_t>(at) : kRepeated;
        slot.hash = hash;
    }
}

void AnchorFinder::CollectModified(std::span<const std::uint32_t> modified, std::int32_t length) {
    const std::size_t count = RunCount(modified.size(), length);
    for (std::size_t at = 0; at < count && stop_.KeepGoing(length); ++at) {
        Slot& slot = SlotOf(HashOfRun(modified, at, length));
        if (slot.original >= 0)
            slot.modified = slot.modified == kAbsent ? static_cast<std::int32_t>(at) : kRepeated;
    }
}

// In the order of the original, so that the pairs need no sorting.
void AnchorFinder::CollectPairs(std::span<const std::uint32_t> original,
                                std::span<const std::uint32_t> modified, std::int32_t length) {
    pairs_.clear();
    const std::size_t count = RunCount(original.size(), length);
    for (std::size_t at = 0; at < count && stop_.KeepGoing(length); ++at) {
        const Slot& slot = SlotOf(HashOfRun(original, at, length));
        if (slot.original != static_cast<std::int32_t>(at) || slot.modified < 0)
            continue;
        // Two different runs can share a hash; equal numbers are what counts.
        const auto first = original.begin() + slot.original;
        if (std::equal(first, first + length, modified.begin() + slot.modified))
            pairs_.push_back({slot.original, slot.modified});
    }
}

// Single lines need no hash: their numbers are dense.
void AnchorFinder::CollectSingles(std::span<const std::uint32_t> original,
                                  std::span<const std::uint32_t> modified) {
    const std::uint32_t numbers = 1 + std::max(*std::max_element(original.begin(), original.end()),
                                               *std::max_element(modified.begin(), modified.end()));
    uses_.assign(numbers, Use{});
    for (const std::uint32_t number : original) {
        ++uses_[number].originals;
        if (!stop_.KeepGoing())
            break;
    }
    for (std::size_t at = 0; at < modified.size() && stop_.KeepGoing(); ++at) {
        ++uses_[modified[at]].modifieds;
        uses_[modified[at]].modified = static_cast<std::int32_t>(at);
    }
    pairs_.clear();
    for (std::size_t at = 0; at < original.size() && stop_.KeepGoing(); ++at) {
        const Use& use = uses_[original[at]];
        if (use.originals == 1 && use.modifieds == 1)
            pairs_.push_back({static_cast<std::int32_t>(at), use.modified});
    }
}

// The longest sequence of pairs that ascends in the modified, by patience sorting.
void AnchorFinder::Chain() {
    tails_.clear();
    previous_.resize(pairs_.size());
    for (std::size_t i = 0; i < pairs_.size() && stop_.KeepGoing(); ++i) {
        const auto place =
            std::lower_bound(tails_.begin(), tails_.end(), pairs_[i].modified,
                             [this](std::int32_t pair, std::int32_t modified) {
                                 return pairs_[static_cast<std::size_t>(pair)].modified < modified;
                             });
        previous_[i] = place == tails_.begin() ? -1 : *(place - 1);
        if (place == tails_.end())
            tails_.push_back(static_cast<std::int32_t>(i));
        else
            *place = static_cast<std::int32_t>(i);
    }
    chain_.clear();
    std::int32_t at = tails_.empty() ? -1 : tails_.back();
    while (at >= 0 && stop_.KeepGoing()) {
        chain_.push_back(pairs_[static_cast<std::size_t>(at)]);
        at = previous_[static_cast<std::size_t>(at)];
    }
    std::reverse(chain_.begin(), chain_.end());
}

std::span<const MatchedPlaces> AnchorFinder::Find(std::span<const std::uint32_t> original,
                                                  std::span<const std::uint32_t> modified,
                                                  std::int32_t length) {
    if (length == 1) {
        CollectSingles(original, modified);
    } else {
        CollectOriginal(original, length);
        CollectModified(modified, length);
        CollectPairs(original, modified, length);
    }
    if (!stop_.KeepGoing())
        pairs_.clear();
    Chain();
    return chain_;
}

}  // namespace zorvane
