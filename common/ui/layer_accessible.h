// Stacks of pages and areas of windows as a screen reader meets them: as nothing at all.
#pragma once

namespace zorvane {

/// Once; the toolkit calls them "layered panes", which readers say in front of every text in them.
void InstallLayerAccessible();

}  // namespace zorvane
