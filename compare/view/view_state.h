// Which editors a viewer shows in which view, and what its buttons say.
#pragma once

#include <cstdint>
#include <vector>

namespace zorvane {

/// The numbers are the tags of the view button.
enum class View : std::int32_t { SideBySide = 1, AllInOne = 2 };

enum class ViewFilter { All, Additions, Deletions, Changes };

/// The editors that a window shows; the first five scroll together, and these are their numbers.
enum class ShownEditor : std::int32_t {
    Original = 1,
    Modified = 2,
    OriginalDiffFinal = 3,
    ModifiedDiffFinal = 4,
    AllInOneDiff = 5,
    Additions = 6,
    Deletions = 7,
    Changes = 8
};

/// What the result's part of a window shows.
struct ResultArrangement {
    std::vector<ShownEditor> shown;  ///< from the back to the front
    ShownEditor focus = ShownEditor::Original;
    friend bool operator==(const ResultArrangement&, const ResultArrangement&) = default;
};

ResultArrangement ArrangementOf(View view, ViewFilter filter);

/// The caption of the view button, in English: the view that a press will give.
const char* ViewButtonCaption(View view);

/// What the status bar says behind the count of a filter, in English; empty for all.
const char* FilterWords(ViewFilter filter);

}  // namespace zorvane
