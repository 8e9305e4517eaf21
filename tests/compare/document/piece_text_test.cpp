#include "compare/document/piece_text.h"

#include <random>

#include <gtest/gtest.h>

#include "compare/document/format_table.h"

namespace zorvane::piece_text_test {
namespace {

std::u16string Joined(const std::vector<std::u16string_view>& pieces) {
    std::u16string text;
    for (const std::u16string_view piece : pieces)
        text += piece;
    return text;
}

// Stretches so long that the text is put together anew again and again, and letters.
TEST(PieceTextProperty, AgreesWithAString) {
    for (unsigned seed = 0; seed < 4; ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        const auto below = [&](std::size_t limit) { return random() % limit; };
        PieceText text;
        std::u16string plain(below(300'000), u'a');
        text.Assign(plain);
        for (int edit = 0; edit < 60; ++edit) {
            const std::size_t most = below(3) == 0 ? 400'000 : 5;
            const std::size_t first = below(plain.size() + 1);
            const std::size_t length = std::min(below(most), plain.size() - first);
            const std::u16string put(below(most), static_cast<char16_t>(u'a' + below(26)));
            plain.replace(first, length, put);
            text.Replace(static_cast<std::int32_t>(first), static_cast<std::int32_t>(length), put);
            ASSERT_EQ(text.Length(), std::ssize(plain));
            const std::size_t begin = below(plain.size() + 1);
            const std::size_t end = begin + below(plain.size() - begin + 1);
            const auto taken = static_cast<std::int32_t>(end - begin);
            ASSERT_TRUE(text.Take(static_cast<std::int32_t>(begin), taken) ==
                        plain.substr(begin, end - begin));
            ASSERT_TRUE(Joined(text.Pieces(0, text.Length())) == plain);
            const std::size_t next = plain.find(u'k', begin);
            ASSERT_EQ(text.Next(u'k', static_cast<std::int32_t>(begin)),
                      next == std::u16string::npos ? -1 : static_cast<std::int32_t>(next));
            const std::size_t last = begin == 0 ? next : plain.rfind(u'k', begin - 1);
            ASSERT_EQ(
                text.Last(u'k', static_cast<std::int32_t>(begin)),
                begin == 0 || last == std::u16string::npos ? -1 : static_cast<std::int32_t>(last));
        }
        ASSERT_TRUE(text.TakeAll() == plain);
        EXPECT_EQ(text.Length(), 0);
    }
}

template <class Format>
void ExpectEachOnce(const std::vector<Format>& formats) {
    FormatTable<Format> table;
    for (int round = 0; round < 2; ++round) {
        for (std::size_t at = 0; at < formats.size(); ++at) {
            ASSERT_EQ(table.NumberOf(formats[at]), static_cast<std::int32_t>(at));
            ASSERT_EQ(table.At(static_cast<std::int32_t>(at)), formats[at]);
        }
    }
}

TEST(FormatTable, KnowsEachFormatOnce) {
    std::vector<CharFormat> formats(10);
    formats[1].bold = true;
    formats[2].italic = true;
    formats[3].strikeout = true;
    formats[4].hidden = true;
    formats[5].fore_color = Color{0};
    formats[6].back_color = Color{0};
    formats[7].underline = Underline::Single;
    formats[8].baseline = Baseline::Subscript;
    formats[9].font = FontName("Arial");
    for (std::int32_t size = 21; size < 1500; ++size)
        formats.emplace_back().half_points = size;
    ExpectEachOnce(formats);
    std::vector<ParagraphFormat> paragraphs(9);
    paragraphs[1].alignment = Alignment::Right;
    paragraphs[2].right_to_left = true;
    paragraphs[3].left_indent = 1;
    paragraphs[4].right_indent = 1;
    paragraphs[5].line_spacing_multiple = true;
    paragraphs[6].tabs = {{1, TabKind::Left}};
    paragraphs[7].tabs = {{1, TabKind::Bar}};
    paragraphs[8].tabs = {{1, TabKind::Left}, {2, TabKind::Left}};
    for (std::int32_t space = 1; space < 1500; ++space)
        paragraphs.emplace_back().space_after = space;
    ExpectEachOnce(paragraphs);
}

}  // namespace
}  // namespace zorvane::piece_text_test
