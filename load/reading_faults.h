// What the readers say of a document that they give up, for a user.
#pragma once

#include <string>
#include <string_view>

#include "common/english_to.h"

namespace zorvane {

/// A fixed text of a reader in the language of whoever reads it; what holds a name, a number or
/// the words of a library or the system stays as it is.
std::string ReadingFault(std::string_view detail, const EnglishTo& translate);

}  // namespace zorvane
