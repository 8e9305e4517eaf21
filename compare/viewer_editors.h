// The editors of a Compare Files viewer, by their names.
#pragma once

#include "compare/document/memory_editor.h"
#include "compare/document/rtb_document.h"

namespace zorvane {

class Sound;

/// An editor with its numbered paragraphs.
struct DocumentEditor {
    MemoryEditor editor;
    clsRTBDocument document;
};

struct ViewerEditors {
    explicit ViewerEditors(Sound& sound);

    DocumentEditor rtbOriginal;  ///< what the user loaded or typed
    DocumentEditor rtbModified;
    DocumentEditor rtbOriginalDiff;  ///< working copies of the side-by-side result
    DocumentEditor rtbModifiedDiff;
    DocumentEditor rtbOriginalDiffFinal;  ///< the side-by-side result
    DocumentEditor rtbModifiedDiffFinal;
    DocumentEditor rtbAIODiff;           ///< the all-in-one result
    DocumentEditor rtbOriginalDiffTemp;  ///< the work of one change
    DocumentEditor rtbModifiedDiffTemp;
    DocumentEditor rtbAIODiffTemp;
    DocumentEditor rtbScratch;  ///< header lines, and the report
    MemoryEditor rtbDeletions;  ///< the summaries
    MemoryEditor rtbAdditions;
    MemoryEditor rtbChanges;
};

}  // namespace zorvane
