// What two documents differ in beside their words.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "common/base/number.h"
#include "common/base/side.h"
#include "compare/document/beside.h"

namespace zorvane {

enum class BesideChange : std::uint8_t { Added, Removed, Changed, Moved };

struct BesideDifference {
    BesideKind kind = BesideKind::Picture;
    BesideChange change = BesideChange::Changed;
    PerSide<ParagraphNumber> paragraphs;  ///< 0: of the whole document, or not in that side
    std::string old_text;                 ///< empty when added
    std::string new_text;                 ///< empty when removed
    friend bool operator==(const BesideDifference&, const BesideDifference&) = default;
};

/// For each paragraph of the Original, in order, the number of the Modified's that it is compared
/// with; 0 when there is none.
using ParagraphPartners = std::vector<std::int32_t>;

/// By kind, then by paragraph. Items are equal when their digests are. Equal ones whose paragraphs
/// are no partners count as unchanged when one of the paragraphs has no partner at all, or a
/// picture and its like only went to the next paragraph; else they have moved. What goes or comes
/// with a whole paragraph is told only where the words do not show it (`IsSeenByItself`).
std::vector<BesideDifference> CompareBeside(const std::vector<BesideItem>& original,
                                            const std::vector<BesideItem>& modified,
                                            const ParagraphPartners& partners);

/// True for what a person sees apart from the words: a picture, a comment; not a link's target.
bool IsSeenByItself(BesideKind kind);

/// "added", "removed", "changed" ("replaced" for pictures and their like), "moved".
std::string_view VerbOf(BesideKind kind, BesideChange change);

/// "Beside the words: 1 picture replaced (paragraph 3), 2 link targets changed (12, 40)." Empty
/// without differences. Paragraphs are the Modified's, "original 7" where there is only one there.
std::string BesideSentence(const std::vector<BesideDifference>& differences);

}  // namespace zorvane
