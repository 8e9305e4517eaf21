// The HTML report: one self-contained page, readable without script, well formed as XML too.
#include <algorithm>
#include <fmt/format.h>

#include "common/base/text_encoding.h"
#include "compare/engine/comparison_model.h"
#include "compare/engine/html_markup.h"

namespace zorvane {
namespace {

constexpr std::size_t kContext = 3;      // unchanged paragraphs left open around a difference
constexpr std::size_t kLeastFolded = 4;  // fewer are not worth a fold
constexpr std::size_t kRun = 60;  // rows of a block that a browser lays out only when it is near
constexpr std::size_t kExcerpt = 60;

void AppendNumber(std::int32_t number, std::string& out) {
    fmt::format_to(std::back_inserter(out), "{}", number);
}

struct Tag {
    std::string_view open;
    std::string_view close;
};
Tag TagOf(PieceKind kind) {
    switch (kind) {
        case PieceKind::Same:
            return {"", ""};
        case PieceKind::Deleted:
            return {"<del class=\"w\">", "</del>"};
        case PieceKind::Added:
            return {"<ins class=\"w\">", "</ins>"};
        case PieceKind::ChangedOld:
            return {"<del class=\"c\">", "</del>"};
        case PieceKind::ChangedNew:
            break;
    }
    return {"<ins class=\"c\">", "</ins>"};
}

// Paragraphs beside each other by their numbers; 0: none on that side.
struct Row {
    std::int32_t original;
    std::int32_t modified;
};

// The number of one side's paragraph that waits for the row where its text begins.
struct NumberInRow {
    std::int32_t number = 0;
    bool waits = true;

    bool Begins(const PieceParagraph& row, bool (*is_mine)(PieceKind), bool last_row) {
        const bool mine = last_row || is_mine(row.end) ||
                          std::any_of(row.pieces.begin(), row.pieces.end(),
                                      [&](const Piece& piece) { return is_mine(piece.kind); });
        const bool begins = waits && mine;
        waits = waits && !mine;
        return begins;
    }
    void GoOn(bool break_is_mine) {
        waits = waits || break_is_mine;
        number += break_is_mine ? 1 : 0;
    }
};

std::u16string_view Excerpt(std::u16string_view text) {
    std::size_t size = std::min(text.find(u'\r'), std::min(text.size(), kExcerpt));
    if (size < text.size() && size > 0 && text[size] >= 0xDC00 && text[size] < 0xE000)
        --size;
    return text.substr(0, size);
}

class HtmlWriter {
  public:
    HtmlWriter(const ComparisonModel& model, bool all_in_one)
        : model_(model), engine_(model.engine), one_(all_in_one), detail_(model.detail) {}

    std::string Write() {
        WriteBody();
        std::string page;
        AppendHead(page);
        AppendHeader(page);
        AppendList(page);
        page += one_ ? "<main><div class=\"box one" : "<main><div class=\"box two";
        page += model_.detail.by_character ? "\">\n" : " words\">\n";
        AppendColumnTitles(page);
        body_.insert(0, page);  // one move, where a second page would cost its size again
        body_ += "</div></main>\n";
        if (engine_.getDifferenceCount() > 0)
            body_ +=
                "<footer>n and p go to the next and the previous difference.</footer>\n<script>";
        if (engine_.getDifferenceCount() > 0)
            body_.append(HtmlScript()).append("</script>\n");
        body_ += "</body></html>\n";
        return std::move(body_);
    }

  private:
    // ---- the frame ----

    void AppendHead(std::string& page) const {
        page +=
            "<!DOCTYPE html>\n<html lang=\"en\"><head><meta charset=\"utf-8\"/>"
            "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\"/><title>";
        if (model_.title.empty())
            AppendNames(" / ", page);
        else
            AppendHtmlText(model_.title, page);
        page += "</title><style>";
        page +=
            HtmlStyle(model_.look, std::max(engine_.MasterLineCount(), engine_.SourceLineCount()));
        page += "</style></head>\n<body>\n";
    }

    void AppendNames(std::string_view between, std::string& page) const {
        AppendHtmlText(model_.original_name, page);
        page += between;
        AppendHtmlText(model_.modified_name, page);
    }

