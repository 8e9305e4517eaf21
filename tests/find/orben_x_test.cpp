#include "find/engine/orben_x.h"

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <map>
#include <mutex>
#include <random>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/temp_folder.h"

namespace zorvane {
namespace {

namespace fs = std::filesystem;

class NotedEvents : public OrbenXEvents {
  public:
    void OnSearchStarted() override { Note("started"); }
    void OnSearchCompleted() override { Note("completed"); }
    void OnSearchError(std::int32_t code, const std::string& message) override {
        Note(std::to_string(code) + " " + message);
    }
    std::vector<std::string> notes;

  private:
    void Note(std::string note) {
        const std::lock_guard lock(guard_);
        notes.push_back(std::move(note));
    }
    std::mutex guard_;
};

// A document's text is its bytes in capitals.
class CapitalDocuments : public DocumentTexts {
  public:
    bool IsDocument(std::string_view name) override { return name.ends_with(".doc"); }
    Text TextOf(const std::string& path, const std::function<bool()>&) override {
        if (path.ends_with("broken.doc"))
            return {nullptr, "cannot be read", {}};
        std::stringstream bytes;
        bytes << std::ifstream(path).rdbuf();
        std::string text = bytes.str();
        for (char& character : text)
            character = static_cast<char>(std::toupper(character));
        return {std::make_shared<std::string>(text), "",
                [](std::int64_t line, std::int32_t column) {
                    return "p" + std::to_string(line) + "." + std::to_string(column);
                }};
    }
};

class OrbenXTest : public testing::Test {
  protected:
    OrbenXTest() {
        engine_.putSearchFolder(folder_.Path());
        engine_.putFileTypes("*.*");
        engine_.SetEvents(&events_);
    }
    void Write(const std::string& name, std::string_view bytes) const {
        fs::create_directories(fs::path(folder_.Path(name)).parent_path());
        folder_.Write(name, bytes);
    }
    std::string Below(const std::string& path) const {
        return path.substr(folder_.Path().size() + 1);
    }
    // Hits as "file:line:column:item".
    std::vector<std::string> Find(const std::string& text) {
        engine_.putSearchString(text);
        engine_.StartSearch();
        engine_.Join();
        return Hits();
    }
    std::vector<std::string> Hits() const {
        std::vector<std::string> hits;
        std::string file;
        std::string item;
        std::int32_t line = 0;
        std::int32_t column = 0;
        for (std::int32_t index = 0; engine_.GetHit(index, file, line, column, item); ++index)
            hits.push_back(Below(file) + ":" + std::to_string(line) + ":" + std::to_string(column) +
                           ":" + item);
        return hits;
    }

