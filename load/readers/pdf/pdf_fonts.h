// Names of fonts in a PDF.
#pragma once

#include <string>
#include <string_view>

namespace zorvane {

/// The family of a font: "TimesNewRomanPS-BoldMT" is "Times New Roman", "Helvetica-Oblique" is
/// "Helvetica". A name of an unknown shape stays, without what tells of a style.
std::string FamilyOfFont(std::string_view name);

}  // namespace zorvane
