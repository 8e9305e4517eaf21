#include "common/ui/path_field.h"

#include <QHBoxLayout>

#include "common/ui/measures.h"

namespace zorvane {

PathField::PathField(const QString& browse_name, QWidget* parent)
    : QWidget(parent), line_(new QLineEdit(this)) {
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(measures::kSmall);
    row->addWidget(line_, 1);
    browse_ = new IconButton(QStringLiteral("open"), browse_name, QString(), QString(), this);
    row->addWidget(browse_);
    setFocusProxy(line_);
    connect(browse_, &QToolButton::clicked, this, [this] {
        const QString chosen = ask ? ask(line_->text()) : QString();
        if (chosen.isEmpty())
            return;
        line_->setText(chosen);
        line_->setFocus(Qt::OtherFocusReason);
    });
}

}  // namespace zorvane
