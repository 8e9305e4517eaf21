// A comparison in one line of text, for tables of expectations.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "common/base/text_encoding.h"
#include "compare/engine/compare_texts.h"

namespace zorvane {

/// " / " parts paragraphs.
inline std::u16string ParagraphsOf(std::string_view notation) {
    constexpr std::string_view kBetween = " / ";
    std::string text;
    std::size_t at = 0;
    while (true) {
        const std::size_t end = notation.find(kBetween, at);
        text += notation.substr(at, end - at);
        if (end == std::string_view::npos)
            return ToUtf16(text);
        text += "\r\n";
        at = end + kBetween.size();
    }
}

inline Comparison Compared(std::string_view original, std::string_view modified,
                           const CompareOptions& options = {}) {
    Result<Comparison> comparison =
        CompareTexts({std::make_shared<const std::u16string>(ParagraphsOf(original)),
                      std::make_shared<const std::u16string>(ParagraphsOf(modified))},
                     options, nullptr);
    EXPECT_TRUE(comparison.ok());
    return std::move(comparison).value();
}

/// A text with its breaks as pilcrows; a return without a feed shows as "<CR>".
inline std::string WithPilcrows(std::u16string_view text) {
    std::u16string out;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const bool feed_follows = at + 1 < text.size() && text[at + 1] == u'\n';
        if (text[at] == u'\n')
            out += u'\u00B6';
        else if (text[at] != u'\r')
            out += text[at];
        else if (!feed_follows)
            out += u"<CR>";
    }
    return ToUtf8(out);
}

/// The original with `[-deleted-]` and `{+added+}`, for any list of differences in it.
template <class Details>
std::string MarkedText(std::u16string_view original, std::u16string_view modified,
                       const Details& details) {
    std::string out;
    std::int32_t at = 0;
    const auto part = [](std::u16string_view text, std::int32_t begin, std::int32_t end) {
        return WithPilcrows(
            text.substr(static_cast<std::size_t>(begin), static_cast<std::size_t>(end - begin)));
    };
    for (const DetailRecord& detail : details) {
        out += part(original, at, detail.places.original.begin);
        at = detail.places.original.end;
        if (detail.places.original.Length() > 0)
            out += "[-" + part(original, detail.places.original.begin, detail.places.original.end) +
                   "-]";
        if (detail.places.modified.Length() > 0)
            out += "{+" + part(modified, detail.places.modified.begin, detail.places.modified.end) +
                   "+}";
    }
    return out + part(original, at, static_cast<std::int32_t>(original.size()));
}

/// Records parted by " | ": "d text", "a text", "c marked text"; "d>" and "a>" have moved, and the
/// one that adds shows what changed on the way.
inline std::string NotationOf(const Comparison& comparison) {
    std::string out;
    for (std::size_t i = 0; i < comparison.records.size(); ++i) {
        const DifferenceRecord& record = comparison.records[i];
        const Move* move = comparison.MoveOf(i);
        const std::u16string original = comparison.Text(Side::Original, record);
        const std::u16string modified = comparison.Text(Side::Modified, record);
        out += i == 0 ? "" : " | ";
        out += static_cast<char>(record.type);
        out += move != nullptr ? "> " : " ";
        if (record.type == DifferenceType::Deletion)
            out += WithPilcrows(original);
        else if (record.type == DifferenceType::Change)
            out += MarkedText(original, modified, comparison.SectionsOf(i));
        else if (move == nullptr)
            out += WithPilcrows(modified);
        else
            out += MarkedText(comparison.Text(Side::Original, comparison.Record(move->deletion)),
                              modified, comparison.SectionsOf(*move));
    }
    return out;
}

}  // namespace zorvane
