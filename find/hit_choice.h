// Hits that a person marks, and which two files are meant by what is marked and chosen.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "common/base/side.h"

namespace zorvane {

class OrbenX;

/// A hit as a person is shown it.
struct ShownHit {
    std::int32_t index = -1;  ///< from 0; -1: none
    std::string file;
    std::int32_t line = 0;
    std::int32_t column = 0;
    std::string item;
    std::string place;  ///< page, sheet and cell, or slide; may be empty
    friend bool operator==(const ShownHit&, const ShownHit&) = default;
};

/// Two at most: a third takes the place of the one that was marked first.
class MarkedHits {
  public:
    void Toggle(std::int32_t hit);
    bool Has(std::int32_t hit) const;
    void Clear() { hits_.clear(); }
    const std::vector<std::int32_t>& Hits() const { return hits_; }

  private:
    std::vector<std::int32_t> hits_;  // the newest is last
};

/// The files to compare: those of two chosen rows, else of the two that are marked, else of the
/// one that is marked and the chosen one. The one that comes first in the search is the original.
/// Nothing: there are no two, or both hits are in one file.
std::optional<PerSide<std::string>> FilesToCompare(const OrbenX& engine,
                                                   std::span<const std::int32_t> chosen,
                                                   const MarkedHits& marked);

}  // namespace zorvane
