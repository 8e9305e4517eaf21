// A content with a panel at its right edge: beside it, or over it where room is short.
#pragma once

#include <functional>

#include <QWidget>

namespace zorvane {

class PanelRoom : public QWidget {
  public:
    explicit PanelRoom(QWidget* parent);

    /// Takes both.
    void SetParts(QWidget* content, QWidget* panel);
    /// Its panel over the content, which keeps the whole width.
    void SetBeside(bool beside);
    bool Beside() const { return beside_; }
    void SetPanelShown(bool shown);
    void SetPanelWidth(int width);

    /// The person drags the panel's edge.
    std::function<void(int width)> width_wanted;

  protected:
    void resizeEvent(QResizeEvent* event) override;

  private:
    class Edge;
    void Arrange();

    QWidget* content_ = nullptr;
    QWidget* panel_ = nullptr;
    Edge* edge_;
    int panel_width_ = 304;
    bool beside_ = true;
    bool shown_ = false;
};

}  // namespace zorvane
