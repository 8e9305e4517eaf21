#include "compare/ui/paragraph_layout.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include <QTextOption>

#include "common/ui/qt_text.h"

namespace zorvane {
namespace {

constexpr char16_t kCellEnd = 7;
constexpr double kCellPadding = 6;
constexpr double kCellRoom = 4;
constexpr double kLeastWidth = 40;
constexpr double kMarkGap = 3;
constexpr std::int32_t kDefaultTab = 720;  // twips, half an inch
constexpr double kSingleSpacing = 240;     // \sl of one line

// Breaks inside a paragraph as the layout wants them.
QString ShownText(std::u16string_view text) {
    QString shown = ToQt(text);
    for (QChar& unit : shown) {
        if (unit == u'\v')
            unit = QChar::LineSeparator;
    }
    return shown;
}

QTextOption::TabType QtTabOf(TabKind kind) {
    switch (kind) {
        case TabKind::Center:
            return QTextOption::CenterTab;
        case TabKind::Right:
            return QTextOption::RightTab;
        case TabKind::Decimal:
            return QTextOption::DelimiterTab;
        case TabKind::Left:
        case TabKind::Bar:
            break;
    }
    return QTextOption::LeftTab;
}

// Tab stops count from the margin, the layout's from the begin of its line. In a list it is the
// first line that has the tab, so stops are moved by that line's begin.
void SetTabs(QTextOption& option, const ParagraphFormat& format, double zoom) {
    const std::int32_t begin = format.left_indent + format.first_line_indent;
    QList<QTextOption::Tab> tabs;
    const auto add = [&](std::int32_t twips, TabKind kind) {
        if (twips > begin)
            tabs.append({PixelsOf(twips - begin, zoom), QtTabOf(kind), u'.'});
    };
    // The hanging indent of a list is a stop of its own.
    if (format.first_line_indent < 0)
        add(format.left_indent, TabKind::Left);
    for (const TabStop& tab : format.tabs) {
        if (tab.kind != TabKind::Bar)
            add(tab.twips, tab.kind);
    }
    std::sort(tabs.begin(), tabs.end(),
              [](const auto& one, const auto& other) { return one.position < other.position; });
    option.setTabs(tabs);
    option.setTabStopDistance(PixelsOf(kDefaultTab, zoom));
}

QTextOption WrapOptionOf(const BlockText& block, const TextStyle& style, bool wrap) {
    QTextOption option;
    switch (block.paragraph.alignment) {
        case Alignment::Center:
            option.setAlignment(Qt::AlignHCenter);
            break;
        case Alignment::Right:
            option.setAlignment(Qt::AlignRight);
            break;
        case Alignment::Justify:
            option.setAlignment(wrap ? Qt::AlignJustify : Qt::AlignLeft);
            break;
        case Alignment::Left:
            option.setAlignment(Qt::AlignLeft);
            break;
    }
    option.setTextDirection(block.right_to_left ? Qt::RightToLeft : Qt::LeftToRight);
    option.setWrapMode(wrap ? QTextOption::WrapAtWordBoundaryOrAnywhere : QTextOption::NoWrap);
    SetTabs(option, block.paragraph, style.zoom);
    return option;
}

double LineHeightOf(double natural, const ParagraphFormat& format, const TextStyle& style) {
    if (format.line_spacing == 0)
        return natural * style.line_factor;
    if (format.line_spacing_multiple)
        return natural * style.line_factor * std::max(format.line_spacing / kSingleSpacing, 0.5);
    const double told = PixelsOf(std::abs(format.line_spacing), style.zoom);
    return format.line_spacing < 0 ? std::max(told, 1.0) : std::max(told, natural);
}

// What has a gap behind it ends in a letter of its own, wider by that.
void AppendWithGap(QTextLayout::FormatRange range, bool gap,
                   QList<QTextLayout::FormatRange>& ranges) {
    if (gap && range.length > 1) {
        QTextLayout::FormatRange last = range;
        last.start += range.length - 1;
        last.length = 1;
        range.length -= 1;
        QFont font = last.format.font();
        font.setLetterSpacing(QFont::AbsoluteSpacing, kMarkGap);
        last.format.setFont(font);
        ranges.append(range);
        ranges.append(last);
        return;
    }
    ranges.append(range);
}

// The marked words of a paragraph as somebody meets them who walks along it.
class WordWalk {
  public:
    explicit WordWalk(const std::vector<WordMark>& words) : words_(words), next_(words.begin()) {}

