#include "common/translator.h"

#include <algorithm>
#include <filesystem>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "common/choose_language.h"
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

TEST_F(TranslatorTest, WritesNothingThatWouldReadBackAsSomethingElse) {
    const std::string table = "\"File\",\"Datei\"\r\n";
    Start(table);
    for (const char* text : {"two\nlines", "two\r\nlines", "a\",\"b", "! loud", "****", "**** end"})
        EXPECT_EQ(process.Translate(text), text);
    EXPECT_EQ(fakes.folder.Read(File()), table);
    EXPECT_EQ(process.Translate("say \"yes\""), "say \"yes\"");
    EXPECT_EQ(fakes.folder.Read(File()), table + "\"say \"yes\"\"\r\n") << "quotes inside are fine";
}

TEST_F(TranslatorTest, TranslatesLineByLine) {
    Start("\"a\",\"A\"\r\n\" b\",\" B\"\r\n");
    const std::pair<const char*, const char*> rows[] = {
        {"", ""}, {"a", "A"}, {"a\n\n b", "A\n\n B"}, {"\r\na\r\n", "\r\nA\r\n"}, {"\n", "\n"}};
    for (const auto& [english, german] : rows)
        EXPECT_EQ(process.translator.TranslateLines(english), german);
}

TEST_F(TranslatorTest, AnswersSeveralThreads) {
    Start("\"File\",\"Datei\"\r\n");
    const auto ask = [this](int from) {
        for (int i = 0; i < 200; ++i) {
            EXPECT_EQ(process.Translate("File"), "Datei");
            process.Translate("text " + std::to_string((from + i) % 200));
        }
    };
    std::thread other(ask, 100);
    ask(0);
    other.join();
    process.translator.LoadLanguageTable();
    const std::string whole = fakes.folder.Read(File());
    EXPECT_EQ(std::count(whole.begin(), whole.end(), '\n'), 201) << "each text once";
}

TEST_F(TranslatorTest, TakesAnotherFileIfToldTo) {
    process.translator.sLanguageFileOverride =
        fakes.folder.Write("other.txt", "\"File\",\"Akte\"\r\n");
    Start("\"File\",\"Datei\"\r\n");
    EXPECT_EQ(process.Translate("File"), "Akte");
}

struct UnusableRow {
    const char* name;
    const char* bytes;  // null: no file
    const char* words;
};
TEST_F(TranslatorTest, TellsWhyALanguageCannotBeUsed) {
    const UnusableRow rows[] = {
        {"missing", nullptr, "Unable to locate Language file"},
        {"not quoted", "File,Datei\r\n", "Unable to read Language file"},
        {"empty", "", "Unable to read Language file"},
    };
    for (const UnusableRow& row : rows) {
        SCOPED_TRACE(row.name);
        testing::internal::CaptureStderr();
        if (row.bytes != nullptr)
            fakes.folder.Write(File(), row.bytes);
        else
            std::filesystem::remove(fakes.folder.Path(File()));
        process.settings->Write("Language", "Language_Code", "German");
        InitializeTranslator(process);
        EXPECT_EQ(testing::internal::GetCapturedStderr(),
                  std::string("zorvane: ") + row.words + ": \n  " +
                      GetLanguageFileName(process, "German") + "\n  Defaulting to English\n");
        EXPECT_EQ(process.translator.gsLanguage, "English");
        EXPECT_EQ(GetLanguageCode(process), "English") << "for good";
        EXPECT_EQ(process.Translate("x"), "x");
    }
}

class FakeQuestions : public LanguageQuestions {
  public:
    LanguageChoice AskLanguage(const LanguageList& offered, const std::string&) override {
        ++asked;
        last = offered;
        return answer;
    }
    void ShowInformation(const std::string& text, const std::string& caption) override {
        told.push_back(caption + ": " + text);
    }
    LanguageChoice answer;
    LanguageList last;
    int asked = 0;
    std::vector<std::string> told;
};

