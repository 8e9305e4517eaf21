// The two calls that a closed reader makes in good faith and that no rule can allow, since what
// they ask for is a path: they are caught and answered here. Any other caught call was forbidden.
#pragma once

namespace zorvane {

class OpenTables;

/// True where the processor's registers are known here. Without it those two calls are refused, and
/// tables that a library opens by name are not found.
bool CanCatchCalls();
/// `tables` has to live as long as the process. False when the system refuses.
bool CatchCalls(const OpenTables& tables);

}  // namespace zorvane
