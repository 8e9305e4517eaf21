// The editors that one run works in, by their names. They live as long as the run and are seen by
// nobody else.
#pragma once

#include <array>

#include "compare/document/memory_editor.h"
#include "compare/document/rtb_document.h"

namespace zorvane {

class RunWatcher;
class Sound;

/// An editor with its numbered paragraphs.
struct DocumentEditor {
    MemoryEditor editor;
    clsRTBDocument document;
};

struct RunEditors {
    RunEditors(Sound& sound, RunWatcher& watcher);

    DocumentEditor rtbOriginal;  ///< the two texts of the run
    DocumentEditor rtbModified;
    DocumentEditor rtbOriginalDiff;  ///< the side-by-side result
    DocumentEditor rtbModifiedDiff;
    DocumentEditor rtbAIODiff;           ///< the all-in-one result
    DocumentEditor rtbOriginalDiffTemp;  ///< the work of one change
    DocumentEditor rtbModifiedDiffTemp;
    DocumentEditor rtbAIODiffTemp;
    DocumentEditor rtbScratch;  ///< header lines
    MemoryEditor rtbDeletions;  ///< the summaries
    MemoryEditor rtbAdditions;
    MemoryEditor rtbChanges;

    std::array<MemoryEditor*, 3> Summaries() { return {&rtbDeletions, &rtbAdditions, &rtbChanges}; }
};

}  // namespace zorvane
