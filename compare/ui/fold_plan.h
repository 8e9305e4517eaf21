// What of a Compare Files window gives way where room is short.
#pragma once

namespace zorvane {

struct FoldPlan {
    bool captions = true;           ///< of the buttons View and Options; print; the head's sentence
    bool place = true;              ///< "2 of 17"
    bool panel_beside = true;       ///< else it lies over the result
    bool filters_apart = true;      ///< else they drop down; the chip shows its count alone
    bool steps_and_layouts = true;  ///< first, last and the layout buttons; where they fit
    bool editors = true;            ///< else the result alone, though both are chosen
    bool head_own_line = true;      ///< else the head stands beside the files, where both have room
    friend bool operator==(const FoldPlan&, const FoldPlan&) = default;
};

/// In device-independent pixels, of one viewer's part of the window with the menus above it.
constexpr FoldPlan PlanFor(int width, int height, bool options_unfolded) {
    constexpr int kAllCaptions = 1150;
    constexpr int kPanelBeside = 900;
    constexpr int kNames = 700;
    constexpr int kEditors = 760;
    constexpr int kEditorsAndOptions = 900;  // below, neither pane would show three paragraphs
    constexpr int kOwnLine = 480;
    return {.captions = width >= kAllCaptions,
            .place = width >= kPanelBeside,
            .panel_beside = width >= kPanelBeside,
            .filters_apart = width >= kPanelBeside,
            .steps_and_layouts = width >= kNames,
            .editors = height >= (options_unfolded ? kEditorsAndOptions : kEditors),
            .head_own_line = height >= kOwnLine || width < kNames};
}

}  // namespace zorvane
