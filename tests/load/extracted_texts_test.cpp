#include "load/extracted_texts.h"

#include <thread>

#include "load/password_wanted.h"
#include "tests/support/deck_file.h"
#include "tests/support/encrypted_package.h"
#include "tests/support/fake_suites.h"
#include "tests/support/loader_fixture.h"
#include "tests/support/word_file.h"
#include "tests/support/xlsx_file.h"

namespace zorvane {
namespace {

std::string WordBytes(std::string_view text) {
    WordFile file;
    file.body = "<w:p><w:r><w:t>" + std::string(text) + "</w:t></w:r></w:p><w:p/>" +
                "<w:p><w:r><w:t>end</w:t></w:r></w:p>";
    return MakeWordFile(file);
}

class ExtractedTextsTest : public LoaderFixture {
  protected:
    ExtractedTextsTest() : texts_(process_, TextCache(system_.folder.Path("cache"))) {}
    std::string TextOf(const std::string& path) {
        const ExtractedText text = texts_.TextOf(path, [] { return false; });
        EXPECT_TRUE(text.document) << text.reason;
        return text.document ? text.document->text : "";
    }
    ExtractedTexts texts_;
};

TEST_F(ExtractedTextsTest, ReadsADocumentOnceWhateverItsName) {
    const std::string bytes = WordBytes("needle");
    const std::string first = system_.folder.Write("a.docx", bytes);
    const std::string text = TextOf(first);
    EXPECT_EQ(text.substr(0, 11), "needle\n\nend");
    EXPECT_EQ(texts_.Hits(), 0);
    EXPECT_EQ(TextOf(system_.folder.Write("b.docx", bytes)), text);
    EXPECT_EQ(texts_.Hits(), 1);
    EXPECT_NE(TextOf(system_.folder.Write("a.docx", WordBytes("other"))), text);
    EXPECT_EQ(texts_.Hits(), 1);
    EXPECT_EQ(texts_.Cache().Size().entries, 2);
}

TEST_F(ExtractedTextsTest, KnowsTheCellsOfASheet) {
    XlsxParts parts;
    parts.rows =
        "<row r=\"1\"><c r=\"A1\"><v>17</v></c></row>"
        "<row r=\"3\"><c r=\"A3\"><v>1</v></c><c r=\"B3\"><v>42</v></c></row>";
    const std::string path = system_.folder.Write("a.xlsx", MakeXlsx(parts));
    const ExtractedText text = texts_.TextOf(path, [] { return false; });
    ASSERT_TRUE(text.document) << text.reason;
    const std::size_t at = text.document->text.find("42");
    ASSERT_NE(at, std::string::npos);
    const std::size_t line_begin = text.document->text.rfind('\n', at) + 1;
    const auto begin = text.document->text.begin();
    const auto line = 1 + std::count(begin, begin + static_cast<std::ptrdiff_t>(at), '\n');
    PlaceFinder finder(*text.document);
    EXPECT_EQ(finder.PlaceOf(line, static_cast<std::int32_t>(at - line_begin) + 1),
              "One & only!B3");
}

TEST_F(ExtractedTextsTest, KnowsTheNotesOfASlide) {
    Deck deck;
    deck.AddSlide(Deck::Text("shown"), Deck::Relation("rN", "notesSlide", "../notes.xml"));
    deck.Add("ppt/notes.xml",
             Deck::Page("p:notes", Deck::Shape("type=\"body\"", Deck::Paragraph("spoken")), ""));
    const std::string text = TextOf(system_.folder.Write("a.pptx", deck.Finish()));
    EXPECT_NE(text.find("shown"), std::string::npos) << text;
    EXPECT_NE(text.find("spoken"), std::string::npos) << text;
}

TEST_F(ExtractedTextsTest, TellsWhyThereIsNoText) {
    const std::string path = system_.folder.Write("a.docx", "PK\3\4 and no more");
    for (int round = 0; round < 2; ++round) {
        const ExtractedText text = texts_.TextOf(path, [] { return false; });
        EXPECT_FALSE(text.document);
        EXPECT_NE(text.reason, "");
    }
    EXPECT_FALSE(texts_.TextOf(system_.folder.Path("none.docx"), [] { return false; }).document);
    EXPECT_EQ(texts_.Cache().Size().entries, 0);
}

TEST_F(ExtractedTextsTest, TriesEachPasswordAndKeepsNothingOfWhatTheyOpen) {
    const std::string path =
        system_.folder.Write("p.docx", StandardEncrypted(WordBytes("needle"), "second", 128));
    for (const char* first : {"", "first"}) {
        if (*first != '\0')
            texts_.UsePasswords({first});
        const ExtractedText closed = texts_.TextOf(path, [] { return false; });
        EXPECT_TRUE(closed.wants_password);
        EXPECT_EQ(closed.reason, path + ": " + std::string(kPasswordWanted)) << "no advice";
    }
    texts_.UsePasswords({"first", "second"});
    EXPECT_EQ(TextOf(path).substr(0, 6), "needle");
    XlsxParts parts;
    parts.rows = "<row r=\"1\"><c r=\"A1\"><v>17</v></c></row>";
    EXPECT_NE(
        TextOf(system_.folder.Write("p.xlsx", StandardEncrypted(MakeXlsx(parts), "second", 128)))
            .find("17"),
        std::string::npos);
    EXPECT_EQ(texts_.Cache().Size().entries, 0);
}

TEST_F(ExtractedTextsTest, StopsAndKeepsNothing) {
    const std::string path = system_.folder.Write("a.docx", WordBytes("x"));
    EXPECT_FALSE(texts_.TextOf(path, [] { return true; }).document);
    EXPECT_EQ(texts_.Cache().Size().entries, 0);
}

TEST_F(ExtractedTextsTest, ReadsOneContentOnceForThreadsThatWantItAtOnce) {
    const std::string path = system_.folder.Write("a.docx", WordBytes("shared"));
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 5; ++thread)
        threads.emplace_back([&] { EXPECT_EQ(TextOf(path).substr(0, 6), "shared"); });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(texts_.Hits(), 4);
}

TEST_F(ExtractedTextsTest, TheUsersCacheLiesWhereTheDesktopKeepsThem) {
    const Environment nowhere("XDG_CACHE_HOME", "relative");
    constexpr std::string_view kBelowHome = "/40/.cache/zorvane/texts";
    EXPECT_EQ(UserTextCache(process_).Folder(), system_.folder.Path() + std::string(kBelowHome));
    const Environment given("XDG_CACHE_HOME", "/caches");
    EXPECT_EQ(UserTextCache(process_).Folder(), "/caches/zorvane/texts");
}

TEST(ReadAsDocument, IsToldByTheName) {
    for (const char* name : {"a.docx", "A.PDF", "a.xlsx", "a.ods", "a.pptx", "a.html", "a.rtf",
                             "a.doc", "a.eml", "a.epub"})
        EXPECT_TRUE(IsReadAsDocument(name)) << name;
    for (const char* name : {"a.txt", "a.csv", "a.cpp", "a.md", "a.xml", "a", "a.php", "a.tmp",
                             "messages.pot", "a.png"})
        EXPECT_FALSE(IsReadAsDocument(name)) << name;
}

}  // namespace
}  // namespace zorvane
