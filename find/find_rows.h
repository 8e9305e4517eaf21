// What the three grids of a Find Text In Files viewer show, as models: a row is made when it is
// looked at.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "find/engine/orben_x.h"
#include "find/hit_choice.h"

namespace zorvane {

/// One row for each hit that has been taken over from the engine, which outlives this.
class HitRows {
  public:
    enum Column : std::int32_t { Number, File, Line, Col, Item, kColumns };

    explicit HitRows(const OrbenX& engine) : engine_(engine) {}
    std::int32_t Count() const { return count_; }
    void SetCount(std::int32_t count) { count_ = count; }
    /// Both from 0, without the header row.
    std::string Cell(std::int32_t row, Column column) const;

  private:
    const OrbenX& engine_;
    std::int32_t count_ = 0;
};

/// The lines around a hit.
struct ContextRows {
    std::vector<std::string> rows;  ///< each as a literal
    std::int32_t marked = -1;       ///< the row of the hit: bold, red on white; -1: none
    std::int32_t top = 0;           ///< the first one in sight
    std::int64_t first_line = 1;    ///< number of the line of row 0
    std::int32_t item_at = -1;      ///< of the hit in the marked row, in bytes; -1: nobody knows
    std::int32_t item_length = 0;
    std::string marked_text;  ///< the line of the hit as it is
    friend bool operator==(const ContextRows&, const ContextRows&) = default;
};

/// At most 199 lines, 99 on each side of the hit's. Lines and encodings are those of the engine; it
/// is read from `sFile`, which may be another form of the hit's own file. False when that cannot be
/// opened or is no text, and after a stop.
bool ReadContextRows(const std::string& sFile, const ShownHit& hit,
                     const std::string& locale_encoding, const std::function<bool()>& stop,
                     ContextRows& context);

}  // namespace zorvane
