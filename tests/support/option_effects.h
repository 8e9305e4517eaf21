// For every option and every level that it reaches a pair of texts that tells whether it was
// passed on. The same rows are asked of the engine, of its properties, of the option set and of
// both command lines.
#pragma once

#include <string>

#include "tests/support/comparison_notation.h"

namespace zorvane {

struct OptionEffect {
    const char* name;
    const char* original;  ///< " / " parts paragraphs
    const char* modified;
    CompareOptions base;     ///< what is set with and without the option
    CompareOptions options;  ///< `base` and the option
    const char* without;     ///< notation of the comparison, letters in place of their words
    const char* with;
};

inline const OptionEffect kOptionEffects[] = {
    {"case, paragraphs",
     "Alder stands here / Birch",
     "alder stands here / Birch",
     {},
     {.ignore_case = true},
     "c [-Alder -]{+alder +}stands here",
     ""},
    {"case, words",
     "Alder is hard wood",
     "alder was hard wood",
     {},
     {.ignore_case = true},
     "c [-Alder is -]{+alder was +}hard wood",
     "c Alder [-is -]{+was +}hard wood"},
    {"case, letters",
     "the HOUSES stand",
     "the housed stand",
     {.by_character = true},
     {.ignore_case = true, .by_character = true},
     "c the [-HOUSES-]{+housed+} stand",
     "c the HOUSE[-S-]{+d+} stand"},
    {"white space, paragraphs",
     "one  two three",
     "one two three",
     {},
     {.ignore_whitespace = true},
     "c one [- -]two three",
     ""},
    {"white space, words",
     "alder\tbirch is wood",
     "alder birch was wood",
     {},
     {.ignore_whitespace = true},
     "c [-alder\tbirch is -]{+alder birch was +}wood",
     "c alder\tbirch [-is -]{+was +}wood"},
    {"white space, letters",
     "mountain wolves ---------- ---------- forests everywhere",
     "mountain sheep ----------\u00A0---------- meadows everywhere",
     {.by_character = true},
     {.ignore_whitespace = true, .by_character = true},
     "c mountain [-wolves-]{+sheep+} ----------[- -]{+\u00A0+}---------- [-forest-]{+meadow+}s "
     "everywhere",
     "c mountain [-wolves-]{+sheep+} ---------- ---------- [-forest-]{+meadow+}s everywhere"},
    {"blank paragraphs", "one /  / two", "one / two", {}, {.ignore_empty_lines = true}, "d ", ""},
    {"padded rows",
     "one,two /   ,   ,    / three,four",
     "one,two / three,four",
     {},
     {.ignore_empty_lines = true},
     "d   ,   ,   ",
     ""},
    {"faster",
     "The lamp is cleaned every morning before the ferry leaves. The keeper notes the weather.",
     "The lamp is cleaned every morning before the ferry leaves. / The keeper notes the weather.",
     {},
     {.faster = true},
     "c The lamp is cleaned every morning before the ferry leaves.[- -]{+¶+}The keeper notes the "
     "weather.",
     "c The lamp is cleaned every morning before the ferry leaves.[- The keeper notes the "
     "weather.-] | a The keeper notes the weather."},
    {"larger sections, paragraphs",
     "alder grows / same / birch grows",
     "alder grew / same / birch grew",
     {},
     {.larger_sections = true},
     "c alder [-grows-]{+grew+} | c birch [-grows-]{+grew+}",
     "c alder [-grows-]{+grew+}¶same¶birch [-grows-]{+grew+}"},
    {"larger sections, words",
     "the red boat passed two houses of our small town",
     "the red ship passed two churches of our small town",
     {},
     {.larger_sections = true},
     "c the red [-boat -]{+ship +}passed two [-houses -]{+churches +}of our small town",
     "c the red [-boat passed two houses -]{+ship passed two churches +}of our small town"},
    {"bracket",
     "alder / birch",
     "cedar / elm / fir / alder / birch",
     {},
     {.bracket = 2},
     "a cedar¶elm¶fir",
     "d alder¶birch | a cedar¶elm¶fir¶alder¶birch"},
    {"expressions, paragraphs",
     "page 1 / birch",
     "page 2 / birch",
     {},
     {.expressions = "[0-9]+"},
     "c page [-1-]{+2+}",
     ""},
    {"expressions, in words too",
     "alder page 1 fir / birch",
     "alder page 2 elm / birch",
     {.expressions = "[0-9]+"},
     {.expressions = "[0-9]+", .filter_sections = true},
     "c alder page [-1 fir-]{+2 elm+}",
     "c alder page 1 [-fir-]{+elm+}"},
    {"no moves",
     "Oil lanterns must be emptied, dried and stored before the winter. / The boat house is locked "
     "at sunset by the warden of the week, who also puts out the fire.",
     "The boat house is locked at sunset by the warden of the week, who also puts out the fire. / "
     "Oil lanterns must be emptied, dried and stored before the winter.",
     {},
     {.find_moves = false},
     "d> Oil lanterns must be emptied, dried and stored before the winter. | a> Oil lanterns must "
     "be "
     "emptied, dried and stored before the winter.",
     "d Oil lanterns must be emptied, dried and stored before the winter. | a Oil lanterns must be "
     "emptied, dried and stored before the winter."},
    {"letters",
     "a horse here",
     "a house here",
     {},
     {.by_character = true},
     "c a [-horse -]{+house +}here",
     "c a ho[-r-]{+u+}se here"},
};

/// `NotationOf` with the letters of each section in the place of the section.
inline std::string LetterNotationOf(Comparison comparison) {
    std::vector<SectionDetail> flat;
    const auto flatten = [&](std::uint32_t first, std::uint32_t& count) {
        const auto begin = static_cast<std::uint32_t>(flat.size());
        for (std::uint32_t i = first; i < first + count; ++i) {
            const SectionDetail& section = comparison.sections[i];
            if (section.character_count == 0)
                flat.push_back(section);
            for (const DetailRecord& letter : comparison.CharactersOf(section)) {
                SectionDetail moved;
                static_cast<DetailRecord&>(moved) = letter;
                for (const auto& [place, from] :
                     {std::pair{&moved.places.original, section.places.original.begin},
                      std::pair{&moved.places.modified, section.places.modified.begin}}) {
                    place->begin += from;
                    place->end += from;
                }
                flat.push_back(moved);
            }
        }
        count = static_cast<std::uint32_t>(flat.size()) - begin;
        return begin;
    };
    for (RecordDetail& detail : comparison.details)
        detail.first_section = flatten(detail.first_section, detail.section_count);
    for (Move& move : comparison.moves)
        move.first_section = flatten(move.first_section, move.section_count);
    comparison.sections = std::move(flat);
    return NotationOf(comparison);
}

/// The row's texts as files of text hold them.
inline std::string FileOf(const char* notation) {
    std::string text = ToUtf8(ParagraphsOf(notation));
    std::erase(text, '\r');
    return text;
}

}  // namespace zorvane
