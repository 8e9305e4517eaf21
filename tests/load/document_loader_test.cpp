#include "load/document_loader.h"

#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

#include <gtest/gtest.h>

#include "common/base/text_encoding.h"
#include "tests/support/loader_fixture.h"
#include "tests/support/pdf_file.h"

namespace zorvane {
namespace {

using namespace std::literals;

class DocumentLoaderTest : public LoaderFixture {};

struct TextRow {
    const char* name;
    const char* file;
    std::string_view bytes;
    std::string_view text;
};
constexpr TextRow kTextRows[] = {
    {"empty", "a.txt", ""sv, ""},
    {"all line ends", "a.txt", "a\nb\rc\r\nd"sv, "a\r\nb\r\nc\r\nd"},
    {"UTF-8 mark", "a.txt", "\xEF\xBB\xBF\xC3\xA4"sv, "\xC3\xA4"},
    {"UTF-16 in a text file", "a.txt", "\xFF\xFE{\0\xE4\0"sv, "{\xC3\xA4"},
    {"UTF-16 without a mark, brace first", "a.txt", "{\0a\0b\0c\0"sv, "{abc"},
    {"UTF-16 in a file of no kind", "a.zzz", "\xFE\xFF\0a\0\n\0b"sv, "a\r\nb"},
    {"brace first", "a.txt", "{\n}"sv, "{\r\n}"},
    {"a text file that holds RTF is shown as it is", "a.txt", "{\\rtf1 x}"sv, "{\\rtf1 x}"},
    {"RTF under any other name is read", "a.zzz", "{\\rtf1 x}"sv, "x"},
    {"RTF under a document's name", "a.doc", "{\\rtf1 x}"sv, "x"},
    {"text under a document's name", "a.doc", "just text\n"sv, "just text\r\n"},
    {"text under an RTF name", "a.rtf", "just text"sv, "just text"},
    {"a file without an extension", "makefile", "all:\n"sv, "all:\r\n"},
    {"NUL bytes", "a.txt", "x\0y\n"sv, "x\0y\r\n"sv},
    {"HTML under a document's name", "a.doc", "<html><body>x<b>y</b></body></html>"sv, "xy\r\n"},
    {"a page", "a.html", "<p>x</p>"sv, "x\r\n"},
    {"soft hyphens", "a.txt",
     "a\xC2\xAD"
     "b"sv,
     "a-b"},
};

TEST_F(DocumentLoaderTest, TurnsFilesIntoText) {
    for (const TextRow& row : kTextRows) {
        SCOPED_TRACE(row.name);
        ASSERT_TRUE(Load(row.file, row.bytes));
        EXPECT_EQ(Text(), row.text);
        EXPECT_FALSE(loader_.bSpaceAddedToTextFile);
    }
    EXPECT_EQ(Log(), "");
    EXPECT_EQ(questions_.hourglasses, 0);
}

TEST_F(DocumentLoaderTest, KeepsFormattingUnlessItIsToGo) {
    ASSERT_TRUE(Load("a.rtf", "{\\rtf1 a{\\b b}}"));
    EXPECT_TRUE(DocumentOf(EditorTarget::Original)
                    .RichTB()
                    .Rich({CharPos{1}, 1})
                    .char_runs.at(0)
                    .format.bold);
    EXPECT_FALSE(loader_.bLoadedAsPlainText);
    options_.bRemoveFormatting.SetData(true);
    ASSERT_TRUE(Load("a.rtf", "{\\rtf1 x{\\b y}\\'ad}"));
    EXPECT_EQ(Text(), "xy\xC2\xAD") << "soft hyphens stay when only text is compared";
    EXPECT_TRUE(loader_.bLoadedAsPlainText);
}

TEST_F(DocumentLoaderTest, LeavesSoftHyphensInDoubleByteLocales) {
    process_.translator.gbDoubleByteLocale = true;
    ASSERT_TRUE(Load("a.txt", "a\xC2\xAD"));
    EXPECT_EQ(Text(), "a\xC2\xAD");
}

TEST_F(DocumentLoaderTest, TakesGeneratedListNumbersOutOnlyWhenAsked) {
    constexpr const char* kNumbered = "{\\rtf1{\\pntext 1.\\tab}one\\par{\\pntext 2.\\tab}two}";
    ASSERT_TRUE(Load("a.rtf", kNumbered));
    EXPECT_EQ(Text(), "one\r\ntwo");
    options_.bModifyOriginalDocuments.SetData(false);
    ASSERT_TRUE(Load("b.rtf", kNumbered));
    EXPECT_EQ(Text(), "1.\tone\r\n2.\ttwo");
    EXPECT_EQ(system_.folder.Read("b.rtf"), kNumbered) << "a user's file is never written";
}

TEST_F(DocumentLoaderTest, RemovesBlankLinesAndFormattingOfCommas) {
    options_.bRemoveBlankLines.SetData(true);
    ASSERT_TRUE(Load("a.zzz",
                     "\xFF\xFE"
                     "a\0\r\0 \0\r\0b\0"sv));
    EXPECT_EQ(Text(), "a\r\nb");
    EXPECT_FALSE(options_.bRemoveFormatting.Data());
    options_.lPadLength.SetData(0);
    ASSERT_TRUE(Load("a.csv", "a;1\n\n;\nb;2\n"));
    EXPECT_EQ(Text(), "a ,1\r\nb ,2\r\n");
    EXPECT_TRUE(options_.bRemoveFormatting.Data());
}

TEST_F(DocumentLoaderTest, RemovesEmptyParagraphsAloneWhereverBreaksStand) {
    options_.bRemoveBlankLines.SetData(true);
    constexpr const char* kBreaksAtLineEnds =
        "{\\rtf1 one\\par\r\n\\par\r\n{\\b two}\\par \r\n \\par three}";
    for (const bool rewrites : {true, false}) {
        options_.bModifyOriginalDocuments.SetData(rewrites);
        ASSERT_TRUE(Load("a.rtf", kBreaksAtLineEnds));
        EXPECT_EQ(Text(), "one\r\ntwo\r\nthree");
        ASSERT_TRUE(Load("a.doc", kBreaksAtLineEnds));
        EXPECT_EQ(Text(), "one\r\ntwo\r\nthree");
    }
}

TEST_F(DocumentLoaderTest, LoadsOtherTargetsAsTheyStand) {
    options_.bRemoveBlankLines.SetData(true);
    const std::string file = system_.folder.Write("a.txt", "{\\rtf1 \\b x\\par\\par y}");
    ASSERT_TRUE(loader_.LoadFileIntoEditor(file, EditorTarget::AllInOneDiff));
    EXPECT_EQ(Text(EditorTarget::AllInOneDiff), "x\r\n\r\ny");
    EXPECT_EQ(recent_.original.Count(), 0);
    extensions_.AddUniqueItemToCollection("kin");
    const std::string page = "<html><p>a</p></html>";
    for (const auto& [name, text] : {std::pair{"a.Kin", page.c_str()}, std::pair{"a.ink", "a"}}) {
        ASSERT_TRUE(loader_.LoadFileIntoEditor(system_.folder.Write(name, page),
                                               EditorTarget::AllInOneDiff));
        EXPECT_EQ(Trim(Text(EditorTarget::AllInOneDiff)), text) << name;
    }
}

struct FailureRow {
    const char* name;
    const char* file;
    std::string_view bytes;
    const char* words;
    const char* reason;
};
constexpr FailureRow kFailureRows[] = {
    {"a broken ZIP document", "a.docx", "PK\x03\x04zip"sv, "Unable to convert Word file.",
     "a.docx: the document is damaged"},
    {"what only an office suite reads", "a.doc", "\xD0\xCF\x11\xE0\0\0"sv,
     "Failed to Convert.  Check that MS Word is installed", "install LibreOffice"},
    {"broken XML", "a.xml", "<a><b></a>"sv, "Unable to convert Word file.", "damaged"},
    {"no workbook", "a.xlsx", "x"sv, "Unable to convert spreadsheet.", "a.xlsx: this is no"},
    {"a binary workbook", "a.xlsb", "x"sv, "Please install correct version of Excel.",
     "install LibreOffice"},
    {"no PDF", "a.pdf", "x"sv, "Original File Conversion Failed. TPORT: File is invalid", "TPORT"},
};

TEST_F(DocumentLoaderTest, TellsWhichFileCannotBeReadAndWhy) {
    setenv("ZORVANE_OFFICE", "none", 1);
    for (const FailureRow& row : kFailureRows) {
        SCOPED_TRACE(row.name);
        std::filesystem::remove(process_.telling.manner.sLogFile);
        loader_.Memory().bForceReload = {false, false};
        EXPECT_FALSE(Load(row.file, row.bytes));
        EXPECT_NE(Log().find(row.words), std::string::npos) << Log();
        EXPECT_NE(Log().find(row.reason), std::string::npos) << Log();
        EXPECT_TRUE(loader_.Memory().bForceReload.original &&
                    loader_.Memory().bForceReload.modified);
    }
    EXPECT_FALSE(settings_.bDoQuickTextExtraction) << "the other road is tried, not chosen";
    options_.bHTMLCompareSource.SetData(true);
    ASSERT_TRUE(Load("a.html", "<b>"));
    EXPECT_EQ(Text(), "<b>");
}

TEST_F(DocumentLoaderTest, TellsWhenTheConverterIsMissing) {
    std::filesystem::remove(system_.folder.Path("program/zorvane-convert"));
    EXPECT_FALSE(Load("a.html", "<b>x</b>"));
    EXPECT_NE(Log().find("zorvane-convert is missing"), std::string::npos) << Log();
}

TEST_F(DocumentLoaderTest, ASideThatIsExpectedIsConvertedBesideTheOther) {
    const std::string page = system_.folder.Write("a.html", "<p>page</p>");
    const std::string pdf =
        system_.folder.Write("a.pdf", test_pdf::MakePdf(test_pdf::Line(72, 700, "paper")));
    for (const auto& [file, text] : {std::pair(page, "page"), std::pair(pdf, "paper")}) {
        SCOPED_TRACE(file);
        loader_.Expect(Side::Original, file, Reload::WhenChanged);
        // A conversion that is under way needs no second start.
        std::filesystem::remove(system_.folder.Path("program/zorvane-convert"));
        EXPECT_TRUE(Load(file)) << Log();
        EXPECT_EQ(Trim(Text()), text);
        std::filesystem::create_symlink(ZORVANE_CONVERTER,
                                        system_.folder.Path("program/zorvane-convert"));
    }
    // Nothing is expected of what is not converted, is missing or is as it was loaded.
    for (const std::string& file :
         {pdf, system_.folder.Path("none.docx"), system_.folder.Write("a.txt", "text")})
        loader_.Expect(Side::Original, file, Reload::WhenChanged);
    EXPECT_EQ(Trim(Text()), "paper");
    EXPECT_EQ(Log(), "");
}

TEST_F(DocumentLoaderTest, ADeckThatCannotBeReadIsLoggedAndLeavesAnEmptyEditor) {
    EXPECT_TRUE(Load("a.pptx", "x"));
    EXPECT_EQ(Text(), "");
    EXPECT_TRUE(loader_.Memory().bSlidesFailed.original);
    EXPECT_TRUE(Log().starts_with("LoadFileIntoEditor(): Unable to convert PPT file.  \n\n"))
        << Log();
}

TEST_F(DocumentLoaderTest, TellsWhyAFileIsMissing) {
    const std::string missing = system_.folder.Path("none.txt");
    EXPECT_FALSE(Load(missing));
    EXPECT_EQ(Log(), "File does not exist:\r\n\r\n" + missing + "\r\n");
    std::filesystem::remove(process_.telling.manner.sLogFile);
    EXPECT_FALSE(Load(system_.folder.Path()));
    EXPECT_NE(Log().find(": Is a directory"), std::string::npos) << Log();
    std::filesystem::remove(process_.telling.manner.sLogFile);
    EXPECT_FALSE(Load(system_.folder.Write("file", "") + "/a.txt"));
    EXPECT_NE(Log().find(": Not a directory"), std::string::npos) << Log();
    EXPECT_FALSE(loader_.LoadFileIntoEditor("", EditorTarget::Original));
    EXPECT_NE(Log().find("Unable to load file. Filename empty"), std::string::npos);
    EXPECT_TRUE(questions_.shown.empty()) << "a command line is never asked nor shown anything";
}

TEST_F(DocumentLoaderTest, TellsWhyAFileThatOpensCannotBeRead) {
    const std::string unread = "/proc/self/mem";
    EXPECT_FALSE(Load(unread));
    EXPECT_NE(Log().find("Unable to copy file.\n\n" + unread + "\n" + unread + ": "),
              std::string::npos)
        << Log();
    std::filesystem::remove(process_.telling.manner.sLogFile);
    process_.telling.manner.bTellsPlainly = true;
    EXPECT_FALSE(Load(unread));
    EXPECT_EQ(Log(), unread + ": Input/output error\r\n");
}

TEST_F(DocumentLoaderTest, AsksForAFileWhenNoneIsSelected) {
    process_.telling.manner.bSilent = false;
    std::string file = " ";
    EXPECT_FALSE(loader_.LoadModifiedFile(file, Reload::WhenChanged));
    EXPECT_EQ(questions_.asked,
              std::vector{"Error|No modified file has been selected. Select now?"s});
    questions_.answer = true;
    EXPECT_FALSE(loader_.LoadOriginalFile(file, Reload::WhenChanged)) << "nothing was picked";
    questions_.picked = system_.folder.Write("picked.txt", "p");
    EXPECT_TRUE(loader_.LoadOriginalFile(file, Reload::WhenChanged));
    EXPECT_EQ(file, questions_.picked);
    EXPECT_EQ(options_.sFileOriginal.Data(), file);
    EXPECT_EQ(recent_.original.Items(), std::vector{file});
    file = "none.txt";
    EXPECT_FALSE(loader_.LoadOriginalFile(file, Reload::WhenChanged));
    EXPECT_EQ(questions_.shown, std::vector{"Error|File does not exist:\r\n\r\nnone.txt"s});
}

TEST_F(DocumentLoaderTest, RemembersWhatEachSideLoads) {
    const std::string original = system_.folder.Write("a.txt", "a");
    const std::string modified = system_.folder.Write("b.txt", "b");
    EXPECT_TRUE(Load(original));
    EXPECT_TRUE(Load(modified, Side::Modified));
    EXPECT_EQ(options_.sFileOriginal.Data(), original);
    EXPECT_EQ(options_.sFileModified.Data(), modified);
    EXPECT_EQ(recent_.original.Items(), std::vector{original});
    EXPECT_EQ(recent_.modified.Items(), std::vector{modified});
}

// An edit in the editor tells whether a load was skipped.
TEST_F(DocumentLoaderTest, SkipsAFileThatIsAsItWasLoaded) {
    const std::string file = system_.folder.Write("a.txt", "a");
    const auto loads_again = [&](Reload reload) {
        DocumentOf(EditorTarget::Original).RichTB().SetText(u"edited");
        EXPECT_TRUE(Load(file, Side::Original, reload));
        return Text() != "edited";
    };
    EXPECT_TRUE(Load(file));
    EXPECT_FALSE(loads_again(Reload::WhenChanged));
    EXPECT_TRUE(loads_again(Reload::Forced));
    EXPECT_FALSE(Load(system_.folder.Write("m.pdf", ""), Side::Modified));
    EXPECT_TRUE(loads_again(Reload::WhenChanged)) << "a failed load of one side forces both";
    EXPECT_FALSE(loads_again(Reload::WhenChanged));
    system_.folder.Write("a.txt", "changed");
    EXPECT_TRUE(loads_again(Reload::WhenChanged));
    options_.bOptimizeFileLoading.SetData(false);
    EXPECT_TRUE(loads_again(Reload::WhenChanged));
}

TEST_F(DocumentLoaderTest, ReadsAPipeOnce) {
    for (const char* name : {"pipe.txt", "pipe.doc", "pipe"}) {
        const std::string pipe = system_.folder.Path(name);
        ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
        std::thread writer([&] {
            const int end = open(pipe.c_str(), O_WRONLY);
            EXPECT_EQ(write(end, "from a pipe", 11), 11);
            close(end);
        });
        EXPECT_TRUE(Load(pipe));
        writer.join();
        EXPECT_EQ(Text(), "from a pipe");
    }
}

TEST_F(DocumentLoaderTest, AdvisesOnceWhateverTheAnswer) {
    const PerSide<std::string> slides{"a.txt", "b.PPTX"};
    loader_.WarnIfPPTAndRetainingFormatting(slides);
    loader_.WarnIfPPTAndRetainingFormatting(slides);
    ASSERT_EQ(questions_.asked.size(), 1U);
    EXPECT_EQ(questions_.asked[0],
              "Compare|When comparing PPT, it is best to remove formatting and do a textual "
              "compare.  Remove formatting?");
    EXPECT_TRUE(settings_.bWarnedAboutPPTAlready);
    EXPECT_FALSE(options_.bRemoveFormatting.Data());
    // ".XML" counts on the modified side alone.
    loader_.WarnIfHTMLAndRetainingFormatting({"a.xml", "b.txt"});
    EXPECT_EQ(questions_.asked.size(), 1U);
    questions_.answer = true;
    loader_.WarnIfHTMLAndRetainingFormatting({"a.txt", "b.xml"});
    EXPECT_EQ(questions_.asked.size(), 2U);
    EXPECT_TRUE(options_.bRemoveFormatting.Data());
    settings_.mnuWordWrap = true;
    loader_.WarnIfXLSAndWordWrapIsTrue({"a.xlsx", "b"});
    EXPECT_FALSE(settings_.mnuWordWrap);
    EXPECT_EQ(questions_.shown.size(), 3U);
    settings_.mnuWordWrap = true;
    loader_.WarnIfXLSAndWordWrapIsTrue({"a.xlsx", "b"});
    EXPECT_TRUE(settings_.mnuWordWrap) << "turned on again after the advice";
    EXPECT_EQ(questions_.shown.size(), 3U);
    int switched = 0;
    for (const bool all_in_one : {false, true, true})
        loader_.WarnIfDOCAndIsBigFile({"a.doc", "b"}, all_in_one, [&switched] { ++switched; });
    EXPECT_EQ(switched, 1);
}

// ---- documents from outside ----

std::string Corpus(const std::string& name) {
    return ZORVANE_CORPUS "/"s + name;
}

TEST_F(DocumentLoaderTest, ReadsOneTextInAllItsEncodings) {
    const std::vector<std::vector<std::string>> same_texts = {
        {"german-utf8", "german-utf8-bom", "german-utf16le-bom", "german-utf16be-bom",
         "german-cp1252", "german-lf-only"},
        {"russian-cp1251", "russian-koi8r"},
        {"japanese-eucjp", "japanese-shiftjis"}};
    if (!std::filesystem::exists(Corpus("text")))
        GTEST_SKIP() << "no documents";
    for (const std::vector<std::string>& names : same_texts) {
        std::string first;
        for (const std::string& name : names) {
            SCOPED_TRACE(name);
            ASSERT_TRUE(Load(Corpus("text/" + name + ".txt")));
            if (first.empty())
                first = Text();
            EXPECT_EQ(Text(), first);
            EXPECT_EQ(Text().find("\xEF\xBF\xBD"), std::string::npos);
        }
    }
}

TEST_F(DocumentLoaderTest, ReadsRichTextWithoutItsMarkup) {
    if (!std::filesystem::exists(Corpus("rtf")))
        GTEST_SKIP() << "no documents";
    for (const auto& entry : std::filesystem::directory_iterator(Corpus("rtf"))) {
        SCOPED_TRACE(entry.path().string());
        ASSERT_TRUE(Load(entry.path().string()));
        const std::string rich = Text();
        EXPECT_NE(rich, "");
        EXPECT_EQ(rich.find("\\par"), std::string::npos);
        EXPECT_EQ(rich.find("{\\"), std::string::npos);
    }
}

}  // namespace
}  // namespace zorvane
