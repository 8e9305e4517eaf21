// The overview of all differences as screen readers see it: a slider over the paragraphs.
#pragma once

namespace zorvane {

class DifferenceOverview;

/// Makes overviews known to screen readers; costs nothing when done again.
void InstallOverviewAccessible();
void TellOverviewMoved(DifferenceOverview& overview);

}  // namespace zorvane
