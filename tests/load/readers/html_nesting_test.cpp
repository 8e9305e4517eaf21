// Pages of random tags, read by our parser and by the library that builds the whole tree as the
// standard says: both must find the same text in the same elements.
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "load/readers/web/html_parser.h"

namespace zorvane::html_nesting_test {
namespace {

// Each run of text with the formats it stands in, such as "b:w1 bi:w2".
class FormatLog : public HtmlHandler {
  public:
    void Open(const HtmlElement& element) override { open_.push_back(element.tag); }
    void Close() override { open_.pop_back(); }
    void Lift(std::size_t level) override {
        ASSERT_LT(level, open_.size());
        open_.erase(open_.begin() + static_cast<std::ptrdiff_t>(level));
    }
    void Text(std::string_view utf8) override { Add(open_, utf8); }
    void Style(std::string_view /*css*/) override {}
    bool Proceed(std::size_t /*done*/, std::size_t /*total*/) override { return true; }
    bool AllClosed() const { return open_.empty(); }
    const std::string& Log() const { return log_; }

    void Add(const std::vector<GumboTag>& open, std::string_view text) {
        for (const char character : text) {
            if (character == ' ')
                continue;
            const std::string formats = FormatsOf(open);
            if (formats != last_)
                log_ += " " + formats + ":";
            last_ = formats;
            log_ += character;
        }
    }

  private:
    static std::string FormatsOf(const std::vector<GumboTag>& open) {
        std::string formats;
        for (const auto& [tag, letter] : {std::pair{GUMBO_TAG_B, 'b'},
                                          {GUMBO_TAG_I, 'i'},
                                          {GUMBO_TAG_U, 'u'},
                                          {GUMBO_TAG_A, 'a'},
                                          {GUMBO_TAG_TD, 'd'},
                                          {GUMBO_TAG_LI, 'l'},
                                          {GUMBO_TAG_H1, 'h'}}) {
            if (std::find(open.begin(), open.end(), tag) != open.end())
                formats += letter;
        }
        return formats;
    }

    std::vector<GumboTag> open_;
    std::string last_ = "?";
    std::string log_;
};

void AddTree(const GumboNode& node, std::vector<GumboTag>& open, FormatLog& log) {
    if (node.type == GUMBO_NODE_TEXT) {
        log.Add(open, node.v.text.text);
    } else if (node.type == GUMBO_NODE_ELEMENT) {
        open.push_back(node.v.element.tag);
        for (unsigned child = 0; child < node.v.element.children.length; ++child)
            AddTree(*static_cast<const GumboNode*>(node.v.element.children.data[child]), open, log);
        open.pop_back();
    }
}

std::string ByTree(const std::string& page) {
    GumboOutput* output = gumbo_parse_with_options(&kGumboDefaultOptions, page.data(), page.size());
    FormatLog log;
    std::vector<GumboTag> open;
    AddTree(*output->root, open, log);
    gumbo_destroy_output(&kGumboDefaultOptions, output);
    return log.Log();
}

std::string ByParser(const std::string& page) {
    FormatLog log;
    HtmlParser parser(page, HtmlSyntax::Html, log);
    EXPECT_TRUE(parser.Run());
    EXPECT_TRUE(log.AllClosed());
    return log.Log();
}

std::string RandomPage(std::mt19937& random, const std::vector<std::string>& tags) {
    std::string page = "<!DOCTYPE html>";
    const std::size_t pieces = 3 + random() % 14;
    for (std::size_t piece = 0; piece < pieces; ++piece) {
        const std::string& tag = tags[random() % tags.size()];
        const auto kind = random() % 5;
        page += kind < 2 ? "<" + tag + ">" : kind < 4 ? "</" + tag + ">" : "";
        page += static_cast<char>('0' + piece % 10);
    }
    return page;
}

void CompareRandomPages(unsigned seed, const std::vector<std::string>& tags) {
    std::mt19937 random(seed);
    for (int count = 0; count < 3000; ++count) {
        const std::string page = RandomPage(random, tags);
        ASSERT_EQ(ByParser(page), ByTree(page)) << page;
    }
}

TEST(HtmlNesting, OfBlocksIsThatOfTheStandard) {
    CompareRandomPages(1, {"p", "div", "ul", "ol", "li", "h1", "h2", "dl", "dt", "dd", "blockquote",
                           "section", "span", "address", "button", "br", "hr", "pre"});
}

TEST(HtmlNesting, OfFormatsIsThatOfTheStandard) {
    CompareRandomPages(2, {"b", "i", "u", "span", "a"});
}

TEST(HtmlNesting, OfFormatsInParagraphsIsThatOfTheStandard) {
    CompareRandomPages(3, {"b", "i", "p", "h1", "li"});
}

TEST(HtmlNesting, OfCompleteTablesIsThatOfTheStandard) {
    std::mt19937 random(4);
    const std::vector<std::string> inside = {"p",  "b",    "div", "li", "td",
                                             "tr", "span", "/td", "/b"};
    for (int count = 0; count < 2000; ++count) {
        std::string page = "<!DOCTYPE html>x<table><tr><td>";
        for (int piece = 0; piece < 8; ++piece) {
            const std::string& tag = inside[random() % inside.size()];
            page += "<" + tag + ">";
            // Text beside the cells goes elsewhere by rules that concern no readable page.
            page += tag == "tr" || tag == "/td" ? "<td>" : "";
            page += static_cast<char>('0' + piece);
        }
        page += "</table>y";
        ASSERT_EQ(ByParser(page), ByTree(page)) << page;
    }
}

TEST(HtmlNesting, KeepsEveryCharacterOfAnyPage) {
    std::mt19937 random(5);
    const std::vector<std::string> tags = {"p",  "b",  "table", "tr", "td",   "svg",    "a",
                                           "li", "ul", "i",     "th", "body", "button", "object"};
    for (int count = 0; count < 3000; ++count) {
        const std::string page = RandomPage(random, tags);
        std::string found;
        for (const char character : ByParser(page)) {
            if (character >= '0' && character <= '9')
                found += character;
        }
        std::string expected;
        for (const char character : page) {
            if (character >= '0' && character <= '9')
                expected += character;
        }
        ASSERT_EQ(found, expected) << page;
    }
}

}  // namespace
}  // namespace zorvane::html_nesting_test
