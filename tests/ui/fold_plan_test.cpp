// What gives way where room is short.
#include "compare/ui/fold_plan.h"

#include <string>

#include <gtest/gtest.h>

namespace zorvane {
namespace {

struct PlanRow {
    int width;
    int height;
    bool options;
    FoldPlan plan;
};
TEST(FoldPlan, FollowsTheRoom) {
    const FoldPlan all;
    FoldPlan no_captions = all;
    no_captions.captions = false;
    FoldPlan narrow = no_captions;
    narrow.place = narrow.panel_beside = narrow.filters_apart = false;
    FoldPlan least = narrow;
    least.steps_and_layouts = false;
    FoldPlan flat = all;
    flat.editors = false;
    FoldPlan flattest = flat;
    flattest.head_own_line = false;
    FoldPlan flat_least = least;
    flat_least.editors = false;
    const PlanRow rows[] = {
        {699, 479, false, flat_least}, {1150, 900, false, all},   {1149, 900, false, no_captions},
        {899, 900, false, narrow},     {700, 900, false, narrow}, {699, 900, false, least},
        {1150, 760, false, all},       {1150, 759, false, flat},  {1150, 479, false, flattest},
        {1150, 900, true, all},        {1150, 899, true, flat}};
    for (const PlanRow& row : rows) {
        SCOPED_TRACE(std::to_string(row.width) + " x " + std::to_string(row.height));
        EXPECT_EQ(PlanFor(row.width, row.height, row.options), row.plan);
    }
}

}  // namespace
}  // namespace zorvane
