// The differences beside the words as one sentence.
#include <algorithm>

#include "compare/document/beside_compare.h"

namespace zorvane {
namespace {

constexpr std::size_t kMostPlaces = 6;

std::string PlaceOf(const BesideDifference& difference) {
    if (difference.paragraphs.modified.value > 0)
        return std::to_string(difference.paragraphs.modified.value);
    if (difference.paragraphs.original.value > 0)
        return "original " + std::to_string(difference.paragraphs.original.value);
    const std::string& text =
        difference.new_text.empty() ? difference.old_text : difference.new_text;
    return std::string(BesidePlace({difference.kind, 0, text, {}}));
}

// " (paragraph 3)", " (12, 40)", " (1, 2, 3, 4, 5, 6 and 7 more)".
std::string PlacesOf(const std::vector<const BesideDifference*>& group) {
    std::vector<std::string> places;
    for (const BesideDifference* difference : group) {
        std::string place = PlaceOf(*difference);
        if (!place.empty() && std::find(places.begin(), places.end(), place) == places.end())
            places.push_back(std::move(place));
    }
    if (places.empty())
        return {};
    const BesideDifference& first = *group.front();
    if (places.size() == 1 && first.paragraphs.modified.value > 0)
        return " (paragraph " + places[0] + ")";
    if (places.size() == 1 && first.paragraphs.original.value > 0)
        return " (paragraph " + std::to_string(first.paragraphs.original.value) +
               " of the original)";
    std::string text = " (";
    for (std::size_t i = 0; i < std::min(places.size(), kMostPlaces); ++i)
        text += (i == 0 ? "" : ", ") + places[i];
    if (places.size() > kMostPlaces)
        text += " and " + std::to_string(places.size() - kMostPlaces) + " more";
    return text + ")";
}

std::vector<const BesideDifference*> Group(const std::vector<BesideDifference>& differences,
                                           BesideKind kind, BesideChange change) {
    std::vector<const BesideDifference*> group;
    for (const BesideDifference& difference : differences) {
        if (difference.kind == kind && difference.change == change)
            group.push_back(&difference);
    }
    return group;
}

std::string Clause(const std::vector<const BesideDifference*>& group) {
    const BesideDifference& first = *group.front();
    const BesideKindName& name = NameOf(first.kind);
    const std::string count = std::to_string(group.size());
    const std::string noun(group.size() == 1 ? name.singular : name.plural);
    if (first.kind == BesideKind::Formatting)
        return "formatting changed in " + count + " " + noun + PlacesOf(group);
    return count + " " + noun + " " + std::string(VerbOf(first.kind, first.change)) +
           PlacesOf(group);
}

}  // namespace

std::string_view VerbOf(BesideKind kind, BesideChange change) {
    if (kind == BesideKind::DamagedPart)
        return change == BesideChange::Removed ? "of the Original" : "of the Modified";
    switch (change) {
        case BesideChange::Added:
            return "added";
        case BesideChange::Removed:
            return "removed";
        case BesideChange::Moved:
            return "moved";
        case BesideChange::Changed:
            break;
    }
    const bool seen = kind == BesideKind::Picture || kind == BesideKind::Drawing ||
                      kind == BesideKind::Chart || kind == BesideKind::Object ||
                      kind == BesideKind::PageWithoutText;
    return seen ? "replaced" : "changed";
}

std::string BesideSentence(const std::vector<BesideDifference>& differences) {
    std::string sentence;
    for (const BesideKindName& name : BesideKindNames()) {
        for (const BesideChange change : {BesideChange::Changed, BesideChange::Removed,
                                          BesideChange::Added, BesideChange::Moved}) {
            const auto group = Group(differences, name.kind, change);
            if (!group.empty())
                sentence += (sentence.empty() ? "Beside the words: " : ", ") + Clause(group);
        }
    }
    return sentence.empty() ? sentence : sentence + ".";
}

}  // namespace zorvane
