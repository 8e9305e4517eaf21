// Labels of lists: how numbers are written, and what the characters of picture fonts show.
#include <string>

#include <gtest/gtest.h>

#include "load/readers/sink/list_numbers.h"
#include "load/readers/sink/symbol_fonts.h"
#include "load/readers/word_readers.h"
#include "tests/support/shown_document.h"
#include "tests/support/word_file.h"

namespace zorvane::list_labels_test {
namespace {

// What a document shows whose list has these levels and whose paragraphs stand on these levels.
std::string Labels(const std::string& levels, std::string_view paragraphs) {
    WordFile file;
    file.numbering = "<w:abstractNum w:abstractNumId=\"0\">" + levels +
                     "</w:abstractNum><w:num w:numId=\"1\"><w:abstractNumId "
                     "w:val=\"0\"/></w:num>";
    for (const char level : paragraphs) {
        file.body += "<w:p><w:pPr><w:numPr><w:ilvl w:val=\"" + std::string(1, level) +
                     "\"/><w:numId w:val=\"1\"/></w:numPr></w:pPr></w:p>";
    }
    const std::string bytes = MakeWordFile(file);
    const auto package = Package::Open(bytes);
    return Shown([&](DocumentSink& sink, ReadMonitor& monitor) {
        return ReadWordPackage(*package, sink, monitor);
    });
}

std::string Level(int level, std::string_view form, std::string_view text, int start = 1,
                  std::string_view more = "") {
    return "<w:lvl w:ilvl=\"" + std::to_string(level) + "\"><w:start w:val=\"" +
           std::to_string(start) + "\"/><w:numFmt w:val=\"" + std::string(form) +
           "\"/><w:lvlText w:val=\"" + std::string(text) + "\"/>" + std::string(more) + "</w:lvl>";
}

struct FormRow {
    const char* form;
    int start;
    const char* label;
};
constexpr FormRow kForms[] = {
    {"decimal", 7, "7"},       {"decimalZero", 7, "07"},
    {"decimalZero", 12, "12"}, {"lowerRoman", 1994, "mcmxciv"},
    {"upperRoman", 4, "IV"},   {"lowerLetter", 26, "z"},
    {"lowerLetter", 28, "bb"}, {"upperLetter", 53, "AAA"},
    {"ordinal", 1, "1st"},     {"ordinal", 12, "12th"},
    {"ordinal", 22, "22nd"},   {"ordinal", 113, "113th"},
    {"chicago", 3, "3"},       {"lowerRoman", 0, "0"},
};

TEST(ListLabels, AreWrittenInTheFormOfTheirLevel) {
    for (const FormRow& row : kForms) {
        SCOPED_TRACE(std::string(row.form) + " " + std::to_string(row.start));
        EXPECT_EQ(Labels(Level(0, row.form, "(%1)", row.start), "0"),
                  "(" + std::string(row.label) + ")>|");
    }
    EXPECT_EQ(Labels(Level(0, "none", ""), "0"), "|");
}

TEST(ListLabels, FollowTheRulesOfLevels) {
    const std::string roman = Level(0, "upperRoman", "%1.");
    EXPECT_EQ(Labels(roman + Level(1, "decimal", "%1.%2", 1, "<w:isLgl/>"), "011"),
              "I.>|1.1>|1.2>|")
        << "a legal number shows every level in digits";
    EXPECT_EQ(Labels(roman + Level(1, "decimal", "%2", 1, "<w:lvlRestart w:val=\"0\"/>"), "01101"),
              "I.>|1>|2>|II.>|3>|")
        << "a level that goes on below the next upper one";
    EXPECT_EQ(Labels(Level(0, "decimal", "100% %1 %x"), "0"), "100% 1 %x>|");
}

struct LettersRow {
    std::int32_t number;
    const char* spread;
    const char* repeated;
};
constexpr LettersRow kLetters[] = {{1, "a", "a"},    {26, "z", "z"},   {27, "aa", "aa"},
                                   {28, "ab", "bb"}, {52, "az", "zz"}, {53, "ba", "aaa"},
                                   {0, "0", "0"},    {-3, "-3", "-3"}};

TEST(ListLabels, CountLettersInBothManners) {
    for (const LettersRow& row : kLetters) {
        SCOPED_TRACE(row.number);
        EXPECT_EQ(NumberText(row.number, NumberStyle::LowerLetter), row.spread);
        EXPECT_EQ(NumberText(row.number, NumberStyle::LowerLetter, true), row.repeated);
    }
    EXPECT_EQ(NumberText(4000, NumberStyle::UpperRoman), "4000");
}

struct SymbolRow {
    const char* name;
    const char* text;
    const char* font;
    const char* shown;
};
constexpr SymbolRow kSymbols[] = {
    {"Greek by its place in the private area", "\xEF\x81\xA1\xEF\x81\x97", "Symbol",
     "\xCE\xB1\xE2\x84\xA6"},
    {"Greek by its letter", "abG", "Symbol", "αβΓ"},
    {"signs", "\xC2\xA5\xC2\xB9", "Symbol", "∞≠"},
    {"beside the Greek, and beside the area", "@AZ[`az{\uEFFC\uF01F\uF100", "Symbol",
     "@ΑΖ[`αζ{\uEFFC\uF01F\uF100"},
    {"a bullet", "\xEF\x82\xB7", "Symbol", "•"},
    {"pictures", "\xEF\x83\xBC\xC2\xA7", "Wingdings", "✓▪"},
    {"an unknown one stays", "\xEF\x80\xA1", "Wingdings", "\xEF\x80\xA1"},
};

TEST(SymbolFonts, ShowWhatTheirLettersLookLike) {
    for (const SymbolRow& row : kSymbols) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(SymbolText(row.text, row.font), row.shown);
    }
    EXPECT_EQ(SymbolBullet("\xEF\x80\xA1", "Wingdings"), "•") << "an unknown bullet is the usual";
    EXPECT_EQ(SymbolBullet("\uE000-\uF8FF\uF900", "Arial"), "•-•\uF900");
}

}  // namespace
}  // namespace zorvane::list_labels_test
