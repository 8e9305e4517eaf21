// Draws windows to PNG files, for the programs whose pictures people look at.
#pragma once

#include <iostream>
#include <string>

#include <QApplication>
#include <QTest>
#include <QWidget>

#include "common/ui/qt_text.h"
#include "common/ui/theme.h"

namespace zorvane {

class PictureSaver {
  public:
    explicit PictureSaver(std::string folder) : folder_(std::move(folder)) {}

    /// As "NAME.png", or "NAME-2x.png" at twice the size.
    void Save(QWidget& widget, const std::string& name) {
        QTest::qWait(60);  // until it is laid out and painted
        const std::string ratio = widget.devicePixelRatio() > 1 ? "-2x" : "";
        saved_ = widget.grab().save(ToQt(folder_ + "/" + name + ratio + ".png")) && saved_;
    }
    bool AllSaved() const { return saved_; }

  private:
    std::string folder_;
    bool saved_ = true;
};

/// The program's main: `draw(theme, original, modified, folder)` says whether all were saved.
template <class Draw>
int DrawPair(int argc, char** argv, const Draw& draw) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    Theme theme(application);
    if (argc < 4) {
        std::cerr << "usage: " << argv[0] << " original modified folder\n";
        return 2;
    }
    return draw(theme, argv[1], argv[2], argv[3]) ? 0 : 1;
}

}  // namespace zorvane
