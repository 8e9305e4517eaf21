// Draws windows to PNG files, for the programs whose pictures people look at.
#pragma once

#include <filesystem>
#include <fstream>
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

/// What such a program is told.
struct PictureRun {
    std::string original;  ///< or what is looked for, and so on
    std::string modified;
    std::string folder;  ///< of the pictures
    std::string language;
    std::string language_files;

    /// As a person who chose it the day before; nothing without one.
    void ChooseLanguage(const std::string& user_folder) const {
        namespace fs = std::filesystem;
        if (language.empty())
            return;
        const fs::path home = fs::path(user_folder) / "26" / "Tarnwick, Inc" / "Zorvane";
        const std::string name = language + "-Zorvane.txt";
        fs::create_directories(home / "Languages");
        fs::copy_file(fs::path(language_files) / name, home / "Languages" / name);
        std::ofstream(home / "Zorvane.INI") << "[Language]\r\nLanguage_Code=" << language << "\r\n";
    }
};

/// White on black, as some people set their desktop.
inline ColorTokens HighContrast() {
    QPalette contrast;
    contrast.setColor(QPalette::Window, Qt::black);
    contrast.setColor(QPalette::Base, Qt::black);
    contrast.setColor(QPalette::WindowText, Qt::white);
    contrast.setColor(QPalette::Text, Qt::white);
    return ColorTokens::FromPalette(contrast);
}

/// The program's main: `draw(theme, run)` says whether all were saved.
template <class Draw>
int DrawPair(int argc, char** argv, const Draw& draw) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    Theme theme(application);
    if (argc != 4 && argc != 6) {
        std::cerr << "usage: " << argv[0] << " original modified folder [language files]\n";
        return 2;
    }
    PictureRun run{argv[1], argv[2], argv[3], {}, {}};
    if (argc == 6) {
        run.language = argv[4];
        run.language_files = argv[5];
    }
    return draw(theme, run) ? 0 : 1;
}

}  // namespace zorvane
