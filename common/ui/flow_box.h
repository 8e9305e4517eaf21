// Widgets in lines, as many beside each other as there is room for.
#pragma once

#include <vector>

#include <QWidget>

namespace zorvane {

/// As high as its lines need.
class FlowBox : public QWidget {
    Q_OBJECT
  public:
    /// Pixels between two that stand beside each other, and between lines.
    FlowBox(int beside, int below, QWidget* parent);

    void Add(QWidget* widget);
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  protected:
    void resizeEvent(QResizeEvent* event) override;
    bool event(QEvent* event) override;

  private:
    /// Height of all lines; with `place` everything is put there.
    int LayOut(int width, bool place) const;
    void PlaceAll();

    int beside_;
    int below_;
    std::vector<QWidget*> widgets_;
};

}  // namespace zorvane
