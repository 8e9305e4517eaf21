// Draws windows to PNG files that people look at.
#pragma once

#include <string>

#include "common/ui/qt_text.h"
#include "common/ui/theme.h"
#include "tests/ui/window_world.h"

namespace zorvane {

/// What is drawn, and where to. Each Draw function says whether what it draws came about.
struct PictureRun {
    /// As "NAME.png", or "NAME-2x.png" at twice the size.
    void Save(QWidget& widget, const std::string& name) {
        QTest::qWait(60);  // until it is laid out and painted
        const std::string ratio = widget.devicePixelRatio() > 1 ? "-2x" : "";
        saved = widget.grab().save(ToQt(folder + "/" + name + ratio + ".png")) && saved;
    }

    Theme& theme;
    WindowWorld& world;
    std::string original;  ///< or the folder that is searched
    std::string modified;  ///< or what is looked for
    std::string folder;    ///< of the pictures
    bool saved = true;
};

bool DrawCompare(PictureRun& run);
bool DrawDialogs(PictureRun& run);
bool DrawFind(PictureRun& run);
bool DrawFolders(PictureRun& run);

}  // namespace zorvane
