#include "load/text_preparation.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "common/process_state.h"
#include "compare/document/rtf_reader.h"
#include "options/compare_file_options.h"
#include "options/recent_items.h"
#include "tests/support/fakes.h"
#include "tests/support/rich_text_notation.h"

namespace zorvane {
namespace {

TEST(EmptyLines, GoWithTheirEndOfWhateverKind) {
    struct Row {
        const char16_t* text;
        const char16_t* expected;
    };
    constexpr Row kRows[] = {
        {u"", u""},
        {u"a", u"a"},
        {u"\n", u""},
        {u"a\n\nb\n", u"a\nb\n"},
        {u"a\r\n \t\r\nb", u"a\r\nb"},
        {u"\r\r\ra\r\rb", u"a\rb"},
        {u"a\n\r\n\rb", u"a\nb"},
        {u"  a\n   ", u"  a\n"},
    };
    for (const Row& row : kRows) {
        std::u16string text = row.text;
        DeleteEmptyLinesFromText(text);
        EXPECT_EQ(text, row.expected);
    }
}

TEST(EmptyParagraphs, AloneAreRemoved) {
    struct Row {
        const char* rtf;
        const char* left;
    };
    constexpr Row kRows[] = {
        {"{\\rtf1 a\\par\r\n\\par\r\n\\b b\\par \r\n}", "a|[b:b|]"},
        {"{\\rtf1\\par\r\n \\tab\\par\\~\\line\\par a}", "a"},
        {"{\\rtf1 a\\par\\par}", "a|"},
        {"{\\rtf1\\par\r\n\\par}", ""},
        {"{\\rtf1\\trowd\\cell\\cell\\row\\pard\\par b}", "!!|b"},
        {"{\\rtf1\\li100 a\\par\\par\\li200 b\\par}", "a|b|"},
    };
    for (const Row& row : kRows) {
        SCOPED_TRACE(row.rtf);
        RichText rich = ReadRtf(row.rtf);
        RemoveEmptyParagraphs(rich);
        EXPECT_EQ(Notation(rich), row.left);
        std::int32_t covered = 0;
        for (const ParagraphRun& run : rich.paragraph_runs)
            covered += run.length;
        EXPECT_EQ(covered, rich.Length());
    }
}

TEST(BraceRule, LooksAtTheFirstCharacterAlone) {
    for (const auto& [text, expected] : std::vector<std::pair<std::string, std::string>>{
             {"{a\n{b", " {a\n{b"}, {"", ""}, {" {", " {"}, {"\n{", "\n{"}}) {
        std::string bytes = text;
        const bool added = AddSpaceToTextFileIfNecessary(bytes);
        EXPECT_EQ(added, bytes.size() != text.size());
        EXPECT_EQ(bytes, expected);
    }
}

TEST(Replace, DoesNotLookAtWhatItPutIn) {
    std::string text = "aaa";
    ReplaceStringFromText(text, "a", "ba");
    EXPECT_EQ(text, "bababa");
    ReplaceStringFromText(text, "", "x");
    EXPECT_EQ(text, "bababa");
}

TEST(UserExtensions, AreCheckedAndStripped) {
    const auto profile = MakeMemoryIniProfile();
    clsMRU list;
    list.Setup(15, *profile, "x", "txt");
    struct Row {
        const char* text;
        bool valid;
        const char* left;
    };
    constexpr Row kRows[] = {
        {" my_ext-2 ", true, "myext2"}, {"c+", false, "c+"},     {"-_", false, ""}, {"", false, ""},
        {"TXT", false, "TXT"},          {"t_x-t", false, "txt"},
    };
    for (const Row& row : kRows) {
        SCOPED_TRACE(row.text);
        std::string text = row.text;
        EXPECT_EQ(bIsValidExtension(text, list), row.valid);
        EXPECT_EQ(text, row.left);
    }
}

class ListNumbers : public testing::Test {
  protected:
    ListNumbers() {
        process_.telling.manner.sLogFile = system_.folder.Path("log");
        EXPECT_TRUE(options_.LoadStateFromFile(*profile_).ok());  // the defaults
        extensions_.Setup(15, *profile_, "x", "txt");
    }
    void Remove(const std::string& temp_file, const std::string& file) {
        RemoveNumberedListAndEmptyLines({system_.clock()}, process_.telling, options_, extensions_,
                                        temp_file, file);
    }
    std::string Removed(const std::string& bytes, const std::string& file) {
        Remove(system_.folder.Write("temp", bytes), file);
        return system_.folder.Read("temp");
    }

    FakePlatform system_;
    ProcessState process_{system_.platform};
    clsCompareFileOptions options_;
    std::unique_ptr<IniProfile> profile_ = MakeMemoryIniProfile();
    clsMRU extensions_;
};

constexpr const char* kList = "{\\rtf1{\\pntext 1.}\\pnlvl a\\par\r\nb\\par \r\nc\\par\n}";

TEST_F(ListNumbers, AreSpoiltInRichTextAlone) {
    EXPECT_EQ(Removed(kList, "a.doc"),
              "{\\rtf1{\\pzntext 1.}\\pznlvl a\\par\r\nb\\par \r\nc\\par\n}");
    EXPECT_EQ(Removed("plain \\pn", "a.doc"), "plain \\pn");
    for (const char* text_file : {"a.c", "a.cpp", "a.TXT", "a.html", "a.js", "a.xlsx"})
        EXPECT_EQ(Removed(kList, text_file), kList) << text_file;
}

TEST_F(ListNumbers, WaitLongerEachTimeTheFileIsHeldUpToALimit) {
    const int sealed = memfd_create("held", MFD_ALLOW_SEALING);
    const std::string_view bytes = kList;
    ASSERT_EQ(write(sealed, bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
    if (fcntl(sealed, F_ADD_SEALS, F_SEAL_SHRINK | F_SEAL_GROW | F_SEAL_WRITE) != 0)
        GTEST_SKIP() << "no file seals here";
    const std::string held = "/proc/self/fd/" + std::to_string(sealed);
    for (int load = 0; load < 5; ++load)
        Remove(held, "a.doc");
    EXPECT_EQ(options_.lLoadDelay.Data(), 5);
    constexpr std::uint32_t kTwentyTriesMore = 20 * 100;
    EXPECT_EQ(system_.clock().ticks, 1000U * (0 + 1 + 2 + 3 + 4) + 5 * kTwentyTriesMore);
    for (int load = 0; load < 20; ++load)
        Remove(held, "a.doc");
    EXPECT_EQ(options_.lLoadDelay.Data(), 20);
    EXPECT_NE(system_.folder.Read("log").find("NumberedList 8 - "), std::string::npos);
    close(sealed);
}

}  // namespace
}  // namespace zorvane
