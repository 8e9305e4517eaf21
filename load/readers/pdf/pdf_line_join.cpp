#include "load/readers/pdf/pdf_line_join.h"

#include <unicode/uchar.h>

namespace zorvane {
namespace {

bool IsLetter(char32_t letter) {
    return u_isalpha(static_cast<UChar32>(letter)) != 0;
}

// Scripts that are set without blanks.
bool IsIdeographic(char32_t letter) {
    return (letter >= 0x3000 && letter <= 0x30FF) || (letter >= 0x3400 && letter <= 0x9FFF) ||
           (letter >= 0xF900 && letter <= 0xFAFF) || (letter >= 0xFF00 && letter <= 0xFF60) ||
           (letter >= 0x20000 && letter <= 0x3FFFF);
}

}  // namespace

bool IsPdfHyphen(char32_t letter) {
    return letter == U'-' || letter == 0xAD || letter == 0x2010;
}

bool IsPdfLowerCase(char32_t letter) {
    return u_islower(static_cast<UChar32>(letter)) != 0;
}

void JoinLetters(std::vector<PdfLetter>& letters, const std::vector<PdfLetter>& next,
                 bool connect_hyphens) {
    if (letters.empty() || next.empty()) {
        letters.insert(letters.end(), next.begin(), next.end());
        return;
    }
    const char32_t last = letters.back().letter;
    const char32_t first = next.front().letter;
    if (IsPdfHyphen(last)) {
        const bool within_word = letters.size() > 1 && IsLetter(letters[letters.size() - 2].letter);
        const bool goes_on = within_word && IsPdfLowerCase(first);
        if (last == 0xAD || (goes_on && connect_hyphens))
            letters.pop_back();
        else if (!within_word)
            letters.push_back({U' ', letters.back().style, letters.back().size});
    } else if (!IsIdeographic(last) || !IsIdeographic(first)) {
        PdfLetter blank = letters.back();
        blank.letter = U' ';
        blank.baseline = Baseline::Normal;
        blank.underline &= next.front().underline;
        blank.strikeout &= next.front().strikeout;
        letters.push_back(blank);
    }
    letters.insert(letters.end(), next.begin(), next.end());
}

}  // namespace zorvane