    struct Met {
        const WordMark* word = nullptr;  ///< that `at` lies in; nullptr for none
        std::int32_t next = std::numeric_limits<std::int32_t>::max();  ///< where that changes
    };
    /// Places ascend from call to call.
    Met At(std::int32_t at) {
        while (next_ != words_.end() && next_->first + next_->length <= at)
            ++next_;
        if (next_ == words_.end())
            return {};
        if (next_->first > at)
            return {nullptr, next_->first};
        return {&*next_, next_->first + next_->length};
    }

  private:
    const std::vector<WordMark>& words_;
    std::vector<WordMark>::const_iterator next_;
};

}  // namespace

bool MayBeBidi(std::u16string_view text) {
    return std::any_of(text.begin(), text.end(), [](char16_t unit) {
        return (unit >= 0x590 && unit < 0x900) || (unit >= 0xFB1D && unit < 0xFE00) ||
               (unit >= 0xFE70 && unit < 0xFF00) || unit == 0x200F || unit == 0x202B ||
               unit == 0x202E || unit == 0x2067 || unit == 0xD802 || unit == 0xD803 ||
               unit == 0xD83A || unit == 0xD83B;
    });
}

bool StartsRightToLeft(std::u16string_view text) {
    return ToQt(text).isRightToLeft();
}

ParagraphLayout::ParagraphLayout(const BlockText& block, const TextStyle& style,
                                 FormatMaker& formats)
    : mark_(block.mark),
      words_(block.words),
      length_(static_cast<std::int32_t>(block.text.size())),
      preedit_at_(block.preedit.at),
      preedit_length_(static_cast<std::int32_t>(block.preedit.text.size())),
      preedit_caret_(block.preedit.caret),
      right_to_left_(block.right_to_left),
      bidi_(block.right_to_left || MayBeBidi(block.text) || MayBeBidi(block.preedit.text)),
      begins_table_(block.begins_table),
      border_(style.colors.hairline) {
    SplitCells(block, style);
    const ParagraphFormat& format = block.paragraph;
    if (block.first_slice) {
        room_above_ = IsTableRow() ? kCellRoom
                                   : std::max(style.room_above * style.zoom,
                                              PixelsOf(format.space_before, style.zoom));
    }
    if (block.last_slice) {
        room_below_ = IsTableRow() ? kCellRoom
                                   : std::max(style.room_below * style.zoom,
                                              PixelsOf(format.space_after, style.zoom));
    }
    double content = 0;
    for (Cell& cell : cells_)
        content = std::max(content, LayOut(cell, block, style, formats));
    height_ = std::max(1.0, std::ceil(room_above_ + content + room_below_));
}

void ParagraphLayout::SplitCells(const BlockText& block, const TextStyle& style) {
    const std::u16string& text = block.text;
    const auto marks = std::count(text.begin(), text.end(), kCellEnd);
    // What stands behind the last mark (nothing, as a rule) is a place at the row's end.
    const bool tail = marks > 0 && text.back() == kCellEnd;
    const auto columns = static_cast<double>(marks + (tail ? 0 : 1));
    const double each = marks == 0 ? style.width : std::max(kLeastWidth, style.width / columns);
    std::size_t begin = 0;
    while (true) {
        const std::size_t end = std::min(text.find(kCellEnd, begin), text.size());
        Cell cell;
        cell.first = static_cast<std::int32_t>(begin);
        cell.length = static_cast<std::int32_t>(end - begin);
        cell.x = each * static_cast<double>(cells_.size());
        cell.width = tail && end == text.size() ? 0 : each;
        cells_.push_back(std::move(cell));
        if (end == text.size())
            return;
        begin = end + 1;
    }
}

QTextCharFormat ParagraphLayout::FormatOf(const CharFormat& format, const WordMark* word,
                                          const BlockText& block, const TextStyle& style,
                                          FormatMaker& formats) {
    const ViewColors& colors = style.colors;
    const bool whole = block.mark.line != MarkLine::None;
    CharFormat plain = format;
    plain.bold = word != nullptr || (format.bold && !whole);
    QTextCharFormat text = formats.Of(plain, style.zoom);
    QColor ground =
        block.mark.kind == MarkKind::None ? colors.paper : colors.Of(block.mark.kind).row;
    if (word != nullptr) {
        text.setForeground(colors.Of(word->kind).text);
    } else if (whole) {
        text.setForeground(colors.Of(block.mark.kind).text);
    } else {
        if (format.back_color) {
            ground = QtColorOf(*format.back_color);
            text.setBackground(ground);
        }
        const QColor own =
            format.fore_color ? colors.OfText(QtColorOf(*format.fore_color)) : colors.text;
        text.setForeground(ReadableOn(own, ground));
    }
    text.setFontStrikeOut(format.strikeout);
    if (!IsOwnUnderline(format.underline))
        text.setUnderlineStyle(QtUnderlineOf(format.underline));
    return text;
}

// The formats of a cell, in the layout's positions: its runs, cut where marks begin and end.
QList<QTextLayout::FormatRange> ParagraphLayout::Formats(const BlockText& block, const Cell& cell,
                                                         const TextStyle& style,
                                                         FormatMaker& formats) {
    QList<QTextLayout::FormatRange> ranges;
    const auto put = [&](std::int32_t first, std::int32_t end, const CharFormat& format,
                         const WordMark* word) {
        const std::int32_t from = std::max(first, cell.first);
        const std::int32_t to = std::min(end, cell.first + cell.length);
        if (from >= to)
            return;
        QTextLayout::FormatRange range;
        range.start = ToCell(cell, from, true);
        range.length = ToCell(cell, to, false) - range.start;
        range.format = FormatOf(format, word, block, style, formats);
        if (IsOwnUnderline(format.underline))
            own_lines_.push_back(
                {from, to - from, format.underline, range.format.foreground().color()});
        const bool gap = word != nullptr && word->gap_behind && to == word->first + word->length;
        AppendWithGap(range, gap, ranges);
    };
    std::int32_t at = 0;
    WordWalk walk(block.words);
    for (const CharRun& run : block.runs) {
        const std::int32_t end = std::min(at + run.length, length_);
        while (at < end) {
            const auto [word, next] = walk.At(at);
            const std::int32_t cut = std::min(end, next);
            put(at, cut, run.format, word);
            at = cut;
        }
    }
    return ranges;
}

double ParagraphLayout::LayOut(Cell& cell, const BlockText& block, const TextStyle& style,
                               FormatMaker& formats) {
    QString shown = ShownText(
        std::u16string_view(block.text)
            .substr(static_cast<std::size_t>(cell.first), static_cast<std::size_t>(cell.length)));
    const bool composing = preedit_length_ > 0 && &CellOf(preedit_at_) == &cell;
    if (composing)
        shown.insert(preedit_at_ - cell.first, ShownText(block.preedit.text));
    const CharFormat base = block.runs.empty() ? block.default_format : block.runs.front().format;
    cell.layout = std::make_unique<QTextLayout>(shown, formats.Of(base, style.zoom).font());
    cell.layout->setCacheEnabled(true);
    // A cell has a neighbour, so its text wraps always.
    const bool wrap = style.wrap || IsTableRow();
    cell.layout->setTextOption(WrapOptionOf(block, style, wrap));
    cell.layout->setFormats(Formats(block, cell, style, formats));

    const double padding = IsTableRow() ? 2 * kCellPadding : 0;
    const double room = std::max(cell.width - padding, IsTableRow() ? 0.0 : kLeastWidth);
    const double bottom = PlaceLines(cell, block, style, room);
    if (wrap)
        return bottom;
    // Without wrapping the longest line decides how wide the text is, and lines are aligned in it.
    double longest = 0;
    for (int line = 0; line < cell.layout->lineCount(); ++line)
        longest = std::max(longest, cell.layout->lineAt(line).naturalTextWidth());
    const bool aligned = right_to_left_ || block.paragraph.alignment != Alignment::Left;
    return aligned && longest > room ? PlaceLines(cell, block, style, longest + 1) : bottom;
}

double ParagraphLayout::PlaceLines(Cell& cell, const BlockText& block, const TextStyle& style,
                                   double width) {
    const ParagraphFormat& format = block.paragraph;
    const double padding = IsTableRow() ? kCellPadding : 0;
    const double left = IsTableRow() ? 0 : PixelsOf(format.left_indent, style.zoom);
    const double right = IsTableRow() ? 0 : PixelsOf(format.right_indent, style.zoom);
    const double first = IsTableRow() ? 0 : PixelsOf(format.first_line_indent, style.zoom);
    double y = 0;
    cell.lines.clear();
    cell.layout->beginLayout();
    while (true) {
        QTextLine line = cell.layout->createLine();
        if (!line.isValid())
            break;
        const bool begins = cell.lines.empty() && block.first_slice;
        const double indent = std::max(0.0, left + (begins ? first : 0));
        line.setLineWidth(std::max(kLeastWidth, width - indent - std::max(0.0, right)));
        const double height = LineHeightOf(line.height(), format, style);
        const double x = right_to_left_ ? std::max(0.0, right) : indent;
        line.setPosition({cell.x + padding + x, room_above_ + y + (height - line.height()) / 2});
        cell.lines.push_back({room_above_ + y, height});
        width_ = std::max(width_, cell.x + padding + indent + line.naturalTextWidth());
        y += height;
    }
    cell.layout->endLayout();
    return y;
}

}  // namespace zorvane
