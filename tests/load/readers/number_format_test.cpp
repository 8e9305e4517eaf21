#include "load/readers/sheets/number_format.h"

#include <gtest/gtest.h>

namespace zorvane::number_format_test {
namespace {

struct NumberRow {
    double value;
    std::string_view code;
    std::string_view shown;
};

std::string Shown(double value, std::string_view code, bool date_1904 = false) {
    std::string out;
    NumberFormat(code).Apply(value, date_1904, out);
    return out;
}

std::string ShownText(std::string_view text, std::string_view code) {
    std::string out;
    NumberFormat(code).ApplyText(text, out);
    return out;
}

// Checked against an office suite's export of the same values.
constexpr NumberRow kNumbers[] = {
    {12345678901, "General", "12345678901"},
    {0.00001234, "General", "0.00001234"},
    {-0.4, "0", "0"},
    {-0.001, "0.00", "0.00"},
    {1.005, "0.00", "1.01"},
    {2.675, "0.00", "2.68"},
    {5, "000", "005"},
    {12345, "000-00-0000", "000-01-2345"},
    {5551234567, "(###) ###-####", "(555) 123-4567"},
    {123456789, "000-00-0000", "123-45-6789"},
    {-0.5, "0%", "-50%"},
    {1234567890, "#,##0.00,,", "1,234.57"},
    {999.96, "##0.0E+0", "1.0E+3"},
    {12345.678, "0.0E-0", "1.2E4"},
    {0.00012345, "0.0E-00", "1.2E-04"},
    {-20000, "0.#E+00", "-2.E+04"},
    {-0.004, "# ?/8", "0    "},
    {-0.5, "# ?/?", "- 1/2"},
    {3.14159, "# \?\?/\?\?", "3 14/99"},
    {0.3333, "# \?\?/\?\?", "  1/3 "},
    {1.3, "# \?\?/16", "1  5/16"},
    {2.5, "?/?", "5/2"},
    {0.99, "# ?/?", "1    "},
    {3.14159, "# \?\?\?/\?\?\?", "3  16/113"},
    {0.5, "# ?/2", " 1/2"},
    {1.25, "# ?/4", "1 1/4"},
    {1.35, "# \?\?/100", "1 35/100"},
    {5, "0.00_);(0.00)", "5.00 "},
    {-5, "0.00_);(0.00)", "(5.00)"},
    {-5, "0;-0;\"zero\"", "-5"},
    {0, "0;-0;\"zero\"", "zero"},
    {150, "[>=100]\"big \"0;[<0]\"neg \"0;\"small \"0", "big 150"},
    {50, "[>=100]\"big \"0;[<0]\"neg \"0;\"small \"0", "small 50"},
    {-50, "[>=100]\"big \"0;[<0]\"neg \"0;\"small \"0", "neg 50"},
    {5, "[<10]\"low \"0;\"high \"0", "low 5"},
    {50, "[<10]\"low \"0;\"high \"0", "high 50"},
    {-50, "[<10]\"low \"0;\"high \"0", "-low 50"},
    {1, "[=1]\"one\";0\" all\"", "one"},
    {2, "[=1]\"one\";0\" all\"", "2 all"},
    {5, "[<>5]0;\"five\"", "five"},
    {5, "[Red]0.0;[Blue]-0.0", "5.0"},
    {-5, "[Red]0.0;[Blue]-0.0", "-5.0"},
    {12.5, "#,##0.00 [$€-407]", "12.50 €"},
    {12.5, "[$USD] 0.00", "USD 12.50"},
    {12.5, "[$-409]0.00", "12.50"},
    {1234.5, "\"a\"0\"b\".0\"c\"", "a1234b.5c"},
    {5, "\"abc\"", "abc"},
    {5, "0\\ \\k\\m", "5 km"},
    {1234.5, "* 0.00", "1234.50"},
    {1234.5, "0.00_-;-0.00_-", "1234.50 "},
    {0.005, "?.\?\?\?", " .005"},
    {1.25, "?.\?\?\?", "1.25 "},
    {12.1, "\?\?.\?\?", "12.1 "},
    {1234.567, "General\" units\"", "1234.567 units"},
    {-7, "General;General", "7"},
    {5, ";;;", ""},
    {1234567.5, "#,##0.###", "1,234,567.5"},
    {0.1, "0.#", "0.1"},
    {1234, "\"$\"#,##0_);[Red](\"$\"#,##0)", "$1,234 "},
    {-1234, "\"$\"#,##0_);[Red](\"$\"#,##0)", "($1,234)"},
    {0, "_(* #,##0_);_(* \\(#,##0\\);_(* \"-\"_);_(@_)", " - "},
    {-12, "_(* #,##0_);_(* \\(#,##0\\);_(* \"-\"_);_(@_)", " (12)"},
    {12, "_(* #,##0_);_(* \\(#,##0\\);_(* \"-\"_);_(@_)", " 12 "},
    {0, "_(\"$\"* #,##0.00_);_(\"$\"* \\(#,##0.00\\);_(\"$\"* \"-\"\?\?_);_(@_)", " $-   "},
    {1E+15, "0", "1000000000000000"},
    {1E+15, "#,##0", "1,000,000,000,000,000"},
    {123456789012345678.0, "0", "123456789012346000"},
    {99.995, "0.00", "100.00"},
    {1.45, "0.0", "1.5"},
    {-1.45, "0.0", "-1.5"},
    {8.325, "0.00", "8.33"},
    {0.045, "0.00", "0.05"},
    {1E-10, "0.00", "0.00"},
    {0.00000001, "General", "0.00000001"},
    {1234.5, "#,##0.00;[Red]-#,##0.00", "1,234.50"},
    {1230, "00\\:00", "12:30"},
    {12, "0\".\"0", "1.2"},
    {0.1, "##%", "10%"},
    {5, "0.0 \"%\"", "5.0 %"},
    {5, "+0;-0;0", "+5"},
    {-5, "+0;-0;0", "-5"},
};

TEST(NumberFormat, ShowsNumbers) {
    for (const NumberRow& row : kNumbers) {
        SCOPED_TRACE(row.code);
        EXPECT_EQ(Shown(row.value, row.code), row.shown);
    }
    EXPECT_EQ(Shown(5, std::string(199, '0')), std::string(198, '0') + "5");
    EXPECT_EQ(Shown(5, std::string(200, '0')), "5") << "more than anybody wrote";
}

TEST(NumberFormat, ConditionsHoldUpToTheirBounds) {
    const struct {
        const char* sign;
        const char* below_at_above;
    } rows[] = {{"<", "+  "},  {"<=", "++ "}, {"=<", "++ "}, {">", "  +"}, {">=", " ++"},
                {"=>", " ++"}, {"=", " + "},  {"<>", "+ +"}, {"><", "+ +"}};
    for (const auto& row : rows) {
        std::string held;
        for (const double value : {4, 5, 6})
            held += Shown(value, std::string("[") + row.sign + "5]\"+\";\" \"");
        EXPECT_EQ(held, row.below_at_above) << row.sign;
    }
}

constexpr NumberRow kDates[] = {
    {40000, "d-mmm-yy", "6-Jul-09"},
    {40000, "dddd, mmmm dd, yyyy", "Monday, July 06, 2009"},
    {40000, "ddd d mmmmm yy", "Mon 6 J 09"},
    {40000.75, "m/d/yyyy h:mm", "7/6/2009 18:00"},
    {40000.5213, "hh:mm:ss", "12:30:40"},
    {40000.52137, "hh:mm:ss.00", "12:30:46.37"},
    {40000.52137, "h:mm:ss.000", "12:30:46.368"},
    {0.999994, "h:mm:ss", "23:59:59"},
    {1.5, "[h]:mm:ss", "36:00:00"},
    {1.5, "[ss]", "129600"},
    {1.5, "[hh]:mm", "36:00"},
    {2.123456, "[h]:mm:ss.00", "50:57:46.60"},
    {61, "dddd yyyy-mm-dd", "Thursday 1900-03-01"},
    {2958465, "yyyy-mm-dd", "9999-12-31"},
    {-0.5, "[h]:mm", "-12:00"},
    {40000, "mmm d\", \"yyyy", "Jul 6, 2009"},
    {40000.5, "d/m/yy h:m:s", "6/7/09 12:0:0"},
    {40000, "[$-409]d\\-mmm\\-yyyy;@", "6-Jul-2009"},
    {40000.75, "[$-409]h:mm:ss AM/PM;@", "6:00:00 PM"},
    {40000, "yy/mm/dd", "09/07/06"},
    {40000, "yyyy\"年\"m\"月\"d\"日\"", "2009年7月6日"},
    {40000.3, "h\"h \"m\"m\"", "7h 12m"},
    {40000.521, "yyyy-mm-dd\\Thh:mm:ss", "2009-07-06T12:30:14"},
    {40000, "mmmm", "July"},
    {40000, "[$-407]dddd, d. mmmm yyyy", "Montag, 6. Juli 2009"},
    {40248, "[$-40C]ddd d mmm mmmmm", "jeu. 11 mars m"},
    {40310, "[$-C0A]dddd d \"de\" mmmm", "miércoles 12 de mayo"},
    {40155, "[$-410]ddd mmmm", "mar dicembre"},
    {40000, "[$-413]dddd mmm", "maandag jul"},
    {40062, "[$-416]dddd mmm", "domingo set"},
    {40000, "[$-409]dddd mmm", "Monday Jul"},
    {40000, "[$-439]dddd mmm", "Monday Jul"},
    {40179, "[$-F800]dddd, mmmm dd, yyyy", "Friday, January 1, 2010"},
    {40000, "m", "7"},
};

TEST(NumberFormat, ShowsDatesAndTimes) {
    for (const NumberRow& row : kDates) {
        SCOPED_TRACE(row.code);
        EXPECT_EQ(Shown(row.value, row.code), row.shown);
    }
}

// Where office suites differ, the maker of the file format decides.
constexpr NumberRow kWhereSuitesDiffer[] = {
    {123456789012, "General", "1.23457E+11"},
    {1234567890.123, "General", "1234567890"},
    {0.000012345678, "General", "1.23457E-05"},
    {3.14159265358979, "General", "3.141592654"},
    {1E+20, "General", "1E+20"},
    {0.1234567891234, "General", "0.123456789"},
    {-5, "\"abc\"", "-abc"},
    {7, "0.#", "7."},
    {40000.25, "h:mm A/P", "6:00 A"},
    {0.9999999, "h:mm:ss", "0:00:00"},
    {0.9999999, "h:mm", "0:00"},
    {60, "m/d/yyyy", "2/29/1900"},
};

TEST(NumberFormat, ShowsWhatTheFormatsOwnProgramShows) {
    for (const NumberRow& row : kWhereSuitesDiffer) {
        SCOPED_TRACE(row.code);
        EXPECT_EQ(Shown(row.value, row.code), row.shown);
    }
}

TEST(NumberFormat, ShowsTexts) {
    const struct {
        std::string_view text;
        std::string_view code;
        std::string_view shown;
    } kRows[] = {
        {"hello", "0;-0;\"zero\";\"<\"@\">\"", "<hello>"},
        {"hello", "@", "hello"},
        {"hello", "\"x \"@", "x hello"},
        {"abc", "_(* #,##0_);_(* \\(#,##0\\);_(* \"-\"_);_(@_)", " abc "},
        {"a", "0", "a"},
        {"a", ";;;", ""},
        {"a", "0;0;0", "a"},
    };
    for (const auto& row : kRows) {
        SCOPED_TRACE(row.code);
        EXPECT_EQ(ShownText(row.text, row.code), row.shown);
    }
}

TEST(NumberFormat, KnowsBothDateSystems) {
    EXPECT_EQ(Shown(0, "yyyy-mm-dd ddd", true), "1904-01-01 Fri");
    EXPECT_EQ(Shown(1, "yyyy-mm-dd"), "1900-01-01");
    EXPECT_EQ(Shown(0, "d h:mm"), "0 0:00");
    EXPECT_EQ(Shown(40000 - 1462, "yyyy-mm-dd", true), Shown(40000, "yyyy-mm-dd"));
    EXPECT_EQ(Shown(2957003, "yyyy-mm-dd", true), "9999-12-31");
    EXPECT_EQ(Shown(2957004, "yyyy-mm-dd", true), "#####");
}

TEST(NumberFormat, KnowsWhatIsADate) {
    for (const std::string_view code : {"m/d/yyyy", "[h]:mm", "h AM/PM", "[$-409]d-mmm;@"})
        EXPECT_TRUE(NumberFormat(code).IsDate()) << code;
    for (const std::string_view code :
         {"General", "0.00", "[Red]0", "\\d0", "\"day\"0", "@", "0E+0"})
        EXPECT_FALSE(NumberFormat(code).IsDate()) << code;
}

TEST(NumberFormat, KnowsBuiltInFormats) {
    EXPECT_EQ(NumberFormat::BuiltIn(0), "General");
    EXPECT_EQ(NumberFormat::BuiltIn(14), "m/d/yyyy");
    EXPECT_EQ(NumberFormat::BuiltIn(49), "@");
    EXPECT_EQ(NumberFormat::BuiltIn(23), "");
    EXPECT_EQ(NumberFormat::BuiltIn(-1), "");
    EXPECT_EQ(NumberFormat::BuiltIn(164), "");
    for (std::int32_t id = 27; id <= 58; ++id)
        EXPECT_EQ(NumberFormat(NumberFormat::BuiltIn(id)).IsDate(),
                  id <= 36 || (id >= 45 && id <= 47) || id >= 50)
            << id;
}

TEST(NumberFormat, SurvivesEveryCode) {
    constexpr std::string_view kPieces[] = {"0",     "#",
                                            "?",     ".",
                                            ",",     "%",
                                            "E+",    "/",
                                            "@",     "[h]",
                                            "[",     "]",
                                            "\"",    "\\",
                                            "_",     "*",
                                            ";",     "General",
                                            "AM/PM", "y",
                                            "m",     "s",
                                            "[<5]",  "[$x-1]",
                                            "16",    "\xE2\x82\xAC",
                                            " "};
    std::uint32_t random = 1;
    for (int round = 0; round < 20'000; ++round) {
        std::string code;
        for (int i = 0; i < 9; ++i) {
            random = random * 1664525 + 1013904223;
            code += kPieces[(random >> 16) % std::size(kPieces)];
        }
        const NumberFormat format(code);
        std::string out;
        for (const double value : {0.0, -1.5, 1e300, -1e-300, 45000.7, 1e18})
            format.Apply(value, round % 2 == 0, out);
        format.ApplyText("text", out);
        EXPECT_LT(out.size(), 20'000u) << code;
    }
}

TEST(AppendGeneral, KeepsElevenCharacters) {
    const struct {
        double value;
        std::string_view shown;
    } kRows[] = {
        {0, "0"},
        {-0.0, "0"},
        {12345678901, "12345678901"},
        {-12345678901, "-12345678901"},
        {123456789012, "1.23457E+11"},
        {99999999999.9, "1E+11"},
        {0.1 + 0.2, "0.3"},
        {1.0 / 3, "0.333333333"},
        {2.0 / 3000, "0.000666667"},
        {1e-5, "0.00001"},
        {1.2345678e-7, "1.23457E-07"},
        {1e-10, "1E-10"},
        {1234567.891, "1234567.891"},
        {100.0 / 3, "33.33333333"},
        {1e100, "1E+100"},
        {-2.5e-15, "-2.5E-15"},
    };
    for (const auto& row : kRows) {
        std::string out;
        AppendGeneral(row.value, out);
        EXPECT_EQ(out, row.shown);
    }
}

}  // namespace
}  // namespace zorvane::number_format_test
