#include "options/compare_files_view.h"

#include <algorithm>
#include <limits>

#include "options/setting_rows.h"

namespace zorvane {
namespace {

using View = CompareFilesView;

constexpr SettingRow<View> kRows[] = {
    {"KeepParagraphsOpposite", &View::KeepParagraphsOpposite},
    {"AllInOne", &View::AllInOne},
    {"ZoomPercent", &View::ZoomPercent},
    {"LineLength", &View::LineLength},
    {"FoldUnchanged", &View::FoldUnchanged},
    {"FoldFromParagraphs", &View::FoldFromParagraphs},
    {"FoldKeepParagraphs", &View::FoldKeepParagraphs},
    {"FoldKeepHeadings", &View::FoldKeepHeadings},
    {"CountNumbering", &View::CountNumbering},
    {"CountFormatting", &View::CountFormatting},
    {"CountMoves", &View::CountMoves},
    {"RatioColumns", &View::RatioColumns},
    {"OptionsUnfolded", &View::OptionsUnfolded},
    {"OptionsTab", &View::OptionsTab},
    {"PanelOpen", &View::PanelOpen},
    {"PanelWidth", &View::PanelWidth},
};
constexpr const char* kLayout = "Layout";

struct RangeRow {
    std::int32_t View::*member;
    std::int32_t least;
    std::int32_t most;
};
constexpr std::int32_t kNoMost = std::numeric_limits<std::int32_t>::max();
constexpr RangeRow kRanges[] = {
    {&View::ZoomPercent, 25, 500},
    {&View::LineLength, 200, 4000},
    {&View::FoldFromParagraphs, 1, kNoMost},
    {&View::FoldKeepParagraphs, 0, kNoMost},
    {&View::OptionsTab, 0, 2},
    {&View::PanelWidth, 120, 2000},
};
constexpr double kNarrowest = 0.1;
constexpr double kWidest = 0.9;

std::string SectionOf(const std::string& viewer) {
    return viewer + "View";
}

}  // namespace

void ReadCompareFilesView(IniProfile& file, const std::string& viewer, CompareFilesView& view) {
    const std::string section = SectionOf(viewer);
    const View before = view;
    ReadSettings<View>(file, section, kRows, view);
    for (const RangeRow& range : kRanges) {
        std::int32_t& value = view.*range.member;
        const bool no_size = value < range.least && value <= 0;
        value = no_size ? before.*range.member : std::clamp(value, range.least, range.most);
    }
    view.RatioColumns = std::clamp(view.RatioColumns, kNarrowest, kWidest);
    auto layout = static_cast<std::int32_t>(view.Layout);
    ReadSetting(file, section, kLayout, layout);
    if (layout >= 1 && layout <= 3)
        view.Layout = static_cast<PaneLayout>(layout);
}

void SaveCompareFilesView(IniProfile& file, const std::string& viewer,
                          const CompareFilesView& view) {
    const std::string section = SectionOf(viewer);
    SaveSettings<View>(file, section, kRows, view);
    SaveSetting(file, section, kLayout, static_cast<std::int32_t>(view.Layout));
}

}  // namespace zorvane
