#include "load/conversion_answer.h"

#include <sstream>

#include <gtest/gtest.h>

#include "load/redline_certificate.h"
#include "tests/support/fakes.h"
#include "tests/support/false_converter.h"

namespace zorvane {
namespace {

using namespace std::literals;

constexpr std::uint64_t kSize = 100;

struct AnswerRow {
    const char* name;
    AnswerShape shape;
    std::string answer;
    ReadError error;
};

/// Of "key value; key value".
ConversionMessage MessageOf(const std::string& notation) {
    ConversionMessage message;
    std::istringstream entries(notation);
    std::string key;
    for (std::string value; entries >> key && std::getline(entries, value, ';');)
        message[key] = value.empty() ? value : value.substr(1);
    return message;
}

TEST(CheckedAnswer, BelievesOnlyWhatAReaderCanSay) {
    const std::string most = std::to_string(kMostSheets + 1);
    using enum AnswerShape;
    const AnswerRow rows[] = {
        {"one part", OneDocument, "error 0; part1 0 100", ReadError::None},
        {"an empty part at the end", OneDocument, "error 0; part1 100 0", ReadError::None},
        {"what lies beside it", OneDocument, "error 0; part1 0 60; beside 60 40", ReadError::None},
        {"what lies beside it, inside of it", OneDocument, "error 0; part1 0 60; beside 59 1",
         ReadError::Crashed},
        {"what lies beside it, behind the end", OneDocument, "error 0; part1 0 60; beside 60 41",
         ReadError::Crashed},
        {"a list in place of its place", OneDocument, "error 0; part1 0 60; beside links 1 x",
         ReadError::Crashed},
        {"no part", OneDocument, "error 0", ReadError::Crashed},
        {"a part one byte too long", OneDocument, "error 0; part1 0 101", ReadError::Crashed},
        {"a part that ends behind the end", OneDocument, "error 0; part1 60 41",
         ReadError::Crashed},
        {"a part behind the end", OneDocument, "error 0; part1 101 0", ReadError::Crashed},
        {"a sum that wraps round", OneDocument, "error 0; part1 2 18446744073709551615",
         ReadError::Crashed},
        {"a negative part", OneDocument, "error 0; part1 -1 5", ReadError::Crashed},
        {"a file in place of a part", OneDocument, "error 0; part1 /etc/passwd",
         ReadError::Crashed},
        {"two sheets", Sheets, "error 0; sheets 2; sheet1 a; sheet2 b; part1 0 60; part2 60 40",
         ReadError::None},
        {"parts that overlap", Sheets,
         "error 0; sheets 2; sheet1 a; sheet2 b; part1 0 60; part2 59 1", ReadError::Crashed},
        {"a sheet without a name", Sheets, "error 0; sheets 1; part1 0 1", ReadError::Crashed},
        {"no sheets", Sheets, "error 0; sheets 0", ReadError::Crashed},
        {"no names", SheetNames, "error 0; sheets 0", ReadError::None},
        {"too many sheets", SheetNames, "error 0; sheets " + most, ReadError::Crashed},
        {"two thousand million sheets", SheetNames, "error 0; sheets 2000000000",
         ReadError::Crashed},
        {"pages", PageCount, "error 0; pages 7", ReadError::None},
        {"as many pages as there may be", PageCount, "error 0; pages 10000000", ReadError::None},
        {"more pages", PageCount, "error 0; pages 10000001", ReadError::Crashed},
        {"pages below nothing", PageCount, "error 0; pages -7", ReadError::Crashed},
        {"pages that are no number", PageCount, "error 0; pages 7x", ReadError::Crashed},
        {"pages beyond a number", PageCount, "error 0; pages 4294967303", ReadError::Crashed},
        {"an error of a reader", PageCount, "error 3", ReadError::Damaged},
        {"an unknown error", PageCount, "error 99", ReadError::Crashed},
        {"a negative error", PageCount, "error -1", ReadError::Crashed},
        {"no error", PageCount, "error ; pages 1", ReadError::Crashed},
        {"what only the waiting side tells", PageCount, "error 12", ReadError::Crashed},
        {"an office format", OneDocument, "error 6; office docx", ReadError::NeedsOffice},
        {"a format of its own", OneDocument, "error 6; office ../../x", ReadError::Crashed},
    };
    for (const AnswerRow& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(CheckedAnswer(MessageOf(row.answer), row.shape, kSize).error, row.error);
    }
}

TEST(CheckedAnswer, BoundsWhatIsReadIntoMemory) {
    for (const std::uint64_t more : {0U, 1U}) {
        const std::uint64_t length = kMostBesideBytes + more;
        const ConversionResult result = CheckedAnswer(
            {{"error", "0"}, {"part1", "0 1"}, {"beside", "1 " + std::to_string(length)}},
            AnswerShape::OneDocument, length + 1);
        EXPECT_EQ(result.ok(), more == 0);
        EXPECT_EQ(result.beside.length, more == 0 ? length : 0);
    }
}

TEST(CheckedAnswer, TellsWhatItFound) {
    const ConversionResult sheets = CheckedAnswer(
        MessageOf("error 0; sheets 2; sheet1 a\nb; sheet2 c; part1 0 60; part2 70 30"),
        AnswerShape::Sheets, kSize);
    EXPECT_EQ(sheets.sheets, (std::vector<std::string>{"a\u240Ab", "c"}));
    EXPECT_EQ(sheets.parts, (std::vector<AnswerPart>{{0, 60}, {70, 30}}));
    EXPECT_EQ(CheckedAnswer({{"error", "0"}, {"pages", "7"}}, AnswerShape::PageCount, 0).pages, 7);
    const ConversionResult office = CheckedAnswer(
        {{"error", "6"}, {"office", "pptx"}, {"detail", "\x1B[2J"}}, AnswerShape::OneDocument, 0);
    EXPECT_EQ(office.office, "pptx");
    EXPECT_EQ(office.detail, "\u241B[2J");
}

TEST(RedlineCertificate, TravelsWholeOrNotAtAll) {
    RedlineCertificate certificate;
    certificate.verified = certificate.laid_out = true;
    certificate.original_sha256 = std::string(64, 'a');
    certificate.modified_sha256 = std::string(64, 'b');
    certificate.redline_sha256 = std::string(64, '0');
    certificate.marks[MarkCount::PropertyChanges] = 7;
    certificate.rejected[ReadingCount::Cells] = 12;
    certificate.untracked[UntrackedCount::RowsTwice] = 1;
    const std::string bytes = EncodeCertificate(certificate);
    EXPECT_EQ(DecodeCertificate(bytes), certificate);
    EXPECT_NE(CertificateText(certificate).find("12 cells"), std::string::npos);
    EXPECT_NE(CertificateText(certificate).find("not tracked: 1 row written twice\n"),
              std::string::npos);
    for (const auto& [what, by] : {std::pair{"mark7=1:7", "mark7=2:-7"},
                                   {"mark7=1:7", "mark8=1:7"},
                                   {"aaaa", "<b/>"},
                                   {"redline=64:0", "redline=63:"}}) {
        SCOPED_TRACE(by);
        std::string broken = bytes;
        broken.replace(broken.find(what), std::string_view(what).size(), by);
        EXPECT_FALSE(DecodeCertificate(broken));
    }
    EXPECT_FALSE(DecodeCertificate(""));
}

TEST(VisibleText, IsShortAndShowsWhatHides) {
    struct Row {
        std::string text;
        std::string shown;
    };
    const std::string long_text(kMostTextBytes + 1, 'a');
    const std::string cut_letter = std::string(kMostTextBytes - 1, 'a') + "\xC3\xA9";
    const Row rows[] = {
        {"plain \xC3\xA9", "plain \xC3\xA9"},
        {"a\r\nb\tc\x7F"s, "a\u240D\u240Ab\u2409c\u2421"},
        {"\0x"s, "\u2400x"},
        {"turned \u202E\u2066\u200F\u061C", "turned \uFFFD\uFFFD\uFFFD\uFFFD"},
        {"\xFF half \xC3", "\uFFFD half \uFFFD"},
        {long_text.substr(1), long_text.substr(1)},
        {long_text, long_text.substr(1) + "..."},
        {cut_letter, cut_letter.substr(0, kMostTextBytes - 1) + "..."},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.shown);
        EXPECT_EQ(VisibleText(row.text), row.shown);
    }
}

// ---- the whole road, with a converter that lies ----

class FalseConverterTest : public testing::Test {
  protected:
    FalseConverterTest() {
        std::filesystem::create_directories(system_.folder.Path("program"));
        std::filesystem::create_directories(system_.folder.Path("work"));
    }
    // What comes of a request when the child says `first` and then, for ever, `again`.
    ConversionResult Run(std::string_view first, std::string_view again = "",
                         const char* kind = "word") {
        InstallFalseConverter(system_.folder.Path("program"), first, again);
        ConversionService service(system_.platform);
        return service.Run({{"kind", kind},
                            {"source", system_.folder.Write("work/a.html", "<p>x</p>")},
                            {"target", system_.folder.Path("work/target")}},
                           {});
    }
    bool TargetMade() const { return std::filesystem::exists(system_.folder.Path("work/target")); }

