// Packages behind a password, whoever wrote them.
#pragma once

#include <string>
#include <string_view>

#include "load/readers/reader.h"

namespace zorvane {

/// The ZIP package inside a protected Office Open XML or OpenDocument file. `plain` stays empty
/// where the file is not protected, and holds what the readers take in its place where it is.
ReadEnd OpenProtected(std::string_view bytes, std::string_view password, std::string& plain);

}  // namespace zorvane
