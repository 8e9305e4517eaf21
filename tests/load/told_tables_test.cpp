// What each operation makes of awkward tables and lists, where the lines of documents stand, and
// what a certificate says, against what was looked at: `tests/data/tables.told`.
#include <iterator>

#include "load/csv_operations.h"
#include "load/document_text.h"
#include "load/redline_certificate.h"
#include "load/text_preparation.h"
#include "tests/support/told_files.h"

namespace zorvane::told_tables_test {
namespace {

constexpr const char* kTables[] = {
    "a,b,c\r\n1,2,3\r\n",
    "\xEF\xBB\xBFname;sum\nAda;1,5\nBruno;2,25\n\nCarla;\"3,0\"",
    "x|y|z\r1|2|3\r\r4|5|6\r",
    "one\ttwo, three\n1\t2, 3\n",
    " a , \tb\t,,\r\n , ,\r\n\"q, r\",\"s\"\"t\",\"u\r\nv\",\r\n,,\r\n \t\r\n",
    "plain \"quote\" here,\"open\nto the end",
    "\"a\"b,\"c\"\"\"\"d\"e\"f,\"\"\n",
    "\"x;y\";2\n\"z\"\"w\";3\n",
    "a\x01"
    "b,\x0B"
    "c,d\te\n\"f\n\ng\"\r\nh\ri\n",
    "Z\xC3\xBCrich,\xE6\xB8\xAF,12\n1,5\n7,25\n,\n",
    "1,2;3,4\n5,6;7,8\n",
    "",
    "\n",
    "alone",
};

std::string Shown(std::string_view text) {
    std::string shown;
    for (const char character : text) {
        if (character == '\r')
            shown += "\\r";
        else if (character == '\n')
            shown += "\\n";
        else if (character == '\t')
            shown += "\\t";
        else if (static_cast<unsigned char>(character) < 0x20)
            shown += "\\" + std::to_string(static_cast<int>(character));
        else
            shown += character;
    }
    return shown + "\n";
}

std::string TablesTold() {
    std::string told;
    for (const std::string_view table : kTables) {
        const CsvInput input{DetectCsv(table)};
        told += "== " + Shown(table) + "cut at " + Shown({&input.dialect.delimiter, 1});
        CsvReader reader(table, input);
        for (std::vector<std::string_view> fields; reader.Next(fields);) {
            told += "  ";
            for (const std::string_view field : fields)
                told += "[" + std::string(field) + "]";
            told += "\n";
        }
        told += "trimmed " + Shown(csvTrim(table, input)) + "padded  " +
                Shown(csvPadWithSpaces(table, input)) + "fixed   " +
                Shown(csvPadForFixedLengthFields(table, 4, '.', true, "1,3-", input)) + "right   " +
                Shown(csvPadForFixedLengthFields(table, 3, '_', false, "2", input)) + "clean   " +
                Shown(csvRemoveControlCharacters(table, input)) + "as it is " +
                Shown(csvRemoveControlCharacters(table)) + "rows    " +
                Shown(csvCropRows(table, "2-3, 5-", input)) + "all     " +
                Shown(csvCropRows(table, "no", input)) + "columns " +
                Shown(csvCropCols(table, "2,-1", input)) + "filled  " +
                Shown(csvRemoveEmptyLines(table, input));
    }
    return told;
}

std::string ListsTold() {
    std::string told;
    for (const char* list : {"1, 12, 20,30-50", "5-", "-5", "50-30", "*", "3-4,4-6,8,7", "2,2,x,-",
                             "0-2", "1,,2", " 7 ", "1-2-3", "", "*,9", "3,Costs,1", "costs, 2024",
                             "2024", "Sales,Costs", "sales", "9,1"}) {
        told += std::string(list) + (IsNumberList(list) ? ": numbers" : ":");
        for (const NumberRange& range : ParseNumberList(list))
            told += " " + std::to_string(range.first) + "-" +
                    (range.last > 1000 ? "" : std::to_string(range.last));
        told += "; sheets";
        for (const std::size_t sheet :
             SelectSheets(list, {"Sales", "2024", "Sales,Costs", "Costs", ""}))
            told += " " + std::to_string(sheet);
        told += "\n";
    }
    return told;
}

std::string PlacesTold() {
    constexpr std::pair<PlaceMarks, const char*> kDocuments[] = {
        {PlaceMarks::None, "a\nb"},
        {PlaceMarks::FormFeeds, "one\n\ftwo\ntwo\n\f\fthree"},
        {PlaceMarks::SlideNumbers,
         "before\nSlide 1\nShape 1:\na\nShape 2:\nShape 4:\nb\nSlide 2\nSlide 3\n\nSlide 4\nno "
         "shape\nShape 1:\nc\nSlide 4\n"},
        {PlaceMarks::SheetNames,
         "============= First =============\na,b\n\"c,\nd\",e\"\"f,g\n=============  "
         "=============\nx,\xC3\xA4,z\n============= Two =============\n,\",\",y\n\"open\n"
         "============= Three =============\nlast,row"},
    };
    std::string told;
    for (const auto& [marks, text] : kDocuments) {
        const DocumentText document = WithPlaces(text, marks);
        told += "== " + Shown(document.text);
        for (const TextPlace& place : document.places)
            told += std::to_string(place.line) + " " + place.name + ", ";
        PlaceFinder finder(document);
        for (const std::int32_t column : {1, 3, 5}) {
            told += "\ncolumn " + std::to_string(column) + ":";
            for (std::int64_t line = 1; line <= 12; ++line)
                told += " " + finder.PlaceOf(line, column) + ";";
        }
        told += "\nbackwards:";
        for (const std::int64_t line : {11, 3, 2, 7})
            told += " " + finder.PlaceOf(line, 4) + ";";
        told += "\n";
    }
    return told + Shown(PlainLines(u"a\r\nb\vc\ad\a\r\n\r\n"));
}

std::string EmptyLinesTold() {
    std::string told;
    for (const std::u16string text :
         {u"", u"\n", u" a\r\n\r\n\t\v\u00A0\r\nb\n\n", u"\r\n\r\nx\ry\r\r", u"a\n \n\n b\n  "}) {
        std::vector<BesideItem> beside;
        for (std::int32_t number = 0; number <= 7; ++number)
            beside.push_back({BesideKind::Link, number, "", ""});
        NumberWithoutEmptyLines(text, beside);
        for (const BesideItem& item : beside)
            told += std::to_string(item.paragraph) + " ";
        std::u16string left = text;
        DeleteEmptyLinesFromText(left);
        told += Shown(PlainLines(left));
    }
    return told;
}

template <class Kind, class Next>
void Fill(CountsOf<Kind>& counts, const Next& next) {
    for (std::size_t i = 0; i < CountsOf<Kind>::kKinds; ++i)
        counts[static_cast<Kind>(i)] = next();
}

std::string CertificatesTold() {
    std::string told;
    for (const bool verified : {true, false}) {
        RedlineCertificate certificate;
        certificate.verified = certificate.laid_out = verified;
        certificate.formatting = !verified;
        certificate.original_sha256 = "a";
        certificate.modified_sha256 = "b";
        certificate.redline_sha256 = "c";
        certificate.resolved_before = verified ? 3 : 0;
        std::int64_t count = 0;
        const auto next = [&count] { return ++count; };
        Fill(certificate.accepted, next);
        Fill(certificate.rejected, next);
        Fill(certificate.marks, next);
        Fill(certificate.untracked, [&] { return verified ? ++count % 3 : 0; });
        told += CertificateText(certificate) + CertificateJson(certificate) + "\n";
    }
    return told;
}

TEST(ToldTables, AreAsTheyWereLookedAt) {
    ExpectTold(ZORVANE_TEST_DATA "/tables.told",
               TablesTold() + ListsTold() + PlacesTold() + EmptyLinesTold() + CertificatesTold());
}

}  // namespace
}  // namespace zorvane::told_tables_test
