#include "compare/viewer_printing.h"

#include <gtest/gtest.h>

#include "common/platform/files.h"
#include "common/process_state.h"
#include "compare/document/memory_editor.h"
#include "tests/support/fakes.h"
#include "tests/support/file_answers.h"
#include "tests/support/page_notes.h"

namespace zorvane::viewer_printing_test {
namespace {

TEST(Margins, AreInchesOrHalfOne) {
    struct Row {
        const char* text;
        double twips;
        const char* shown;
    };
    for (const Row& row :
         {Row{"0.5", 720, "0.5"}, Row{" 1 ", 1440, " 1 "}, Row{"0,75", 1080, "0,75"},
          Row{"0", 0, "0"}, Row{"0.3333", 480, "0.3333"}, Row{"abc", 720, "0.5"},
          Row{"", 720, "0.5"}, Row{"-1", 720, "0.5"}, Row{"nan", 720, "0.5"},
          Row{"1 in", 720, "0.5"}}) {
        SCOPED_TRACE(row.text);
        std::string text = row.text;
        EXPECT_EQ(MarginOf(text), row.twips);
        EXPECT_EQ(text, row.shown);
    }
}

// What a printer was told outlives it, as paper does.
class Printer : public PageNotes {
  public:
    explicit Printer(std::vector<Page>& paper) : paper_(paper) {}
    Status Finish() override {
        paper_ = pages;
        return PageNotes::Finish();
    }

  private:
    std::vector<Page>& paper_;
};

class PrintingTest : public testing::Test {
  protected:
    PrintingTest() {
        telling.manner.sLogFile = fakes.folder.Path("log");
        editor.SetText(u"first second third");
    }
    PrintEnd Print() {
        return PrintEditor({process, telling, window, settings, nullptr}, editor, "the title");
    }
    Printer& Load() {
        auto printer = std::make_unique<Printer>(paper);
        Printer& loaded = *printer;
        window.printer = std::move(printer);
        return loaded;
    }
    /// The text of the first page, behind its head and foot.
    std::string Body() const { return paper.at(0).texts.at(3).text; }

    FakePlatform fakes;
    ProcessState process{fakes.platform};
    RunTelling telling{process.messages};
    FileAnswers window;
    CompareFilesSettings settings;
    MemoryEditor editor;
    std::vector<PageNotes::Page> paper;
};

TEST_F(PrintingTest, PrintsTheTextWithinTheMarginsAndPutsTheDefaultPrinterBack) {
    settings.txtLeftMargin = "1";
    settings.txtTopMargin = "abc";
    Load();
    EXPECT_EQ(Print(), PrintEnd::Printed);
    EXPECT_EQ(Body(), "first second third");
    EXPECT_EQ(paper[0].texts[3].x, 1440);
    EXPECT_EQ(settings.txtTopMargin, "0.5");
    EXPECT_EQ(window.margins, 2) << "in front of the dialog and behind it";
    EXPECT_EQ(window.default_printer, "home");
    EXPECT_EQ(paper[0].texts[0].text.size(), std::string("2023/11/14 22:13").size());
    EXPECT_EQ(paper[0].texts[1].text, "the title");
    EXPECT_EQ(paper[0].texts[2].text, "Page 1 of 1");
}

TEST_F(PrintingTest, TakesMarginsThatWereChangedWhereThePrinterIsChosen) {
    settings.txtLeftMargin = "0,75";
    settings.txtRightMargin = "1.00";
    window.left_margin = 1800;
    EXPECT_EQ(Print(), PrintEnd::Cancelled);
    EXPECT_EQ(settings.txtLeftMargin, "0,75") << "it was cancelled";
    Load();
    EXPECT_EQ(Print(), PrintEnd::Printed);
    EXPECT_EQ(window.offered.page.left, 1080);
    EXPECT_EQ(paper[0].texts[3].x, 1800);
    EXPECT_EQ(settings.txtLeftMargin, "1.25");
    EXPECT_EQ(settings.txtRightMargin, "1.00") << "as it was written";
}

TEST_F(PrintingTest, PrintsTheSelectionWhereThatIsLeftChosen) {
    Load();
    EXPECT_EQ(Print(), PrintEnd::Printed);
    EXPECT_FALSE(window.offered.has_selection);
    EXPECT_EQ(window.offered.range, PrintRange::Whole);
    editor.Select({CharPos{6}, 6});
    Load();
    EXPECT_EQ(Print(), PrintEnd::Printed);
    EXPECT_EQ(window.offered.range, PrintRange::Selection);
    EXPECT_EQ(Body(), "second");
    window.range = PrintRange::Whole;
    Load();
    EXPECT_EQ(Print(), PrintEnd::Printed);
    EXPECT_EQ(Body(), "first second third");
}

TEST_F(PrintingTest, TellsWhatWentWrongAndNothingOfACancel) {
    EXPECT_EQ(Print(), PrintEnd::Cancelled);
    EXPECT_EQ(window.default_printer, "home");
    EXPECT_EQ(fakes.folder.Read("log"), "");
    Load().fails_at_page = 1;
    EXPECT_EQ(Print(), PrintEnd::Failed);
    EXPECT_EQ(fakes.folder.Read("log"), "Unable to print: printer: out of paper\r\n");
    EXPECT_TRUE(paper.empty());
    Load().remark = "one letter is missing";
    EXPECT_EQ(Print(), PrintEnd::Printed);
    EXPECT_NE(fakes.folder.Read("log").find("one letter is missing"), std::string::npos);
}

}  // namespace
}  // namespace zorvane::viewer_printing_test
