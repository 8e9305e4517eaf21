// The HTML report: one self-contained page, readable without script, well formed as XML too.
#include <algorithm>

#include "common/base/append_format.h"
#include "compare/engine/html_markup.h"
#include "compare/engine/html_rows.h"
#include "compare/engine/html_style.h"
#include "compare/engine/report_counts.h"
#include "compare/engine/report_model.h"
#include "compare/engine/unchanged_plan.h"

namespace zorvane {
namespace {

constexpr std::size_t kExcerpt = 60;
constexpr std::int32_t kMostListed = 2000;           // more differences nobody reads as a list
constexpr std::size_t kPart = std::size_t{1} << 18;  // bytes that are handed on at once

class HtmlWriter {
  public:
    HtmlWriter(const ReportModel& model, bool all_in_one, const PageTarget& target)
        : model_(model),
          comparison_(model.comparison),
          one_(all_in_one),
          target_(target),
          rows_(model, all_in_one, page_, [this] { HandOn(kPart); }),
          plan_(PlanUnchanged(comparison_, model.unchanged, all_in_one ? 1 : 2)) {
        page_.reserve(kPart * 2);
    }

    Status Write() {
        Head();
        Header();
        Beside();
        List();
        page_ += one_ ? "<main><div class=\"box one" : "<main><div class=\"box two";
        page_ += model_.document_looks.original || model_.document_looks.modified ? " rich" : "";
        page_ += comparison_.by_character ? "\">\n" : " words\">\n";
        ColumnTitles();
        Body();
        page_ += "</div></main>\n";
        if (Count() > 0) {
            page_ += "<footer>n and p go to the next and the previous difference.</footer>\n";
            page_.append("<script>").append(HtmlScript()).append("</script>\n");
        }
        page_ += "</body></html>\n";
        HandOn(0);
        return status_;
    }

  private:
    std::int32_t Count() const { return static_cast<std::int32_t>(comparison_.records.size()); }

    template <class... Values>
    void Print(fmt::format_string<Values...> format, Values&&... values) {
        AppendFormat(page_, format, std::forward<Values>(values)...);
    }

    // What has grown beyond `most` bytes goes to the target.
    void HandOn(std::size_t most) {
        if (page_.size() <= most)
            return;
        if (status_.ok())
            status_ =
                KeepGoing(model_.watcher) ? target_(page_) : Failure{std::string(kReportStopped)};
        page_.clear();
    }

    // ---- the frame ----

    void Head() {
        page_ +=
            "<!DOCTYPE html>\n<html lang=\"en\"><head><meta charset=\"utf-8\"/>"
            "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\"/><title>";
        Title();
        page_ += "</title><style>";
        page_ += HtmlStyle(model_.look, std::max(comparison_.Paragraphs(Side::Original),
                                                 comparison_.Paragraphs(Side::Modified)));
        page_ += "</style></head>\n<body>\n";
    }

    void Title() {
        if (!model_.title.empty()) {
            AppendHtmlText(model_.title, page_);
            return;
        }
        AppendHtmlText(model_.names.original, page_);
        page_ += " / ";
        AppendHtmlText(model_.names.modified, page_);
    }

    // Without a title of its own the page is headed by the names in the column titles.
    void Header() {
        page_ += model_.title.empty() ? "<header><h1 class=\"q\">" : "<header><h1>";
        Title();
        page_ += "</h1>";
        const auto differences = Count() - static_cast<std::int32_t>(comparison_.moves.size());
        if (Count() == 0)
            page_ += comparison_.same_files ? "<p class=\"sum\">The files are identical.</p>"
                                            : "<p class=\"sum\">No differences.</p>";
        else
            Print("<p class=\"sum\">{}.</p>", CountText(differences, "difference", "differences"));
        if (Count() > 0)
            Counts();
        if (model_.high_detail && comparison_.section_counts.All() > 0) {
            page_ += "<p class=\"sub\">" + SubCounts("Words", comparison_.section_counts);
            if (comparison_.by_character && comparison_.character_counts.All() > 0)
                page_ += "<br/>" + SubCounts("Letters", comparison_.character_counts);
            page_ += "</p>";
        }
        page_ += "</header>\n";
    }

    void CountOf(std::string_view classes, std::string_view sign, const std::string& words) {
        Print("<li class=\"{}\"><i>{}</i>{}</li>\n", classes, sign, words);
    }

