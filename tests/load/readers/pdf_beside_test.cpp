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

/// Two pages with one picture each; of the second page only the picture is seen.
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
              "metadata 0 title: Plan; metadata 0 author: \xC3\x84nn; pictures 0 page 1: picture "
              "3 x 1; pictures 0 page 1: picture 3 x 1; links 0 page 1: http://x/; comments 0 page "
              "1: Ann: why?; pages 0 page 2: picture; ");
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
    // The second page may show any picture of the shared list.
    CheckChanges(scan, told,
                 {{&Scan::first, "1ne",
                   "1 picture replaced (page 1), 1 page without text replaced (page 2)."},
                  {&Scan::title, "0050", "1 document property changed (title)."},
                  {&Scan::annotations, other_link, "1 link target changed (page 1)."}});
}

TEST(PdfBeside, TellsAPictureOfSeveralPagesOnce) {
    Scan scan;
    scan.title = kPlanInUtf16;
    scan.second_words = Line(72, 700, "more words");
    EXPECT_EQ(ShownItems(ItemsOf(MakeScan(scan))),
              "metadata 0 title: Plan; metadata 0 author: \xC3\x84nn; pictures 0 page 1: picture "
              "3 x 1; pictures 0 page 1: picture 3 x 1; ");
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

TEST(PdfBeside, FormsInsideOfFormsEnd) {
    EXPECT_LE(ItemsOf(test_pdf::MakeFormBomb(9, 2)).size(), 1U);
}

}  // namespace
}  // namespace zorvane::pdf_beside_test
