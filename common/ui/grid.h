// What all grids of records share: their look, columns that share the room, keys and menus.
#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include <QTableView>

#include "common/ui/color_tokens.h"
#include "common/ui/ui_text.h"

namespace zorvane {

struct GridColumn {
    int least = 0;        ///< in pixels
    bool shares = false;  ///< has a part of what the others leave, as the stored widths are
};

/// The font that settings store for a grid.
struct GridFont {
    std::string family;
    double points = 0;
    bool bold = false;
    bool italic = false;
};

/// Columns always fill the window: what one gains another loses. Rows are of one height, and cost
/// nothing until they are painted.
class Grid : public QTableView {
    Q_OBJECT
  public:
    /// `name` is told for the grid and not shown.
    Grid(const QString& name, QWidget* parent);

    /// `stored` gives a width in twips, 0 of a column that is not shown; `keep` takes what a person
    /// dragged.
    void SetColumns(std::vector<GridColumn> columns, std::function<std::int32_t(int)> stored,
                    std::function<void(int, std::int32_t)> keep);
    /// Before columns have their widths. A font of another system stands for the desktop's own.
    void ShowFont(const GridFont& font);
    void ShareRoom();

    std::function<void(QPoint place)> menu_wanted;
    /// A double click on a row.
    std::function<void()> row_wanted;

  protected:
    void resizeEvent(QResizeEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void selectionChanged(const QItemSelection& selected,
                          const QItemSelection& deselected) override;

  private:
    void MakeHead();
    void TakeWidth(int section, int old_width, int width);

    std::vector<GridColumn> columns_;
    std::function<std::int32_t(int)> stored_;
    std::function<void(int, std::int32_t)> keep_;
    bool placing_ = false;
};

/// One cell: a ground over the whole of it and a line below.
void PaintCellGround(QPainter& painter, const QRect& room, const QColor& ground);

}  // namespace zorvane
