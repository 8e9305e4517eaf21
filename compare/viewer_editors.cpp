#include "compare/viewer_editors.h"

namespace zorvane {

ViewerEditors::ViewerEditors(Sound& sound) {
    for (DocumentEditor* entry :
         {&rtbOriginal, &rtbModified, &rtbOriginalDiff, &rtbModifiedDiff, &rtbOriginalDiffFinal,
          &rtbModifiedDiffFinal, &rtbAIODiff, &rtbOriginalDiffTemp, &rtbModifiedDiffTemp,
          &rtbAIODiffTemp, &rtbScratch})
        entry->document.Setup(entry->editor, sound);
}

}  // namespace zorvane
