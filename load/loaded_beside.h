// What lies beside a loaded text, and where in it.
#pragma once

#include <vector>

#include "compare/document/beside.h"
#include "compare/document/editor.h"

namespace zorvane {

/// What stands behind the last paragraph is told at it.
void KeepBesideInText(const Editor& editor, std::vector<BesideItem>& beside);

}  // namespace zorvane
