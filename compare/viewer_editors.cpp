#include "compare/viewer_editors.h"

namespace zorvane {

ViewerEditors::ViewerEditors(Sound& sound) {
    for (DocumentEditor* entry :
         {&rtbOriginal, &rtbModified, &rtbOriginalDiff, &rtbModifiedDiff, &rtbOriginalDiffFinal,
          &rtbModifiedDiffFinal, &rtbAIODiff, &rtbOriginalDiffTemp, &rtbModifiedDiffTemp,
          &rtbAIODiffTemp, &rtbScratch})
        entry->document.Setup(entry->editor, sound);
    // Nobody undoes what only a run writes.
    for (MemoryEditor* editor :
         {&rtbOriginalDiff.editor, &rtbModifiedDiff.editor, &rtbOriginalDiffFinal.editor,
          &rtbModifiedDiffFinal.editor, &rtbAIODiff.editor, &rtbOriginalDiffTemp.editor,
          &rtbModifiedDiffTemp.editor, &rtbAIODiffTemp.editor, &rtbScratch.editor, &rtbDeletions,
          &rtbAdditions, &rtbChanges})
        editor->SetUndoEnabled(false);
}

}  // namespace zorvane
