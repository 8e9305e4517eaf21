#include "reports/terminal_report.h"

#include <algorithm>
#include <fmt/format.h>

#include "common/base/text_encoding.h"

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

// Control characters as their pictures (U+2400 and on), a cell mark as a tab, a line break as
// itself.
std::string Visible(std::string_view text) {
    std::string out;
    for (const char character : text) {
        const auto byte = static_cast<unsigned char>(character);
        if (byte == 7)
            out += '\t';
        else if (byte == 11)
            out += "\n    ";
        else if ((byte >= 0x20 && byte != 0x7F) || character == '\t')
            out += character;
        else
            out.append("\xE2\x90").append(1, static_cast<char>(byte == 0x7F ? 0xA1 : 0x80 + byte));
    }
    return out;
}

// C1 controls (U+0080 to U+009F) steer some terminals too.
std::string Shown(std::u16string text) {
    for (char16_t& unit : text) {
        if (unit >= 0x80 && unit < 0xA0)
            unit = u'\uFFFD';
    }
    return Visible(ToUtf8(text));
}
std::string Shown(std::string_view utf8) {
    return Shown(ToUtf16(utf8));
}

class TerminalWriter {
  public:
    TerminalWriter(const ComparisonModel& model, const TerminalStyle& style)
        : model_(model), engine_(model.engine), style_(style), detail_(model.detail) {}

    std::string Write() {
        Paint(kBold, "--- " + Shown(model_.original_name));
        Paint(kBold, "+++ " + Shown(model_.modified_name));
        std::int32_t number = 0;
        for (const DifferenceRecord& record : engine_.Records())
            Record(++number, record);
        return std::move(out_);
    }

  private:
    void Paint(std::string_view color, const std::string& line) {
        if (style_.color)
            out_.append(color).append(line).append(kReset).append("\n");
        else
            out_.append(line).append("\n");
    }

    static std::int32_t Begin(const DifferenceRecord& record) {
        return record.type == DifferenceType::Addition ? record.first_original + 1
                                                       : record.first_original;
    }

    void Record(std::int32_t number, const DifferenceRecord& record) {
        const std::int32_t begin = Begin(record);
        const std::int32_t end = record.last_original + 1;
        const auto next = engine_.GetDifference(RecordIndex{number});
        const std::int32_t next_begin = next ? Begin(*next) : engine_.MasterLineCount() + 1;
        // Paragraphs that the record before has shown are not shown again.
        if (begin - style_.context > shown_to_) {
            out_ += '\n';
            Paint(kHeaderColor, fmt::format("@@ {}. {} @@", number, DescribeRecord(record)));
        } else {
            Paint(kHeaderColor, fmt::format("@@ {}. {} @@", number, DescribeRecord(record)));
        }
        Unchanged(std::max(begin - style_.context, shown_to_), begin);
        Body(record);
        shown_to_ = std::min(end + style_.context, next_begin);
        Unchanged(end, shown_to_);
    }

    void Unchanged(std::int32_t begin, std::int32_t end) {
        for (std::int32_t line = begin; line < end; ++line)
            out_.append("  ").append(Shown(engine_.MasterLine(line))).append("\n");
    }

    void Body(const DifferenceRecord& record) {
        const std::u16string original = OriginalText(engine_, record);
        const std::u16string modified = ModifiedText(engine_, record);
        switch (record.type) {
            case DifferenceType::Addition:
                Lines("+ ", {{PieceKind::Added, modified}});
                return;
            case DifferenceType::Deletion:
                Lines("- ", {{PieceKind::Deleted, original}});
                return;
            case DifferenceType::Change:
                detail_.Find(original, modified);
                Lines("~ ", detail_.MergedPieces());
                return;
        }
    }

    Marks MarksOf(PieceKind kind) const {
        if (kind == PieceKind::Same)
            return kNothing;
        if (IsOriginalPiece(kind))
            return style_.color ? kOldColor : kOldPlain;
        return style_.color ? kNewColor : kNewPlain;
    }

    void Lines(std::string_view sign, const std::vector<Piece>& pieces) {
        for (const PieceParagraph& paragraph : SplitPieces(pieces)) {
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
        out_.append(marks.open).append(Shown(piece.text)).append(marks.close);
    }

    const ComparisonModel& model_;
    const VestrelX& engine_;
    TerminalStyle style_;
    ChangeDetail detail_;
    std::int32_t shown_to_ = 1;  // the first paragraph of the original that has not been shown
    std::string out_;
};

void AppendStatRow(std::string_view name, const DetailCounts& counts, std::string& out) {
    fmt::format_to(std::back_inserter(out), "{:<12}{:>10}{:>10}{:>10}\n", name, counts.changes,
                   counts.additions, counts.deletions);
}

}  // namespace

std::string WriteTerminalReport(const ComparisonModel& model, const TerminalStyle& style) {
    if (model.engine.getDifferenceCount() == 0)
        return {};
    return TerminalWriter(model, style).Write();
}

std::string WriteStat(const ComparisonModel& model) {
    ChangeDetail detail(model.detail);
    for (const DifferenceRecord& record : model.engine.Records()) {
        if (record.type != DifferenceType::Change)
            continue;
        const std::u16string original = OriginalText(model.engine, record);
        const std::u16string modified = ModifiedText(model.engine, record);
        detail.Find(original, modified);
    }
    std::string out =
        fmt::format("original: {} ({})\nmodified: {} ({})\n", Shown(model.original_name),
                    CountText(model.engine.MasterLineCount(), "paragraph", "paragraphs"),
                    Shown(model.modified_name),
                    CountText(model.engine.SourceLineCount(), "paragraph", "paragraphs"));
    fmt::format_to(std::back_inserter(out), "{:<12}{:>10}{:>10}{:>10}\n", "", "changes",
                   "additions", "deletions");
    AppendStatRow("paragraphs", CountRecords(model.engine), out);
    AppendStatRow("words", detail.SectionCounts(), out);
    if (model.detail.by_character)
        AppendStatRow("letters", detail.CharacterCounts(), out);
    return out;
}

}  // namespace zorvane
