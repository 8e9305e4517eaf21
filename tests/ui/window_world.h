// The whole program with its windows over fakes, as a test or a picture needs it.
#pragma once

#include <functional>
#include <string>

#include <QElapsedTimer>
#include <QTest>

#include "app/run_modes.h"
#include "app/ui/main_window.h"
#include "common/process_state.h"
#include "tests/support/fakes.h"

namespace zorvane {

/// One life of the program; several share the fakes, and so the user's files.
struct WindowWorld {
    WindowWorld(FakePlatform& fakes, Theme& theme)
        : process(fakes.platform), window(process, theme) {
        window.SetFrame(frame);
        CommandLineRequest request;
        Main(process, "", request, frame);
        window.BeginInteractive();
    }
    ~WindowWorld() { frame.UnloadAll(); }
    WindowWorld(const WindowWorld&) = delete;
    WindowWorld& operator=(const WindowWorld&) = delete;

    CompareFilesPage& Page() { return *window.ActivePage(); }
    frmCompareFiles& Viewer() { return *Page().Viewer(); }
    /// Lets the program live until something holds; false after ten seconds.
    static bool Until(const std::function<bool()>& holds) {
        constexpr qint64 kPatience = 10'000;
        QElapsedTimer waited;
        waited.start();
        while (!holds() && waited.elapsed() < kPatience)
            QTest::qWait(5);
        return holds();
    }
    bool Compare(const std::string& original, const std::string& modified) {
        window.OpenPair(original, modified);
        return Until([this] { return !Viewer().Busy() && Viewer().ShownComparison() != nullptr; });
    }

    ProcessState process;
    MainWindow window;
    frmMainMDI frame{process, window, window.Viewers()};
};

}  // namespace zorvane
