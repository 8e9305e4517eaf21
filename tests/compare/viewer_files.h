// A viewer whose files are saved, changed and looked at.
#pragma once

#include <chrono>
#include <string>
#include <string_view>
#include <thread>

#include "tests/support/viewer_fixture.h"

namespace zorvane {

class FilesOfViewer : public ViewerTest {
  protected:
    RichDocument& Text(Side side) {
        return side == Side::Original ? viewer.Editors().rtbOriginal.editor
                                      : viewer.Editors().rtbModified.editor;
    }
    void Edit(Side side, std::u16string_view text) { Text(side).Replace({CharPos{0}, 0}, text); }
    SaveEnd SaveAs(EditorTarget target, const std::string& name, std::int32_t type) {
        viewer.SetActiveEditor(target);
        window.files.file = fakes.folder.Path(name);
        window.files.filter_index = type;
        return viewer.SaveActiveEditorAs().end;
    }
    // Long enough for a change to be still.
    void LookAtDisk() {
        for (int look = 0; look < 3; ++look) {
            fakes.clock().ticks += 2000;
            viewer.CheckFilesOnDisk();
        }
    }
    void WaitForEnd() {
        for (int i = 0; i < 20000 && viewer.Busy(); ++i) {
            viewer.Poll();
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
        EXPECT_FALSE(viewer.Busy());
    }
};

}  // namespace zorvane
