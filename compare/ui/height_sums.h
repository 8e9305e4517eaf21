// A long list of heights with their sums.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace zorvane {

/// Sums in double over chunks of 512: a look-up scans the chunks, a change touches one.
class HeightSums {
  public:
    void Assign(std::vector<float> heights) {
        heights_ = std::move(heights);
        sums_.assign(heights_.size() / kChunk + 1, 0);
        total_ = 0;
        for (std::size_t at = 0; at < heights_.size(); ++at)
            sums_[at / kChunk] += heights_[at];
        for (const double sum : sums_)
            total_ += sum;
    }

    double Total() const { return total_; }

    void Set(std::int32_t place, float height) {
        const auto at = static_cast<std::size_t>(place);
        const double more = static_cast<double>(height) - heights_[at];
        heights_[at] = height;
        sums_[at / kChunk] += more;
        total_ += more;
    }

    /// All that lies in front of a place.
    double Before(std::int32_t place) const {
        const auto at = static_cast<std::size_t>(place);
        double sum = 0;
        for (std::size_t chunk = 0; chunk < at / kChunk; ++chunk)
            sum += sums_[chunk];
        for (std::size_t one = at / kChunk * kChunk; one < at; ++one)
            sum += heights_[one];
        return sum;
    }

    /// The place that holds a height, the last one behind the end.
    std::int32_t At(double y) const {
        std::size_t chunk = 0;
        while (chunk + 1 < sums_.size() && y >= sums_[chunk])
            y -= sums_[chunk++];
        std::size_t at = chunk * kChunk;
        while (at + 1 < heights_.size() && y >= heights_[at])
            y -= heights_[at++];
        return static_cast<std::int32_t>(std::min(at, heights_.empty() ? 0 : heights_.size() - 1));
    }

  private:
    static constexpr std::size_t kChunk = 512;
    std::vector<float> heights_;
    std::vector<double> sums_;
    double total_ = 0;
};

}  // namespace zorvane
