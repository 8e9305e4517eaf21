#include <algorithm>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <sys/stat.h>
#include <thread>

#include <gtest/gtest.h>

#include "tests/cli/cli_fixture.h"
#include "tests/support/pdf_file.h"

namespace zorvane {
namespace {

TEST_F(CliTest, PrintsTheChanges) {
    const ShellRun run = Run("compare old.txt new.txt");
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.error, "");
    EXPECT_NE(run.output.find("[-two-]{+2+} words"), std::string::npos) << run.output;
    EXPECT_NE(run.output.find("+ {+four+}"), std::string::npos) << run.output;
    const ShellRun colored = Run("compare old.txt new.txt --color always");
    EXPECT_NE(colored.output.find("\x1B["), std::string::npos);
    EXPECT_EQ(Run("compare old.txt old.txt").status, 0);
    EXPECT_EQ(Run("old.txt new.txt").output, run.output) << "two existing paths mean a compare";
}

// Two versions of a web page, with list numbers and a table.
void WritePages(const TempFolder& folder) {
    folder.Write("old.html", "<ol><li>one</li></ol><table><tr><td>a</td><td>b</td></tr></table>");
    folder.Write("new.html",
                 "<p>x</p><ol><li>one</li></ol><table><tr><td>a</td><td>c</td></tr></table>");
}

TEST_F(CliTest, PrintsWhatACompareSees) {
    WritePages(folder_);
    const ShellRun text = Run("text old.html");
    EXPECT_EQ(text.status, 0);
    EXPECT_EQ(text.error, "");
    EXPECT_EQ(text.output, "1.\tone\na\tb\t\n");
    EXPECT_EQ(Run("text old.html --plain").output, "1.\tone\na\tb\n");
    EXPECT_EQ(Run("text old.html --source").output, folder_.Read("old.html"));
    EXPECT_TRUE(Run("text old.html --rtf").output.starts_with("{\\rtf1"));
    EXPECT_EQ(Run("text old.html -o out.txt").output, "");
    EXPECT_EQ(folder_.Read("out.txt"), text.output);
    EXPECT_EQ(Run("text -", "plain\n").output, "plain\n");
}

TEST_F(CliTest, ComparesDocumentsOfDifferentKinds) {
    WritePages(folder_);
    folder_.Write("new.rtf", "{\\rtf1 1.\\tab one\\par\\trowd\\intbl a\\cell b\\cell\\row}");
    EXPECT_EQ(Run("compare -q old.html new.rtf").status, 0);
    const ShellRun run = Run("compare old.html new.html");
    EXPECT_EQ(run.status, 1);
    EXPECT_NE(run.output.find("{+x+}"), std::string::npos) << run.output;
    EXPECT_NE(run.output.find("[-b-]{+c+}"), std::string::npos) << run.output;
    EXPECT_EQ(Run("compare old.html new.html -o r.html").status, 1);
    EXPECT_NE(folder_.Read("r.html").find("<html"), std::string::npos);
}

// A date or an amount at the start of a line is no label of a list.
TEST_F(CliTest, FindsOtherDatesAndAmountsInAPdf) {
    const auto statement = [](const std::vector<std::string>& starts) {
        std::string page;
        double y = 700;
        for (const std::string& start : starts) {
            page += test_pdf::Line(72, y, start) + test_pdf::Line(160, y, "payment received");
            y -= 16;
        }
        return test_pdf::MakePdf(page);
    };
    folder_.Write("a.pdf", statement({"12.03.2024", "(250)", "2.5", "1.", "3."}));
    folder_.Write("b.pdf", statement({"14.05.2025", "(380)", "2.7", "2.", "8."}));
    EXPECT_EQ(Run("compare -q a.pdf a.pdf").status, 0);
    const ShellRun run = Run("compare a.pdf b.pdf");
    EXPECT_EQ(run.status, 1);
    for (const char* const start : {"14.05.2025", "(380)", "2.7", "2.", "8."})
        EXPECT_NE(run.output.find(std::string("{+") + start), std::string::npos) << run.output;
    const ShellRun quick = Run("compare -q --pdf-quick a.pdf b.pdf");
    EXPECT_EQ(quick.status, 1) << quick.output;
}

// What a pipe gives is there once, whatever kind of document it is and however its name ends.
TEST_F(CliTest, ReadsDocumentsFromPipes) {
    WritePages(folder_);
    folder_.Write("paper.pdf", test_pdf::MakePdf(test_pdf::Line(72, 700, "paper")));
    struct Row {
        const char* pipe;
        const char* file;
    };
    for (const Row& row : {Row{"pipe.html", "old.html"}, Row{"pipe", "paper.pdf"}}) {
        SCOPED_TRACE(row.pipe);
        ASSERT_EQ(mkfifo(folder_.Path(row.pipe).c_str(), 0600), 0);
        std::thread writer([&] { folder_.Write(row.pipe, folder_.Read(row.file)); });
        const ShellRun run = Run(std::string("compare -q ") + row.pipe + " " + row.file);
        writer.join();
        EXPECT_EQ(run.status, 0) << run.error;
    }
    EXPECT_EQ(Run("text -", folder_.Read("paper.pdf")).output, "paper\n");
}

TEST_F(CliTest, TellsWhatCannotBeReadAndExitsWithTrouble) {
    environment_ += " ZORVANE_OFFICE=none";
    folder_.Write("broken.docx", "PK\x03\x04 no package");
    folder_.Write("old.doc",
                  std::string("\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1") + std::string(600, '\0'));
    folder_.Write("broken.pptx", "no deck");
    struct Row {
        const char* arguments;
        const char* said;
    };
    constexpr Row kRows[] = {
        {"text broken.docx", "broken.docx: the document is damaged"},
        {"compare broken.docx old.txt", "broken.docx: the document is damaged"},
        {"compare old.txt old.doc", "install LibreOffice"},
        {"compare old.txt broken.pptx", "broken.pptx: this is no document of its kind"},
        {"text none.pdf", "none.pdf: No such file"},
        {"text old.txt --pages x", "--pages x"},
        {"text old.txt -o none/out.txt", "none/out.txt"},
    };
    for (const Row& row : kRows) {
        SCOPED_TRACE(row.arguments);
        const ShellRun run = Run(row.arguments);
        EXPECT_EQ(run.status, 2);
        EXPECT_EQ(run.output, "");
        EXPECT_NE(run.error.find(row.said), std::string::npos) << run.error;
    }
}

// Whoever is told "no differences" about two scans believes it.
TEST_F(CliTest, ASideWithoutTextIsNeverUnchanged) {
    folder_.Write("scan.pdf", test_pdf::MakePdf(""));
    folder_.Write("page.html", "<html><img src='a.png'></html>");
    folder_.Write("blank.rtf", "{\\rtf1{\\pict 00}}");
    folder_.Write("table.csv", "a,b\n1,2\n");
    folder_.Write("commas.csv", ",,\n");
    folder_.Write("empty.txt", "");
    folder_.Write("lines.txt", " \n\n");
    folder_.Write("empty.docx", "");
    struct Row {
        const char* arguments;
        int status;
        const char* said;
    };
    constexpr Row kRows[] = {
        {"scan.pdf scan.pdf", 2, "scan.pdf: no text was found on its pages; they may be pictures"},
        {"scan.pdf old.txt", 2, "scan.pdf: no text"},
        {"old.txt scan.pdf", 2, "scan.pdf: no text"},
        {"page.html page.html", 2, "page.html: no text was found in what it shows; --source"},
        {"page.html page.html --source", 0, ""},
        {"blank.rtf blank.rtf", 2, "blank.rtf: no text"},
        {"table.csv table.csv --rows 9", 2, "nothing was found in the chosen rows; choose others"},
        {"table.csv table.csv --columns 9-", 2, "in the chosen columns; choose others"},
        {"table.csv table.csv --rows 2", 0, ""},
        {"commas.csv empty.txt", 0, ""},
        {"empty.txt empty.docx", 0, ""},
        {"lines.txt lines.txt", 0, ""},
        {"old.txt empty.txt", 1, ""},
    };
    for (const Row& row : kRows) {
        SCOPED_TRACE(row.arguments);
        const ShellRun run = Run("compare -q " + std::string(row.arguments));
        EXPECT_EQ(run.status, row.status) << run.error;
        EXPECT_NE(run.error.find(row.said), std::string::npos) << run.error;
        EXPECT_EQ(run.error.empty(), row.status != 2) << run.error;
    }
    const ShellRun piped = Run("compare -q - old.txt", folder_.Read("scan.pdf"));
    EXPECT_EQ(piped.status, 2);
    EXPECT_TRUE(piped.error.starts_with("zorvane: standard input: no text")) << piped.error;
    const ShellRun text = Run("text scan.pdf");
    EXPECT_EQ(text.status, 0);
    EXPECT_NE(text.error.find("no text was found"), std::string::npos);
}

TEST_F(CliTest, TellsAFaultOnceAndInWordsOfItsUser) {
    environment_ += " ZORVANE_OFFICE=none";
    folder_.Write("broken.eml", "no message\n");
    folder_.Write("broken.pdf", "%PDF-1.4\n");
    folder_.Write("broken.xlsx", "no workbook");
    folder_.Write("a.xlsb", "PK");
    for (const char* file : {"broken.eml", "broken.pdf", "broken.xlsx", "a.xlsb"}) {
        SCOPED_TRACE(file);
        const ShellRun run = Run("text " + std::string(file));
        EXPECT_EQ(run.status, 2);
        EXPECT_TRUE(run.error.starts_with("zorvane: " + std::string(file) + ": ")) << run.error;
        EXPECT_EQ(std::count(run.error.begin(), run.error.end(), '\n'), 1) << run.error;
        for (const char* word : {"Word", "Compare Options", "LoadFileIntoEditor", "TPORT", "PPT"})
            EXPECT_EQ(run.error.find(word), std::string::npos) << run.error;
    }
    const ShellRun piped = Run("text -", "PK\x03\x04 no package");
    EXPECT_TRUE(piped.error.starts_with("zorvane: standard input: ")) << piped.error;
}

TEST_F(CliTest, SwitchesOfTheSlashFormReachTheConverters) {
    WritePages(folder_);
    const auto report = [this](const std::string& switches) {
        Run("'/M old.html /S new.html /T r.txt /R2 /F1 /X " + switches + "'");
        return folder_.Read("r.txt");
    };
    EXPECT_EQ(report("").find("<td>"), std::string::npos);
    EXPECT_NE(report("/H").find("<td>"), std::string::npos);
    folder_.Write("old.csv", "a,b,c\nd,e,f\n");
    folder_.Write("new.csv", "a,x,c\nd,e,y\n");
    const auto count = [this](const std::string& switches) {
        return Run("'/M old.csv /S new.csv /X /G " + switches + "'").status;
    };
    EXPECT_EQ(count(""), 2) << "a row and its counterpart are one difference";
    EXPECT_EQ(count("/1 1 /3 1"), 1);
    EXPECT_EQ(count("/2 1 /4 1"), 0);
    EXPECT_EQ(count("/1 2 /2 1-2 /3 2 /4 1-2"), 0);
}

TEST_F(CliTest, WritesNoSettings) {
    Run("compare old.txt new.txt -o r.html");
    EXPECT_TRUE(std::filesystem::is_empty(folder_.Path("home")));
}

TEST_F(CliTest, PageShowsAsMuchUnchangedTextAsAskedFor) {
    std::string same;
    for (int i = 0; i < 20; ++i)
        same += "the same words\n";
    folder_.Write("a.txt", same + "one thing to say\n");
    folder_.Write("b.txt", same + "two things to say\n");
    struct Row {
        const char* options;
        bool folded;
        bool left_out;
    };
    for (const Row& row :
         {Row{"", true, false}, Row{"--unchanged all", false, false},
          Row{"--unchanged folded", true, false}, Row{"--unchanged none", false, true}}) {
        SCOPED_TRACE(row.options);
        Run(std::string("compare a.txt b.txt -o r.html ") + row.options);
        const std::string page = folder_.Read("r.html");
        EXPECT_EQ(page.find("<details class=\"fold\">") != std::string::npos, row.folded);
        EXPECT_EQ(page.find("left out of this page") != std::string::npos, row.left_out);
    }
}

TEST_F(CliTest, PageShowsTheDatesOfFilesAndTheLookOfDocuments) {
    folder_.Write("a.html", "<h1>Title</h1><p>Some <b>bold words</b> stand here.</p>");
    folder_.Write("b.html", "<h1>Title</h1><p>Some <b>bold words</b> stood here.</p>");
    Run("compare - b.html -o r.html < a.html");
    std::string page = folder_.Read("r.html");
    const std::string date = "<small>20";
    EXPECT_EQ(page.find(date), page.rfind(date)) << "what came through a pipe has no date";
    EXPECT_NE(page.find(date), std::string::npos);
    Run("compare a.html b.html -o r.html");
    page = folder_.Read("r.html");
    EXPECT_NE(page.find(date), page.rfind(date));
    EXPECT_NE(page.find("class=\"h1\"><strong>Title"), std::string::npos);
    EXPECT_NE(page.find("<strong>bold words</strong>"), std::string::npos);
    const std::string first = page;
    Run("compare a.html b.html -o r.html");
    EXPECT_EQ(folder_.Read("r.html"), first) << "the same bytes on every run";
}

TEST_F(CliTest, WritesEveryReport) {
    const ShellRun run =
        Run("compare old.txt new.txt -o r.html -o r.txt -o r.csv -o r.doc --title 'T' --json "
            "j.json -i");
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.output, "");
    EXPECT_EQ(folder_.Read("r.html").find("<!DOCTYPE html>"), 0U);
    EXPECT_NE(folder_.Read("r.txt").find("2 differences: 1 change, 1 addition, 0 deletions."),
              std::string::npos);
    EXPECT_NE(folder_.Read("r.csv").find("1,Change,2,2,2,2,\"two words\",\"2 words\""),
              std::string::npos);
    EXPECT_EQ(folder_.Read("r.doc").find("{\\rtf1"), 0U);
    EXPECT_NE(folder_.Read("r.doc").find("\\strike"), std::string::npos)
        << "the all-in-one text, though the view is side by side";
    for (const char* part : {"\\b T", "Original: old.txt\\par", "Modified: new.txt\\par",
                             "\\super [1] \\nosupersub", "\\super [2] \\nosupersub"})
        EXPECT_NE(folder_.Read("r.doc").find(part), std::string::npos) << part;
    const auto json = nlohmann::json::parse(folder_.Read("j.json"));
    EXPECT_EQ(json["schema"], "zorvane-compare/1");
    EXPECT_EQ(json["counts"]["sections"]["changes"], 1);
    const std::string first = folder_.Read("j.json");
    Run("compare old.txt new.txt --json j.json");
    EXPECT_EQ(folder_.Read("j.json"), first) << "the same bytes on every run";
}