    void AppendHeader(std::string& page) const {
        page += model_.title.empty() ? "<header><h1 class=\"v\">" : "<header><h1>";
        if (model_.title.empty())
            AppendNames(" / ", page);
        else
            AppendHtmlText(model_.title, page);
        page += "</h1><p class=\"sum\">" + SummaryText(CountRecords(engine_)) + "</p>";
        if (model_.high_detail && engine_.getDifferenceCount() > 0) {
            page += "<p class=\"sub\">" + SubCounts("Words", detail_.SectionCounts());
            if (model_.detail.by_character)
                page += "<br/>" + SubCounts("Letters", detail_.CharacterCounts());
            page += "</p>";
        }
        if (engine_.getDifferenceCount() > 0) {
            page +=
                "<p class=\"key\"><span><del class=\"a\">deleted</del></span>"
                "<span><ins class=\"a\">added</ins></span><span><del class=\"c\">changed "
                "from</del> "
                "<ins class=\"c\">changed to</ins></span></p>";
        }
        page += "</header>\n";
    }

    static std::string SubCounts(std::string_view what, const DetailCounts& counts) {
        return fmt::format("{} inside changed paragraphs: {}, {}, {}.", what,
                           CountText(counts.changes, "change", "changes"),
                           CountText(counts.additions, "addition", "additions"),
                           CountText(counts.deletions, "deletion", "deletions"));
    }

    void AppendList(std::string& page) const {
        if (list_.empty())
            return;
        page +=
            "<nav aria-label=\"Differences\"><details><summary>List of differences</summary><ol>\n";
        page += list_;
        page += "</ol></details></nav>\n";
    }

    void AppendColumnTitles(std::string& page) const {
        page += one_ ? "<div class=\"r head\"><div></div><div></div><div>"
                     : "<div class=\"r head\"><div></div><div>";
        AppendNames(one_ ? " &#8594; " : "</div><div></div><div>", page);
        page += "</div></div>\n";
    }

    // ---- the paragraphs ----

    void WriteBody() {
        body_.reserve(engine_.TextBytes() * (one_ ? 1U : 2U) +
                      static_cast<std::size_t>(engine_.MasterLineCount()) * 64U);
        Row at{1, 1};
        for (const DifferenceRecord& record : engine_.Records()) {
            // An addition or a deletion has its place behind the paragraph that it names.
            const bool addition = record.type == DifferenceType::Addition;
            const bool deletion = record.type == DifferenceType::Deletion;
            Unchanged(at, {record.first_original + (addition ? 1 : 0),
                           record.first_modified + (deletion ? 1 : 0)});
            ++number_;
            Difference(record);
            at = {record.last_original + 1, record.last_modified + 1};
        }
        last_ = true;
        Unchanged(at, {engine_.MasterLineCount() + 1, engine_.SourceLineCount() + 1});
        EndRun();
    }

    // The paragraphs between two differences beside each other. Those that are ignored may stand on
    // one side alone.
    void PairUnchanged(Row at, Row end) {
        rows_.clear();
        while (at.original < end.original || at.modified < end.modified) {
            const bool original = at.original < end.original;
            const bool modified = at.modified < end.modified;
            const bool original_ignored =
                original && engine_.IsIgnoredLine(engine_.MasterLine(at.original));
            const bool modified_ignored =
                modified && engine_.IsIgnoredLine(engine_.SourceLine(at.modified));
            if (original && modified && original_ignored == modified_ignored)
                rows_.push_back({at.original++, at.modified++});
            else if (original_ignored || !modified)
                rows_.push_back({at.original++, 0});
            else
                rows_.push_back({0, at.modified++});
        }
    }

    // Long stretches are folded, but for some paragraphs beside the differences.
    void Unchanged(Row at, Row end) {
        PairUnchanged(at, end);
        const bool first = number_ == 0;
        const std::size_t count = rows_.size();
        const std::size_t before = first ? 0 : kContext;
        const std::size_t behind = last_ ? 0 : kContext;
        const bool nothing_differs = first && last_;
        if (nothing_differs || count < before + behind + kLeastFolded) {
            Rows(0, count);
            return;
        }
        Rows(0, before);
        Fold(before, count - behind);
        Rows(count - behind, count);
    }

