#include "reports/terminal_report.h"

#include <algorithm>
#include <fmt/format.h>
#include <utility>

#include "common/base/append_format.h"
#include "common/base/text_encoding.h"
#include "common/base/visible_text.h"
#include "compare/engine/pieces.h"

namespace zorvane {
namespace {

struct Marks {
    std::string_view open;
    std::string_view close;
};
constexpr Marks kNothing{"", ""};
constexpr Marks kOldPlain{"[-", "-]"};
constexpr Marks kNewPlain{"{+", "+}"};
constexpr Marks kOldColor{"\x1B[31;9m", "\x1B[0m"};
constexpr Marks kNewColor{"\x1B[32;4m", "\x1B[0m"};
constexpr std::string_view kHeaderColor = "\x1B[36m";
constexpr std::string_view kBold = "\x1B[1m";
constexpr std::string_view kReset = "\x1B[0m";

// A cell mark as a tab, a line break inside a paragraph as a new line of it.
std::string Shown(std::u16string_view text) {
    constexpr std::string_view kNextLine = "\n    ";
    std::string out;
    const std::string utf8 = ToUtf8(text);
    for (std::string_view rest = utf8; !rest.empty();) {
        const std::size_t end = std::min(rest.find_first_of("\x07\x0B"), rest.size());
        out += VisibleText(rest.substr(0, end), LineBreaks::Shown);
        if (end == rest.size())
            break;
        out += rest[end] == '\x07' ? std::string_view("\t") : kNextLine;
        rest.remove_prefix(end + 1);
    }
    return out;
}
// Of names and sentences, which have neither.
std::string Shown(std::string_view utf8) {
    return VisibleText(utf8, LineBreaks::Shown);
}

// The last words, and what lies beside the others.
std::string WriteVerdict(const ReportModel& model) {
    std::string out = Shown(VerdictText(model.comparison)) + "\n";
    for (const BesideNote& note : model.comparison.beside)
        out += "  " + Shown(DescribeBeside(note)) + "\n";
    return out;
}

class TerminalWriter {
  public:
    TerminalWriter(const ReportModel& model, const TerminalStyle& style)
        : model_(model), comparison_(model.comparison), style_(style) {}

    std::string Write() {
        ReserveForReport(comparison_, out_);
        Paint(kBold, "--- " + Shown(model_.names.original));
        Paint(kBold, "+++ " + Shown(model_.names.modified));
        const std::size_t count = comparison_.records.size();
        for (std::size_t i = 0; i < count && stop_.KeepGoing(kUnitsOfRecord); ++i)
            Record(i);
        out_ += "\n" + WriteVerdict(model_);
        return std::move(out_);
    }

  private:
    void Paint(std::string_view color, const std::string& line) {
        if (style_.color)
            out_.append(color).append(line).append(kReset).append("\n");
        else
            out_.append(line).append("\n");
    }

    std::int32_t Begin(std::size_t index) const {
        if (index >= comparison_.records.size())
            return comparison_.Paragraphs(Side::Original) + 1;
        const DifferenceRecord& record = comparison_.records[index];
        return record.InFront(Side::Original).value + 1;
    }

    void Record(std::size_t index) {
        const std::int32_t begin = Begin(index);
        const std::int32_t end = comparison_.records[index].paragraphs.original.last.value + 1;
        // Paragraphs that the record before has shown are not shown again.
        if (begin - style_.context > shown_to_)
            out_ += '\n';
        Paint(kHeaderColor,
              fmt::format("@@ {}. {} @@", index + 1, DescribeRecord(comparison_, index)));
        Unchanged(std::max(begin - style_.context, shown_to_), begin);
        Body(index);
        shown_to_ = std::min(end + style_.context, Begin(index + 1));
        Unchanged(end, shown_to_);
    }

    void Unchanged(std::int32_t begin, std::int32_t end) {
        std::u16string buffer;
        for (std::int32_t number = begin; number < end; ++number) {
            out_ += "  ";
            WriteInParts(comparison_.Lines(Side::Original).Text(number - 1, buffer), stop_,
                         [this](std::u16string_view part) { out_ += Shown(part); });
            out_ += "\n";
        }
    }