    // What they count is also the key to signs and colours.
    void Counts() {
        const ReportCounts counts = CountForReaders(comparison_, model_.watcher);
        const auto paragraphs = [](std::int64_t count, std::string_view what) {
            return CountText(count, "paragraph ", "paragraphs ") + std::string(what);
        };
        page_ += "<ul class=\"counts\">\n";
        CountOf("c", "\u2260", paragraphs(counts.paragraphs_changed, "changed"));
        CountOf("p", "+", paragraphs(counts.paragraphs_added, "added"));
        CountOf("x", "\u2212", paragraphs(counts.paragraphs_deleted, "deleted"));
        if (counts.paragraphs_moved > 0)
            CountOf("m", "\u2195", paragraphs(counts.paragraphs_moved, "moved"));
        CountOf("w", "+", CountText(counts.words_added, "word added", "words added"));
        CountOf("w", "\u2212", CountText(counts.words_deleted, "word deleted", "words deleted"));
        page_ += "</ul>";
    }

    // Without zeros: "0 additions" would be read as the whole document's.
    static std::string SubCounts(std::string_view what, const DifferenceCounts& counts) {
        std::string text = std::string(what) + " inside changed paragraphs: ";
        std::string_view between;
        const auto add = [&](std::int32_t count, std::string_view one, std::string_view many) {
            if (count > 0)
                text.append(std::exchange(between, ", ")).append(CountText(count, one, many));
        };
        add(counts.changes, "change", "changes");
        add(counts.additions, "addition", "additions");
        add(counts.deletions, "deletion", "deletions");
        return text + ".";
    }

    void Beside() {
        const Comparison& comparison = model_.comparison;
        if (comparison.beside_sentence.empty())
            return;
        page_ += "<div class=\"beside\"><section><h2>";
        AppendHtmlText(comparison.beside_sentence, page_);
        page_ += "</h2><ul>\n";
        for (const BesideNote& note : comparison.beside) {
            page_ += "<li>";
            AppendHtmlText(DescribeBeside(note), page_);
            page_ += "</li>\n";
        }
        page_ += "</ul></section></div>\n";
    }

    void List() {
        if (Count() == 0)
            return;
        page_ +=
            "<nav aria-label=\"Differences\"><details><summary>List of differences</summary><ol>\n";
        for (std::int32_t number = 1; number <= std::min(Count(), kMostListed) && status_.ok();
             ++number)
            ListEntry(number);
        page_ += "</ol>";
        if (Count() > kMostListed)
            Print("<p>{} more are not listed.</p>", Count() - kMostListed);
        page_ += "</details></nav>\n";
    }

    void ListEntry(std::int32_t number) {
        const auto index = static_cast<std::size_t>(number - 1);
        const DifferenceRecord& record = comparison_.records[index];
        const Side side = record.Count(Side::Original) > 0 ? Side::Original : Side::Modified;
        const std::u16string_view text = comparison_.Text(side, record, buffer_);
        const std::u16string_view excerpt = Excerpt(text, kExcerpt);
        Print("<li><a href=\"#d{}\">{}</a> <q>", number, DescribeRecord(comparison_, index));
        AppendHtmlText(excerpt, page_);
        page_ += excerpt.size() < text.size() ? "&#8230;</q></li>\n" : "</q></li>\n";
        HandOn(kPart);
    }

    void ColumnTitle(Side side) {
        Print("<small>{}</small>", side == Side::Original ? "Original" : "Modified");
        AppendHtmlText(model_.names[side], page_);
        if (model_.dates[side].empty())
            return;
        page_ += "<small>";
        AppendHtmlText(model_.dates[side], page_);
        page_ += "</small>";
    }

    void ColumnTitles() {
        page_ += one_ ? "<div class=\"r head\"><b></b><b></b><div class=\"names\"><span>"
                      : "<div class=\"r head\"><b></b><div>";
        ColumnTitle(Side::Original);
        page_ += one_ ? "</span><span>" : "</div><b></b><div>";
        ColumnTitle(Side::Modified);
        page_ += one_ ? "</span></div></div>\n" : "</div></div>\n";
    }

    // ---- the paragraphs ----

    void Body() {
        PageRow at{1, 1};
        for (const DifferenceRecord& record : comparison_.records) {
            if (!status_.ok())
                return;
            Unchanged(at, {record.InFront(Side::Original).value + 1,
                           record.InFront(Side::Modified).value + 1});
            ++number_;
            Difference();
            at = {record.paragraphs.original.last.value + 1,
                  record.paragraphs.modified.last.value + 1};
        }
        last_ = true;
        Unchanged(at, {comparison_.Paragraphs(Side::Original) + 1,
                       comparison_.Paragraphs(Side::Modified) + 1});
        EndRun();
    }