    TempFolder folder_;
    NotedEvents events_;
    OrbenX engine_;
};

using Texts = std::vector<std::string>;

TEST_F(OrbenXTest, FindsInTheOrderOfTheTree) {
    Write("b.txt", "x\nyes yes\n");
    Write("a/z.txt", "\n\nyes");
    Write("a.txt", "Yes");
    Write("a/c/y.txt", "  yes");
    fs::create_symlink(folder_.Path("b.txt"), folder_.Path("link"));
    EXPECT_EQ(Find("yes"),
              (Texts{"a.txt:1:1:Yes", "b.txt:2:1:yes", "a/z.txt:3:1:yes", "a/c/y.txt:1:3:yes"}));
    EXPECT_EQ(events_.notes, (Texts{"started", "completed"}));
    std::string text;
    std::int32_t number = 0;
    EXPECT_FALSE(engine_.GetHit(4, text, number, number, text));
    EXPECT_FALSE(engine_.GetHit(-1, text, number, number, text));
}

TEST_F(OrbenXTest, TakesEachSwitch) {
    Write("a.txt", "T.P tip\n(tip)\n tip \n");
    Write("b.log", "tip");
    Write("sub/c.txt", "tip");
    struct SwitchRow {
        const char* name;
        void (*set)(OrbenX&);
        const char* text;
        Texts hits;
    };
    const SwitchRow rows[] = {
        {"case", [](OrbenX& engine) { engine.putCaseSensitive(true); }, "T.P", {"a.txt:1:1:T.P"}},
        {"types and no subfolders",
         [](OrbenX& engine) {
             engine.putLookInSubfolders(false);
             engine.putFileTypes("*.LOG *.x");
         },
         "tip",
         {"b.log:1:1:tip"}},
        {"no subfolders and between blanks",
         [](OrbenX& engine) {
             engine.putFileTypes("*.txt");
             engine.putWholeWordOnly(true);
         },
         "tip",
         {"a.txt:1:5:tip", "a.txt:3:2:tip"}},
        {"expression",
         [](OrbenX& engine) {
             engine.putWholeWordOnly(false);
             engine.putRegularExpression(true);
         },
         "^t?P",
         {}},
        {"without case",
         [](OrbenX& engine) { engine.putCaseSensitive(false); },
         "^\\(*p\\)$",
         {"a.txt:2:1:(tip)"}},
    };
    for (const SwitchRow& row : rows) {
        SCOPED_TRACE(row.name);
        row.set(engine_);
        EXPECT_EQ(Find(row.text), row.hits);
    }
}

TEST_F(OrbenXTest, TellsWhatCannotBeSearchedByItsCode) {
    Write("a.txt", "a");
    struct CodeRow {
        const char* folder;
        const char* types;
        const char* text;
        const char* code;
    };
    const std::string here = folder_.Path();
    const CodeRow rows[] = {
        {here.c_str(), "*.*", "", "507"}, {here.c_str(), "*.*", "(", "507"},
        {"", "*.*", "a", "508"},          {"/there is no such", "*.*", "a", "508"},
        {here.c_str(), " ", "a", "509"},
    };
    engine_.putRegularExpression(true);
    for (const CodeRow& row : rows) {
        SCOPED_TRACE(row.code);
        events_.notes.clear();
        engine_.putSearchFolder(row.folder);
        engine_.putFileTypes(row.types);
        EXPECT_EQ(Find(row.text), Texts{});
        ASSERT_EQ(events_.notes.size(), 3U);
        EXPECT_EQ(events_.notes[1].substr(0, 3), row.code);
        EXPECT_EQ(events_.notes[2], "completed");
    }
}

std::string Wide(std::string_view text, bool big) {
    std::string wide = big ? "\xFE\xFF" : "\xFF\xFE";
    for (const char16_t unit : ToUtf16(text)) {
        const char low = static_cast<char>(unit & 0xFFU);
        const char high = static_cast<char>(unit >> 8U);
        wide += big ? std::string{high, low} : std::string{low, high};
    }
    return wide;
}

TEST_F(OrbenXTest, ReadsEachEncoding) {
    const std::string line = "a caf\xC3\xA9 \xF0\x9F\x98\x80 open\n";
    Write("1-utf8", "\xEF\xBB\xBF" + line);
    Write("2-little", Wide(line, false));
    Write("3-big", Wide(line, true));
    Write("4-latin", "un caf\xE9 ouvert\nle d\xEEner est ferm\xE9 ici\n");
    // More than a window, so that surrogates lie on its edge.
    std::string long_text;
    for (int count = 0; count < 40000; ++count)
        long_text += "a\xF0\x9F\x98\x80\xF0\x9F\x98\x80\n";
    Write("5-long", Wide(long_text + line, false) + "x");
    std::string fours("\xFF\xFE\0\0", 4);
    for (const char32_t unit : std::u32string_view(U"caf\u00E9"))
        fours += std::string{static_cast<char>(unit), 0, 0, 0};
    Write("6-fours", fours);
    EXPECT_EQ(Find("caf\xC3\xA9"),
              (Texts{"1-utf8:1:3:caf\xC3\xA9", "2-little:1:3:caf\xC3\xA9", "3-big:1:3:caf\xC3\xA9",
                     "4-latin:1:4:caf\xC3\xA9", "5-long:40001:3:caf\xC3\xA9",
                     "6-fours:1:1:caf\xC3\xA9"}));
    EXPECT_EQ(Find("open"), (Texts{"1-utf8:1:10:open", "2-little:1:10:open", "3-big:1:10:open",
                                   "5-long:40001:10:open"}));
    EXPECT_EQ(Find("\xEF\xBF\xBD"), Texts{}) << "a pair of surrogates was parted";
    // Bytes are enough here, and the column counts characters.
    EXPECT_EQ(Find("ouvert"), (Texts{"4-latin:1:9:ouvert"}));
    engine_.putRegularExpression(true);
    EXPECT_EQ(Find("^.?.?.caf. o"), (Texts{"4-latin:1:1:un caf\xC3\xA9 o"}));
}

TEST_F(OrbenXTest, PassesOverBinaryFilesAndCountsThem) {
    Write("a", std::string("yes\0", 4));
    Write("b", "yes\n");
    Write("late", "yes\n" + std::string(300000, 'x') + "\n" + std::string("yes\0", 4));
    Write("late none", std::string(9000, 'x') + std::string("\0", 1));
    EXPECT_EQ(Find("yes"), (Texts{"b:1:1:yes"}));
    EXPECT_EQ(engine_.Counts().files, 4);
    EXPECT_EQ(engine_.Counts().binary, 2);
    EXPECT_EQ(engine_.Counts().failed, 0);
}

TEST_F(OrbenXTest, CountsLinesOverWindows) {
    std::string text;
    for (int line = 0; line < 200000; ++line)
        text += "line\n";
    text += std::string(600000, 'y') + "needle\r\nneedle";
    Write("a", text);
    EXPECT_EQ(Find("needle"), (Texts{"a:200001:600001:needle", "a:200002:1:needle"}));
}

TEST_F(OrbenXTest, ReadsDocumentsOnRequest) {
    Write("a.doc", "x\nyes");
    Write("broken.doc", "yes");
    CapitalDocuments documents;
    engine_.SetDocuments(&documents);
    engine_.putCaseSensitive(true);
    EXPECT_EQ(Find("yes").size(), 2U);
    EXPECT_TRUE(engine_.PlaceOf(0).empty());
    engine_.putSupportOfficeDocs(true);
    EXPECT_EQ(Find("YES"), (Texts{"a.doc:2:1:YES"}));
    EXPECT_EQ(engine_.PlaceOf(0), "p2.1");
    EXPECT_EQ(engine_.Counts().failed, 1);
    EXPECT_EQ(events_.notes.at(3), "-1 " + folder_.Path("broken.doc") + ": cannot be read");
    ASSERT_TRUE(engine_.ConvertOfficeDocToText(folder_.Path("a.doc"), folder_.Path("text")));
    EXPECT_EQ(folder_.Read("text"), "X\nYES");
    EXPECT_FALSE(engine_.ConvertOfficeDocToText(folder_.Path("text"), folder_.Path("other")));
    EXPECT_FALSE(engine_.ConvertOfficeDocToText(folder_.Path("broken.doc"), folder_.Path("o")));
}

TEST_F(OrbenXTest, TellsFoldersAndFilesThatCannotBeRead) {
    if (geteuid() == 0)
        GTEST_SKIP() << "root reads everything";
    Write("a", "yes");
    Write("shut/b", "yes");
    Write("z", "yes");
    fs::permissions(folder_.Path("a"), fs::perms::none);
    fs::permissions(folder_.Path("shut"), fs::perms::none);
    EXPECT_EQ(Find("yes"), (Texts{"z:1:1:yes"}));
    fs::permissions(folder_.Path("shut"), fs::perms::owner_all);
    EXPECT_EQ(events_.notes,
              (Texts{"started", "13 " + folder_.Path("a") + ": Permission denied",
                     "13 " + folder_.Path("shut/") + ": Permission denied", "completed"}));
    EXPECT_EQ(engine_.Counts().failed, 2);
}

TEST_F(OrbenXTest, ReportsATable) {
    Write("a.txt", "a\tb\n");
    Find("a\tb");
    ASSERT_TRUE(engine_.WriteReport(folder_.Path("report.csv")).ok());
    EXPECT_EQ(folder_.Read("report.csv"), "File\tLine\tCol\tItem Found\tPlace\r\n" +
                                              folder_.Path("a.txt") + "\t1\t1\ta b\t\r\n");
    EXPECT_FALSE(engine_.WriteReport(folder_.Path("none/report.csv")).ok());
    std::string lines;
    for (int line = 0; line < 4000; ++line)
        lines += "a\tb and more\n";
    Write("a.txt", lines);
    Find("a\tb");
    const std::string before = folder_.Read("report.csv");
    WritingWatch watch;
    watch.stop = [] { return true; };
    EXPECT_FALSE(engine_.WriteReport(folder_.Path("report.csv"), watch).ok());
    EXPECT_EQ(folder_.Read("report.csv"), before) << "a stopped report leaves the old one";
}

TEST_F(OrbenXTest, FindsTheSameWithAnyNumberOfThreads) {
    std::mt19937 random(5);
    for (int file = 0; file < 600; ++file) {
        std::string text;
        for (int line = 0; line < 20; ++line)
            text += random() % 3 == 0 ? "a needle here\n" : "nothing\n";
        Write("d" + std::to_string(random() % 12) + "/" + std::to_string(file), text);
    }
    engine_.SetThreads(1);
    const Texts alone = Find("needle");
    EXPECT_GT(alone.size(), 1000U);
    for (const int threads : {2, 8}) {
        engine_.SetThreads(threads);
        EXPECT_EQ(Find("needle"), alone);
    }
}

TEST_F(OrbenXTest, AbortsInTheMiddleOfAHardFile) {
    std::string text;
    for (int line = 0; line < 3000; ++line)
        text += std::string(5000, 'a') + "!\n";
    Write("a", text);
    engine_.putRegularExpression(true);
    engine_.putSearchString("(?=a)(a|aa)+\\1$");  // neither library likes it
    engine_.StartSearch();
    const auto before = std::chrono::steady_clock::now();
    engine_.AbortSearch();
    engine_.Join();
    EXPECT_LT(std::chrono::steady_clock::now() - before, std::chrono::seconds(2));
    EXPECT_FALSE(engine_.IsSearching());
    EXPECT_EQ(events_.notes.back(), "completed");
}

// Lines around hits, as "7-text" and "7:text".
std::string WithContext(std::string_view text, std::int32_t context) {
    class Noted : public FindReceiver {
      public:
        void Take(FoundFile&& file, std::string&&) override {
            for (const FoundLine& line : file.lines)
                note += std::to_string(line.line) + (line.column > 0 ? ":" : "-") +
                        std::string(file.Text(line)) + " ";
        }
        std::string note;
    };
    const TempFolder folder;
    folder.Write("a", text);
    const auto finder = LineFinder::Make({"x"});
    FindRunOptions options;
    options.folder = folder.Path("a");
    options.rules = {FindDetail::Lines, context, ""};
    Noted noted;
    FindRun run;
    EXPECT_FALSE(run.Start(*finder.value(), options, noted));
    run.Join();
    return noted.note;
}

TEST(FindRun, GivesLinesAroundHits) {
    EXPECT_EQ(WithContext("a\nb\nxc\r\nd\ne\nf\nx\ng", 0), "3:xc 7:x ");
    EXPECT_EQ(WithContext("a\nb\nxc\r\nd\ne\nf\nx\ng", 1), "2-b 3:xc 4-d 6-f 7:x 8-g ");
    EXPECT_EQ(WithContext("a\nb\nxc\nd\ne\nf\nx\ng", 2), "1-a 2-b 3:xc 4-d 5-e 6-f 7:x 8-g ");
    EXPECT_EQ(WithContext("x\nx\n\nx", 9), "1:x 2:x 3- 4:x ");
    EXPECT_EQ(WithContext(std::string(300000, 'y') + "\nz\nx\n", 1), "2-z 3:x ");
}

// Which lines a grep over the same tree names.
TEST_F(OrbenXTest, AgreesWithGrepOverATree) {
    std::mt19937 random(9);
    for (int file = 0; file < 80; ++file) {
        std::string text;
        for (int count = 0; count < 3000; ++count)
            text += "abcdefg \n"[random() % 9];
        Write("d" + std::to_string(file % 7) + "/" + std::to_string(file), text + "\n");
    }
    const std::string out = folder_.Path() + ".grep";
    const std::string command =
        "cd " + folder_.Path() + " && grep -rnE 'a[^b]+c|gg$' . | sort > " + out;
    const int status = std::system(command.c_str());
    std::map<std::string, int> theirs;
    std::ifstream lines(out);
    for (std::string line; std::getline(lines, line);)
        ++theirs[line.substr(2, line.find(':', line.find(':') + 1) - 2)];
    fs::remove(out);
    if (status != 0 || theirs.empty())
        GTEST_SKIP() << "there is no grep";
    engine_.putRegularExpression(true);
    engine_.putCaseSensitive(true);
    std::map<std::string, int> ours;
    for (const std::string& hit : Find("a[^b]+c|gg$"))
        ++ours[hit.substr(0, hit.find(':', hit.find(':') + 1))];
    EXPECT_EQ(ours, theirs);
}

}  // namespace
}  // namespace zorvane
