#include "reports/rich_report.h"

#include <gtest/gtest.h>

#include "common/base/text_encoding.h"
#include "compare/document/memory_editor.h"
#include "compare/document/rtf_reader.h"
#include "tests/support/comparison_notation.h"
#include "tests/support/rich_text_notation.h"
#include "tests/support/temp_folder.h"

namespace zorvane {
namespace {

class RichReport : public testing::Test {
  protected:
    RichReport() {
        all_.SetText(u"one\ntwo");
        CharFormatChange red;
        red.fore_color = Color{255};
        all_.Format({CharPos{5}, 3}, red);
        additions_.SetText(u"+ none\n");
        deletions_.SetText(u"- none\n");
        changes_.SetText(u"^ none\n");
        scratch_.SetText(u"of the last report");
    }
    RichText Saved(const RichReportPieces& pieces) {
        EXPECT_TRUE(SaveRichReport(pieces, scratch_, folder_.Path("r.doc")).ok());
        return ReadRtf(folder_.Read("r.doc"));
    }

    TempFolder folder_;
    MemoryEditor all_, additions_, deletions_, changes_, scratch_;
};

TEST_F(RichReport, PutsItsPiecesInOrderOnLinesOfTheirOwn) {
    const RichText report = Saved({&all_, &additions_, &deletions_, &changes_});
    EXPECT_TRUE(ToUtf8(report.text).starts_with("one\r\ntwo\r\n+ none\r\n- none\r\n^ none"))
        << ToUtf8(report.text);
}

TEST_F(RichReport, KeepsTheMarks) {
    const RichText report = Saved({.all_in_one = &all_});
    std::int32_t at = 0;
    for (const CharRun& run : report.char_runs) {
        if (at <= 5 && 5 < at + run.length) {
            EXPECT_EQ(run.format.fore_color, Color{255});
        }
        at += run.length;
    }
    EXPECT_GE(at, 8);
}

TEST_F(RichReport, LeavesOutWhatIsOff) {
    EXPECT_TRUE(ToUtf8(Saved({.deletions = &deletions_}).text).starts_with("- none"));
    EXPECT_EQ(Saved({}).text, u"") << "all off: an empty document, none of the last report";
}

TEST_F(RichReport, EndsWithWhatLiesBesideTheWords) {
    Comparison comparison = Compared("one a / same", "one b / same");
    EXPECT_EQ(Readable(Saved({.all_in_one = &all_, .comparison = &comparison}).text), "one|two|")
        << "nothing beside: nothing more";
    comparison.beside = {
        {"links", "link target", "changed", {ParagraphNumber{2}, ParagraphNumber{2}}, "x\ny", "z"},
        {"pictures", "picture", "added", {{}, ParagraphNumber{3}}}};
    comparison.beside_sentence = "Beside the words: much.";
    const std::string end =
        "|1 difference: 1 change, 0 additions, 0 deletions. Beside the words: much.|"
        "- link target changed, paragraph 2: x y \u2192 z|- picture added, paragraph 3|";
    EXPECT_EQ(Readable(Saved({.all_in_one = &all_, .comparison = &comparison}).text),
              "one|two|" + end);
    EXPECT_EQ(Readable(Saved({.changes = &changes_, .comparison = &comparison}).text),
              "^ none|" + end);
    const RichReportHead head{"T", {"o", "m"}};
    EXPECT_EQ(Saved({.comparison = &comparison, .head = &head}).text, u"") << "all off";
    comparison.records.clear();
    EXPECT_NE(Readable(Saved({.all_in_one = &all_, .comparison = &comparison}).text)
                  .find("|No differences in the words. Beside the words: much.|"),
              std::string::npos);
}

TEST_F(RichReport, ItsHeadSaysWhatTheReaderSees) {
    RichReportHead head{"The\ttitle", {"old {1}.txt", "n\nw.txt"}};
    head.addition.bUnderline = true;
    head.deletion.bStrikeout = true;
    head.change_original = {255, 0xFFFFFF, true, false, true};
    head.change_modified = {255, 0xFFFFFF, true, true};
    const Comparison comparison =
        Compared("keep / one two / gone here / x", "keep / one 2 / x / y z");
    const RichText report = Saved({.all_in_one = &all_, .comparison = &comparison, .head = &head});
    EXPECT_EQ(Notation(report),
              "[b:The title]|Original: old {1}.txt|Modified: n w.txt|"
              "3 differences: 1 change, 1 addition, 1 deletion.|1 paragraph changed, "
              "1 paragraph added, 1 paragraph deleted, 3 words added, 3 words deleted.|"
              "Marks: [u3#0:added], [s#0:deleted], changed from [bs#255:old words] to "
              "[bu3#255:new words]. A number in brackets is that of the difference. A link is "
              "underlined, but not struck through.||one|[#255:two|]");
    const Comparison same = Compared("a", "a");
    head.title.clear();
    EXPECT_EQ(Readable(Saved({.changes = &changes_, .comparison = &same, .head = &head}).text),
              "Original: old {1}.txt|Modified: n w.txt|No differences.||^ none|");
}

// With a head, tables are tables; without, the fixed form.
TEST_F(RichReport, KeepsTablesForWhoReads) {
    all_.SetText(u"a\u0007b\u0007\nend");
    const Comparison comparison = Compared("a", "a");
    const RichReportHead head;
    const auto rows = [&](const RichReportHead* with) {
        const RichText report =
            Saved({.all_in_one = &all_, .comparison = &comparison, .head = with});
        EXPECT_NE(Readable(report.text).find("a!b!|end|"), std::string::npos);
        return folder_.Read("r.doc").find("\\trowd") != std::string::npos;
    };
    EXPECT_TRUE(rows(&head));
    EXPECT_FALSE(rows(nullptr));
}

TEST_F(RichReport, NamesAFileThatCannotBeWritten) {
    const Status saved = SaveRichReport({}, scratch_, "/dev/full");
    ASSERT_FALSE(saved.ok());
    EXPECT_EQ(saved.failure().reason, "/dev/full: No space left on device");
}

// A long text is copied in parts; none of its breaks is lost or doubled where a part ends.
TEST_F(RichReport, KeepsALongTextWhole) {
    for (const std::size_t shift : {0U, 1U, 2U}) {
        SCOPED_TRACE(shift);
        std::u16string text(shift, u'x');
        while (text.size() < (std::size_t{1} << 20) + 64)
            text += u"ab\r\n";
        all_.SetText(text);
        const RichText report = Saved({.all_in_one = &all_, .additions = &additions_});
        EXPECT_TRUE(report.text.starts_with(text + u"\r\n+ none")) << report.text.size();
    }
}

}  // namespace
}  // namespace zorvane
