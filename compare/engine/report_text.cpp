// The text report: the counts, then each record with its words marked, at 80 columns.
#include "common/base/text_encoding.h"
#include "compare/engine/comparison_model.h"

namespace zorvane {
namespace {

constexpr std::size_t kColumns = 80;

struct MarkRow {
    const char* open;
    const char* close;
};
MarkRow MarksOf(PieceKind kind) {
    switch (kind) {
        case PieceKind::Same:
            return {"", ""};
        case PieceKind::Deleted:
        case PieceKind::ChangedOld:
            return {"[-", "-]"};
        case PieceKind::Added:
        case PieceKind::ChangedNew:
            break;
    }
    return {"{+", "+}"};
}

// Code points, near enough to columns for wrapping.
std::size_t Width(std::string_view utf8) {
    std::size_t width = 0;
    for (const char character : utf8)
        width += (static_cast<unsigned char>(character) & 0xC0) != 0x80 ? 1U : 0U;
    return width;
}

std::string Visible(std::string_view text) {
    std::string out;
    for (const char character : text) {
        const auto byte = static_cast<unsigned char>(character);
        if (character == '\t' || byte == 7)
            out += "  ";
        else if (byte == 11)
            out += ' ';
        else if (byte >= 0x20 && byte != 0x7F)
            out += character;
        else
            out += '?';
    }
    return out;
}

// One paragraph behind its sign, wrapped at blanks; what follows is indented as far.
void AppendWrapped(std::string_view sign, const std::string& paragraph, std::string& out) {
    const std::string indent(sign.size(), ' ');
    const std::size_t room = kColumns - sign.size();
    std::string_view rest = paragraph;
    std::string_view front = sign;
    do {
        std::size_t end = rest.size();
        if (Width(rest) > room) {
            std::size_t columns = 0;
            std::size_t last_blank = 0;
            std::size_t at = 0;
            for (; at < rest.size() && columns <= room; ++at) {
                columns += Width(rest.substr(at, 1));
                if (rest[at] == ' ' && columns <= room + 1)
                    last_blank = at;
            }
            end = last_blank > 0 ? last_blank : std::min(rest.find(' ', at - 1), rest.size());
        }
        out.append(front).append(rest.substr(0, end)).append("\r\n");
        rest.remove_prefix(std::min(rest.size(), end + 1));
        front = indent;
    } while (!rest.empty());
}

void AppendSide(std::string_view sign, const std::vector<Piece>& pieces, std::string& out) {
    for (const std::vector<Piece>& paragraph : SplitPieces(pieces)) {
        std::string text;
        for (const Piece& piece : paragraph) {
            const MarkRow marks = MarksOf(piece.kind);
            text.append(marks.open).append(ToUtf8(piece.text)).append(marks.close);
        }
        AppendWrapped(sign, Visible(text), out);
    }
}

std::string Header(std::int32_t number, const DifferenceRecord& record) {
    return "<<<" + std::to_string(number) + ">>> " + DescribeRecord(record) + "\r\n";
}

}  // namespace

std::string WriteTextReport(const ComparisonModel& model) {
    std::string out;
    if (!model.title.empty())
        out += Visible(model.title) + "\r\n" + std::string(Width(model.title), '=') + "\r\n\r\n";
    out += "Original: " + Visible(model.original_name) + "\r\n";
    out += "Modified: " + Visible(model.modified_name) + "\r\n\r\n";
    out += SummaryText(CountRecords(model.engine)) + "\r\n";
    ChangeDetail detail(model.detail);
    std::int32_t number = 0;
    for (const DifferenceRecord& record : model.engine.Records()) {
        out += "\r\n" + Header(++number, record);
        const std::u16string original = OriginalText(model.engine, record);
        const std::u16string modified = ModifiedText(model.engine, record);
        if (record.type == DifferenceType::Change) {
            detail.Find(original, modified);
            AppendSide("- ", detail.OriginalPieces(), out);
            AppendSide("+ ", detail.ModifiedPieces(), out);
        } else if (record.type == DifferenceType::Deletion) {
            AppendSide("- ", {{PieceKind::Same, original}}, out);
        } else {
            AppendSide("+ ", {{PieceKind::Same, modified}}, out);
        }
    }
    return out;
}

}  // namespace zorvane
