// Two lines of one text.
#pragma once

#include <vector>

#include "load/readers/pdf/pdf_lines.h"

namespace zorvane {

bool IsPdfHyphen(char32_t letter);

/// Of any script; tells whether a sentence goes on.
bool IsPdfLowerCase(char32_t letter);

/// Puts `next` behind `letters`: with a blank between them, or as one word. A hyphen goes only
/// when `connect_hyphens` is set and the next line begins in lower case; a soft one always.
void JoinLetters(std::vector<PdfLetter>& letters, const std::vector<PdfLetter>& next,
                 bool connect_hyphens);

}  // namespace zorvane
