#include "compare/viewer_editors.h"

namespace zorvane {

ViewerEditors::ViewerEditors(Sound& sound) {
    for (ShownDocument* entry : Documents())
        entry->document.Setup(entry->editor, sound);
}

}  // namespace zorvane