    void Body(std::size_t index) {
        const DifferenceRecord& record = comparison_.records[index];
        PerSide<std::u16string> buffers;
        const std::u16string_view original =
            comparison_.Text(Side::Original, record, buffers.original);
        const std::u16string_view modified =
            comparison_.Text(Side::Modified, record, buffers.modified);
        const Move* move = comparison_.MoveOf(index);
        switch (record.type) {
            case DifferenceType::Addition:
                if (move != nullptr && move->section_count > 0)
                    Moved(*move, modified);
                else
                    Lines("+ ", WholePiece(PieceKind::Added, modified, model_.watcher));
                return;
            case DifferenceType::Deletion:
                Lines("- ", WholePiece(PieceKind::Deleted, original, model_.watcher));
                return;
            case DifferenceType::Change:
                Lines("~ ",
                      MergedPieces(comparison_, {original, modified, comparison_.SectionsOf(index)},
                                   model_.watcher));
                return;
        }
    }

    // At the new place stands what changed on the way.
    void Moved(const Move& move, std::u16string_view modified) {
        std::u16string buffer;
        const std::u16string_view original =
            comparison_.Text(Side::Original, comparison_.Record(move.deletion), buffer);
        Lines("> ", MergedPieces(comparison_, {original, modified, comparison_.SectionsOf(move)},
                                 model_.watcher));
    }

    Marks MarksOf(PieceKind kind) const {
        if (kind == PieceKind::Same)
            return kNothing;
        if (IsOriginalPiece(kind))
            return style_.color ? kOldColor : kOldPlain;
        return style_.color ? kNewColor : kNewPlain;
    }

    void Lines(std::string_view sign, std::vector<Piece> pieces) {
        for (const PieceParagraph& paragraph : SplitPieces(std::move(pieces))) {
            out_ += sign;
            for (const Piece& piece : paragraph.pieces)
                Marked(piece);
            if (paragraph.BreakStandsOut())
                Marked({paragraph.end, u"\u00B6"});
            out_ += '\n';
        }
    }

    void Marked(const Piece& piece) {
        const Marks marks = MarksOf(piece.kind);
        out_ += marks.open;
        WriteInParts(ToldText(piece.kind, piece.text, told_), stop_,
                     [this](std::u16string_view part) { out_ += Shown(part); });
        out_ += marks.close;
    }

    const ReportModel& model_;
    const Comparison& comparison_;
    TerminalStyle style_;
    StopCheck stop_{model_.watcher, kUnitsBetweenStops};
    std::int32_t shown_to_ = 1;  // the first paragraph of the original that has not been shown
    std::u16string told_;
    std::string out_;
};

void AppendStatRow(std::string_view name, const DifferenceCounts& counts, std::string& out) {
    AppendFormat(out, "{:<12}{:>10}{:>10}{:>10}\n", name, counts.changes, counts.additions,
                 counts.deletions);
}

}  // namespace

std::string WriteTerminalReport(const ReportModel& model, const TerminalStyle& style) {
    if (model.comparison.Same())
        return WriteVerdict(model);
    return TerminalWriter(model, style).Write();
}

std::string WriteStat(const ReportModel& model) {
    const Comparison& comparison = model.comparison;
    std::string out;
    for (const Side side : kBothSides)
        AppendFormat(out, "{}: {} ({})\n", side == Side::Original ? "original" : "modified",
                     Shown(model.names[side]),
                     CountText(comparison.Paragraphs(side), "paragraph", "paragraphs"));
    AppendFormat(out, "{:<12}{:>10}{:>10}{:>10}\n", "", "changes", "additions", "deletions");
    AppendStatRow("paragraphs", comparison.record_counts, out);
    AppendStatRow("words", comparison.section_counts, out);
    if (comparison.by_character)
        AppendStatRow("letters", comparison.character_counts, out);
    if (!comparison.moves.empty())
        out += CountText(static_cast<std::int64_t>(comparison.moves.size()), "move", "moves") +
               ", each also one addition and one deletion\n";
    if (comparison.Same() || !comparison.beside_sentence.empty())
        out += WriteVerdict(model);
    return out;
}

}  // namespace zorvane
