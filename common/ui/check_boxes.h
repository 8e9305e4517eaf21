// Check boxes and radio buttons whose captions wrap, and the switch.
#pragma once

#include <QCheckBox>
#include <QRadioButton>

namespace zorvane {

/// Takes as many lines as its caption needs in the width it is given; translated captions are
/// often half as long again.
class WrappingCheckBox : public QCheckBox {
    Q_OBJECT
  public:
    explicit WrappingCheckBox(const QString& text, QWidget* parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    int heightForWidth(int width) const override;

  protected:
    bool hitButton(const QPoint& place) const override;
    void paintEvent(QPaintEvent* event) override;
};

class WrappingRadioButton : public QRadioButton {
    Q_OBJECT
  public:
    explicit WrappingRadioButton(const QString& text, QWidget* parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    int heightForWidth(int width) const override;

  protected:
    bool hitButton(const QPoint& place) const override;
    void paintEvent(QPaintEvent* event) override;
};

/// On or off at once, without a run or an Apply behind it. The caption stands elsewhere and is
/// told as its name.
class Switch : public QCheckBox {
    Q_OBJECT
  public:
    explicit Switch(const QString& name, QWidget* parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

  protected:
    bool hitButton(const QPoint& place) const override;
    void paintEvent(QPaintEvent* event) override;
};

}  // namespace zorvane
