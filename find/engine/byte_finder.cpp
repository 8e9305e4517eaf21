#include "find/engine/byte_finder.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cassert>
#include <cstring>

#include "common/base/ascii.h"

#if defined(__x86_64__)
#include <immintrin.h>
#define ZORVANE_WIDE __attribute__((target("avx2,popcnt,bmi")))
#endif

namespace zorvane {
namespace {

// From common to rare in prose, source code and markup; what is not here is rarer still. Bytes
// above 127 are common where they occur at all.
constexpr std::string_view kByFrequency =
    " eatiornsldcuhmpgf\nybv_.,w-/()\"=;0k:1>x<2T'SCA*EI3R#j{}N4DPLM5qz6O8F7BH9G+U[]&!VWY?X$KJ@%|\\"
    "QZ~^`\t\r";

constexpr int RankOf(unsigned char byte) {
    const std::size_t place = kByFrequency.find(static_cast<char>(byte));
    if (place != std::string_view::npos)
        return static_cast<int>(kByFrequency.size() - place);
    return byte >= 0x80 ? static_cast<int>(kByFrequency.size() / 2) : 0;
}

constexpr std::array<int, 256> kRanks = [] {
    std::array<int, 256> ranks{};
    for (std::size_t byte = 0; byte < ranks.size(); ++byte)
        ranks[byte] = RankOf(static_cast<unsigned char>(byte));
    return ranks;
}();

char Upper(char character) {
    return character >= 'a' && character <= 'z' ? static_cast<char>(character - 32) : character;
}

int Rank(char character, bool folds) {
    const int rank = kRanks[static_cast<unsigned char>(character)];
    return folds ? std::max(rank, kRanks[static_cast<unsigned char>(Upper(character))]) : rank;
}

bool IsAsciiByte(char byte) {
    return static_cast<unsigned char>(byte) < 0x80;
}

bool IsWide() {
#if defined(__x86_64__)
    return __builtin_cpu_supports("avx2") != 0;
#else
    return false;
#endif
}

}  // namespace

ByteFinder::ByteFinder(std::string_view needle, LetterCase letter_case)
    : needle_(needle), folds_(letter_case == LetterCase::AsciiFolds), wide_(IsWide()) {
    assert(!needle.empty());
    if (folds_) {
        for (char& character : needle_)
            character = AsciiLower(character);
    }
    const auto rare_at = [&](std::size_t offset) {
        const char lower = needle_[offset];
        return Rare{offset, lower, folds_ ? Upper(lower) : lower};
    };
    const auto rarest_but = [&](std::size_t taken) {
        std::size_t best = taken == 0 ? needle_.size() - 1 : 0;
        for (std::size_t offset = 0; offset < needle_.size(); ++offset) {
            if (offset != taken && Rank(needle_[offset], folds_) < Rank(needle_[best], folds_))
                best = offset;
        }
        return best;
    };
    first_ = rare_at(rarest_but(needle_.size()));
    second_ = rare_at(rarest_but(first_.offset));
}

bool ByteFinder::Stands(const char* at) const {
    if (!folds_)
        return std::memcmp(at, needle_.data(), needle_.size()) == 0;
    for (std::size_t offset = 0; offset < needle_.size(); ++offset) {
        if (AsciiLower(at[offset]) != needle_[offset])
            return false;
    }
    return true;
}

const char* ByteFinder::Find(const char* begin, const char* end) const {
    return wide_ ? FindWide(begin, end) : FindPlainly(begin, end);
}

const char* ByteFinder::FindPlainly(const char* begin, const char* end) const {
    if (static_cast<std::size_t>(end - begin) < needle_.size())
        return nullptr;
    if (!folds_) {
        return static_cast<const char*>(
            memmem(begin, static_cast<std::size_t>(end - begin), needle_.data(), needle_.size()));
    }
    const char* const last = end - needle_.size();
    for (const char* at = begin; at <= last; ++at) {
        const char byte = at[first_.offset];
        if ((byte == first_.lower || byte == first_.upper) && Stands(at))
            return at;
    }
    return nullptr;
}

#if defined(__x86_64__)
namespace {
ZORVANE_WIDE inline __m256i Load(const char* at) {
    return _mm256_loadu_si256(static_cast<const __m256i*>(static_cast<const void*>(at)));
}
ZORVANE_WIDE inline __m256i Either(__m256i bytes, __m256i lower, __m256i upper) {
    return _mm256_or_si256(_mm256_cmpeq_epi8(bytes, lower), _mm256_cmpeq_epi8(bytes, upper));
}
}  // namespace

ZORVANE_WIDE const char* ByteFinder::FindWide(const char* begin, const char* end) const {
    constexpr std::size_t kWide = 32;
    const __m256i first_lower = _mm256_set1_epi8(first_.lower);
    const __m256i first_upper = _mm256_set1_epi8(first_.upper);
    const __m256i second_lower = _mm256_set1_epi8(second_.lower);
    const __m256i second_upper = _mm256_set1_epi8(second_.upper);
    const char* at = begin;
    for (; static_cast<std::size_t>(end - at) >= needle_.size() + kWide - 1; at += kWide) {
        const __m256i hits =
            _mm256_and_si256(Either(Load(at + first_.offset), first_lower, first_upper),
                             Either(Load(at + second_.offset), second_lower, second_upper));
        for (auto mask = static_cast<std::uint32_t>(_mm256_movemask_epi8(hits)); mask != 0;
             mask &= mask - 1) {
            const char* const candidate = at + std::countr_zero(mask);
            if (Stands(candidate))
                return candidate;
        }
    }
    return FindPlainly(at, end);
}

namespace {
ZORVANE_WIDE std::int64_t CountWide(std::string_view text) {
    constexpr std::size_t kWide = 32;
    const __m256i line_end = _mm256_set1_epi8('\n');
    std::int64_t count = 0;
    std::size_t at = 0;
    for (; at + kWide <= text.size(); at += kWide) {
        const __m256i ends = _mm256_cmpeq_epi8(Load(text.data() + at), line_end);
        count += std::popcount(static_cast<std::uint32_t>(_mm256_movemask_epi8(ends)));
    }
    return count + std::count(text.begin() + static_cast<std::ptrdiff_t>(at), text.end(), '\n');
}
ZORVANE_WIDE bool IsAsciiWide(std::string_view text) {
    constexpr std::size_t kWide = 32;
    std::size_t at = 0;
    for (; at + kWide <= text.size(); at += kWide) {
        if (_mm256_movemask_epi8(Load(text.data() + at)) != 0)
            return false;
    }
    return std::all_of(text.begin() + static_cast<std::ptrdiff_t>(at), text.end(), IsAsciiByte);
}
}  // namespace
#else
const char* ByteFinder::FindWide(const char* begin, const char* end) const {
    return FindPlainly(begin, end);
}
#endif

std::int64_t CountLineEnds(std::string_view text) {
#if defined(__x86_64__)
    static const bool wide = IsWide();
    if (wide)
        return CountWide(text);
#endif
    return std::count(text.begin(), text.end(), '\n');
}

bool IsAsciiText(std::string_view text) {
#if defined(__x86_64__)
    static const bool wide = IsWide();
    if (wide)
        return IsAsciiWide(text);
#endif
    return std::all_of(text.begin(), text.end(), IsAsciiByte);
}

}  // namespace zorvane
