#include "common/ui/palette_model.h"

#include <algorithm>
#include <tuple>

#include <QPainter>
#include <QTextLayout>

#include "common/ui/icons.h"
#include "common/ui/look_paint.h"
#include "common/ui/look_style.h"
#include "common/ui/measures.h"

namespace zorvane {

using namespace measures;

namespace {

constexpr int kMenuColumn = 346;
constexpr int kLastUsedCounted = 8;
constexpr int kLastUsedBonus = 40;

void PaintName(QPainter& painter, const QRect& place, const CommandEntry& entry,
               const FuzzyMatch& match, const QColor& color) {
    // Runs of matched and other letters, each in its weight.
    const QFont usual = painter.font();
    const QFont heavy = Sized(usual, 1, true);
    int x = place.left();
    qsizetype at = 0;
    painter.setPen(color);
    while (at < entry.name.size()) {
        const auto matched = [&](qsizetype index) {
            return std::binary_search(match.places.begin(), match.places.end(),
                                      static_cast<int>(index));
        };
        const bool is_matched = matched(at);
        qsizetype end = at + 1;
        while (end < entry.name.size() && matched(end) == is_matched)
            ++end;
        const QString run = entry.name.mid(at, end - at);
        painter.setFont(is_matched ? heavy : usual);
        const int width = painter.fontMetrics().horizontalAdvance(run);
        painter.drawText(QRect(x, place.top(), std::max(0, place.right() - x), place.height()),
                         Qt::AlignVCenter | Qt::TextSingleLine, run);
        x += width;
        at = end;
    }
    painter.setFont(usual);
}

void PaintKeys(QPainter& painter, const QRect& row, const CommandEntry& entry) {
    if (entry.keys.isEmpty())
        return;
    const ColorTokens& tokens = Tokens();
    const QFont usual = painter.font();
    painter.setFont(Sized(usual, kSmallType));
    const int width = painter.fontMetrics().horizontalAdvance(entry.keys) + 2 * kSmall + 2;
    const QRect cap(row.right() - kSmall - width + 1, row.center().y() - 10, width, 22);
    PaintBox(painter, cap, kChipCorner, tokens[Token::Paper], tokens[Token::Hairline]);
    painter.setPen(tokens[Token::Text2]);
    painter.drawText(cap, Qt::AlignCenter, entry.keys);
    painter.setFont(usual);
}

}  // namespace

std::vector<PaletteHit> PaletteHits(const std::vector<CommandEntry>& entries,
                                    const QString& pattern, const QStringList& last_used) {
    std::vector<PaletteHit> hits;
    const auto bonus = [&](const CommandEntry& entry) {
        const auto at = static_cast<int>(last_used.indexOf(ToQt(entry.id)));
        return at < 0 || at >= kLastUsedCounted ? 0 : (kLastUsedCounted - at) * kLastUsedBonus;
    };
    for (std::size_t index = 0; index < entries.size(); ++index) {
        std::optional<FuzzyMatch> match = MatchFuzzy(pattern, entries[index].name);
        if (!match)
            continue;
        match->score += bonus(entries[index]);
        hits.push_back({index, *std::move(match)});
    }
    const QString name = pattern.trimmed();
    const auto order = [&](const PaletteHit& hit) {
        const CommandEntry& entry = entries[hit.entry];
        const bool other_name = entry.name.compare(name, Qt::CaseInsensitive) != 0;
        return std::tuple(other_name, hit.match.scattered, !entry.reason.isEmpty(),
                          -hit.match.score);
    };
    std::stable_sort(hits.begin(), hits.end(), [&](const PaletteHit& one, const PaletteHit& other) {
        return order(one) < order(other);
    });
    return hits;
}

void PaletteModel::SetHits(std::vector<PaletteHit> hits) {
    beginResetModel();
    hits_ = std::move(hits);
    endResetModel();
}

const CommandEntry& PaletteModel::Entry(int row) const {
    return entries_[hits_[static_cast<std::size_t>(row)].entry];
}

const FuzzyMatch& PaletteModel::Match(int row) const {
    return hits_[static_cast<std::size_t>(row)].match;
}

int PaletteModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(hits_.size());
}

QVariant PaletteModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid())
        return {};
    const CommandEntry& entry = Entry(index.row());
    switch (role) {
        case Qt::DisplayRole:
            return entry.name;
        case Qt::AccessibleTextRole:
            return QStringLiteral("%1, %2, %3").arg(entry.name, entry.menu, entry.keys);
        case Qt::AccessibleDescriptionRole:
        case Qt::ToolTipRole:
            return entry.reason;
        default:
            return {};
    }
}

void PaletteDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                            const QModelIndex& index) const {
    const auto* model = static_cast<const PaletteModel*>(index.model());
    const CommandEntry& entry = model->Entry(index.row());
    const ColorTokens& tokens = Tokens();
    const QRect row = option.rect;
    const bool can = entry.reason.isEmpty();
    painter->save();
    if (option.state & QStyle::State_Selected)
        PaintBox(*painter, row, kControlCorner, tokens[Token::On], QColor());
    const QColor color = tokens[can ? Token::Text : Token::Disabled];
    if (!entry.icon.isEmpty())
        PaintIcon(
            *painter, entry.icon,
            QRect(row.left() + kMedium, row.center().y() - kIconSize / 2 + 1, kIconSize, kIconSize),
            color);
    painter->setFont(option.font);
    PaintName(*painter, QRect(row.left() + 40, row.top(), kMenuColumn - 48, row.height()), entry,
              model->Match(index.row()), color);
    painter->setPen(tokens[can ? Token::Text2 : Token::Disabled]);
    painter->setFont(Sized(option.font, kSmallType));
    painter->drawText(QRect(row.left() + kMenuColumn, row.top(), 140, row.height()),
                      Qt::AlignVCenter | Qt::TextSingleLine, entry.menu);
    painter->setFont(option.font);
    PaintKeys(*painter, row, entry);
    painter->restore();
}

QSize PaletteDelegate::sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const {
    return {kLarge, kPaletteRowHeight};
}

}  // namespace zorvane