    // The paragraphs between two differences beside each other. Those that are ignored may stand on
    // one side alone.
    void PairUnchanged(PageRow at, PageRow end) {
        unchanged_.clear();
        while (at.original < end.original || at.modified < end.modified) {
            const bool original = at.original < end.original;
            const bool modified = at.modified < end.modified;
            const bool original_ignored =
                original && comparison_.IsIgnored(Side::Original, at.original);
            const bool modified_ignored =
                modified && comparison_.IsIgnored(Side::Modified, at.modified);
            if (original && modified && original_ignored == modified_ignored)
                unchanged_.push_back({at.original++, at.modified++});
            else if (original_ignored || !modified)
                unchanged_.push_back({at.original++, 0});
            else
                unchanged_.push_back({0, at.modified++});
        }
    }

    // Long stretches are folded, but for some paragraphs beside the differences.
    void Unchanged(PageRow at, PageRow end) {
        PairUnchanged(at, end);
        const std::size_t count = unchanged_.size();
        const std::size_t before = number_ == 0 ? 0 : plan_.context;
        const std::size_t behind = last_ ? 0 : plan_.context;
        if (!plan_.fold || count < before + behind + plan_.least_folded) {
            Rows(0, count);
            return;
        }
        Rows(0, before);
        Fold(before, count - behind);
        Rows(count - behind, count);
    }

    void Fold(std::size_t begin, std::size_t end) {
        EndRun();
        const PageRow first = unchanged_[begin];
        const PageRow last = unchanged_[end - 1];
        const bool numbered = first.original > 0 && last.original > 0;
        std::int64_t size = 0;
        if (numbered)
            size = comparison_.Lines(Side::Original).Units(first.original - 1, last.original);
        const bool kept = size <= plan_.most_kept;
        page_ += kept ? "<details class=\"fold\"><summary>" : "<p class=\"fold\">";
        page_ += CountText(static_cast<std::int64_t>(end - begin), "unchanged paragraph",
                           "unchanged paragraphs");
        if (numbered && last.original > first.original)
            Print(" ({} to {})", first.original, last.original);
        else if (numbered)
            Print(" ({})", first.original);
        if (!kept) {
            page_ += ", left out of this page</p>\n";
            return;
        }
        page_ += "</summary>\n";
        Rows(begin, end);
        EndRun();
        page_ += "</details>\n";
    }

    void Rows(std::size_t begin, std::size_t end) {
        for (std::size_t i = begin; i < end && status_.ok(); ++i) {
            BeginRun();
            ++run_rows_;
            rows_.Unchanged(unchanged_[i]);
            HandOn(kPart);
        }
    }

    void BeginRun() {
        if (run_rows_ >= HtmlRows::kRun)
            EndRun();
        if (!in_run_)
            page_ += "<div class=\"run\">\n";
        in_run_ = true;
    }

    void EndRun() {
        if (in_run_)
            page_ += "</div>\n";
        in_run_ = false;
        run_rows_ = 0;
    }

    void Difference() {
        const auto index = static_cast<std::size_t>(number_ - 1);
        const DifferenceRecord& record = comparison_.records[index];
        const std::size_t rows = static_cast<std::size_t>(record.Count(Side::Original)) +
                                 static_cast<std::size_t>(record.Count(Side::Modified));
        // A long one brings runs of its own.
        if (rows > HtmlRows::kRun)
            EndRun();
        else
            BeginRun();
        run_rows_ += rows;
        Print("<section class=\"d\" id=\"d{0}\"><div class=\"what\"><h2>{0}. {1}</h2><span>",
              number_, DescribeRecord(comparison_, index));
        if (number_ > 1)
            Print("<a href=\"#d{}\">&#8593; previous</a>", number_ - 1);
        if (number_ < Count())
            Print("<a href=\"#d{}\">&#8595; next</a>", number_ + 1);
        page_ += "</span></div>\n";
        rows_.Difference(index);
        page_ += "</section>\n";
        HandOn(kPart);
    }

    const ReportModel& model_;
    const Comparison& comparison_;
    bool one_;
    const PageTarget& target_;
    std::string page_;
    HtmlRows rows_;
    UnchangedPlan plan_;
    Status status_;
    std::int32_t number_ = 0;  // of the difference that was written last
    bool last_ = false;        // behind the last difference
    bool in_run_ = false;
    std::size_t run_rows_ = 0;
    std::vector<PageRow> unchanged_;
    std::u16string buffer_;
};

}  // namespace

Status WriteHtmlReport(const ReportModel& model, std::int32_t style, const PageTarget& target) {
    constexpr std::int32_t kAllInOne = 1;
    return HtmlWriter(model, style == kAllInOne, target).Write();
}

std::string WriteHtmlReport(const ReportModel& model, std::int32_t style) {
    std::string page;
    IgnoreFailure(WriteHtmlReport(model, style,
                                  [&](std::string_view part) {
                                      page += part;
                                      return Status::Ok();
                                  }),
                  "memory takes everything");
    return page;
}

}  // namespace zorvane
