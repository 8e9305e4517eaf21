// Every reader on every kind of document, closed in and not: what comes out is the same. And the
// closing in under the filters that containers set.
#include <cerrno>
#include <filesystem>
#include <fstream>
#include <seccomp.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "tests/support/deck_file.h"
#include "tests/support/encrypted_package.h"
#include "tests/support/loader_fixture.h"
#include "tests/support/pdf_file.h"
#include "tests/support/word_file.h"
#include "tests/support/xls_stream.h"
#include "tests/support/xlsx_file.h"

namespace zorvane {
namespace {

std::string Docx(const std::string& text) {
    WordFile file;
    file.body = "<w:p><w:r><w:t>" + text + "</w:t></w:r></w:p>";
    return MakeWordFile(file);
}

std::string Xlsx() {
    XlsxParts parts;
    parts.rows =
        "<row r=\"1\"><c t=\"inlineStr\"><is><t>a</t></is></c><c><v>1.5</v></c></row>"
        "<row r=\"2\"><c><f>B1*2</f><v>3</v></c></row>";
    return MakeXlsx(parts);
}

std::string OpenFile(std::string_view type, std::string_view body) {
    const std::string content = "<office:document-content><office:body>" + std::string(body) +
                                "</office:body></office:document-content>";
    return MakeZip({{"mimetype", "application/vnd.oasis.opendocument." + std::string(type)},
                    {"content.xml", content}});
}

std::string Pptx() {
    Deck deck;
    deck.AddSlide(
        "<p:sp><p:nvSpPr><p:cNvPr id=\"2\" name=\"a\"/><p:nvPr/></p:nvSpPr><p:txBody><a:p><a:r>"
        "<a:t>a slide</a:t></a:r></a:p></p:txBody></p:sp>");
    return deck.Finish();
}

std::string Xls() {
    XlsParts parts;
    parts.cells = XlsRecord(0x203, Low(0) + Low(0) + Low(0) + LowDouble(2.5));
    return MakeXls(parts);
}

std::string Epub() {
    return MakeZip({{"mimetype", "application/epub+zip"},
                    {"META-INF/container.xml",
                     "<container><rootfiles><rootfile full-path=\"b.opf\"/></rootfiles>"
                     "</container>"},
                    {"b.opf",
                     "<package><manifest><item id=\"c\" href=\"c.xhtml\" "
                     "media-type=\"application/xhtml+xml\"/></manifest><spine><itemref "
                     "idref=\"c\"/></spine></package>"},
                    {"c.xhtml", "<html><body><p>a chapter</p></body></html>"}});
}

// Text in a font whose map of characters is not in the file: the library opens it by its name.
std::string JapanesePdf(const std::string& map) {
    test_pdf::Writer writer;
    writer.Add("<< /Type /Catalog /Pages 2 0 R >>");
    writer.Add("<< /Type /Pages /Count 1 /Kids [3 0 R] >>");
    writer.Add(
        "<< /Type /Page /Parent 2 0 R /MediaBox [0 0 612 792] /Resources << /Font << /J 5 0 R >> "
        ">> /Contents 4 0 R >>");
    writer.Add(
        "<< /Length 49 >>\nstream\nBT /J 12 Tf 72 700 Td <82A082A282A4> Tj ET         \n"
        "endstream");
    writer.Add("<< /Type /Font /Subtype /Type0 /BaseFont /Ryumin-Light /Encoding /" + map +
               " /DescendantFonts [6 0 R] >>");
    writer.Add(
        "<< /Type /Font /Subtype /CIDFontType0 /BaseFont /Ryumin-Light /CIDSystemInfo << "
        "/Registry (Adobe) /Ordering (Japan1) /Supplement 2 >> /DW 1000 >>");
    return writer.Finish(test_pdf::Xref::Right);
}

struct ReaderRow {
    const char* name;
    const char* kind;
    const char* file;
    std::string bytes;
    ReadError error = ReadError::None;
    std::string shown = {};  ///< must be in what comes out
};

std::vector<ReaderRow> WordRows() {
    const std::string text = "<office:text><text:p>an open text</text:p></office:text>";
    return {
        {"HTML", "word", "a.html", "<style>p{color:red}</style><p>caf&eacute;</p>", {}, "caf"},
        {"HTML in another encoding", "word", "b.html", "<p>\xCF\xF0\xE8\xE2\xE5\xF2</p>", {}, ""},
        {"Markdown", "word", "a.md", "# head\n\n* one\n* two\n", {}, "head"},
        {"e-mail", "word", "a.eml", "From: a@b\nSubject: =?utf-8?q?hi?=\n\nbody\n", {}, "body"},
        {"XML", "word", "a.xml", "<?xml version=\"1.0\"?><a><b>text</b></a>", {}, "text"},
        {"RTF", "word", "a.rtf", "{\\rtf1 rich{\\b bold}}", {}, "rich"},
        {"plain text", "word", "a.txt", "plain\xE9 text", {}, "plain"},
        {"EPUB", "word", "a.epub", Epub(), {}, "a chapter"},
        {"DOCX", "word", "a.docx", Docx("a word"), {}, "a word"},
        {"ODT", "word", "a.odt", OpenFile("text", text), {}, "an open text"},
        {"PPTX as a document", "word", "a.doc", Pptx(), {}, "a slide"},
        {"XLS as a document", "word", "b.doc", Xls(), {}, "2.5"},
        {"encrypted, standard", "word", "c.docx", StandardEncrypted(Docx("secret"), "pass", 128),
         ReadError::None, "secret"},
        {"encrypted, agile", "word", "d.docx",
         AgileEncrypted(Docx("hush"), "pass", {"SHA512", 256}), ReadError::None, "hush"},
        {"another password", "word", "e.docx", StandardEncrypted(Docx("x"), "other", 128),
         ReadError::PasswordNeeded},
        {"a broken package", "word", "f.docx", "PK\x03\x04 broken", ReadError::Damaged},
        {"an office suite's", "word", "g.doc",
         "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1" + std::string(600, '\0'), ReadError::NeedsOffice},
        {"nothing", "word", "h.html", ""},
    };
}

std::vector<ReaderRow> OtherRows() {
    const std::string pdf = test_pdf::MakePdf(
        {{test_pdf::Line(72, 700, "Page one"), ""}, {test_pdf::Line(72, 700, "Page two"), ""}});
    const std::string sheet =
        "<office:spreadsheet><table:table table:name=\"S\"><table:table-row><table:table-cell>"
        "<text:p>open</text:p></table:table-cell></table:table-row></table:table>"
        "</office:spreadsheet>";
    return {
        {"PDF, quick", "pdftext", "a.pdf", pdf, {}, "Page two"},
        {"PDF, robust", "pdfrich", "b.pdf", pdf, {}, "two"},
        {"PDF, pages", "pdfpages", "c.pdf", pdf},
        {"PDF as a document", "word", "d.doc", pdf, {}, "one"},
        {"PDF with a map of characters", "pdftext", "e.pdf", JapanesePdf("90ms-RKSJ-H")},
        {"PDF with a map that leads elsewhere", "pdftext", "f.pdf",
         JapanesePdf("#2E#2E#2F#2E#2E#2Fetc#2Fpasswd")},
        {"no PDF", "pdftext", "g.pdf", "no PDF", ReadError::WrongFormat},
        {"XLSX", "sheets", "a.xlsx", Xlsx(), {}, "1.5"},
        {"XLSX, names", "sheetnames", "b.xlsx", Xlsx()},
        {"XLSX, encrypted",
         "sheets",
         "c.xlsx",
         AgileEncrypted(Xlsx(), "pass", {"SHA1", 128}),
         {},
         "1.5"},
        {"XLS", "sheets", "a.xls", Xls(), {}, "2.5"},
        {"ODS", "sheets", "a.ods", OpenFile("spreadsheet", sheet), {}, "open"},
        {"PPTX", "slides", "a.pptx", Pptx(), {}, "a slide"},
        {"ODP",
         "slides",
         "a.odp",
         OpenFile(
             "presentation",
             "<office:presentation><draw:page><draw:frame><draw:text-box><text:p>shown</text:p>"
             "</draw:text-box></draw:frame></draw:page></office:presentation>"),
         {},
         "shown"},
        {"no slides", "slides", "b.pptx", "<p>no slides</p>", ReadError::WrongFormat},
    };
}

class SandboxedReaders : public LoaderFixture {
  protected:
    SandboxedReaders() { setenv("ZORVANE_OFFICE", "none", 1); }
    // All that comes of a conversion, as one text.
    std::string Outcome(const ReaderRow& row, bool in_sandbox, ReadError* error = nullptr) {
        ConversionService service(system_.platform);
        service.SetInSandbox(in_sandbox);
        const ConversionResult result = service.Run({{"kind", row.kind},
                                                     {"source", system_.folder.Path(row.file)},
                                                     {"target", system_.folder.Path("target")},
                                                     {"format", "6"},
                                                     {"sheets", "*"},
                                                     {"password", "pass"}},
                                                    {});
        std::string outcome = std::to_string(static_cast<int>(result.error)) + " " + result.detail +
                              " " + std::to_string(result.pages);
        for (const std::string& name : result.sheets)
            outcome += "|" + name;
        for (const std::string& file : result.files)
            outcome += "\n" + system_.folder.Read(std::filesystem::path(file).filename().string());
        if (error != nullptr)
            *error = result.error;
        return outcome;
    }
    void Compare(const std::vector<ReaderRow>& rows) {
        for (const ReaderRow& row : rows) {
            SCOPED_TRACE(row.name);
            system_.folder.Write(row.file, row.bytes);
            ReadError error = ReadError::None;
            const std::string closed = Outcome(row, true, &error);
            EXPECT_EQ(error, row.error) << closed;
            EXPECT_EQ(closed, Outcome(row, false));
            EXPECT_NE(closed.find(row.shown), std::string::npos) << closed;
        }
    }
};

TEST_F(SandboxedReaders, WordsComeOutTheSame) {
    Compare(WordRows());
}

TEST_F(SandboxedReaders, PagesSheetsAndSlidesComeOutTheSame) {
    Compare(OtherRows());
}

TEST_F(SandboxedReaders, MapsOfCharactersAreFound) {
    if (!std::filesystem::exists("/usr/share/poppler/cMap/Adobe-Japan1/90ms-RKSJ-H"))
        GTEST_SKIP() << "the maps are not installed";
    const ReaderRow row{"", "pdftext", "a.pdf", JapanesePdf("90ms-RKSJ-H")};
    system_.folder.Write(row.file, row.bytes);
    EXPECT_NE(Outcome(row, true).find("\u3042\u3044\u3046"), std::string::npos)
        << Outcome(row, true);
}

// ---- under a filter from outside ----

struct OuterRow {
    const char* name;
    std::vector<int> refused;
    int error;
    bool in_sandbox;
    ReadError end;
};

bool Refuse(const OuterRow& row) {
    scmp_filter_ctx filter = seccomp_init(SCMP_ACT_ALLOW);
    bool good = filter != nullptr;
    for (const int call : row.refused) {
        const scmp_arg_cmp by_prctl{0, SCMP_CMP_EQ, PR_SET_SECCOMP, 0};
        const bool one_kind = call == SCMP_SYS(prctl);
        good =
            good && seccomp_rule_add_array(filter, SCMP_ACT_ERRNO(static_cast<unsigned>(row.error)),
                                           call, one_kind ? 1 : 0, &by_prctl) == 0;
    }
    good = good && seccomp_load(filter) == 0;
    seccomp_release(filter);
    return good;
}

TEST_F(SandboxedReaders, TakeWhatAContainerLeavesThem) {
    constexpr int kLandlock[] = {444, 445, 446};
    const std::vector<int> landlock(std::begin(kLandlock), std::end(kLandlock));
    const std::vector<int> container{SCMP_SYS(unshare),      SCMP_SYS(setns),
                                     SCMP_SYS(mount),        SCMP_SYS(bpf),
                                     SCMP_SYS(ptrace),       SCMP_SYS(keyctl),
                                     SCMP_SYS(add_key),      SCMP_SYS(userfaultfd),
                                     SCMP_SYS(memfd_create), SCMP_SYS(io_uring_setup),
                                     SCMP_SYS(personality)};
    const std::vector<int> seccomp{SCMP_SYS(seccomp), SCMP_SYS(prctl)};
    const OuterRow rows[] = {
        {"a container's usual filter", container, EPERM, true, ReadError::None},
        {"no Landlock", landlock, ENOSYS, true, ReadError::None},
        {"Landlock refused", landlock, EPERM, true, ReadError::None},
        {"no seccomp", seccomp, EINVAL, true, ReadError::NoSandbox},
        {"seccomp refused", seccomp, EPERM, true, ReadError::NoSandbox},
        {"seccomp refused, and not asked for", seccomp, EPERM, false, ReadError::None},
    };
    const ReaderRow document{"", "word", "a.docx", Docx("inside")};
    system_.folder.Write(document.file, document.bytes);
    for (const OuterRow& row : rows) {
        SCOPED_TRACE(row.name);
        const pid_t child = fork();
        if (child == 0) {
            constexpr int kNoFilter = 99;
            ReadError error = ReadError::None;
            if (!Refuse(row))
                _exit(kNoFilter);
            Outcome(document, row.in_sandbox, &error);
            _exit(static_cast<int>(error));
        }
        int status = 0;
        waitpid(child, &status, 0);
        ASSERT_TRUE(WIFEXITED(status));
        EXPECT_EQ(static_cast<ReadError>(WEXITSTATUS(status)), row.end);
    }
}

TEST(SandboxRefused, SaysWhatToDo) {
    EXPECT_EQ(Explain(FailedConversion(ReadError::NoSandbox, "no filter"), "a.docx"),
              "a.docx: the system offers no sandbox for reading documents (no filter); "
              "--no-sandbox reads them without");
}

}  // namespace
}  // namespace zorvane
