#include "compare/run/run_editors.h"

namespace zorvane {

RunEditors::RunEditors(Sound& sound) {
    for (DocumentEditor* entry :
         {&rtbOriginal, &rtbModified, &rtbOriginalDiff, &rtbModifiedDiff, &rtbAIODiff,
          &rtbOriginalDiffTemp, &rtbModifiedDiffTemp, &rtbAIODiffTemp, &rtbScratch}) {
        entry->document.Setup(entry->editor, sound);
    }
}

}  // namespace zorvane
