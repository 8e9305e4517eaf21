// What changed between two stretches of text, found without a document around them.
#pragma once

#include <string_view>
#include <vector>

#include "compare/engine/comparison.h"
#include "compare/engine/pairing/section_finder.h"

namespace zorvane {

namespace found_sections {

inline DetailPlace Place(const UnitRange& range) {
    return {0, 0, range.begin, range.end};
}

inline void SetPlaces(const UnitRange& first, const UnitRange& second, DetailRecord& detail) {
    detail.places.original = Place(first);
    detail.places.modified = Place(second);
    detail.type = first.Length() == 0    ? DifferenceType::Addition
                  : second.Length() == 0 ? DifferenceType::Deletion
                                         : DifferenceType::Change;
}

}  // namespace found_sections

/// A comparison that holds sections and letters and nothing else; their numbers are 0.
inline Comparison FoundSections(std::u16string_view original, std::u16string_view modified,
                                const SectionSwitches& switches = {}) {
    SectionFinder finder(switches);
    std::vector<FoundSection> sections;
    std::vector<FoundLetters> letters;
    finder.Find(original, modified, nullptr, sections, letters);
    Comparison comparison;
    for (const FoundSection& found : sections) {
        SectionDetail section;
        found_sections::SetPlaces(found.first, found.second, section);
        section.first_character = found.first_letter;
        section.character_count = found.letter_count;
        comparison.sections.push_back(section);
    }
    for (const FoundLetters& found : letters) {
        DetailRecord letter;
        found_sections::SetPlaces(found.first, found.second, letter);
        comparison.characters.push_back(letter);
    }
    return comparison;
}

}  // namespace zorvane
