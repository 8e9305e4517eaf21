// Formulas of OpenDocument sheets as people read them.
#pragma once

#include <string>
#include <string_view>

namespace zorvane {

/// "of:=SUM([.A1:.B2];[$Costs.C3])" becomes "=SUM(A1:B2,$Costs!C3)". Another formula language than
/// OpenFormula stays as it stands, without its prefix.
void AppendOpenFormula(std::string_view formula, std::string& out);

}  // namespace zorvane
