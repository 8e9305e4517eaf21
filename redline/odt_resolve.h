// Accepts or rejects all tracked changes in a story of an OpenDocument text, and brings its white
// space into the form in which it counts. For inputs, and for the check of what was written.
#pragma once

#include <set>
#include <string>

#include "load/readers/container/xml_part.h"
#include "redline/resolve.h"

namespace zorvane {

/// Blanks that a reader would collapse are taken away, each blank beyond the first is an element of
/// its own. From then on every character of a paragraph counts.
void FormText(pugi::xml_node story);

/// Names of the row styles below `automatic_styles` whose rows go away with their text.
std::set<std::string> TrackedRowStyles(const pugi::xml_node& automatic_styles);

/// Gives how many changes there were. `story` holds the list of its changes, if any, and its text
/// was formed. What comes back from a deletion gets the attribute `trace`.
std::int32_t ResolveOdt(pugi::xml_node story, Resolution resolution,
                        const std::set<std::string>& tracked_rows, const char* trace = nullptr);

/// What a paragraph's letters may stand in.
bool IsOdtWrapper(std::string_view local_name);
/// Takes no room in a text: bookmarks, marks of changes, comments.
bool IsOdtMarker(std::string_view local_name);
inline bool IsOdtParagraph(std::string_view local_name) {
    return local_name == "p" || local_name == "h";
}
/// Splits what holds `place` up to its paragraph, so that it stands in the paragraph itself.
void LiftToParagraph(pugi::xml_node place);

}  // namespace zorvane
