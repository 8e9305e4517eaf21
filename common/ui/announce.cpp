#include "common/ui/announce.h"

#include <QAccessible>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>

namespace zorvane {
namespace {

constexpr const char* kAccessibilityBus = "a11y";  // Qt's connection to it, by this name
constexpr const char* kObjects = "/org/a11y/atspi/accessible/";
constexpr int kPolite = 1;

// Qt knows announcements from 6.8 on. Before that nothing of an alert reaches the accessibility
// bus, so the signal is sent beside Qt, from the object that Qt has put there.
void SendSignal(QAccessibleInterface& source, const QString& words) {
    QDBusConnection bus(QString::fromLatin1(kAccessibilityBus));
    if (!bus.isConnected())
        return;
    QDBusMessage signal = QDBusMessage::createSignal(
        QString::fromLatin1(kObjects) + QString::number(QAccessible::uniqueId(&source)),
        QStringLiteral("org.a11y.atspi.Event.Object"), QStringLiteral("Announcement"));
    signal << QString() << kPolite << 0 << QVariant::fromValue(QDBusVariant(words))
           << QVariantMap();
    bus.send(signal);
}

}  // namespace

void Announce(QWidget& from, const QString& words) {
    if (words.isEmpty() || !QAccessible::isActive())
        return;
#if QT_VERSION >= QT_VERSION_CHECK(6, 8, 0)
    QAccessibleAnnouncementEvent event(&from, words);
    QAccessible::updateAccessibility(&event);
#else
    if (QAccessibleInterface* source = QAccessible::queryAccessibleInterface(&from))
        SendSignal(*source, words);
    QAccessibleEvent alert(&from, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
#endif
}

}  // namespace zorvane
