// Boxes with a list that drops down.
#pragma once

#include <QComboBox>
#include <QSpinBox>

#include "common/ui/list_rows.h"

namespace zorvane {

/// Its text is cut by "..." where room is short, which Qt's own is not.
class ComboBox : public QComboBox {
    Q_OBJECT
  public:
    explicit ComboBox(QWidget* parent = nullptr);

    void showPopup() override;

  protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    /// What stands in the box while it is not edited.
    virtual QString ShownText(const QFontMetrics& metrics, int width) const;
    virtual ListRow ShownRow() const;
};

/// The list of differences: rows with their sign, made when they are looked at.
class DifferenceBox : public ComboBox {
    Q_OBJECT
  public:
    explicit DifferenceBox(const QString& name, QWidget* parent = nullptr);

    /// `none` stands in the box while no row is current.
    void SetRows(int count, RowModel::Provider provider, const QString& none);
    /// 0-based; -1: no row is current. Tells nobody.
    void SetCurrent(int row);

  Q_SIGNALS:
    void Chosen(int row);

  protected:
    QString ShownText(const QFontMetrics& metrics, int width) const override;
    ListRow ShownRow() const override;

  private:
    RowModel rows_;
    QString none_;
};

/// A number that is as wide as its values.
class NumberBox : public QSpinBox {
    Q_OBJECT
  public:
    NumberBox(int least, int most, QWidget* parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }
};

/// A number that may be left out: it has no value while the box is empty.
class OptionalNumberBox : public NumberBox {
    Q_OBJECT
  public:
    explicit OptionalNumberBox(int most, QWidget* parent = nullptr) : NumberBox(0, most, parent) {}

    bool IsEmpty() const { return value() == 0; }

  protected:
    QValidator::State validate(QString& text, int& at) const override;
    int valueFromText(const QString& text) const override;
    QString textFromValue(int value) const override;
};

}  // namespace zorvane
