// Longest common subsequence of two short sequences, 64 places at a time.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace zorvane {

/// One pair of equal places, 0-based in the two sequences.
struct MatchedPlaces {
    std::int32_t original = 0;
    std::int32_t modified = 0;
    friend bool operator==(MatchedPlaces, MatchedPlaces) = default;
};

/// Exact, in |original| * |modified| / 64 steps and as many bits of memory. Source: H. Hyyrö,
/// "Bit-parallel LCS-length computation revisited" (2004), with all rows kept for the way back.
class BitVectorLcs {
  public:
    /// True when the two lengths are within what is worth doing here.
    static bool Fits(std::size_t original, std::size_t modified);
    /// The matches in descending order. Numbers are below `number_count`. The result is borrowed
    /// until the next call.
    std::span<const MatchedPlaces> Run(std::span<const std::uint32_t> original,
                                       std::span<const std::uint32_t> modified,
                                       std::uint32_t number_count);

  private:
    void CollectMasks(std::span<const std::uint32_t> original);
    void FillRows(std::span<const std::uint32_t> modified);
    void WalkBack(std::size_t columns, std::size_t rows);

    std::size_t words_ = 0;
    std::vector<std::uint32_t> mask_of_;  // number -> index of its mask plus 1; all 0 between runs
    std::vector<std::uint64_t> masks_;    // words_ for each number of the original
    std::vector<std::uint64_t> rows_;     // words_ for each place of the modified
    std::vector<MatchedPlaces> matches_;
};

}  // namespace zorvane
