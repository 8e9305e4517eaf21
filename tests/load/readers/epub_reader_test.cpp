#include <string>

#include <gtest/gtest.h>

#include "load/readers/word_readers.h"
#include "tests/support/shown_beside.h"
#include "tests/support/zip_file.h"

namespace zorvane::epub_reader_test {
namespace {

constexpr std::string_view kContainer =
    "<container><rootfiles><rootfile full-path='OPS/book.opf'/></rootfiles></container>";

constexpr std::string_view kBook =
    "<package><manifest>"
    "<item id='a' href='one.xhtml' media-type='application/xhtml+xml'/>"
    "<item id='b' href='sub/the%20two.xhtml#start' media-type='application/xhtml+xml'/>"
    "<item id='n' href='nav.xhtml' media-type='application/xhtml+xml'/>"
    "<item id='p' href='p.png' media-type='image/png'/></manifest>"
    "<spine><itemref idref='b'/><itemref idref='n' linear='no'/><itemref idref='p'/>"
    "<itemref idref='unknown'/><itemref idref='a'/></spine></package>";

std::string ShownBook(std::initializer_list<std::pair<std::string_view, std::string_view>> parts) {
    const std::string bytes = MakeZip(parts);
    const auto package = Package::Open(bytes);
    return Shown([&](DocumentSink& sink, ReadMonitor& monitor) {
        return ReadEpub(*package, sink, monitor);
    });
}

TEST(EpubReader, ShowsTheChaptersInReadingOrder) {
    EXPECT_EQ(ShownBook({{"META-INF/container.xml", kContainer},
                         {"OPS/book.opf", kBook},
                         {"OPS/nav.xhtml", "<p>nav"},
                         {"OPS/one.xhtml",
                          "<?xml version='1.0'?><html><head><title/><style>i{color:red}</style>"
                          "</head><body><p>one <i>x</i></p></body></html>"},
                         {"OPS/sub/the two.xhtml",
                          "<html><body><h1>two</h1><ol><li>y</li></ol></body></html>"}}),
              "[b:two|]1.>y|one [i#255:x|]");
}

TEST(EpubReader, TellsWhatIsMissing) {
    EXPECT_EQ(ShownBook({{"a", "b"}}).substr(0, 8), "error 2:");
    EXPECT_EQ(ShownBook({{"META-INF/container.xml", kContainer}}).substr(0, 8), "error 2:");
    EXPECT_EQ(
        ShownBook({{"META-INF/container.xml", kContainer}, {"OPS/book.opf", "<a>"}}).substr(0, 8),
        "error 3:");
    EXPECT_EQ(ShownBook({{"META-INF/container.xml", kContainer}, {"OPS/book.opf", kBook}}),
              "error 3: the book names no chapter that is there");
    EXPECT_EQ(ShownItems(BesideItemsOf([](DocumentSink& sink, ReadMonitor& monitor) {
                  return ReadEpub(*Package::Open(MakeZip({{"META-INF/container.xml", kContainer},
                                                          {"OPS/book.opf", kBook},
                                                          {"OPS/one.xhtml", "<p>one"}})),
                                  sink, monitor);
              })),
              "damaged 0 OPS/sub/the two.xhtml: left out; ");
}

}  // namespace
}  // namespace zorvane::epub_reader_test
