// A list in a frame like that of a field.
#pragma once

#include <QListWidget>

namespace zorvane {

class ListBox : public QListWidget {
    Q_OBJECT
  public:
    /// `rows` are in sight without scrolling.
    ListBox(const QString& name, int rows, QWidget* parent = nullptr);

    void SetItems(const QStringList& items);
    QString Current() const;

  protected:
    bool event(QEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
};

}  // namespace zorvane
