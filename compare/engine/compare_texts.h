// Compares two texts: the one function behind every run, on any thread, without files and without
// process-wide state.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "common/base/result.h"
#include "common/base/side.h"
#include "compare/engine/compare_options.h"
#include "compare/engine/comparison.h"

namespace zorvane {

/// How a compare ended without a result.
inline constexpr std::string_view kCompareStopped = "Compare Aborted";

/// Hears of the paragraphs before words and moves are looked for: the same records, but for moves,
/// and no sections.
using ParagraphsFound = std::function<void(Comparison)>;

/// Texts of editors; paragraphs end in CR LF, the last one needs none. `watcher` may be nullptr.
/// Fails with the expression's own text when one cannot be understood, and with `kCompareStopped`
/// when the watcher stopped it. The result is the same with `found` and without.
Result<Comparison> CompareTexts(PerSide<std::shared_ptr<const std::u16string>> texts,
                                const CompareOptions& options, RunWatcher* watcher,
                                const ParagraphsFound& found = {});

/// Line files in UTF-8, borrowed as long as the comparison lives.
Result<Comparison> CompareLineFiles(PerSide<std::string_view> texts, const CompareOptions& options,
                                    RunWatcher* watcher);

}  // namespace zorvane
