#include "common/ui/layer_accessible.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QMdiArea>
#include <QStackedWidget>

namespace zorvane {
namespace {

QAccessibleInterface* MakeAccessible(const QString& /*class_name*/, QObject* object) {
    auto* widget = qobject_cast<QWidget*>(object);
    const bool layers = qobject_cast<QStackedWidget*>(widget) != nullptr ||
                        qobject_cast<QMdiArea*>(widget) != nullptr;
    return layers ? new QAccessibleWidget(widget, QAccessible::Client)  // owned by Qt's cache
                  : nullptr;
}

}  // namespace

void InstallLayerAccessible() {
    static const bool installed = [] {
        QAccessible::installFactory(&MakeAccessible);
        return true;
    }();
    static_cast<void>(installed);
}

}  // namespace zorvane
