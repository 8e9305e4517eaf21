// What pages, Markdown, books and messages hold beside their words.
#include <string>

#include <gtest/gtest.h>

#include "compare/document/beside_compare.h"
#include "load/readers/word_readers.h"
#include "tests/support/shown_beside.h"
#include "tests/support/zip_file.h"

namespace zorvane::web_beside_test {
namespace {

std::vector<BesideItem> PageItems(std::string_view page) {
    return BesideItemsOf([&](DocumentSink& sink, ReadMonitor& monitor) {
        return ReadHtml(page, "windows-1252", sink, monitor);
    });
}
std::vector<BesideItem> MarkdownItems(std::string_view text) {
    return BesideItemsOf([&](DocumentSink& sink, ReadMonitor& monitor) {
        return ReadMarkdown(text, sink, monitor);
    });
}
std::vector<BesideItem> MessageItems(std::string_view bytes) {
    return BesideItemsOf([&](DocumentSink& sink, ReadMonitor& monitor) {
        return ReadMessage(bytes, "windows-1252", sink, monitor);
    });
}

struct Row {
    const char* name;
    std::string_view page;
    std::string_view shown;
};

TEST(HtmlBeside, TellsEachThingAtItsParagraph) {
    const Row rows[] = {
        {"nothing but words", "<p>a<p>b", ""},
        {"links", "<p>a<p>b <a href='http://x/?a=1&amp;b=2'>c</a> <a name=n>d</a>",
         "links 2 http://x/?a=1&b=2; "},
        {"pictures by their words, or by their file",
         "<p>a<p>b<img src='p/x.png?v=2'><p><img alt='Logo' src=y.png>c",
         "pictures 2 x.png; pictures 3 Logo; "},
        {"a picture inside of the page", "<p>a<img src='data:image/png;base64,YWI='>",
         "pictures 1 picture; "},
        {"a drawing and a formula",
         "<p>a<svg><circle r=5 /></svg><p>b<math><msup><mi>x</mi><mn>2</mn></msup></math>",
         "drawings 1 drawing; formulas 2 x^2; "},
        {"other pages and films",
         "<p>a<iframe src='http://y/'>z</iframe><video src=v.mp4>no"
         "</video>",
         "objects 1 http://y/; objects 1 v.mp4; "},
        {"what the page says of itself",
         "<head><title>T &amp; U</title><meta name=Author content=Ann><meta name=generator "
         "content=x></head><p>a",
         "metadata 0 title: T & U; metadata 0 author: Ann; "},
        {"hidden text, by the page and by a style, not that of scripts",
         "<p>a<span hidden>b <b>c</b></span><script>d</script><p style='display:none'>e</p>"
         "<p>f<select><option>g<option>h</select><datalist>i</datalist>",
         "hidden 1 b c; hidden 2 e; "},
        {"a title that never ends", "<title>x", "metadata 0 title: x; "},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(ShownItems(PageItems(row.page)), row.shown);
    }
}

TEST(HtmlBeside, SeesAPictureInsideOfThePageChange) {
    const auto told = [](std::string_view original, std::string_view modified) {
        return BesideSentence(CompareBeside(PageItems(original), PageItems(modified), {1, 2, 3}));
    };
    constexpr std::string_view kPage = "<p>a<p>b<img alt=p src='data:image/png;base64,YWI='>";
    EXPECT_EQ(told(kPage, "<p>a<p>b<img alt=p src='data:image/png;base64,\n YWI ='>"), "");
    EXPECT_EQ(told(kPage, "<p>a<p>b<img alt=p src='data:image/png;base64,YWM='>"),
              "Beside the words: 1 picture replaced (paragraph 2).");
    EXPECT_EQ(told("<svg><circle r=5></svg>", "<svg><circle r=6></svg>"),
              "Beside the words: 1 drawing replaced (paragraph 1).");
    EXPECT_EQ(
        told("<math><msup><mi>x</mi><mn>2</mn></msup></math>", "<math><mi>x</mi><mn>2</mn></math>"),
        "Beside the words: 1 formula changed (paragraph 1).");
}

TEST(MarkdownBeside, KnowsTheAddressesOfLinksAndPictures) {
    const Row rows[] = {
        {"in parentheses", "a\n\n[x](http://y/) [z](<b c> 't')",
         "links 2 http://y/; links 2 b c; "},
        {"parentheses and quotes inside", "[x](a_(b)) [y](c\\)d) [z](e\"f)",
         "links 1 a_(b); links 1 c)d; links 1 e\"f; "},
        {"by a label, by its own text", "[x][L] [m]\n\n[l]: http://l/ 't'\n[m]: http://m/\n",
         "links 1 http://l/; links 1 http://m/; "},
        {"an address by itself", "<http://x/>", "links 1 http://x/; "},
        {"a picture", "a\n\n![Logo](p/x.png)\n", "pictures 2 x.png; "},
        {"a picture as a link", "[![Logo](x.png)](http://y/)",
         "links 1 http://y/; pictures 1 x.png; "},
        {"no link", "[x] (y)", ""},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(ShownItems(MarkdownItems(row.page)), row.shown);
    }
}

TEST(MarkdownBeside, KnowsLongAddressesThatManyLinksShare) {
    const auto items = [](const std::string& end) {
        std::string page = "[a]: http://x/" + std::string(100'000, 'y') + end + "\n\n";
        for (int i = 0; i < 10'000; ++i)
            page += "[a]\n";
        return MarkdownItems(page);
    };
    const std::vector<BesideItem> first = items("1");
    ASSERT_FALSE(first.empty());
    EXPECT_TRUE(first[0].text.starts_with("http://x/yyy")) << first[0].text;
    EXPECT_EQ(first, items("1"));
    EXPECT_NE(first[0].digest, items("2").at(0).digest);
}

TEST(MarkdownBeside, GoesWithPlainTextByItsLines) {
    const auto sink = MakePlainSink();
    SilentMonitor monitor;
    ASSERT_TRUE(ReadMarkdown("a  \nb\n\n[x](http://y/)\n", *sink, monitor).ok());
    EXPECT_EQ(ShownItems(sink->TakeBeside()), "links 3 http://y/; ");
    EXPECT_EQ(sink->Finish(), "a\nb\r\nx\r\n");
}

TEST(EpubBeside, KnowsTheFilesOfTheBook) {
    const auto items = [](std::string_view picture, std::string_view title) {
        const std::string book =
            "<package><metadata><dc:title>" + std::string(title) +
            "</dc:title></metadata><manifest><item id='a' href='one.xhtml' "
            "media-type='application/xhtml+xml'/></manifest><spine><itemref idref='a'/></spine>"
            "</package>";
        const std::string bytes = MakeZip(
            {{"META-INF/container.xml",
              "<container><rootfiles><rootfile full-path='OPS/book.opf'/></rootfiles>"
              "</container>"},
             {"OPS/book.opf", book},
             {"OPS/one.xhtml", "<html><body><p>one<img src='../img/a%20b.png'/></p></body></html>"},
             {"img/a b.png", picture}});
        const auto package = Package::Open(bytes);
        return BesideItemsOf([&](DocumentSink& sink, ReadMonitor& monitor) {
            return ReadEpub(*package, sink, monitor);
        });
    };
    EXPECT_EQ(ShownItems(items("x", "T")), "metadata 0 title: T; pictures 1 a%20b.png; ");
    EXPECT_EQ(items("x", "T"), items("x", "T"));
    EXPECT_EQ(BesideSentence(CompareBeside(items("x", "T"), items("y", "U"), {1})),
              "Beside the words: 1 picture replaced (paragraph 1), 1 document property changed "
              "(title).");
}

TEST(MessageBeside, TellsAttachmentsByTheirContent) {
    const auto message = [](std::string_view file, std::string_view picture) {
        return "Subject: s\nContent-Type: multipart/mixed; boundary=b\n\n--b\nContent-Type: "
               "multipart/related; boundary=c\n\n--c\nContent-Type: text/html\n\n<p>hi\n--c\n"
               "Content-Type: image/png; name=logo.png\nContent-ID: <x>\n"
               "Content-Transfer-Encoding: base64\n\n" +
               std::string(picture) +
               "\n--c--\n--b\nContent-Type: application/pdf; name=\"=?utf-8?q?pl=C3=A4ne?=\"\n\n" +
               std::string(file) + "\n--b--\n";
    };
    const auto told = [&](const std::string& other) {
        return BesideSentence(
            CompareBeside(MessageItems(message("one", "YWI=")), MessageItems(other), {1, 2, 3, 4}));
    };
    EXPECT_EQ(ShownItems(MessageItems(message("one", "YWI="))),
              "pictures 4 logo.png; objects 4 pl\xC3\xA4ne; ");
    EXPECT_EQ(told(message("one", "YWI=")), "");
    EXPECT_EQ(told(message("one", "Y\nWI=")), "");
    EXPECT_EQ(told(message("two", "YWI=")),
              "Beside the words: 1 embedded object replaced (paragraph 4).");
    EXPECT_EQ(told(message("one", "YWM=")), "Beside the words: 1 picture replaced (paragraph 4).");
}

}  // namespace
}  // namespace zorvane::web_beside_test