TEST_F(CliTest, ReadsStandardInput) {
    const ShellRun run = Run("compare - new.txt --json -", "one\n2 words\nthree\nfour\n");
    EXPECT_EQ(run.status, 0) << run.output << run.error;
    EXPECT_EQ(nlohmann::json::parse(run.output)["original"]["path"], "-");
    EXPECT_EQ(Run("compare new.txt - --stat --plain", "{\\rtf1 one\\par 2 words}").status, 1);
}

TEST_F(CliTest, ComparesTheExamplePair) {
    const std::string examples = std::string(ZORVANE_EXAMPLES) + "/";
    const ShellRun run = Run("compare '" + examples + "lease-2025.rtf' '" + examples +
                             "lease-2026.rtf' --json - --letters");
    EXPECT_EQ(run.status, 1);
    const auto json = nlohmann::json::parse(run.output);
    EXPECT_GE(json["counts"]["records"], 8);
    EXPECT_GE(json["counts"]["characters"]["changes"], 1);
}

struct OptionRow {
    const char* original;
    const char* modified;
    const char* options;
    int status;
};
TEST_F(CliTest, OptionsDecideWhatDiffers) {
    const OptionRow rows[] = {
        {"A b", "a b", "", 1},
        {"A b", "a b", "-i", 0},
        {"a  b", "a b ", "-w", 0},
        {"a\n\nb", "a\nb", "-B", 0},
        {"a\n\nb", "a\nb", "--remove-blank-lines", 0},
        {"v 1", "v 2", "--ignore-regex '[0-9]'", 0},
        {"v 1 x", "v 2 y", "--ignore-regex '[0-9]' --ignore-regex 'x$' --ignore-regex y", 0},
        {"A", "a", "--set bIgnoreCase=true", 0},
        {"A", "a", "--settings s.ini", 0},
        {"a\r\nb", "a\nb", "", 0},
    };
    folder_.Write("s.ini", "[1_CompareFile]\nbIgnoreCase=TRUE\n");
    for (const OptionRow& row : rows) {
        SCOPED_TRACE(std::string(row.original) + " / " + row.options);
        folder_.Write("a.txt", row.original);
        folder_.Write("b.txt", row.modified);
        EXPECT_EQ(Run(std::string("compare a.txt b.txt -q ") + row.options).status, row.status);
    }
    EXPECT_EQ(folder_.Read("s.ini"), "[1_CompareFile]\nbIgnoreCase=TRUE\n") << "only read";
}

