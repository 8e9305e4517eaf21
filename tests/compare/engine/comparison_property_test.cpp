// What holds for every pair under every set of options, on random pairs with fixed seeds.
#include <functional>
#include <random>

#include <gtest/gtest.h>

#include "compare/engine/report_model.h"
#include "tests/support/comparison_check.h"

namespace zorvane {
namespace {

using Texts = std::vector<std::u16string>;

// Documents as people and programs write them: sentences, headings, blank paragraphs, rows, lists,
// copies, scripts without blanks, what ends in blanks.
class DocumentMaker {
  public:
    explicit DocumentMaker(unsigned seed) : random_(seed) {}

    unsigned Below(unsigned end) { return static_cast<unsigned>(random_()) % end; }

    Texts Document(unsigned paragraphs) {
        Texts made;
        for (unsigned i = 0; i < paragraphs; ++i)
            made.push_back(Paragraph());
        return made;
    }

    std::u16string Paragraph() {
        switch (Below(10)) {
            case 0:
                return u"";
            case 1:
                return Below(2) == 0 ? u"General" : u"  ,   ,  ";
            case 2:
                return u"| " + Word() + u" | " + Word() + u" | " + Word() + u" |";
            case 3:
                return Word() + u"," + Word() + u"," + Word();
            case 4:
                return Han(4 + Below(20));
            default:
                return Sentences(1 + Below(3));
        }
    }

    Texts Edited(const Texts& document, unsigned per_cent) {
        Texts edited;
        for (std::size_t i = 0; i < document.size(); ++i) {
            const std::u16string& paragraph = document[i];
            if (Below(100) >= per_cent) {
                edited.push_back(paragraph);
                continue;
            }
            Edit(paragraph, i + 1 < document.size() ? &document[i + 1] : nullptr, i, edited);
        }
        if (edited.size() > 4 && Below(3) == 0)
            MoveBlock(edited);
        return edited;
    }

  private:
    void Edit(const std::u16string& paragraph, const std::u16string* next, std::size_t& i,
              Texts& edited) {
        const std::size_t blank = paragraph.find(u' ', paragraph.size() / 2);
        const bool has_blank = blank != std::u16string::npos;
        const std::u16string front = has_blank ? paragraph.substr(0, blank) : paragraph;
        const std::u16string back = has_blank ? paragraph.substr(blank + 1) : Word();
        switch (Below(9)) {
            case 0:
                return;
            case 1:
                edited.push_back(paragraph);
                edited.push_back(Paragraph());
                return;
            case 2:
                edited.push_back(front);
                edited.push_back(back);
                return;
            case 3:
                edited.push_back(paragraph + u" " + (next != nullptr ? *next : Word()));
                i += next != nullptr ? 1 : 0;
                return;
            case 4:
                edited.push_back(paragraph + (Below(2) == 0 ? u" " : u"\u00A0"));
                return;
            case 5:
                edited.push_back(front + u"\u00A0" + back);
                return;
            case 6:
                edited.push_back(front + u" " + Word() + u" " + back);
                return;
            case 7:
                edited.push_back(Capitals(paragraph));
                return;
            default:
                edited.push_back(front + u"s " + Word());
        }
    }

    void MoveBlock(Texts& document) {
        const std::size_t from = Below(static_cast<unsigned>(document.size()) - 2);
        const Texts block(document.begin() + static_cast<std::ptrdiff_t>(from),
                          document.begin() + static_cast<std::ptrdiff_t>(from) + 2);
        document.erase(document.begin() + static_cast<std::ptrdiff_t>(from),
                       document.begin() + static_cast<std::ptrdiff_t>(from) + 2);
        const auto to = static_cast<std::ptrdiff_t>(Below(static_cast<unsigned>(document.size())));
        document.insert(document.begin() + to, block.begin(), block.end());
    }

