// A path that is typed, or chosen by the button beside it.
#pragma once

#include <functional>

#include <QLineEdit>
#include <QWidget>

#include "common/ui/buttons.h"

namespace zorvane {

class PathField : public QWidget {
    Q_OBJECT
  public:
    /// `browse_name` is told for the button, which has an icon alone.
    explicit PathField(const QString& browse_name, QWidget* parent = nullptr);

    QLineEdit& Line() { return *line_; }
    IconButton& Browse() { return *browse_; }
    QString Path() const { return line_->text(); }
    void SetPath(const QString& path) { line_->setText(path); }

    /// Asks for another path than this; empty: none was chosen.
    std::function<QString(const QString& path)> ask;

  private:
    QLineEdit* line_;
    IconButton* browse_;
};

}  // namespace zorvane
