#include "load/csv_operations.h"

#include <random>

#include <gtest/gtest.h>

namespace zorvane {
namespace {

using Records = std::vector<std::vector<std::string>>;

Records ReadAll(std::string_view text, CsvDialect dialect = {}) {
    Records records;
    CsvReader reader(text, {dialect});
    std::vector<std::string_view> fields;
    while (reader.Next(fields))
        records.emplace_back(fields.begin(), fields.end());
    return records;
}

TEST(CsvReader, ReadsQuotesBreaksAndBorders) {
    const struct {
        const char* name;
        std::string_view text;
        Records records;
    } kRows[] = {
        {"nothing", "", {}},
        {"one field without an end", "a", {{"a"}}},
        {"one end", "\n", {{""}}},
        {"ends of each kind", "a\r\nb\nc\rd", {{"a"}, {"b"}, {"c"}, {"d"}}},
        {"empty fields at the ends", ",a,\r\n", {{"", "a", ""}}},
        {"byte-order mark", "\xEF\xBB\xBF\"a\",b", {{"a", "b"}}},
        {"delimiter and break in quotes", "\"a,b\",\"c\r\nd\"\r\ne", {{"a,b", "c\r\nd"}, {"e"}}},
        {"two fields with doubled quotes", "\"a\"\"b\",\"\"\"\",\"c\"", {{"a\"b", "\"", "c"}}},
        {"empty quoted", "\"\",\"\"", {{"", ""}}},
        {"quote inside of a plain field", "5\" pipe,x", {{"5\" pipe", "x"}}},
        {"text behind the closing quote", "\"a\"b,c", {{"ab", "c"}}},
        {"quote that is never closed", "\"a,b\nc", {{"a,b\nc"}}},
        {"quote that ends the text", "a,\"", {{"a", ""}}},
    };
    for (const auto& row : kRows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(ReadAll(row.text), row.records);
    }
}

TEST(CsvWriter, QuotesOnlyWhereNeeded) {
    std::string out;
    CsvWriter writer(out);
    for (const std::string_view field : {"a", " b ", "c;d", "e,f", "g\"h", "i\nj", ""})
        writer.Field(field);
    writer.EndRecord();
    EXPECT_EQ(out, "a, b ,c;d,\"e,f\",\"g\"\"h\",\"i\nj\",\r\n");
}

TEST(CsvWriter, WritesWhatIsReadBackTheSame) {
    std::mt19937 random(3);
    constexpr std::string_view kLetters = "ab,\"\r\n; \t";
    for (int round = 0; round < 500; ++round) {
        Records records(1 + random() % 4);
        std::string text;
        CsvWriter writer(text);
        for (auto& record : records) {
            record.resize(1 + random() % 4);
            for (std::string& field : record) {
                for (std::size_t i = random() % 5; i > 0; --i)
                    field += kLetters[random() % kLetters.size()];
                writer.Field(field);
            }
            writer.EndRecord();
        }
        EXPECT_EQ(ReadAll(text), records) << text;
    }
}

TEST(DetectCsv, FindsTheDelimiter) {
    const struct {
        const char* name;
        std::string_view text;
        char delimiter;
    } kRows[] = {
        {"nothing", "", ','},
        {"one column", "a\nb\n", ','},
        {"comma", "a,b\n1,2\n", ','},
        {"semicolon with decimal commas", "1,5;2,5\n3,5;4,5\n", ';'},
        {"semicolon with names in front", "Preis;Menge\n1,5;2,5\n3,5;4,5\n", ';'},
        {"tab with commas in texts", "a, b\tc\nd, e\tf\n", '\t'},
        {"bar", "a|b|c\nd|e|f\n", '|'},
        {"semicolons in one quoted cell", "a,\"x;y\"\nb,\"x;y\"\n", ','},
        {"semicolons in a few cells", "a,x;y\nb,c\nd,e\nf,g\n", ','},
        {"numbers alone", "1,2,3\n4,5,6\n", ','},
        {"semicolons behind a doubled quote", "a,\"x\"\"; y\"\nb,\"x\"\"; y\"\n", ','},
        {"commas in front of numbers", "a;b,1\nc;d,2\ne;f,3\ng,4\n", ','},
        {"empty lines among records", "a;b\n\n\n \nc;d\n\n\n\n", ';'},
        {"an odd record among even ones", "a;b\nonly one\nc;d\ne;f\n", ';'},
    };
    for (const auto& row : kRows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(DetectCsv(row.text).delimiter, row.delimiter);
    }
}

TEST(CsvTrim, CutsBlanksEmptyFieldsAndEmptyEnds) {
    EXPECT_EQ(csvTrim(""), "");
    EXPECT_EQ(csvTrim(" a ,\tb\t, ,\n"), "a,b\r\n");
    EXPECT_EQ(csvTrim("a\n , \n\nb\n,,\n \n"), "a\r\n\r\n\r\nb\r\n");
    EXPECT_EQ(csvTrim(",,b,,\n"), ",,b\r\n");
    EXPECT_EQ(csvTrim("a;b, c;\n", {';'}), "a,\"b, c\"\r\n");
    EXPECT_EQ(csvTrim(",\n,\n"), "");
}

TEST(CsvPadWithSpaces, PartsCellsWithoutRegardToOtherRows) {
    EXPECT_EQ(csvPadWithSpaces("a,bbb\nccc,d\n"), "a ,bbb\r\nccc ,d\r\n");
    EXPECT_EQ(csvPadWithSpaces("a\nb,c\n"), "a\r\nb ,c\r\n");
    EXPECT_EQ(csvPadWithSpaces("\"b\r\nc\",\"x,y\"\n"), "\"b\r\nc \",\"x,y\"\r\n");
}

TEST(CsvPadForFixedLengthFields, PadsListedColumnsAndKeepsLongFields) {
    EXPECT_EQ(csvPadForFixedLengthFields("a,bbbb,c\n", 3, ' ', true, "*"), "a  ,bbbb,c  \r\n");
    EXPECT_EQ(csvPadForFixedLengthFields("a,b,c\n", 3, ' ', true, "1,3"), "a  ,b,c  \r\n");
    EXPECT_EQ(csvPadForFixedLengthFields("7\n", 3, '0', false, "*"), "007\r\n");
    EXPECT_EQ(csvPadForFixedLengthFields("\xE4\xBD\xA0,abc\n", 3, ' ', true, "*"),
              "\xE4\xBD\xA0  ,abc\r\n");
    EXPECT_EQ(csvPadForFixedLengthFields("a,\n", 2, ' ', true, "*"), "a ,  \r\n");
}

TEST(CsvRemoveControlCharacters, KeepsTabsAndRecords) {
    EXPECT_EQ(csvRemoveControlCharacters("a\x01\x1F"
                                         "b\tc,\x07\r\nd\n"),
              "ab\tc,\r\nd\r\n");
    EXPECT_EQ(csvRemoveControlCharacters("\"a\r\nb\",\"c\nd\",\"e\rf\"\n"), "a b,c d,e f\r\n");
    EXPECT_EQ(csvRemoveControlCharacters("\"\na\",\"\r\n\r\nb\"\n"), " a,  b\r\n");
    EXPECT_EQ(csvRemoveControlCharacters("\"a\n\nb\"\n"), "a  b\r\n");
}

TEST(CsvCrop, KeepsListedRowsAndColumns) {
    const std::string_view text = "1,a,x\n2,b,y\n3,c,z\n4,d,w\n";
    EXPECT_EQ(csvCropRows(text, "2,4"), "2,b,y\r\n4,d,w\r\n");
    EXPECT_EQ(csvCropRows(text, "4-3, 1"), "1,a,x\r\n3,c,z\r\n4,d,w\r\n");
    EXPECT_EQ(csvCropRows(text, "9"), "");
    EXPECT_EQ(csvCropRows("\"a\nb\"\nc\n", "2"), "c\r\n");
    EXPECT_EQ(csvCropCols(text, "3,1").substr(0, 10), "1,x\r\n2,y\r\n");
    EXPECT_EQ(csvCropCols("a,b,c\nd\n", "2-"), "b,c\r\n\r\n");
    EXPECT_EQ(csvCropCols("a,b\n", "rubbish"), "a,b\r\n");
}

TEST(CsvRemoveEmptyLines, DropsRecordsOfBlanks) {
    EXPECT_EQ(csvRemoveEmptyLines("\na\n , \n\"\n\"\nb\n\n"), "a\r\n\"\n\"\r\nb\r\n");
}

TEST(ParseNumberList, ReadsNumbersAndRanges) {
    constexpr std::int64_t kEnd = std::numeric_limits<std::int64_t>::max();
    const struct {
        std::string_view list;
        std::vector<NumberRange> ranges;
    } kRows[] = {
        {"", {}},
        {"1", {{1, 1}}},
        {"1, 12, 20,30-50", {{1, 1}, {12, 12}, {20, 20}, {30, 50}}},
        {"50 - 30", {{30, 50}}},
        {"5-", {{5, kEnd}}},
        {"-5", {{1, 5}}},
        {"*", {{1, kEnd}}},
        {"1-3,2-5,5", {{1, 5}}},
        {"x, 2, 3x, 4-y, -, , 1.5", {{2, 2}}},
        {"99999999999999999999, 7", {{7, 7}}},
    };
    for (const auto& row : kRows) {
        SCOPED_TRACE(row.list);
        EXPECT_EQ(ParseNumberList(row.list), row.ranges);
    }
}

TEST(SelectSheets, FindsNumbersAndNames) {
    const std::vector<std::string> names = {"Sales", "2", "Costs, net", "Costs", "\xC3\x84rger"};
    const struct {
        std::string_view list;
        std::vector<std::size_t> sheets;
    } kRows[] = {
        {"1", {0}},
        {"", {}},
        {"*", {0, 1, 2, 3, 4}},
        {"3-4, 1, *", {2, 3, 0, 1, 4}},
        {"4-3", {2, 3}},
        {"2", {1}},
        {"9", {}},
        {"Sales,Costs", {0, 3}},
        {"costs, net", {2}},
        {"Costs, net , Sales", {2, 0}},
        {"\xC3\xA4rger", {4}},
        {"Sale, 1", {0}},
        {"Sales2", {}},
    };
    for (const auto& row : kRows) {
        SCOPED_TRACE(row.list);
        EXPECT_EQ(SelectSheets(row.list, names), row.sheets);
    }
    // A sheet's name goes before a number.
    EXPECT_EQ(SelectSheets("2", {"a", "b", "2"}), (std::vector<std::size_t>{2}));
}

}  // namespace
}  // namespace zorvane
