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
#include "compare/engine/in_sight.h"

namespace zorvane {

/// How a compare ended without a result.
inline constexpr std::string_view kCompareStopped = "Compare Aborted";

/// Somebody who looks while a long compare goes on. Moves come with the result alone.
struct EarlyReader {
    /// First the paragraphs: the same records, but for moves, and no sections. Then, each time all
    /// words in sight are known, the same records with the sections found so far.
    std::function<void(Comparison)> found;
    /// Which records are looked for words first; may change at any time. Empty: none.
    std::function<ParagraphsInSight()> in_sight;
};

/// Texts of editors; paragraphs end in CR LF, the last one needs none. `watcher` may be nullptr.
/// Fails with the expression's own text when one cannot be understood, and with `kCompareStopped`
/// when the watcher stopped it. The result is the same with a reader and without.
Result<Comparison> CompareTexts(PerSide<std::shared_ptr<const std::u16string>> texts,
                                const CompareOptions& options, RunWatcher* watcher,
                                const EarlyReader& reader = {});

/// Line files in UTF-8, borrowed as long as the comparison lives.
Result<Comparison> CompareLineFiles(PerSide<std::string_view> texts, const CompareOptions& options,
                                    RunWatcher* watcher);

}  // namespace zorvane
