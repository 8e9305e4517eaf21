// A run as a screen reader tells of it: its begin, each quarter, and what came of it.
#pragma once

#include <QString>
#include <QWidget>

#include "common/ui/ui_text.h"

namespace zorvane {

class RunAnnouncer {
  public:
    /// Borrowed.
    RunAnnouncer(QWidget& from, UiText text);

    void Begin(const QString& stage);
    /// From 0 to 100.
    void Progress(double percent);
    void End(const QString& verdict);

  private:
    QWidget& from_;
    UiText text_;
    int quarter_ = 0;
};

}  // namespace zorvane
