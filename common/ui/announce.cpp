#include "common/ui/announce.h"

#include <memory>

#include <QAccessible>
#include <QAccessibleWidget>

namespace zorvane {
namespace {

#if QT_VERSION < QT_VERSION_CHECK(6, 8, 0)
// Before 6.8 Qt knows no announcements, nor do the screen readers of that time. What all of them
// read is a notification that comes into sight: a widget that nobody sees and that is told of as
// one. There are a few, since a reader asks for the words when it comes to them.
constexpr const char* kNotice = "notice.";
constexpr int kNotices = 8;

class Notice : public QWidget {
  public:
    Notice(QWidget* window, int number) : QWidget(window) {
        setObjectName(QString::fromLatin1(kNotice) + QString::number(number));
        hide();
    }
};

class NoticeAccessible : public QAccessibleWidget {
  public:
    explicit NoticeAccessible(QWidget* notice)
        : QAccessibleWidget(notice, QAccessible::Notification) {}
    ~NoticeAccessible() override = default;
};

QAccessibleInterface* MakeNoticeAccessible(const QString& /*class_name*/, QObject* object) {
    auto* notice = dynamic_cast<Notice*>(object);
    return notice == nullptr ? nullptr : std::make_unique<NoticeAccessible>(notice).release();
}

QWidget& NextNotice(QWidget& window) {
    const int number = (window.property(kNotice).toInt() + 1) % kNotices;
    window.setProperty(kNotice, number);
    const QString name = QString::fromLatin1(kNotice) + QString::number(number);
    if (auto* notice = window.findChild<QWidget*>(name, Qt::FindDirectChildrenOnly))
        return *notice;
    return *new Notice(&window, number);
}
#endif

}  // namespace

void Announce(QWidget& from, const QString& words) {
    if (words.isEmpty() || !QAccessible::isActive())
        return;
#if QT_VERSION >= QT_VERSION_CHECK(6, 8, 0)
    QAccessibleAnnouncementEvent event(&from, words);
    QAccessible::updateAccessibility(&event);
#else
    static const bool installed = [] {
        QAccessible::installFactory(MakeNoticeAccessible);
        return true;
    }();
    static_cast<void>(installed);
    QWidget& notice = NextNotice(*from.window());
    notice.setAccessibleName(words);
    QAccessibleEvent shown(&notice, QAccessible::ObjectShow);
    QAccessible::updateAccessibility(&shown);
#endif
}

}  // namespace zorvane
