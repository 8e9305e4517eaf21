// A window that is shown gets its place and size from the desktop a little later: what is asked
// meanwhile would stand where the window was.
#pragma once

#include <vector>

#include <QElapsedTimer>
#include <QObject>
#include <QWidget>

namespace zorvane {

class WindowPlacing : public QObject {
  public:
    /// Notes when the window is shown; before that. The window owns the watch.
    static void Watch(QWidget& window);
    /// Comes back when the window of this widget has its place, at once where nobody watches it.
    /// Other events go on, but nobody types, clicks or closes the window meanwhile.
    static void WaitFor(const QWidget* widget);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    explicit WindowPlacing(QWidget& window);
    bool IsPlaced() const;

    QWidget& window_;
    QElapsedTimer shown_;
    bool waited_for_ = false;
};

/// The place moved and made smaller as far as it must be; `screens` are the rooms that windows have
/// there, the first one is for what is on none.
QRect WhollyOnAScreen(QRect place, const std::vector<QRect>& screens);
/// On the screens that there are.
QRect WhollyOnAScreen(const QRect& place);

}  // namespace zorvane
