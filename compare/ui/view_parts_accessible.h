// What stands in a text view besides its text, as screen readers see it: folded stretches as
// buttons, differences as notes in words.
#pragma once

#include <vector>

#include <QAccessibleInterface>
#include <QPointer>

#include "compare/ui/rich_text_view.h"

namespace zorvane {

struct ViewPart {
    enum class Kind : unsigned char { Fold, Difference };
    Kind kind = Kind::Difference;
    std::int32_t number = 0;  ///< the row, or the record
    auto operator<=>(const ViewPart&) const = default;
};

/// In sight, from the top down; a difference of several rows once.
std::vector<ViewPart> PartsInSight(RichTextView& view);

class ViewPartAccessible : public QAccessibleInterface, public QAccessibleActionInterface {
  public:
    ViewPartAccessible(RichTextView& view, ViewPart part) : view_(&view), part_(part) {}

    bool isValid() const override { return !view_.isNull(); }
    QObject* object() const override { return nullptr; }
    QAccessibleInterface* parent() const override;
    QAccessibleInterface* child(int) const override { return nullptr; }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    QString text(QAccessible::Text kind) const override;
    void setText(QAccessible::Text, const QString&) override {}
    QRect rect() const override;
    QAccessible::Role role() const override;
    QAccessible::State state() const override;
    void* interface_cast(QAccessible::InterfaceType type) override;

    // A fold opens.
    QStringList actionNames() const override;
    void doAction(const QString& name) override;
    QStringList keyBindingsForAction(const QString&) const override { return {}; }

  private:
    bool IsAt(const ShownRow& row) const;

    QPointer<RichTextView> view_;
    ViewPart part_;
};

}  // namespace zorvane