struct TroubleRow {
    const char* name;
    const char* arguments;
    const char* said;
};
TEST_F(CliTest, TroubleNamesTheFileAndTheReason) {
    const TroubleRow rows[] = {
        {"missing", "compare none.txt new.txt", "none.txt: No such file or directory"},
        {"a folder", "compare old.txt home", "home: Is a directory"},
        {"a bad expression", "compare old.txt new.txt --ignore-regex '(x'", "\"(x\""},
        {"an unknown option", "compare old.txt new.txt --set nope=1", "nope"},
        {"a number", "compare old.txt new.txt --set lPadLength=x", "lPadLength=x: not a number"},
        {"settings", "compare old.txt new.txt --settings none.ini", "none.ini: No such file"},
        {"a full target", "compare old.txt new.txt -o /dev/full --report-type html", "/dev/full"},
        {"a full document", "compare old.txt new.txt -o /dev/full --report-type doc", "/dev/full"},
        {"a full output", "compare old.txt new.txt --json /dev/full", "No space left on device"},
        {"an input as report", "compare old.txt new.txt -o old.txt", "old.txt"},
        {"an input as JSON", "compare old.txt new.txt --json ./new.txt", "new.txt"},
        {"no type", "compare old.txt new.txt -o report", "report: the extension"},
        {"no reader yet", "compare a.pdf new.txt", "a.pdf"},
    };
    folder_.Write("a.pdf", "%PDF-1.4\n");
    for (const TroubleRow& row : rows) {
        SCOPED_TRACE(row.name);
        const ShellRun run = Run(row.arguments);
        EXPECT_EQ(run.status, 2);
        EXPECT_NE(run.error.find(row.said), std::string::npos) << run.error;
    }
    EXPECT_EQ(folder_.Read("old.txt"), "one\ntwo words\nthree\n");
}

TEST_F(CliTest, TakesAnythingForAText) {
    std::string binary;
    for (int i = 0; i < 5000; ++i)
        binary += static_cast<char>(i * 7919 >> 3);
    folder_.Write("binary", binary);
    folder_.Write("empty", "");
    folder_.Write("line.txt", std::string(20'000'000, 'x'));
    folder_.Write("line2.txt", std::string(20'000'000, 'x') + " y");
    folder_.Write("broken.rtf", "{\\rtf1 a {\\fonttbl{\\f0 \\'" + binary);
    EXPECT_EQ(Run("compare binary old.txt -o r.html").status, 1);
    EXPECT_EQ(Run("compare empty old.txt -o r.html").status, 1);
    EXPECT_EQ(Run("compare empty empty").status, 0);
    EXPECT_EQ(Run("compare line.txt line2.txt -o r.html --letters").status, 1);
    EXPECT_EQ(Run("compare broken.rtf old.txt -o r.doc").status, 1);
    environment_ = "LC_ALL=C";
    EXPECT_EQ(Run("compare binary old.txt --stat").status, 1);
}

}  // namespace
}  // namespace zorvane
