#include "compare/ui/overview_accessible.h"

#include <QAccessibleWidget>

#include "compare/ui/difference_overview.h"

namespace zorvane {
namespace {

/// Its value is the first paragraph in sight.
class OverviewAccessible : public QAccessibleWidget, public QAccessibleValueInterface {
  public:
    explicit OverviewAccessible(DifferenceOverview& overview)
        : QAccessibleWidget(&overview, QAccessible::Slider), overview_(overview) {}

    void* interface_cast(QAccessible::InterfaceType type) override {
        if (type == QAccessible::ValueInterface)
            return static_cast<QAccessibleValueInterface*>(this);
        return QAccessibleWidget::interface_cast(type);
    }
    // Numbers alone go over the bus as a value, so the words are the description too.
    QString text(QAccessible::Text kind) const override {
        const bool place = kind == QAccessible::Value || kind == QAccessible::Description;
        if (place && overview_.place_words && overview_.Places().all > 0)
            return overview_.place_words(overview_.Places());
        return QAccessibleWidget::text(kind);
    }

    QVariant currentValue() const override { return overview_.Places().first; }
    void setCurrentValue(const QVariant& value) override {
        const double all = overview_.Places().all;
        if (overview_.go_to && all > 0)
            overview_.go_to((value.toDouble() - 1) / all);
    }
    QVariant maximumValue() const override { return overview_.Places().all; }
    QVariant minimumValue() const override { return overview_.Places().all > 0 ? 1 : 0; }
    QVariant minimumStepSize() const override { return 1; }

  private:
    DifferenceOverview& overview_;
};

QAccessibleInterface* MakeOverviewAccessible(const QString& /*class_name*/, QObject* object) {
    auto* overview = dynamic_cast<DifferenceOverview*>(object);
    return overview == nullptr ? nullptr
                               : new OverviewAccessible(*overview);  // owned by Qt's cache
}

}  // namespace

void InstallOverviewAccessible() {
    static const bool installed = [] {
        QAccessible::installFactory(&MakeOverviewAccessible);
        return true;
    }();
    static_cast<void>(installed);
}

void TellOverviewMoved(DifferenceOverview& overview) {
    if (!QAccessible::isActive())
        return;
    QAccessibleValueChangeEvent event(&overview, overview.Places().first);
    QAccessible::updateAccessibility(&event);
}

}  // namespace zorvane
