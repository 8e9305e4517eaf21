#include "common/translator.h"

#include <filesystem>
#include <vector>

#include <gtest/gtest.h>

#include "common/log_message.h"
#include "common/process_state.h"
#include "tests/support/fakes.h"

namespace zorvane {
namespace {

struct LineRow {
    const char* line;
    bool entry;
    const char* english;
    const char* translation;
};
TEST(LanguageFile, ReadsItsLines) {
    const LineRow rows[] = {
        {"\"Compare\",\"Vergleichen\"", true, "Compare", "Vergleichen"},
        {"\"lone\"", true, "lone", "lone"},
        {"\"key\",\"a\",\"b\"", true, "key", "a"},
        {"\"key", true, "ke", "ke"},
        {"\"! comment\"", false, "", ""},
        {"   ", false, "", ""},
        {"\"\",\"x\"", true, "", "x"},
    };
    for (const LineRow& row : rows) {
        SCOPED_TRACE(row.line);
        const auto entry = ParseLanguageLine(row.line);
        ASSERT_EQ(entry.has_value(), row.entry);
        EXPECT_EQ(entry.value_or(LanguageEntry{}), (LanguageEntry{row.english, row.translation}));
    }
}

class TranslatorTest : public ::testing::Test {
  protected:
    TranslatorTest() : process(fakes.platform) {
        std::filesystem::create_directories(
            fakes.folder.Path("26/Tarnwick, Inc/Zorvane/Languages"));
    }
    std::string File() const { return "26/Tarnwick, Inc/Zorvane/Languages/German-Zorvane.txt"; }
    void Start(const std::string& bytes) {
        fakes.folder.Write(File(), bytes);
        process.settings->Write("Language", "Language_Code", "German");
        InitializeTranslator(process);
    }

    FakePlatform fakes;
    ProcessState process;
};

TEST_F(TranslatorTest, TranslatesAndGrows) {
    Start(
        "\"! "
        "words\"\r\n\"File\",\"Datei\"\r\n\"File\",\"zweite\"\r\n\"****\"\r\n\"Edit\",\"x\"\r\n");
    EXPECT_EQ(process.Translate("File"), "Datei") << "the first line wins";
    EXPECT_EQ(process.Translate("File "), "File ") << "blanks count";
    EXPECT_EQ(process.Translate("Edit"), "Edit") << "hidden behind the end of the table";
    EXPECT_EQ(process.Translate("Edit"), "Edit");
    EXPECT_EQ(process.Translate("  "), "  ");
    EXPECT_TRUE(fakes.folder.Read(File()).ends_with("\"File \"\r\n\"Edit\"\r\n"))
        << "each text once";
}

TEST_F(TranslatorTest, ReadsUnicodeFiles) {
    Start(std::string("\xFF\xFE\"\0a\0\"\0,\0\"\0\xE4\0\"\0\r\0\n\0", 20));
    EXPECT_EQ(process.translator.glLanguageFileFormat, LanguageFileFormat::Unicode);
    EXPECT_EQ(process.Translate("a"), "ä");
    process.Translate("b");
    EXPECT_EQ(fakes.folder.Read(File()).size(), 20U + 10U);
}

TEST_F(TranslatorTest, AddsLinesToAFileWithoutALastBreak) {
    Start("\"File\",\"Datei\"");
    process.Translate("Edit");
    EXPECT_EQ(fakes.folder.Read(File()), "\"File\",\"Datei\"\r\n\"Edit\"\r\n");
}

TEST_F(TranslatorTest, TellsWhenAFileCannotGrow) {
    std::vector<std::string> messages;
    process.translator.show_message = [&](const std::string& text) { messages.push_back(text); };
    Start("\"Unable to add to Language file\",\"Geht nicht\"\r\n");
    std::filesystem::remove(fakes.folder.Path(File()));
    EXPECT_EQ(process.Translate("x"), "x");
    EXPECT_EQ(process.Translate("x"), "x");
    EXPECT_EQ(messages, std::vector<std::string>{"Geht nicht"}) << "once for each new text";
}

TEST_F(TranslatorTest, AnUnusableFileMeansEnglishForGood) {
    testing::internal::CaptureStderr();
    Start("no quote\r\n");
    EXPECT_NE(testing::internal::GetCapturedStderr().find("Unable to read Language file"),
              std::string::npos);
    EXPECT_EQ(process.translator.gsLanguage, "English");
    EXPECT_EQ(GetLanguageCode(process), "English");
}

TEST_F(TranslatorTest, AsksAtTheFirstStartOfAnotherLocale) {
    int asked = 0;
    const auto choose = [&] {
        ++asked;
        return std::string();
    };
    InitializeTranslator(process, choose);
    EXPECT_EQ(asked, 0);
    process.settings = MakeMemoryIniProfile();
    fakes.locale().id = 1041;
    InitializeTranslator(process, choose);
    EXPECT_EQ(asked, 1);
    EXPECT_TRUE(process.translator.gbDoubleByteLocale);
    EXPECT_EQ(GetLanguageCode(process), "English");
    EXPECT_EQ(process.Translate("x"), "x");
}

TEST_F(TranslatorTest, EnglishWritesNothing) {
    InitializeTranslator(process);
    EXPECT_EQ(process.Translate("File"), "File");
    EXPECT_TRUE(std::filesystem::is_empty(fakes.folder.Path("26/Tarnwick, Inc/Zorvane/Languages")));
}

TEST_F(TranslatorTest, LogsALineAMessage) {
    process.telling.manner.sLogFile = fakes.folder.Path("log");
    LogMessage(process, "one");
    LogMessage(process, "two");
    EXPECT_EQ(fakes.folder.Read("log"), "one\r\ntwo\r\n");
    EXPECT_EQ(static_cast<FakeMutexes&>(*fakes.platform.mutexes).locked, 0);
    process.telling.manner.sLogFile = "/no/such/folder/log";
    LogMessage(process, "three");  // and no harm done
}

}  // namespace
}  // namespace zorvane
