#include "compare/engine/bit_vector_lcs.h"

#include <algorithm>

namespace zorvane {
namespace {

constexpr std::size_t kMostBits = std::size_t{1} << 21;  // 256 KiB of rows
constexpr std::size_t kMostPlaces = 8192;                // keeps the masks small as well

constexpr std::size_t WordsFor(std::size_t places) {
    return (places + 63) / 64;
}

bool HasBit(std::uint64_t word, std::size_t place) {
    return ((word >> (place % 64)) & 1U) != 0;
}

}  // namespace

bool BitVectorLcs::Fits(std::size_t original, std::size_t modified) {
    return original <= kMostPlaces && modified <= kMostPlaces &&
           WordsFor(original) * 64 * modified <= kMostBits;
}

void BitVectorLcs::CollectMasks(std::span<const std::uint32_t> original) {
    masks_.clear();
    for (std::size_t place = 0; place < original.size(); ++place) {
        std::uint32_t& mask = mask_of_[original[place]];
        if (mask == 0) {
            masks_.resize(masks_.size() + words_, 0);
            mask = static_cast<std::uint32_t>(masks_.size() / words_);
        }
        masks_[(mask - 1) * words_ + place / 64] |= std::uint64_t{1} << (place % 64);
    }
}

// A zero bit says that the LCS grows at this place of the original.
void BitVectorLcs::FillRows(std::span<const std::uint32_t> modified) {
    rows_.resize(words_ * modified.size());
    std::uint64_t* row = rows_.data();
    const std::uint64_t* above = nullptr;
    for (const std::uint32_t number : modified) {
        const std::uint32_t mask = mask_of_[number];
        std::uint64_t carry = 0;
        for (std::size_t word = 0; word < words_; ++word) {
            const std::uint64_t old = above == nullptr ? ~std::uint64_t{0} : above[word];
            const std::uint64_t equal = mask == 0 ? 0 : masks_[(mask - 1) * words_ + word];
            const std::uint64_t step = old & equal;
            const std::uint64_t with_carry = old + carry;
            const std::uint64_t sum = with_carry + step;
            carry = static_cast<std::uint64_t>(with_carry < old) +
                    static_cast<std::uint64_t>(sum < with_carry);
            // NOLINTNEXTLINE(clang-analyzer-core.NullDereference): no row, no words
            row[word] = sum | (old & ~equal);
        }
        above = row;
        row += words_;
    }
}

void BitVectorLcs::WalkBack(std::size_t columns, std::size_t rows) {
    matches_.clear();
    while (columns > 0 && rows > 0) {
        const std::size_t place = columns - 1;
        const auto word = [&](std::size_t row) { return rows_[row * words_ + place / 64]; };
        if (HasBit(word(rows - 1), place)) {
            --columns;
            continue;
        }
        --rows;
        if (rows > 0 && !HasBit(word(rows - 1), place))
            continue;
        --columns;
        matches_.push_back({static_cast<std::int32_t>(columns), static_cast<std::int32_t>(rows)});
    }
}

std::span<const MatchedPlaces> BitVectorLcs::Run(std::span<const std::uint32_t> original,
                                                 std::span<const std::uint32_t> modified,
                                                 std::uint32_t number_count) {
    if (mask_of_.size() < number_count)
        mask_of_.resize(number_count, 0);
    words_ = WordsFor(original.size());
    CollectMasks(original);
    FillRows(modified);
    for (const std::uint32_t number : original)
        mask_of_[number] = 0;
    WalkBack(original.size(), modified.size());
    return matches_;
}

}  // namespace zorvane
