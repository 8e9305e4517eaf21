// The rows of the command palette and how they are painted.
#pragma once

#include <QAbstractListModel>
#include <QStyledItemDelegate>

#include "common/ui/command_palette.h"

namespace zorvane {

class PaletteModel : public QAbstractListModel {
    Q_OBJECT
  public:
    using QAbstractListModel::QAbstractListModel;

    void SetEntries(std::vector<CommandEntry> entries) { entries_ = std::move(entries); }
    void SetHits(std::vector<PaletteHit> hits);
    const std::vector<CommandEntry>& Entries() const { return entries_; }
    const CommandEntry& Entry(int row) const;
    const FuzzyMatch& Match(int row) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;

  private:
    std::vector<CommandEntry> entries_;
    std::vector<PaletteHit> hits_;
};

class PaletteDelegate : public QStyledItemDelegate {
    Q_OBJECT
  public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};

inline constexpr int kPaletteRowHeight = 40;

}  // namespace zorvane