    void Fold(std::size_t begin, std::size_t end) {
        EndRun();
        fmt::format_to(std::back_inserter(body_),
                       "<details class=\"fold\"><summary>{} unchanged paragraphs", end - begin);
        if (rows_[begin].original > 0 && rows_[end - 1].original > 0)
            fmt::format_to(std::back_inserter(body_), " ({} to {})", rows_[begin].original,
                           rows_[end - 1].original);
        body_ += "</summary>\n";
        Rows(begin, end);
        EndRun();
        body_ += "</details>\n";
    }

    void Rows(std::size_t begin, std::size_t end) {
        for (std::size_t i = begin; i < end; ++i) {
            const Row row = rows_[i];
            BeginRow();
            if (one_) {
                UnchangedNumber(row.original);
                UnchangedNumber(row.modified);
                body_ += "<div>";
                AppendHtmlText(row.original > 0 ? engine_.MasterLine(row.original)
                                                : engine_.SourceLine(row.modified),
                               body_);
                body_ += "</div></div>\n";
                continue;
            }
            UnchangedNumber(row.original);
            body_ += "<div>";
            if (row.original > 0)
                AppendHtmlText(engine_.MasterLine(row.original), body_);
            body_ += "</div>";
            UnchangedNumber(row.modified);
            body_ += "<div>";
            if (row.modified > 0)
                AppendHtmlText(engine_.SourceLine(row.modified), body_);
            body_ += "</div></div>\n";
        }
    }

    void UnchangedNumber(std::int32_t number) {
        body_ += "<b>";
        if (number > 0)
            AppendNumber(number, body_);
        body_ += "</b>";
    }

    void BeginRun() {
        if (run_rows_ >= kRun)
            EndRun();
        if (!in_run_)
            body_ += "<div class=\"run\">\n";
        in_run_ = true;
    }

    void EndRun() {
        if (in_run_)
            body_ += "</div>\n";
        in_run_ = false;
        run_rows_ = 0;
    }

    void BeginRow() {
        if (!in_section_)
            BeginRun();
        ++run_rows_;
        body_ += "<div class=\"r\">";
    }

    // ---- the differences ----

    void Difference(const DifferenceRecord& record) {
        const std::u16string original = OriginalText(engine_, record);
        const std::u16string modified = ModifiedText(engine_, record);
        ListEntry(record, original.empty() ? modified : original);
        BeginRun();
        in_section_ = true;
        fmt::format_to(
            std::back_inserter(body_),
            "<section class=\"d\" id=\"d{0}\"><div class=\"what\"><h2>{0}. {1}</h2><span>", number_,
            DescribeRecord(record));
        if (number_ > 1)
            fmt::format_to(std::back_inserter(body_), "<a href=\"#d{}\">&#8593; previous</a>",
                           number_ - 1);
        if (number_ < engine_.getDifferenceCount())
            fmt::format_to(std::back_inserter(body_), "<a href=\"#d{}\">&#8595; next</a>",
                           number_ + 1);
        body_ += "</span></div>\n";
        if (record.type == DifferenceType::Addition)
            Added(record);
        else if (record.type == DifferenceType::Deletion)
            Deleted(record);
        else
            Change(record, original, modified);
        body_ += "</section>\n";
        in_section_ = false;
    }

    void ListEntry(const DifferenceRecord& record, const std::u16string& text) {
        fmt::format_to(std::back_inserter(list_), "<li><a href=\"#d{}\">{}</a> <q>", number_,
                       DescribeRecord(record));
        const std::u16string_view excerpt = Excerpt(text);
        AppendHtmlText(ToUtf8(excerpt), list_);
        list_ += excerpt.size() < text.size() ? "&#8230;</q></li>\n" : "</q></li>\n";
    }

    // Paragraphs that stand on one side only.
    void Added(const DifferenceRecord& record) {
        for (std::int32_t line = record.first_modified; line <= record.last_modified; ++line) {
            BeginRow();
            body_ += one_ ? "<b></b>" : "<b></b><div class=\"none\"></div>";
            SignedNumber("+ ", line);
            body_ += "<div><ins class=\"a\">";
            AppendHtmlText(engine_.SourceLine(line), body_);
            body_ += "</ins></div></div>\n";
        }
    }

