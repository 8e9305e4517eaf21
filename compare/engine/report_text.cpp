// The text report: the counts, then each record with its words marked, at 80 columns.
#include <algorithm>
#include <iterator>
#include <utility>

#include "common/base/text_encoding.h"
#include "compare/engine/pieces.h"
#include "compare/engine/report_model.h"

namespace zorvane {
namespace {

constexpr std::size_t kColumns = 80;

struct TextMarks {
    const char16_t* open;
    const char16_t* close;
};
TextMarks MarksOf(PieceKind kind) {
    switch (kind) {
        case PieceKind::Same:
            return {u"", u""};
        case PieceKind::Deleted:
        case PieceKind::ChangedOld:
            return {u"[-", u"-]"};
        case PieceKind::Added:
        case PieceKind::ChangedNew:
            break;
    }
    return {u"{+", u"+}"};
}

struct UnitRange {
    char16_t first;
    char16_t last;
};
constexpr UnitRange kNarrow[] = {
    {0x0300, 0x036F}, {0x200B, 0x200F}, {0xDC00, 0xDFFF}, {0xFE00, 0xFE0F}};
// The higher planes (0xD83C and on as first half) hold emoji and Han characters.
constexpr UnitRange kWide[] = {{0x1100, 0x115F}, {0x2E80, 0xA4CF}, {0xAC00, 0xD7A3},
                               {0xD83C, 0xDBFF}, {0xF900, 0xFAFF}, {0xFE30, 0xFE6F},
                               {0xFF00, 0xFF60}, {0xFFE0, 0xFFE6}};

// Columns of one unit in a font of fixed width.
std::size_t Width(char16_t unit) {
    const auto holds = [unit](const UnitRange& range) {
        return unit >= range.first && unit <= range.last;
    };
    if (unit < 0x300)
        return 1;
    if (std::any_of(std::begin(kNarrow), std::end(kNarrow), holds))
        return 0;
    return std::any_of(std::begin(kWide), std::end(kWide), holds) ? 2 : 1;
}

std::u16string Visible(std::u16string_view text) {
    std::u16string out;
    for (const char16_t unit : text) {
        if (unit == u'\t' || unit == 7)
            out += u"  ";
        else if (unit == 11)
            out += u' ';
        else
            out += unit < 0x20 || (unit >= 0x7F && unit < 0xA0) ? u'\uFFFD' : unit;
    }
    return out;
}
std::string VisibleName(const std::string& utf8) {
    return ToUtf8(Visible(ToUtf16(utf8)));
}

// Where a line that begins at `begin` ends, and where the next one begins: at the last blank that
// fits, else where the room ends.
struct LineEnd {
    std::size_t end;
    std::size_t next;
};
LineEnd FindLineEnd(std::u16string_view text, std::size_t begin, std::size_t room) {
    std::size_t columns = 0;
    std::size_t blank = begin;
    std::size_t at = begin;
    for (; at < text.size() && columns + Width(text[at]) <= room; ++at) {
        columns += Width(text[at]);
        if (text[at] == u' ')
            blank = at;
    }
    if (at == text.size())
        return {at, at};
    if (text[at] == u' ')
        return {at, at + 1};
    if (blank > begin)
        return {blank, blank + 1};
    return {at, at};
}

// One paragraph behind its sign, wrapped; what follows is indented as far.
void AppendWrapped(std::string_view sign, std::u16string_view paragraph, std::string& out,
                   StopCheck& stop) {
    const std::string indent(sign.size(), ' ');
    const std::size_t room = kColumns - sign.size();
    std::string_view front = sign;
    std::size_t begin = 0;
    do {
        const LineEnd line = FindLineEnd(paragraph, begin, room);
        out += front;
        AppendUtf8(paragraph.substr(begin, line.end - begin), out);
        out += "\r\n";
        begin = line.next;
        front = indent;
    } while (begin < paragraph.size() && stop.KeepGoing(kColumns));
}

// A long text is not moved as it grows.
std::size_t RoomFor(const PieceParagraph& paragraph) {
    constexpr std::size_t kMarks = 4;
    std::size_t units = 0;
    for (const Piece& piece : paragraph.pieces)
        units += piece.text.size() + kMarks;
    return units;
}

void AppendSide(std::string_view sign, std::vector<Piece> pieces, std::string& out,
                StopCheck& stop) {
    std::u16string buffer;
    for (const PieceParagraph& paragraph : SplitPieces(std::move(pieces))) {
        std::u16string text;
        text.reserve(RoomFor(paragraph));
        for (const Piece& piece : paragraph.pieces) {
            const TextMarks marks = MarksOf(piece.kind);
            text.append(marks.open);
            WriteInParts(ToldText(piece.kind, piece.text, buffer), stop,
                         [&text](std::u16string_view part) { text += Visible(part); });
            text.append(marks.close);
        }
        if (stop.Stopped())
            return;
        AppendWrapped(sign, text, out, stop);
    }
}

void AppendMarked(const ReportModel& model, const ChangeText& change, std::string& out,
                  StopCheck& stop) {
    const auto length = static_cast<std::int64_t>(change.original.size() + change.modified.size());
    for (const Side side : kBothSides) {
        if (stop.KeepGoing(length))
            AppendSide(side == Side::Original ? "- " : "+ ",
                       SidePieces(model.comparison, change, side, model.watcher), out, stop);
    }
}

void AppendRecord(const ReportModel& model, std::size_t index, std::string& out, StopCheck& stop) {
    const Comparison& comparison = model.comparison;
    const DifferenceRecord& record = comparison.records[index];
    out +=
        "\r\n<<<" + std::to_string(index + 1) + ">>> " + DescribeRecord(comparison, index) + "\r\n";
    PerSide<std::u16string> buffers;
    const std::u16string_view original = comparison.Text(Side::Original, record, buffers.original);
    const std::u16string_view modified = comparison.Text(Side::Modified, record, buffers.modified);
    const Move* move = comparison.MoveOf(index);
    if (record.type == DifferenceType::Change) {
        AppendMarked(model, {original, modified, comparison.SectionsOf(index)}, out, stop);
    } else if (record.type == DifferenceType::Deletion) {
        AppendSide("- ", WholePiece(PieceKind::Same, original, model.watcher), out, stop);
    } else if (move == nullptr || move->section_count == 0) {
        AppendSide("+ ", WholePiece(PieceKind::Same, modified, model.watcher), out, stop);
    } else {
        // What changed on the way is told at the new place.
        const std::u16string_view old_text =
            comparison.Text(Side::Original, comparison.Record(move->deletion), buffers.original);
        AppendMarked(model, {old_text, modified, comparison.SectionsOf(*move)}, out, stop);
    }
}

void AppendBeside(const Comparison& comparison, std::string& out, StopCheck& stop) {
    if (comparison.beside_sentence.empty())
        return;
    out += "\r\n";
    const std::string words = comparison.Same() ? "No differences in the words. " : "";
    AppendWrapped("", Visible(ToUtf16(words + comparison.beside_sentence)), out, stop);
    for (const BesideNote& note : comparison.beside)
        AppendWrapped("* ", Visible(ToUtf16(DescribeBeside(note))), out, stop);
}

}  // namespace

std::string WriteTextReport(const ReportModel& model) {
    std::string out;
    ReserveForReport(model.comparison, out);
    StopCheck stop(model.watcher, kUnitsBetweenStops);
    if (!model.title.empty()) {
        AppendWrapped("", Visible(ToUtf16(model.title)), out, stop);
        const std::size_t width = std::min(ToUtf16(model.title).size(), kColumns);
        out += std::string(width, '=') + "\r\n\r\n";
    }
    out += "Original: " + VisibleName(model.names.original) + "\r\n";
    out += "Modified: " + VisibleName(model.names.modified) + "\r\n\r\n";
    out += (model.comparison.same_files ? VerdictText(model.comparison)
                                        : SummaryText(model.comparison)) +
           "\r\n";
    const std::size_t count = model.comparison.records.size();
    for (std::size_t i = 0; i < count && stop.KeepGoing(kUnitsOfRecord); ++i)
        AppendRecord(model, i, out, stop);
    AppendBeside(model.comparison, out, stop);
    return out;
}

}  // namespace zorvane