    FakePlatform system_;
};

TEST_F(FalseConverterTest, NamesNoFile) {
    const std::string witness = system_.folder.Write("witness", "stays");
    const std::string answer =
        EncodeMessage(MessageOf("error 0; files 1; sheets 1; sheet1 a; part1 0 5; file1 " +
                                witness + "; target " + witness));
    for (const char* kind : {"word", "sheets"}) {
        SCOPED_TRACE(kind);
        const ConversionResult result = Run(answer, "", kind);
        EXPECT_EQ(result.error, ReadError::Crashed);
        EXPECT_TRUE(result.files.empty());
        EXPECT_FALSE(TargetMade());
        EXPECT_EQ(system_.folder.Read("witness"), "stays");
    }
}

// An answer without an end takes little memory and no time.
TEST_F(FalseConverterTest, IsNotListenedToForEver) {
    struct Row {
        const char* name;
        std::string first;
        std::string again;
    };
    const std::string endless(4096, 'k');
    const Row rows[] = {
        {"an endless key", "", endless},
        {"an endless number", "a=", std::string(4096, '1')},
        {"an endless value", "a=131072:", endless},
        {"the same entry", "", "a=1:b\n"},
        {"empty messages", "", "\n"},
        {"a message that says nothing", "a=1:b\n\n", ""},
        {"progress beyond the whole", "progress=7:1000001\n\n", ""},
        {"progress below nothing", "progress=2:-1\n\n", ""},
        {"a count without end", EncodeMessage({{"error", "0"}, {"sheets", "2000000000"}}), ""},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const auto begin = std::chrono::steady_clock::now();
        EXPECT_EQ(Run(row.first, row.again, "sheets").error, ReadError::Crashed);
        EXPECT_LT(std::chrono::steady_clock::now() - begin, 5s);
        EXPECT_FALSE(TargetMade());
    }
}

TEST_F(FalseConverterTest, IsShownWithItsControlCharactersVisible) {
    const ConversionResult result =
        Run(EncodeMessage({{"error", "3"}, {"detail", "\x1B]0;title\x07\nzorvane: all is well"}}));
    EXPECT_EQ(Explain(result, "a.html"),
              "a.html: the document is damaged: \u241B]0;title\u2407\u240Azorvane: all is well");
}

}  // namespace
}  // namespace zorvane
