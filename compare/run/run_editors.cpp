#include "compare/run/run_editors.h"

namespace zorvane {

RunEditors::RunEditors(Sound& sound, RunWatcher& watcher) {
    for (DocumentEditor* entry :
         {&rtbOriginal, &rtbModified, &rtbOriginalDiff, &rtbModifiedDiff, &rtbAIODiff,
          &rtbOriginalDiffTemp, &rtbModifiedDiffTemp, &rtbAIODiffTemp, &rtbScratch}) {
        entry->document.Setup(entry->editor, sound);
        entry->editor.Watch(&watcher);
    }
    for (MemoryEditor* summary : Summaries())
        summary->Watch(&watcher);
}

}  // namespace zorvane
