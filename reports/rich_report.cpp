#include "reports/rich_report.h"

#include <algorithm>

#include "common/base/free_aside.h"
#include "common/base/paragraph_break.h"
#include "common/base/text_encoding.h"
#include "common/platform/files.h"
#include "compare/document/api_highlight.h"
#include "compare/document/rtf_page.h"
#include "compare/engine/report_counts.h"
#include "compare/engine/report_model.h"

namespace zorvane {
namespace {

// Puts lines behind what the editor holds, in one font.
class LineWriter {
  public:
    LineWriter(Editor& editor, const CharFormat& format) : editor_(editor), format_(format) {}

    void Text(const std::string& utf8) { Put(utf8, format_); }
    void Bold(const std::string& utf8, std::int32_t half_points) {
        CharFormat bold = format_;
        bold.bold = true;
        bold.half_points = half_points;
        Put(utf8, bold);
    }
    void Marked(const std::string& utf8, const MarkStyle& style) {
        const CharPos begin{editor_.Length()};
        Put(utf8, format_);
        ApplyMark(editor_, TextRange::Between(begin, CharPos{editor_.Length()}), style);
    }
    void EndLine() { Insert(RichText::Plain(kBreak, format_)); }
    void Line(const std::string& utf8) {
        Text(utf8);
        EndLine();
    }

  private:
    // A name or a note may hold anything; here it stands on one line.
    void Put(const std::string& utf8, const CharFormat& format) {
        std::u16string text = ToUtf16(utf8);
        std::replace_if(
            text.begin(), text.end(), [](char16_t unit) { return unit < 0x20; }, u' ');
        Insert(RichText::Plain(text, format));
    }
    void Insert(RichText text) {
        if (!text.Empty())
            text.paragraph_runs = {{text.Length(), ParagraphFormat{}}};
        editor_.Replace({CharPos{editor_.Length()}, 0}, text);
    }

