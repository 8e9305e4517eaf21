// Words that a screen reader says without the focus moving.
#pragma once

#include <QString>
#include <QWidget>

namespace zorvane {

/// `from` is the part of the window that the words are about. Costs nothing when nobody listens.
void Announce(QWidget& from, const QString& words);

}  // namespace zorvane
