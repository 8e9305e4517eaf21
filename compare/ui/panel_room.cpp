#include "compare/ui/panel_room.h"

#include <algorithm>

#include <QMouseEvent>

namespace zorvane {

namespace {

constexpr int kEdge = 6;  // of the panel, where it is dragged
constexpr int kLeastPanel = 240;
constexpr int kLeastContent = 320;

}  // namespace

class PanelRoom::Edge : public QWidget {
  public:
    explicit Edge(PanelRoom& room) : QWidget(&room), room_(room) {
        setCursor(Qt::SplitHCursor);
        hide();
    }

  protected:
    void mousePressEvent(QMouseEvent* event) override { event->accept(); }
    void mouseMoveEvent(QMouseEvent* event) override {
        if (room_.width_wanted)
            room_.width_wanted(room_.width() - mapToParent(event->position().toPoint()).x());
    }

  private:
    PanelRoom& room_;
};

PanelRoom::PanelRoom(QWidget* parent) : QWidget(parent), edge_(new Edge(*this)) {}

void PanelRoom::SetParts(QWidget* content, QWidget* panel) {
    content_ = content;
    panel_ = panel;
    content->setParent(this);
    panel->setParent(this);
    panel->hide();
}

void PanelRoom::SetBeside(bool beside) {
    beside_ = beside;
    Arrange();
}

void PanelRoom::SetPanelShown(bool shown) {
    shown_ = shown;
    panel_->setVisible(shown);
    edge_->setVisible(shown);
    Arrange();
}

void PanelRoom::SetPanelWidth(int width) {
    panel_width_ = width;
    Arrange();
}

void PanelRoom::Arrange() {
    if (content_ == nullptr)
        return;
    const int most = std::max(kLeastPanel, width() - kLeastContent);
    const int wide = std::min(std::clamp(panel_width_, kLeastPanel, most), width());
    content_->setGeometry(0, 0, shown_ && beside_ ? width() - wide : width(), height());
    panel_->setGeometry(width() - wide, 0, wide, height());
    edge_->setGeometry(width() - wide - kEdge / 2, 0, kEdge, height());
    panel_->raise();
    edge_->raise();
}

void PanelRoom::resizeEvent(QResizeEvent*) {
    Arrange();
}

}  // namespace zorvane
