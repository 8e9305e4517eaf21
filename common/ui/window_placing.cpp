#include "common/ui/window_placing.h"

#include <algorithm>

#include <QEvent>
#include <QEventLoop>
#include <QGuiApplication>
#include <QScreen>
#include <QTimer>
#include <QWindow>

namespace zorvane {
namespace {

constexpr int kSettled = 400;  // milliseconds behind the show: a usual desktop is done by then
constexpr int kLongest = 3000;
constexpr int kLook = 20;

int Area(const QRect& room) {
    return room.isEmpty() ? 0 : room.width() * room.height();
}

}  // namespace

WindowPlacing::WindowPlacing(QWidget& window) : QObject(&window), window_(window) {
    setObjectName(QStringLiteral("placing"));
    window.installEventFilter(this);
}

void WindowPlacing::Watch(QWidget& window) {
    new WindowPlacing(window);
}

bool WindowPlacing::IsPlaced() const {
    if (!window_.isVisible() || !shown_.isValid() || shown_.hasExpired(kLongest))
        return true;
    const QWindow* shown = window_.windowHandle();
    return shown_.hasExpired(kSettled) && shown != nullptr && shown->isExposed();
}

void WindowPlacing::WaitFor(const QWidget* widget) {
    if (widget == nullptr)
        return;
    auto* placing = dynamic_cast<WindowPlacing*>(widget->window()->findChild<QObject*>(
        QStringLiteral("placing"), Qt::FindDirectChildrenOnly));
    if (placing == nullptr || placing->IsPlaced())
        return;
    QEventLoop loop;
    QTimer look;
    connect(&look, &QTimer::timeout, &loop, [placing, &loop] {
        if (placing->IsPlaced())
            loop.quit();
    });
    look.start(kLook);
    placing->waited_for_ = true;
    loop.exec(QEventLoop::ExcludeUserInputEvents);
    placing->waited_for_ = false;
}

// A window that goes while it is waited for would take what is asked with it.
bool WindowPlacing::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Show && !event->spontaneous())
        shown_.start();
    if (event->type() == QEvent::Close && waited_for_) {
        event->ignore();
        return true;
    }
    return QObject::eventFilter(watched, event);
}

QRect WhollyOnAScreen(QRect place, const std::vector<QRect>& screens) {
    if (screens.empty())
        return place;
    const QRect room = *std::max_element(
        screens.begin(), screens.end(), [&place](const QRect& one, const QRect& two) {
            return Area(one.intersected(place)) < Area(two.intersected(place));
        });
    place.setSize(place.size().boundedTo(room.size()));
    place.moveRight(std::min(place.right(), room.right()));
    place.moveBottom(std::min(place.bottom(), room.bottom()));
    place.moveLeft(std::max(place.left(), room.left()));
    place.moveTop(std::max(place.top(), room.top()));
    return place;
}

QRect WhollyOnAScreen(const QRect& place) {
    constexpr int kTitleBar = 32;  // stands above the place of a window
    std::vector<QRect> rooms;
    for (const QScreen* screen : QGuiApplication::screens())
        rooms.push_back(screen->availableGeometry().adjusted(0, kTitleBar, 0, 0));
    return WhollyOnAScreen(place, rooms);
}

}  // namespace zorvane