    std::u16string Word() {
        static constexpr const char16_t* kWords[] = {
            u"the",    u"of",         u"to",         u"and",        u"a",     u"keeper", u"lantern",
            u"winter", u"harbour",    u"committee",  u"door",       u"2024",  u"17",     u"-",
            u"größer", u"cafe\u0301", u"\U0001F600", u"\U0001F601", u"don't", u"x",      u"tide"};
        return Below(4) == 0
                   ? u"word" + std::u16string(1, static_cast<char16_t>(u'a' + Below(26))) +
                         std::u16string(1, static_cast<char16_t>(u'a' + Below(26)))
                   : kWords[Below(static_cast<unsigned>(std::size(kWords)))];
    }
    std::u16string Sentences(unsigned count) {
        std::u16string text;
        for (unsigned i = 0; i < count; ++i) {
            text += i == 0 ? u"" : u" ";
            for (unsigned words = 3 + Below(9); words > 0; --words)
                text += Word() + (words == 1 ? u"." : Below(6) == 0 ? u", " : u" ");
        }
        return text;
    }
    std::u16string Han(unsigned count) {
        std::u16string text;
        for (unsigned i = 0; i < count; ++i)
            text += Below(8) == 0 ? u'\u3002' : static_cast<char16_t>(0x4E00 + Below(60));
        return text;
    }
    static std::u16string Capitals(std::u16string text) {
        for (char16_t& unit : text)
            unit = unit >= u'a' && unit <= u'z' ? static_cast<char16_t>(unit - 32) : unit;
        return text;
    }

