// One thing in several forms, of which a reader takes one. Source: ECMA-376 part 3, 9.
#pragma once

#include <pugixml.hpp>

namespace zorvane {

/// The form that is read, for words and for what lies beside them alike: the first choice all of
/// whose requirements are read here, else the fallback. Without a fallback it is the first choice:
/// what is read of it is more than nothing.
pugi::xml_node ChosenForm(const pugi::xml_node& alternate_content);

}  // namespace zorvane
