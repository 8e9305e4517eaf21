// Partners of large changed stretches that can be told without looking at words: rows of data with
// a field changed in each.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "compare/engine/pairing/compare_side.h"
#include "compare/engine/pairing/equal_run.h"

namespace zorvane {

/// Lines whose beginning or end stands once on each side and which have three fifths of their text
/// in common from both ends; the heaviest chain of them, ascending. Linear time and n log n for the
/// chain. For speed only: whoever pairs word by word finds the same partners.
std::vector<EqualRun> RunsOfAlikeLines(const CompareSide& first, const CompareSide& second,
                                       const PlaceRange& range);

/// Bytes that two keys have in common at the front and behind that at the back, in whole units of
/// `unit_size` bytes: of two UTF-16 letters one byte alone is nearly always the same.
std::size_t CommonEnds(std::string_view first, std::string_view second, std::size_t unit_size);

}  // namespace zorvane
