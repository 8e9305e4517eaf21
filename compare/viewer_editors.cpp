#include "compare/viewer_editors.h"

namespace zorvane {

ViewerEditors::ViewerEditors(Sound& sound) {
    for (ShownDocument* entry :
         {&rtbOriginal, &rtbModified, &rtbOriginalDiffFinal, &rtbModifiedDiffFinal, &rtbAIODiff})
        entry->document.Setup(entry->editor, sound);
}

}  // namespace zorvane
