// The editors that a Compare Files viewer shows, by their names. Only the viewer's thread touches
// them; what a run works in is in run/run_editors.h.
#pragma once

#include "compare/run/run_editors.h"

namespace zorvane {

struct ViewerEditors {
    explicit ViewerEditors(Sound& sound);

    DocumentEditor rtbOriginal;  ///< what the user loaded or typed
    DocumentEditor rtbModified;
    DocumentEditor rtbOriginalDiffFinal;  ///< the side-by-side result
    DocumentEditor rtbModifiedDiffFinal;
    DocumentEditor rtbAIODiff;  ///< the all-in-one result
    MemoryEditor rtbDeletions;  ///< the summaries
    MemoryEditor rtbAdditions;
    MemoryEditor rtbChanges;
};

}  // namespace zorvane
