#include "compare/view/spoken_difference.h"

#include <algorithm>

#include "common/base/surrogates.h"
#include "common/base/text_encoding.h"
#include "compare/engine/place_text.h"

namespace zorvane {
namespace {

bool IsSilent(char16_t unit) {
    return unit <= u' ' || unit == u'\u00A0' || unit == u'\u3000';
}

// Without blanks at both ends; each run of blanks and breaks inside is one blank.
std::u16string Plain(std::u16string_view text) {
    std::u16string plain;
    bool blank = false;
    for (const char16_t unit : text) {
        if (IsSilent(unit)) {
            blank = !plain.empty();
            continue;
        }
        if (blank)
            plain += u' ';
        blank = false;
        plain += unit;
    }
    return plain;
}

class Speaker {
  public:
    Speaker(const Comparison& comparison, std::size_t index, const TranslateText& translate,
            const SpokenRules& rules)
        : comparison_(comparison),
          index_(index),
          record_(comparison.records[index]),
          translate_(translate),
          rules_(rules) {}

    std::string Speak() {
        std::string text = translate_("change") + " " + std::to_string(index_ + 1) + " " +
                           translate_("of") + " " + std::to_string(comparison_.records.size());
        if (rules_.with_place)
            text += ", " + translate_("paragraph") + " " +
                    std::to_string(std::max(1, record_.paragraphs.original.first.value));
        return text + ": " + What();
    }

  private:
    std::string What() {
        if (record_.type == DifferenceType::Change)
            return Places(record_, record_, comparison_.SectionsOf(index_));
        if (const Move* move = comparison_.MoveOf(index_))
            return Moved(*move);
        const bool added = record_.type == DifferenceType::Addition;
        const Side side = added ? Side::Modified : Side::Original;
        const std::int32_t count = record_.Count(side);
        std::string what;
        if (count == 1)
            what = translate_(added ? "paragraph inserted" : "paragraph deleted");
        else
            what = std::to_string(count) + " " +
                   translate_(added ? "paragraphs inserted" : "paragraphs deleted");
        return what + ": " + Told(comparison_.Text(side, record_));
    }

    std::string Moved(const Move& move) {
        const DifferenceRecord& from = comparison_.Record(move.deletion);
        const DifferenceRecord& to = comparison_.Record(move.addition);
        const bool here = record_.type == DifferenceType::Deletion;
        std::string what = (here ? translate_("moved to paragraph") + " " +
                                       std::to_string(to.paragraphs.modified.first.value)
                                 : translate_("moved from paragraph") + " " +
                                       std::to_string(from.paragraphs.original.first.value)) +
                           ": " +
                           Told(here ? comparison_.Text(Side::Original, from)
                                     : comparison_.Text(Side::Modified, to));
        const auto sections = comparison_.SectionsOf(move);
        return sections.empty() ? what : what + "; " + Places(from, to, sections);
    }

    // What differs inside two texts, place by place.
    std::string Places(const DifferenceRecord& original, const DifferenceRecord& modified,
                       std::span<const SectionDetail> sections) {
        std::u16string old_buffer;
        std::u16string new_buffer;
        const std::u16string_view old_text = comparison_.Text(Side::Original, original, old_buffer);
        const std::u16string_view new_text = comparison_.Text(Side::Modified, modified, new_buffer);
        if (sections.empty())
            return Exchange(old_text, new_text);
        std::string text;
        const std::size_t told = std::min(sections.size(), rules_.most_places);
        for (std::size_t i = 0; i < told; ++i) {
            text += i == 0 ? "" : "; ";
            text += Exchange(TextAt(sections[i].places.original, old_text),
                             TextAt(sections[i].places.modified, new_text));
        }
        if (told < sections.size())
            text += "; " + std::to_string(sections.size() - told) + " " + translate_("more");
        return text;
    }

    std::string Exchange(std::u16string_view old_text, std::u16string_view new_text) {
        std::string text;
        if (!old_text.empty())
            text = translate_("deleted") + " " + Told(old_text);
        if (!new_text.empty())
            text += (text.empty() ? "" : ", ") + translate_("inserted") + " " + Told(new_text);
        return text;
    }

    // Nothing but blanks must be heard too.
    std::string Told(std::u16string_view text) {
        std::u16string plain = Plain(text);
        if (!plain.empty())
            return Cut(std::move(plain));
        if (text.empty())
            return translate_("empty");
        if (text.find(u"\r\n") != std::u16string_view::npos)
            return translate_("paragraph break");
        return translate_(text.find(u'\t') != std::u16string_view::npos ? "tab" : "blank");
    }

    std::string Cut(std::u16string plain) {
        if (plain.size() <= rules_.longest)
            return ToUtf8(plain);
        std::size_t end = plain.rfind(u' ', rules_.longest);
        if (end == std::u16string::npos)  // one long word, or writing without blanks
            end = rules_.longest - (IsHighSurrogate(plain[rules_.longest - 1]) ? 1 : 0);
        plain.resize(end);
        return ToUtf8(plain) + "...";
    }

    const Comparison& comparison_;
    std::size_t index_;
    const DifferenceRecord& record_;
    const TranslateText& translate_;
    const SpokenRules& rules_;
};

}  // namespace

std::string SpokenDifference(const Comparison& comparison, std::int32_t index,
                             const TranslateText& translate, const SpokenRules& rules) {
    if (index < 0 || static_cast<std::size_t>(index) >= comparison.records.size())
        return {};
    return Speaker(comparison, static_cast<std::size_t>(index), translate, rules).Speak();
}

}  // namespace zorvane
