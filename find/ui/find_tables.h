// Two grids of a Find window as tables: hits, and what could not be looked through. A row is made
// when it is painted.
#pragma once

#include <QAbstractTableModel>
#include <QStyledItemDelegate>

#include "common/ui/color_tokens.h"
#include "common/ui/ui_text.h"
#include "find/find_viewer.h"

namespace zorvane {

/// A cell as it is painted.
struct FindCell {
    QString text{};
    QString icon{};    ///< by its name; empty: none
    QString beside{};  ///< in grey behind the text
    Token ink = Token::Text;
    Token icon_ink = Token::Text2;
    bool right = false;  ///< a number
    bool bold = false;
    bool path = false;  ///< its end matters most
};

class FindTable : public QAbstractTableModel {
    Q_OBJECT
  public:
    /// Borrowed.
    FindTable(frmFindTextInFiles& viewer, UiText text, QObject* parent);

    /// Rows came or went in the viewer, or some look another way.
    void TakeRows();
    virtual FindCell Cell(int row, int column) const = 0;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

  protected:
    virtual int Rows() const = 0;
    virtual int Columns() const = 0;
    virtual QString Head(int column) const = 0;
    virtual bool IsNumber(int column) const = 0;
    virtual QString Spoken(int row) const = 0;
    virtual QString ToolTip(int row, int column) const = 0;
    const frmFindTextInFiles& Viewer() const { return viewer_; }
    const UiText& Text() const { return text_; }

  private:
    frmFindTextInFiles& viewer_;
    UiText text_;
    int shown_ = 0;  ///< rows that the views know
};

class HitTable : public FindTable {
    Q_OBJECT
  public:
    using FindTable::FindTable;
    FindCell Cell(int row, int column) const override;

  protected:
    int Rows() const override;
    int Columns() const override { return HitRows::kColumns; }
    QString Head(int column) const override;
    bool IsNumber(int column) const override {
        return column == HitRows::Number || column == HitRows::Line || column == HitRows::Col;
    }
    QString Spoken(int row) const override;
    QString ToolTip(int row, int column) const override;
};

class ErrorTable : public FindTable {
    Q_OBJECT
  public:
    using FindTable::FindTable;
    FindCell Cell(int row, int column) const override;

  protected:
    int Rows() const override;
    int Columns() const override { return 2; }
    QString Head(int column) const override;
    bool IsNumber(int column) const override { return column == 0; }
    QString Spoken(int row) const override;
    QString ToolTip(int row, int column) const override;
};

class FindCellDelegate : public QStyledItemDelegate {
    Q_OBJECT
  public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
};

}  // namespace zorvane