    std::mt19937 random_;
};

SharedText TextOf(const Texts& paragraphs) {
    std::u16string text;
    for (std::size_t i = 0; i < paragraphs.size(); ++i)
        text += (i == 0 ? u"" : u"\r\n") + paragraphs[i];
    return std::make_shared<const std::u16string>(std::move(text));
}

Comparison CompareChecked(const PerSide<SharedText>& texts, const CompareOptions& options) {
    Result<Comparison> result = CompareTexts(texts, options, nullptr);
    EXPECT_TRUE(result.ok());
    Comparison comparison = std::move(result).value();
    ComparisonCheck(comparison, options).Run();
    return comparison;
}

struct OptionRow {
    const char* name;
    CompareOptions options;
};
const OptionRow kOptionRows[] = {
    {"none", {}},
    {"letters", {.by_character = true}},
    {"case", {.ignore_case = true}},
    {"case, letters", {.ignore_case = true, .by_character = true}},
    {"white space", {.ignore_whitespace = true}},
    {"white space, letters", {.ignore_whitespace = true, .by_character = true}},
    {"blank paragraphs", {.ignore_empty_lines = true}},
    {"blank paragraphs, larger", {.ignore_empty_lines = true, .larger_sections = true}},
    {"expressions", {.expressions = "[0-9]+"}},
    {"expressions in words", {.expressions = "[0-9]+@@^the", .filter_sections = true}},
    {"faster", {.faster = true}},
    {"larger", {.larger_sections = true}},
    {"larger, letters", {.larger_sections = true, .by_character = true}},
    {"bracket", {.bracket = 2}},
    {"bracket, blank paragraphs", {.ignore_empty_lines = true, .bracket = 1}},
    {"no sections", {.find_sections = false}},
    {"no moves", {.find_moves = false}},
    {"all",
     {.ignore_case = true,
      .ignore_whitespace = true,
      .ignore_empty_lines = true,
      .faster = true,
      .larger_sections = true,
      .bracket = 3,
      .expressions = "x",
      .filter_sections = true,
      .by_character = true}},
};

// Records, sections and letters applied, in order, without half breaks or cut characters, mirrored
// when the sides are swapped, and the same again.
TEST(ComparisonProperty, HoldsForEveryPairUnderEveryOption) {
    unsigned seed = 100;
    for (const OptionRow& row : kOptionRows) {
        for (unsigned round = 0; round < 60; ++round) {
            SCOPED_TRACE(std::string(row.name) + ", seed " + std::to_string(++seed));
            DocumentMaker maker(seed);
            const Texts first = maker.Document(1 + maker.Below(round % 3 == 0 ? 40 : 8));
            const Texts second = round % 10 == 9 ? maker.Document(1 + maker.Below(20))
                                                 : maker.Edited(first, 10 + maker.Below(80));
            const PerSide<SharedText> texts{TextOf(first), TextOf(second)};
            const Comparison comparison = CompareChecked(texts, row.options);
            const Comparison swapped =
                CompareChecked({texts.modified, texts.original}, row.options);
            ExpectMirrored(comparison, swapped);
            const Comparison again = CompareChecked(texts, row.options);
            EXPECT_EQ(WriteTextReport({.comparison = again}),
                      WriteTextReport({.comparison = comparison}));
            if (testing::Test::HasFailure())
                return;  // one pair is enough to look at
        }
    }
}

// A text against itself differs in nothing, however it is looked at.
TEST(ComparisonProperty, NothingDiffersFromItself) {
    for (const OptionRow& row : kOptionRows) {
        SCOPED_TRACE(row.name);
        DocumentMaker maker(7);
        const SharedText text = TextOf(maker.Document(60));
        EXPECT_TRUE(CompareChecked({text, text}, row.options).Same());
    }
}

// Line files may hold what no editor does: no line at all, bytes that are no text.
TEST(ComparisonProperty, HoldsForLineFiles) {
    for (unsigned seed = 1; seed <= 60; ++seed) {
        SCOPED_TRACE(seed);
        DocumentMaker maker(seed);
        const Texts first = maker.Document(seed % 20);
        PerSide<std::string> files{ToUtf8(*TextOf(first)),
                                   ToUtf8(*TextOf(maker.Edited(first, 30)))};
        if (seed % 4 == 0)
            files.modified.insert(files.modified.size() / 2, "\xFF \xC2");
        const CompareOptions options{.by_character = true};
        const Result<Comparison> comparison = CompareLineFiles(
            {std::string_view(files.original), std::string_view(files.modified)}, options, nullptr);
        ASSERT_TRUE(comparison.ok());
        ComparisonCheck(comparison.value(), options).Run();
    }
}

// ---- stopping ----

class CountingWatcher : public RunWatcher {
  public:
    explicit CountingWatcher(int stop_at) : stop_at_(stop_at) {}
    bool KeepGoing() override {
        ++calls;
        return stop_at_ < 0 || calls < stop_at_;
    }
    void Progress(RunStep /*step*/, double part) override {
        EXPECT_GE(part, 0);
        EXPECT_LE(part, 1);
    }
    int calls = 0;

  private:
    int stop_at_;
};

TEST(CompareTexts, IsStoppedAtAnyCall) {
    DocumentMaker maker(3);
    const Texts first = maker.Document(20000);
    const PerSide<SharedText> texts{TextOf(first), TextOf(maker.Edited(first, 60))};
    CountingWatcher whole(-1);
    ASSERT_TRUE(CompareTexts(texts, {}, &whole).ok());
    ASSERT_GT(whole.calls, 5) << "nobody could stop this";
    for (int at = 1; at <= whole.calls; at += 1 + whole.calls / 4) {
        SCOPED_TRACE(at);
        CountingWatcher watcher(at);
        const Result<Comparison> stopped = CompareTexts(texts, {}, &watcher);
        ASSERT_FALSE(stopped.ok());
        EXPECT_EQ(stopped.failure().reason, kCompareStopped);
        EXPECT_LE(watcher.calls, at + 8) << "went on after the stop";
    }
}

TEST(CompareTexts, NamesABadExpression) {
    const PerSide<SharedText> texts{TextOf({u"a"}), TextOf({u"b"})};
    const Result<Comparison> result = CompareTexts(texts, {.expressions = "good@@[bad"}, nullptr);
    ASSERT_FALSE(result.ok());
    EXPECT_NE(result.failure().reason.find("[bad"), std::string::npos);
}

}  // namespace
}  // namespace zorvane
