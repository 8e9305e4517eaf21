#include "load/readers/ooxml/alternate_content.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "load/readers/container/xml_part.h"

namespace zorvane {
namespace {

// Prefixes, as all programs spell them, of what readers take words or things beside them from:
// shapes and boxes (wps, wpg, wpc), formulas (a14), charts (cx), drawings of diagrams (dsp), and of
// what changes neither (places, styles, formats). Not those of ink, models and emoji: what is read
// of these is their fallback, a picture or a character.
bool IsRead(std::string_view prefix) {
    constexpr std::array<std::string_view, 15> kRead = {"a14", "a16", "c14", "cx1",  "cx2",
                                                        "cx4", "dsp", "p15", "p16",  "w14",
                                                        "w15", "wpc", "wpg", "wp14", "wps"};
    return std::find(kRead.begin(), kRead.end(), prefix) != kRead.end();
}

bool AllRead(std::string_view prefixes) {
    while (!prefixes.empty()) {
        const std::size_t blank = std::min(prefixes.find(' '), prefixes.size());
        if (blank > 0 && !IsRead(prefixes.substr(0, blank)))
            return false;
        prefixes.remove_prefix(std::min(blank + 1, prefixes.size()));
    }
    return true;
}

}  // namespace

pugi::xml_node ChosenForm(const pugi::xml_node& alternate_content) {
    for (const pugi::xml_node& form : alternate_content.children()) {
        if (Is(form, "Choice") && AllRead(Attribute(form, "Requires")))
            return form;
    }
    const pugi::xml_node fallback = Child(alternate_content, "Fallback");
    return fallback ? fallback : Child(alternate_content, "Choice");
}

}  // namespace zorvane
