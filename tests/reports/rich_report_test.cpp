#include "reports/rich_report.h"

#include <gtest/gtest.h>

#include "common/base/text_encoding.h"
#include "compare/document/memory_editor.h"
#include "compare/document/rtf_reader.h"
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

TEST_F(RichReport, NamesAFileThatCannotBeWritten) {
    const Status saved = SaveRichReport({}, scratch_, "/dev/full");
    ASSERT_FALSE(saved.ok());
    EXPECT_EQ(saved.failure().reason, "/dev/full: No space left on device");
}

}  // namespace
}  // namespace zorvane