struct FirstStartRow {
    const char* name;
    std::int32_t locale;
    bool can_ask;
    const char* answer;
    int asked;
    const char* in_force;
    const char* stored;
};
TEST_F(TranslatorTest, AsksAtTheFirstStartOfAnotherLocale) {
    fakes.folder.Write(File(), "\"x\",\"y\"\r\n");
    const FirstStartRow rows[] = {
        {"United States", 1033, true, "German", 0, "English", "English"},
        {"United Kingdom", 2057, true, "German", 0, "English", "English"},
        {"Japan, cancelled", 1041, true, "", 1, "English", "English"},
        {"Germany", 1031, true, "German", 1, "German", "German"},
        {"Germany, nobody to ask", 1031, false, "German", 0, "English", ""},
    };
    for (const FirstStartRow& row : rows) {
        SCOPED_TRACE(row.name);
        process.settings = MakeMemoryIniProfile();
        fakes.locale().id = row.locale;
        FakeQuestions questions;
        questions.answer.language = row.answer;
        InitializeTranslator(process, row.can_ask ? &questions : nullptr);
        EXPECT_EQ(questions.asked, row.asked);
        EXPECT_EQ(questions.told, std::vector<std::string>());
        EXPECT_EQ(process.translator.gsLanguage, row.in_force);
        EXPECT_EQ(GetLanguageCode(process), row.stored);
        EXPECT_EQ(process.Translate("x"), std::string(row.in_force) == "German" ? "y" : "x");
        EXPECT_EQ(process.translator.gbDoubleByteLocale, row.locale == 1041);
    }
}

TEST_F(TranslatorTest, ListsTheLanguagesByTheirFiles) {
    for (const char* name : {"Polish-ZORVANE.TXT", "German-Zorvane.txt", "notes.txt",
                             "-Zorvane.txt", "Dutch-Zorvane.txt~"})
        fakes.folder.Write(std::string("26/Tarnwick, Inc/Zorvane/Languages/") + name, "");
    LanguageList list{{"English", "Dutch", "German", "Polish"}, 0};
    EXPECT_EQ(FillLanguageList(process), list);
    EXPECT_FALSE(list.OffersEdit());
    process.translator.gsLanguage = "German";
    list.selected = 2;
    EXPECT_EQ(FillLanguageList(process), list);
    EXPECT_TRUE(list.OffersEdit());
}

struct ChoiceRow {
    const char* name;
    LanguageChoice choice;
    bool notify;
    bool changed;
    bool notify_after;
    const char* told;
    const char* in_force;
    const char* stored;  // language, font
};
TEST_F(TranslatorTest, StoresTheChoiceOfALanguage) {
    constexpr const char* kTold =
        "Zorvane: Your changes will take effect next time you run Zorvane";
    const ChoiceRow rows[] = {
        {"cancelled", {"", "Serif"}, true, false, true, "", "English,Sans", "English,Sans"},
        {"the same", {"English", ""}, true, false, false, "", "English,Sans", "English,Sans"},
        {"another", {"German", ""}, true, true, true, kTold, "English,Sans", "German,Sans"},
        {"first start", {"German", ""}, false, true, false, "", "German,Sans", "German,Sans"},
        {"a font", {"English", "Serif"}, true, true, false, "", "English,Serif", "English,Serif"},
        {"both", {"German", "Serif"}, true, true, true, kTold, "English,Sans", "German,Serif"},
    };
    for (const ChoiceRow& row : rows) {
        SCOPED_TRACE(row.name);
        process.translator.gsLanguage = "English";
        process.translator.gsLanguageFont = "Sans";
        SetLanguageCode(process, "English");
        SetLanguageFont(process, "Sans");
        FakeQuestions questions;
        questions.answer = row.choice;
        bool notify = row.notify;
        EXPECT_EQ(ChooseLanguage(process, questions, notify), row.changed);
        EXPECT_EQ(notify, row.notify_after);
        EXPECT_EQ(questions.told.empty() ? "" : questions.told[0], row.told);
        EXPECT_EQ(process.translator.gsLanguage + "," + process.translator.gsLanguageFont,
                  row.in_force);
        EXPECT_EQ(GetLanguageCode(process) + "," + GetLanguageFont(process), row.stored);
    }
}

TEST_F(TranslatorTest, ACommandLineRunIsInEnglishAndAsksNobody) {
    process.gbCommandLineRunning = true;
    process.translator.gsLanguage = "German";
    FakeQuestions questions;
    questions.answer.language = "Japanese";
    bool notify = true;
    EXPECT_FALSE(ChooseLanguage(process, questions, notify));
    EXPECT_EQ(questions.asked, 0);
    EXPECT_EQ(process.translator.gsLanguage, "English");
}

TEST_F(TranslatorTest, OpensALanguageFileInAnEditor) {
    EditLanguageFile(process, "English");
    EditLanguageFile(process, "German");
    EXPECT_EQ(fakes.shell().calls,
              std::vector<std::string>{"edit " + GetLanguageFileName(process, "German")});
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
