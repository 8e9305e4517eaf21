#include "compare/ui/rich_text_accessible.h"

#include <algorithm>
#include <memory>

#include <QTextBoundaryFinder>

#include "common/ui/qt_text.h"

namespace zorvane {
namespace {

std::int64_t units_copied = 0;

QString TextOf(const RichDocument& document, TextRange range) {
    const std::u16string text = document.Text(range);
    units_copied += static_cast<std::int64_t>(text.size());
    return ToQt(text);
}

QAccessibleInterface* MakeViewAccessible(const QString& /*class_name*/, QObject* object) {
    auto* view = dynamic_cast<RichTextView*>(object);
    return view == nullptr ? nullptr : new RichTextAccessible(*view);  // owned by Qt's cache
}

std::optional<QTextBoundaryFinder::BoundaryType> FinderOf(QAccessible::TextBoundaryType boundary) {
    switch (boundary) {
        case QAccessible::CharBoundary:
            return QTextBoundaryFinder::Grapheme;
        case QAccessible::WordBoundary:
            return QTextBoundaryFinder::Word;
        case QAccessible::SentenceBoundary:
            return QTextBoundaryFinder::Sentence;
        default:
            return std::nullopt;
    }
}

// Attribute values are separated by ";" and ":".
QString Escaped(QString value) {
    value.replace(u'\\', QStringLiteral("\\\\"));
    for (const char16_t sign : {u':', u';', u',', u'='})
        value.replace(QChar(sign), QStringLiteral("\\") + QChar(sign));
    return value;
}

}  // namespace

RichTextAccessible::RichTextAccessible(RichTextView& view)
    : QAccessibleWidget(&view, QAccessible::EditableText), view_(view) {}

RichTextAccessible::~RichTextAccessible() {
    for (const auto& [part, id] : parts_)
        QAccessible::deleteAccessibleInterface(id);
}

void RichTextAccessible::Install() {
    static const bool installed = [] {
        QAccessible::installFactory(&MakeViewAccessible);
        return true;
    }();
    static_cast<void>(installed);
}

std::int64_t RichTextAccessible::UnitsCopied() {
    return units_copied;
}

void RichTextAccessible::TellEdit(RichTextView& view, CharPos first, std::int32_t removed,
                                  std::int32_t inserted) {
    if (!QAccessible::isActive())
        return;
    if (removed > 0) {
        // The text is gone already; readers need its length alone.
        QAccessibleTextRemoveEvent event(&view, first.value, QString(removed, u' '));
        QAccessible::updateAccessibility(&event);
    }
    if (inserted > 0) {
        QAccessibleTextInsertEvent event(&view, first.value,
                                         TextOf(view.Document(), {first, inserted}));
        QAccessible::updateAccessibility(&event);
    }
}

void RichTextAccessible::TellReset(RichTextView& view) {
    if (!QAccessible::isActive())
        return;
    QAccessibleEvent event(&view, QAccessible::VisibleDataChanged);
    QAccessible::updateAccessibility(&event);
}

void RichTextAccessible::TellCaret(RichTextView& view) {
    if (!QAccessible::isActive())
        return;
    const TextRange range = view.Document().Selection();
    QAccessibleTextSelectionEvent event(&view, range.first.value, range.end().value);
    event.setCursorPosition(view.Document().Caret().Caret().value);
    QAccessible::updateAccessibility(&event);
}

void* RichTextAccessible::interface_cast(QAccessible::InterfaceType type) {
    if (type == QAccessible::TextInterface)
        return static_cast<QAccessibleTextInterface*>(this);
    if (type == QAccessible::EditableTextInterface && !view_.IsReadOnly())
        return static_cast<QAccessibleEditableTextInterface*>(this);
    return QAccessibleWidget::interface_cast(type);
}

QAccessible::State RichTextAccessible::state() const {
    QAccessible::State state = QAccessibleWidget::state();
    state.multiLine = true;
    state.selectableText = true;
    state.readOnly = view_.IsReadOnly();
    state.editable = !view_.IsReadOnly();
    return state;
}

// ---- folds and differences ----

int RichTextAccessible::childCount() const {
    return QAccessibleWidget::childCount() + static_cast<int>(PartsInSight(view_).size());
}

// Kept by Qt, under the number that readers know it by.
QAccessibleInterface* RichTextAccessible::PartOf(ViewPart part) const {
    const auto [place, is_new] = parts_.try_emplace(part, 0);
    if (is_new)
        place->second = QAccessible::registerAccessibleInterface(
            std::make_unique<ViewPartAccessible>(view_, part).release());
    return QAccessible::accessibleInterface(place->second);
}

QAccessibleInterface* RichTextAccessible::child(int index) const {
    const int widgets = QAccessibleWidget::childCount();
    if (index < widgets)
        return QAccessibleWidget::child(index);
    const std::vector<ViewPart> parts = PartsInSight(view_);
    const auto at = static_cast<std::size_t>(index - widgets);
    return at < parts.size() ? PartOf(parts[at]) : nullptr;
}

int RichTextAccessible::indexOfChild(const QAccessibleInterface* child) const {
    const std::vector<ViewPart> parts = PartsInSight(view_);
    for (std::size_t at = 0; at < parts.size(); ++at) {
        if (PartOf(parts[at]) == child)
            return QAccessibleWidget::childCount() + static_cast<int>(at);
    }
    return QAccessibleWidget::indexOfChild(child);
}

// ---- selection and caret ----

void RichTextAccessible::selection(int index, int* start, int* end) const {
    const TextRange range = view_.Document().Selection();
    const bool has = index == 0 && range.length > 0;
    *start = has ? range.first.value : 0;
    *end = has ? std::min(range.end().value, view_.Document().Length()) : 0;
}

int RichTextAccessible::selectionCount() const {
    return view_.Document().Selection().length > 0 ? 1 : 0;
}

void RichTextAccessible::addSelection(int start, int end) {
    setSelection(0, start, end);
}

void RichTextAccessible::removeSelection(int index) {
    if (index == 0)
        view_.Document().MoveCaret(view_.Document().Caret().Caret());
}

void RichTextAccessible::setSelection(int index, int start, int end) {
    if (index == 0)
        view_.Document().Select(TextRange::Between(CharPos{start}, CharPos{end}));
}

int RichTextAccessible::cursorPosition() const {
    return view_.Document().Caret().Caret().value;
}

void RichTextAccessible::setCursorPosition(int position) {
    view_.Document().MoveCaret(CharPos{position});
    view_.EnsureCaretVisible();
}

// ---- text ----

int RichTextAccessible::characterCount() const {
    return view_.Document().Length();
}

QString RichTextAccessible::text(int start, int end) const {
    start = std::clamp(start, 0, characterCount());
    end = std::clamp(end, start, characterCount());
    return TextOf(view_.Document(), TextRange::Between(CharPos{start}, CharPos{end}));
}

TextRange RichTextAccessible::LineAt(CharPos place, const Block& block) const {
    const ParagraphLayout& layout = view_.Page().Layouts().Of(block.number);
    const std::int32_t line = layout.LineOf(std::min(place - block.first, layout.Length()));
    const CharPos begin = block.first + layout.LineStart(line);
    if (line + 1 < layout.LineCount())
        return TextRange::Between(begin, block.first + layout.LineStart(line + 1));
    return TextRange::Between(begin, block.first + block.length);
}

// The unit that holds a place; a paragraph's break belongs to its last one.
TextRange RichTextAccessible::UnitAt(CharPos place, QAccessible::TextBoundaryType boundary) const {
    const BlockIndex& index = view_.Page().Index();
    const Block block = index.OfChar(place);
    const TextRange whole{block.first, block.length};
    if (boundary == QAccessible::NoBoundary)
        return {CharPos{0}, characterCount()};
    if (boundary == QAccessible::LineBoundary)
        return LineAt(place, block);
    const auto kind = FinderOf(boundary);
    if (!kind)
        return whole;
    const QString text = TextOf(view_.Document(), whole);
    QTextBoundaryFinder finder(*kind, text);
    const auto at = std::min<qsizetype>(place - block.first, text.size());
    finder.setPosition(at);
    auto begin = finder.isAtBoundary() ? at : finder.toPreviousBoundary();
    begin = std::max<qsizetype>(begin, 0);
    finder.setPosition(begin);
    auto end = finder.toNextBoundary();
    end = end < 0 ? text.size() : end;
    return TextRange::Between(block.first + static_cast<std::int32_t>(begin),
                              block.first + static_cast<std::int32_t>(end));
}

QString RichTextAccessible::Told(TextRange range, int* start, int* end) const {
    *start = range.first.value;
    *end = range.end().value;
    return TextOf(view_.Document(), range);
}

QString RichTextAccessible::textAtOffset(int offset, QAccessible::TextBoundaryType boundary,
                                         int* start, int* end) const {
    offset = std::clamp(offset, 0, characterCount());
    return Told(UnitAt(CharPos{offset}, boundary), start, end);
}

QString RichTextAccessible::textBeforeOffset(int offset, QAccessible::TextBoundaryType boundary,
                                             int* start, int* end) const {
    offset = std::clamp(offset, 0, characterCount());
    const CharPos begin = UnitAt(CharPos{offset}, boundary).first;
    if (begin.value == 0)
        return Told({CharPos{0}, 0}, start, end);
    return Told(UnitAt(begin - 1, boundary), start, end);
}

QString RichTextAccessible::textAfterOffset(int offset, QAccessible::TextBoundaryType boundary,
                                            int* start, int* end) const {
    offset = std::clamp(offset, 0, characterCount());
    const CharPos behind = UnitAt(CharPos{offset}, boundary).end();
    if (behind.value >= characterCount())
        return Told({CharPos{characterCount()}, 0}, start, end);
    return Told(UnitAt(behind, boundary), start, end);
}

QRect RichTextAccessible::characterRect(int offset) const {
    const CharPos place{std::clamp(offset, 0, characterCount())};
    const QRectF caret = view_.CaretRectOf(place);
    const QRectF next = view_.CaretRectOf(view_.Document().Clip({place + 1, 0}).first);
    QRectF rect = caret;
    if (next.top() == caret.top())
        rect = caret.united(next);
    rect.setWidth(std::max(rect.width(), 1.0));
    const QPoint origin = view_.viewport()->mapToGlobal(QPoint(0, 0));
    return rect.toRect().translated(origin);
}

int RichTextAccessible::offsetAtPoint(const QPoint& point) const {
    const QPoint own = view_.viewport()->mapFromGlobal(point);
    if (!view_.viewport()->rect().contains(own))
        return -1;
    return view_.PositionAt(own).value;
}

void RichTextAccessible::scrollToSubstring(int start, int /*end*/) {
    view_.ShowPosition(CharPos{std::clamp(start, 0, characterCount())});
}

QString RichTextAccessible::attributes(int offset, int* start, int* end) const {
    offset = std::clamp(offset, 0, characterCount());
    const Block block = view_.Page().Index().OfChar(CharPos{offset});
    const RichText rich = view_.Document().Rich({block.first, block.length});
    CharPos begin = block.first;
    CharFormat format = view_.Document().FormatAt(CharPos{offset});
    *start = block.first.value;
    *end = block.first.value + block.length;
    for (const CharRun& run : rich.char_runs) {
        if (offset < (begin + run.length).value) {
            *start = begin.value;
            *end = (begin + run.length).value;
            format = run.format;
            break;
        }
        begin = begin + run.length;
    }
    QString told = QStringLiteral("font-family:%1;font-size:%2pt;font-weight:%3;font-style:%4;")
                       .arg(Escaped(ToQt(format.font.view())))
                       .arg(format.half_points / 2.0)
                       .arg(format.bold ? QStringLiteral("bold") : QStringLiteral("normal"),
                            format.italic ? QStringLiteral("italic") : QStringLiteral("normal"));
    if (format.underline != Underline::None)
        told += QStringLiteral("text-underline-style:solid;");
    if (format.strikeout)
        told += QStringLiteral("text-line-through-type:single;");
    const MarkSource* marks = view_.Page().Layouts().Marks();
    const std::int32_t record = marks == nullptr ? -1 : marks->Of(block.paragraph).record;
    if (record >= 0 && view_.Labels().difference)
        told += QStringLiteral("difference:%1;").arg(Escaped(view_.Labels().difference(record)));
    return told;
}

// ---- editing ----

void RichTextAccessible::deleteText(int start, int end) {
    replaceText(start, end, QString());
}

void RichTextAccessible::insertText(int offset, const QString& text) {
    replaceText(offset, offset, text);
}

void RichTextAccessible::replaceText(int start, int end, const QString& text) {
    if (!view_.IsReadOnly())
        view_.Document().Replace(TextRange::Between(CharPos{start}, CharPos{end}), FromQt16(text));
}

}  // namespace zorvane
