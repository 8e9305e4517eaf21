#include <string>

#include <gtest/gtest.h>

#include "compare/document/beside_compare.h"
#include "load/readers/pdf/pdf_reader.h"
#include "tests/support/pdf_file.h"
#include "tests/support/shown_beside.h"

namespace zorvane::pdf_beside_test {
namespace {

using test_pdf::Line;
using test_pdf::Link;

/// Two pages with one picture each, the second one's in a form; of that page only the picture is
/// seen.
struct Scan {
    std::string first = "one";
    std::string second = "two";
    std::string title = "Plan";
    std::string annotations;
    std::string second_words;
};

std::string Picture(std::string_view bytes) {
    return "<< /Type /XObject /Subtype /Image /Width 3 /Height 1 /ColorSpace /DeviceGray "
           "/BitsPerComponent 8 /Length " +
           std::to_string(bytes.size()) + " >>\nstream\n" + std::string(bytes) + "\nendstream";
}

std::string MakeScan(const Scan& scan) {
    test_pdf::Writer writer;
    const auto content = [](std::string_view text) {
        return "<< /Length " + std::to_string(text.size()) + " >>\nstream\n" + std::string(text) +
               "\nendstream";
    };
    // One list of resources for all pages, as many programs write it.
    const std::string shared =
        "/Resources << /Font << /R 7 0 R >> /XObject << /A 5 0 R /F 10 0 R >> >> ";
    writer.Add("<< /Type /Catalog /Pages 2 0 R >>");
    writer.Add("<< /Type /Pages /Count 2 /Kids [3 0 R 4 0 R] >>");
    writer.Add("<< /Type /Page /Parent 2 0 R /MediaBox [0 0 612 792] " + shared +
               "/Contents 8 0 R /Annots [" + scan.annotations + "] >>");
    writer.Add("<< /Type /Page /Parent 2 0 R /MediaBox [0 0 612 792] " + shared +
               "/Contents 9 0 R >>");
    writer.Add(Picture(scan.first));
    writer.Add(Picture(scan.second));
    writer.Add("<< /Type /Font /Subtype /Type1 /BaseFont /Times-Roman >>");
    writer.Add(content(Line(72, 700, "words") + "q 9 0 0 9 0 0 cm /A Do Q"));
    writer.Add(content(scan.second_words + "q 612 0 0 792 0 0 cm /F Do Q"));
    writer.Add(
        "<< /Type /XObject /Subtype /Form /BBox [0 0 1 1] /Resources << /XObject << /B "
        "6 0 R >> >> /Length 5 >>\nstream\n/B Do\nendstream");
    writer.Add("<< /Title <FEFF" + scan.title + "> /Author (\\304nn) /Producer (x) >>");
    std::string pdf = writer.Finish(test_pdf::Xref::Right);
    const std::string root = "/Root 1 0 R";
    return pdf.replace(pdf.rfind(root), root.size(), root + " /Info 11 0 R");
}

std::vector<BesideItem> ItemsOf(const std::string& pdf) {
    return BesideItemsOf([&](DocumentSink& sink, ReadMonitor& monitor) {
        return ReadPdfRich(pdf, {}, {}, {}, sink, monitor);
    });
}

constexpr char kPlanInUtf16[] = "0050006C0061006E";

TEST(PdfBeside, TellsPicturesLinksPropertiesAndPagesWithoutText) {
    Scan scan;
    scan.title = kPlanInUtf16;
    scan.annotations = Link(0, 0, 9, 9, "http://x/") +
                       "<< /Type /Annot /Subtype /Text /Rect [0 0 9 9] /T (Ann) /Contents (why?)"
                       " >> << /Type /Annot /Subtype /Widget /Rect [0 0 9 9] >> 5";
    EXPECT_EQ(ShownItems(ItemsOf(MakeScan(scan))),
              "metadata 0 title: Plan; metadata 0 author: \xC3\x84nn; links 0 page 1: http://x/; "
              "comments 0 page 1: Ann: why?; pages 0 page 2: picture; pictures 0 page 1: picture 3 "
              "x 1; ");
    EXPECT_EQ(ShownItems(ItemsOf(test_pdf::MakePdf(Line(72, 700, "words")))), "");
    EXPECT_EQ(ShownItems(ItemsOf(test_pdf::MakePdf(std::string()))), "") << "an empty page";
    scan.first.assign((std::size_t{64} << 20) + 1, 'x');
    EXPECT_NE(ShownItems(ItemsOf(MakeScan(scan))).find("damaged 0 page 1: read in part"),
              std::string::npos)
        << "a picture that is too large to be read whole";
    EXPECT_EQ(ShownItems(ItemsOf(test_pdf::MakePdf("0 0 9 9 re f"))), "pages 0 page 1: drawing; ");
}

TEST(PdfBeside, SeesEachThingThatChangesAndNothingElse) {
    Scan scan;
    scan.title = kPlanInUtf16;
    scan.annotations = Link(0, 0, 9, 9, "http://x/");
    const auto told = [&](const Scan& other) {
        return BesideSentence(CompareBeside(ItemsOf(MakeScan(scan)), ItemsOf(MakeScan(other)), {}));
    };
    const std::string other_link = Link(0, 0, 9, 9, "http://y/");
    CheckChanges(scan, told,
                 {{&Scan::first, "1ne", "1 picture replaced (page 1)."},
                  {&Scan::second, "2wo", "1 page without text replaced (page 2)."},
                  {&Scan::title, "0050", "1 document property changed (title)."},
                  {&Scan::annotations, other_link, "1 link target changed (page 1)."}});
}

constexpr std::string_view kDrawA = "q 9 0 0 9 0 0 cm /A Do Q ";
constexpr std::string_view kDrawB = "q 9 0 0 9 0 0 cm /B Do Q ";

/// Pages of words that share a list of two pictures, and draw what `drawn` says.
std::string PagesThatDraw(const std::vector<std::string>& drawn, std::string_view palette = "abc") {
    test_pdf::Writer writer;
    const auto first = static_cast<int>(drawn.size()) + 3;  // behind the pages
    const auto reference = [](int number) { return std::to_string(number) + " 0 R"; };
    std::string kids;
    for (int page = 0; page < static_cast<int>(drawn.size()); ++page)
        kids += reference(3 + page) + " ";
    writer.Add("<< /Type /Catalog /Pages 2 0 R >>");
    writer.Add("<< /Type /Pages /Count " + std::to_string(drawn.size()) + " /Kids [" + kids +
               "] /Resources << /Font << /R " + reference(first) + " >> /XObject << /A " +
               reference(first + 1) + " /B " + reference(first + 2) + " >> >> >>");
    for (int page = 0; page < static_cast<int>(drawn.size()); ++page)
        writer.Add("<< /Type /Page /Parent 2 0 R /MediaBox [0 0 612 792] /Contents " +
                   reference(first + 3 + page) + " >>");
    writer.Add("<< /Type /Font /Subtype /Type1 /BaseFont /Times-Roman >>");
    writer.Add(Picture("one"));
    std::string indexed = Picture("two");
    const std::string_view gray = "/DeviceGray";
    indexed.replace(indexed.find(gray), gray.size(),
                    "[/Indexed /DeviceRGB 0 (" + std::string(palette) + ")]");
    writer.Add(indexed);
    for (const std::string& operators : drawn) {
        const std::string content = Line(72, 700, "words") + operators;
        writer.Add("<< /Length " + std::to_string(content.size()) + " >>\nstream\n" + content +
                   "\nendstream");
    }
    return writer.Finish(test_pdf::Xref::Right);
}

TEST(PdfBeside, TellsWhatAPageDrawsAndNotWhatItCould) {
    const std::string a(kDrawA);
    const std::string b(kDrawB);
    const std::string drawn_inline = "BI /W 8 /H 1 /BPC 8 /CS /G ID x /B Do EI ";
    struct Case {
        std::vector<std::string> pages;
        std::string_view shown;
    };
    for (const Case& row : {
             Case{{a, ""}, "pictures 0 page 1: picture 3 x 1; "},
             Case{{a, a}, "pictures 0 page 1: picture 3 x 1; pictures 0 page 2: picture 3 x 1; "},
             Case{{b + a + b},
                  "pictures 0 page 1: picture 3 x 1; pictures 0 page 1: picture 3 x "
                  "1; pictures 0 page 1: picture 3 x 1; "},
             Case{{a + a + a + a + a + a + a + a + a},
                  "pictures 0 page 1: picture 3 x 1, 9 times; "},
             Case{{a + a, a + a, a + a, ""},
                  "pictures 0 all pages but 1: picture 3 x 1, 2 times; "},
             Case{{drawn_inline + a},
                  "pictures 0 page 1: picture 8 x 1; pictures 0 page 1: picture 3 x 1; "},
             Case{{"% /A Do\nBT /R 9 Tf (/A Do) Tj ET"}, ""},
             Case{{"", a, a, a}, "pictures 0 all pages but 1: picture 3 x 1; "},
             Case{{a, a, a, a + b},
                  "pictures 0 all pages: picture 3 x 1; "
                  "pictures 0 page 4: picture 3 x 1; "},
             Case{{a, "", a, ""},
                  "pictures 0 page 1: picture 3 x 1; pictures 0 page 3: picture 3 x 1; "},
         })
        EXPECT_EQ(ShownItems(ItemsOf(PagesThatDraw(row.pages))), row.shown);
}

TEST(PdfBeside, SeesAPictureThatOnePageMoreOrLessDraws) {
    const std::string a(kDrawA);
    const std::string b(kDrawB);
    const std::string drawn_inline = "BI /W 2 /H 1 /BPC 8 /CS /G ID ab\nEI ";
    const std::string other_inline = "BI /W 2 /H 1 /BPC 8 /CS /G ID ac\nEI ";
    const auto told = [](const std::string& original, const std::string& modified) {
        const std::string sentence =
            BesideSentence(CompareBeside(ItemsOf(original), ItemsOf(modified), {}));
        const std::string_view head = "Beside the words: ";
        return sentence.empty() ? sentence : sentence.substr(head.size());
    };
    struct Case {
        std::vector<std::string> original;
        std::vector<std::string> modified;
        std::string_view told;
    };
    for (const Case& row : {
             Case{{a, a}, {a, ""}, "1 picture removed (page 2)."},
             Case{{a, b}, {a, a}, "1 picture replaced (page 2)."},
             Case{{a + a}, {a}, "1 picture removed (page 1)."},
             Case{{a, a, ""}, {a + a, a + a, a}, "3 pictures added (page 1, page 2, page 3)."},
             Case{{drawn_inline}, {other_inline}, "1 picture replaced (page 1)."},
             Case{{a, a, a, a}, {a, a, a, a, a}, ""},
             Case{{a, a, a, a},
                  {a, a, "", a},
                  "1 picture removed (all pages), 1 picture added (all pages but 1)."},
         })
        EXPECT_EQ(told(PagesThatDraw(row.original), PagesThatDraw(row.modified)), row.told);
    EXPECT_EQ(told(PagesThatDraw({b}), PagesThatDraw({b}, "abd")), "1 picture replaced (page 1).")
        << "its colours";
}

TEST(PdfBeside, TheQuickRoadTellsTheSame) {
    Scan scan;
    scan.title = kPlanInUtf16;
    const std::string pdf = MakeScan(scan);
    SilentMonitor monitor;
    std::string text;
    ASSERT_TRUE(ReadPdfText(pdf, {}, {}, 0, text, monitor).ok());
    const auto sink = MakePlainSink();
    ASSERT_TRUE(ReadPdfBeside(pdf, {}, {}, text, *sink).ok());
    EXPECT_EQ(sink->TakeBeside(), ItemsOf(pdf));
    ASSERT_TRUE(ReadPdfBeside(pdf, {}, {1, 1}, text, *sink).ok());
    for (const BesideItem& item : sink->TakeBeside())
        EXPECT_EQ(item.text.find("page 2"), std::string::npos) << item.text;
}

/// A page of words with a form in a form, `depth` of them, the last of which draws a picture and
/// the first form anew.
std::string NestedForms(int depth) {
    test_pdf::Writer writer;
    constexpr int kFirstForm = 7;
    writer.Add("<< /Type /Catalog /Pages 2 0 R >>");
    writer.Add("<< /Type /Pages /Count 1 /Kids [3 0 R] >>");
    writer.Add(
        "<< /Type /Page /Parent 2 0 R /MediaBox [0 0 612 792] /Contents 5 0 R /Resources << "
        "/Font << /R 4 0 R >> /XObject << /F 7 0 R >> >> >>");
    writer.Add("<< /Type /Font /Subtype /Type1 /BaseFont /Times-Roman >>");
    const std::string content = Line(72, 700, "words") + "/F Do";
    writer.Add("<< /Length " + std::to_string(content.size()) + " >>\nstream\n" + content +
               "\nendstream");
    writer.Add(Picture("one"));
    for (int form = 0; form < depth; ++form) {
        const bool last = form + 1 == depth;
        const int next = kFirstForm + (last ? 0 : form + 1);
        writer.Add(
            "<< /Type /XObject /Subtype /Form /BBox [0 0 1 1] /Resources << /XObject << /B "
            "6 0 R /F " +
            std::to_string(next) + " 0 R >> >> /Length 11 >>\nstream\n" +
            (last ? "/F Do /B Do" : "/F Do      ") + "\nendstream");
    }
    return writer.Finish(test_pdf::Xref::Right);
}

TEST(PdfBeside, FormsInsideOfFormsEnd) {
    const auto told = [](int depth) { return ShownItems(ItemsOf(NestedForms(depth))); };
    EXPECT_EQ(told(1), "pictures 0 page 1: picture 3 x 1; ");
    EXPECT_EQ(told(16), "pictures 0 page 1: picture 3 x 1; ");
    EXPECT_EQ(told(17), "damaged 0 page 1: read in part; ");
    EXPECT_EQ(ShownItems(ItemsOf(test_pdf::MakeFormBomb(9, 2))), "pages 0 page 1: drawing; ");
}

}  // namespace
}  // namespace zorvane::pdf_beside_test