    void Deleted(const DifferenceRecord& record) {
        for (std::int32_t line = record.first_original; line <= record.last_original; ++line) {
            BeginRow();
            SignedNumber("&#8722; ", line);
            body_ += one_ ? "<b></b><div><del class=\"a\">" : "<div><del class=\"a\">";
            AppendHtmlText(engine_.MasterLine(line), body_);
            body_ += one_ ? "</del></div></div>\n"
                          : "</del></div><b></b><div class=\"none\"></div></div>\n";
        }
    }

    void SignedNumber(std::string_view sign, std::int32_t number) {
        body_.append("<b>").append(sign);
        AppendNumber(number, body_);
        body_ += "</b>";
    }

    void Change(const DifferenceRecord& record, const std::u16string& original,
                const std::u16string& modified) {
        detail_.Find(original, modified);
        const std::vector<PieceParagraph> merged = SplitPieces(detail_.MergedPieces());
        if (one_) {
            MergedRows(record, merged);
            return;
        }
        const auto left = SplitPieces(detail_.OriginalPieces());
        const auto right = SplitPieces(detail_.ModifiedPieces());
        for (const ParagraphPair pair :
             PairParagraphs(merged, record.OriginalCount(), record.ModifiedCount())) {
            BeginRow();
            Cell(left, pair.original, record.first_original, "&#8722; ");
            Cell(right, pair.modified, record.first_modified, "+ ");
            body_ += "</div>\n";
        }
    }

    void Cell(const std::vector<PieceParagraph>& paragraphs, std::int32_t index,
              std::int32_t first_line, std::string_view sign) {
        if (index < 0 || index >= static_cast<std::int32_t>(paragraphs.size())) {
            body_ += "<b></b><div class=\"none\"></div>";
            return;
        }
        SignedNumber(sign, first_line + index);
        body_ += "<div>";
        AppendPieces(paragraphs[static_cast<std::size_t>(index)].pieces);
        body_ += "</div>";
    }

    void AppendPieces(const std::vector<Piece>& pieces) {
        for (const Piece& piece : pieces) {
            const Tag tag = TagOf(piece.kind);
            body_ += tag.open;
            AppendHtmlText(ToUtf8(piece.text), body_);
            body_ += tag.close;
        }
    }

    // A row for each paragraph of the merged text; a number stands in the row where the text of its
    // paragraph begins.
    void MergedRows(const DifferenceRecord& record, const std::vector<PieceParagraph>& merged) {
        NumberInRow original{record.first_original};
        NumberInRow modified{record.first_modified};
        for (std::size_t i = 0; i < merged.size(); ++i) {
            const PieceParagraph& paragraph = merged[i];
            const bool last = i + 1 == merged.size();
            BeginRow();
            MergedNumber(original.Begins(paragraph, IsOriginalPiece, last), "&#8722; ",
                         original.number);
            MergedNumber(modified.Begins(paragraph, IsModifiedPiece, last), "+ ", modified.number);
            body_ += "<div>";
            AppendPieces(paragraph.pieces);
            if (paragraph.BreakStandsOut())
                AppendPieces({{paragraph.end, u"\u00B6"}});
            body_ += "</div></div>\n";
            original.GoOn(IsOriginalPiece(paragraph.end));
            modified.GoOn(IsModifiedPiece(paragraph.end));
        }
    }

    void MergedNumber(bool shown, std::string_view sign, std::int32_t number) {
        if (shown)
            SignedNumber(sign, number);
        else
            body_ += "<b></b>";
    }

    const ComparisonModel& model_;
    const VestrelX& engine_;
    bool one_;
    ChangeDetail detail_;
    std::int32_t number_ = 0;  // of the difference that was written last
    bool last_ = false;        // behind the last difference
    bool in_run_ = false;
    bool in_section_ = false;
    std::size_t run_rows_ = 0;
    std::vector<Row> rows_;
    std::string body_;
    std::string list_;
};

}  // namespace

std::string WriteHtmlReport(const ComparisonModel& model, std::int32_t style) {
    constexpr std::int32_t kAllInOne = 1;
    return HtmlWriter(model, style == kAllInOne).Write();
}

}  // namespace zorvane
