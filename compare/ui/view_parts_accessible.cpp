#include "compare/ui/view_parts_accessible.h"

#include <algorithm>

namespace zorvane {

std::vector<ViewPart> PartsInSight(RichTextView& view) {
    std::vector<ViewPart> parts;
    for (const ShownRow& row : view.Page().Shown()) {
        ViewPart part{ViewPart::Kind::Fold, row.row};
        if (row.what.folded == 0)
            part = {ViewPart::Kind::Difference, MarkOfRow(view.Page(), row.row).record};
        if (part.number >= 0 && (parts.empty() || parts.back() != part))
            parts.push_back(part);
    }
    return parts;
}

QAccessibleInterface* ViewPartAccessible::parent() const {
    return view_ == nullptr ? nullptr : QAccessible::queryAccessibleInterface(view_);
}

bool ViewPartAccessible::IsAt(const ShownRow& row) const {
    if (part_.kind == ViewPart::Kind::Fold)
        return row.what.folded > 0 && row.row == part_.number;
    return row.what.folded == 0 && MarkOfRow(view_->Page(), row.row).record == part_.number;
}

QString ViewPartAccessible::text(QAccessible::Text kind) const {
    if (kind != QAccessible::Name || view_ == nullptr)
        return {};
    const ViewLabels& labels = view_->Labels();
    if (part_.kind == ViewPart::Kind::Difference)
        return labels.difference ? labels.difference(part_.number) : QString();
    for (const ShownRow& row : view_->Page().Shown()) {
        if (IsAt(row) && labels.fold_spoken)
            return labels.fold_spoken(row.what.folded);
    }
    return {};
}

QRect ViewPartAccessible::rect() const {
    if (view_ == nullptr)
        return {};
    const QWidget& paper = *view_->viewport();
    QRectF rect;
    for (const ShownRow& row : view_->Page().Shown()) {
        if (IsAt(row))
            rect |= QRectF(0, row.y, paper.width(), row.height);
    }
    return (rect.toRect() & paper.rect()).translated(paper.mapToGlobal(QPoint(0, 0)));
}

QAccessible::Role ViewPartAccessible::role() const {
    return part_.kind == ViewPart::Kind::Fold ? QAccessible::Button : QAccessible::Note;
}

QAccessible::State ViewPartAccessible::state() const {
    QAccessible::State state;
    state.invisible = view_ == nullptr || !view_->isVisible();
    state.offscreen = rect().isEmpty();
    state.readOnly = true;
    state.expandable = part_.kind == ViewPart::Kind::Fold;
    state.collapsed = state.expandable;
    return state;
}

void* ViewPartAccessible::interface_cast(QAccessible::InterfaceType type) {
    if (type == QAccessible::ActionInterface && part_.kind == ViewPart::Kind::Fold)
        return static_cast<QAccessibleActionInterface*>(this);
    return nullptr;
}

QStringList ViewPartAccessible::actionNames() const {
    return {pressAction()};
}

void ViewPartAccessible::doAction(const QString& name) {
    if (view_ == nullptr || name != pressAction() || !view_->Events().fold_opened)
        return;
    for (const ShownRow& row : view_->Page().Shown()) {
        if (IsAt(row)) {
            view_->Events().fold_opened(row.row);
            return;
        }
    }
}

}  // namespace zorvane