    Editor& editor_;
    CharFormat format_;
};

std::string CountsText(const Comparison& comparison, RunWatcher* watcher) {
    const ReportCounts counts = CountForReaders(comparison, watcher);
    std::string text;
    const auto add = [&text](std::int64_t count, std::string_view noun, std::string_view what) {
        if (count == 0)
            return;
        text += (text.empty() ? "" : ", ") +
                CountText(count, noun, std::string(noun) + "s").append(" ").append(what);
    };
    add(counts.paragraphs_changed, "paragraph", "changed");
    add(counts.paragraphs_added, "paragraph", "added");
    add(counts.paragraphs_deleted, "paragraph", "deleted");
    add(counts.paragraphs_moved, "paragraph", "moved");
    add(counts.words_added, "word", "added");
    add(counts.words_deleted, "word", "deleted");
    return text.empty() ? text : text + ".";
}

void WriteLegend(const RichReportPieces& pieces, LineWriter& writer) {
    const RichReportHead& head = *pieces.head;
    writer.Text("Marks: ");
    writer.Marked("added", head.addition);
    writer.Text(", ");
    writer.Marked("deleted", head.deletion);
    writer.Text(", changed from ");
    writer.Marked("old words", head.change_original);
    writer.Text(" to ");
    writer.Marked("new words", head.change_modified);
    writer.Text(".");
    if (pieces.all_in_one != nullptr)
        writer.Text(" A number in brackets is that of the difference.");
    if (!pieces.comparison->moves.empty())
        writer.Text(" Moved paragraphs are marked at both places.");
    if (head.deletion.bStrikeout && head.change_original.bStrikeout)
        writer.Text(" A link is underlined, but not struck through.");
    writer.EndLine();
}

void WriteHead(const RichReportPieces& pieces, LineWriter& writer, RunWatcher* watcher) {
    constexpr std::int32_t kTitleSize = 36;
    const RichReportHead& head = *pieces.head;
    const Comparison& comparison = *pieces.comparison;
    if (!head.title.empty()) {
        writer.Bold(head.title, kTitleSize);
        writer.EndLine();
    }
    writer.Line("Original: " + head.names.original);
    writer.Line("Modified: " + head.names.modified);
    writer.Line(comparison.same_files ? VerdictText(comparison) : SummaryText(comparison));
    if (!comparison.Same()) {
        if (const std::string counts = CountsText(comparison, watcher); !counts.empty())
            writer.Line(counts);
        WriteLegend(pieces, writer);
    }
    writer.EndLine();
}

void WriteBeside(const Comparison& comparison, LineWriter& writer) {
    if (comparison.beside_sentence.empty())
        return;
    writer.EndLine();
    writer.Line(VerdictText(comparison));
    for (const BesideNote& note : comparison.beside)
        writer.Line("- " + DescribeBeside(note));
}

constexpr std::int32_t kUnitsAtOnce = 1 << 20;

// The merged text with its last break behind it, so that what follows begins on a line of its own.
// False after a stop.
bool AppendPieces(const RichReportPieces& pieces, Editor& scratch, RunWatcher* watcher) {
    for (const Editor* piece :
         {pieces.all_in_one, pieces.additions, pieces.deletions, pieces.changes}) {
        if (piece == nullptr)
            continue;
        const std::int32_t last_break = piece == pieces.all_in_one ? 2 : 0;
        const std::int32_t end = piece->Length() + last_break;
        // A range never begins or ends inside a break, so nothing is twice or missing.
        for (std::int32_t at = 0; at < end; at += kUnitsAtOnce) {
            scratch.Replace({CharPos{scratch.Length()}, 0},
                            piece->Rich({CharPos{at}, std::min(kUnitsAtOnce, end - at)}));
            if (!KeepGoing(watcher))
                return false;
        }
    }
    return true;
}

Status WriteParts(const RtfParts& rtf, const std::string& path, RunWatcher* watcher,
                  std::uint32_t mode) {
    Result<FileReplacement> file = FileReplacement::Begin(path, mode);
    if (!file.ok())
        return file.failure();
    // The first failure is that of all further calls.
    IgnoreFailure(file.value().Write(rtf.head, watcher), "the next call tells it");
    if (Status written = file.value().Write(rtf.body, watcher); !written.ok())
        return written;
    return file.value().Finish();
}

}  // namespace

Status SaveRichReport(const RichReportPieces& pieces, Editor& scratch, const std::string& file,
                      RunWatcher* watcher, std::uint32_t mode) {
    scratch.Clear();
    const bool any = pieces.all_in_one != nullptr || pieces.additions != nullptr ||
                     pieces.deletions != nullptr || pieces.changes != nullptr;
    const bool headed = pieces.head != nullptr && pieces.comparison != nullptr;
    CharFormat own = scratch.DefaultFormat();
    if (headed)
        own.font = FontName("Arial");
    LineWriter writer(scratch, own);
    if (any && headed)
        WriteHead(pieces, writer, watcher);
    if (!AppendPieces(pieces, scratch, watcher))
        return Failure{std::string(kReportStopped)};
    if (any && pieces.comparison != nullptr)
        WriteBeside(*pieces.comparison, writer);
    if (!KeepGoing(watcher))
        return Failure{std::string(kReportStopped)};
    RichText whole = scratch.TakeRich();
    if (!KeepGoing(watcher))
        return Failure{std::string(kReportStopped)};
    RtfParts rtf = WriteRtfPage(whole, headed ? TableForm::Cells : TableForm::Tabs, watcher);
    FreeAside(std::move(whole));
    if (!KeepGoing(watcher))
        return Failure{std::string(kReportStopped)};
    const Status written = WriteParts(rtf, file, watcher, mode);
    FreeAside(std::move(rtf));
    return written.ok() || KeepGoing(watcher) ? written
                                              : Status(Failure{std::string(kReportStopped)});
}

}  // namespace zorvane
