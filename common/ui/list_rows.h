// Rows of lists that drop down: an icon, a text that is cut by "...", and more below it or behind.
#pragma once

#include <functional>

#include <QAbstractListModel>
#include <QStyledItemDelegate>

#include "common/ui/color_tokens.h"

namespace zorvane {

struct ListRow {
    QString text{};
    QString icon{};  ///< by its name; empty: none
    Token icon_color = Token::Text;
    QString side{};  ///< at the end, in grey
};

/// A list that knows its length and makes a row when it is looked at. Tens of thousands of rows
/// cost nothing until they are seen.
class RowModel : public QAbstractListModel {
    Q_OBJECT
  public:
    using Provider = std::function<ListRow(int)>;
    enum Role { IconRole = Qt::UserRole, ColorRole, SideRole };

    explicit RowModel(QObject* parent = nullptr) : QAbstractListModel(parent) {}

    void SetRows(int count, Provider provider);
    ListRow Row(int row) const { return provider_(row); }

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;

  private:
    int count_ = 0;
    Provider provider_;
};

class RowDelegate : public QStyledItemDelegate {
    Q_OBJECT
  public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};

}  // namespace zorvane
