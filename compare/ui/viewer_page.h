// What the main window asks of the window of a viewer, whatever its kind.
#pragma once

#include <functional>

#include <QString>

#include "compare/viewer.h"

class QWidget;

namespace zorvane {

/// What every page asks of the frame around it; each kind adds to it.
struct ViewerHost {
    std::function<void(QWidget&)> bring_to_front;
    /// What commands can do may have changed.
    std::function<void()> commands_changed;
    /// The names of what it works on changed.
    std::function<void()> caption_changed;
};

class ViewerPage {
  public:
    virtual ~ViewerPage() = default;

    /// nullptr: it has gone, and the page goes next.
    virtual Viewer* ShownViewer() const = 0;
    /// Of its tab.
    virtual QString Caption() const = 0;
    /// Of the main window while this one is in front.
    virtual QString Title() const { return Caption(); }
    /// By its name, for a tab.
    virtual QString Icon() const = 0;
    /// Behind each poll of the viewer.
    virtual void Tick() {}
    /// Behind a change of the language: texts with a number or a name in them.
    virtual void ShowWords() = 0;
    /// The focus to the next part of the window, or the one before.
    virtual void MoveFocus(bool forward) = 0;
    /// The window was shown, or a run of a command line has left it to a person.
    virtual void BeginInteractive() {}
};

}  // namespace zorvane
