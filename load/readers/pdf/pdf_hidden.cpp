#include "load/readers/pdf/pdf_hidden.h"

#include <algorithm>
#include <cstdlib>

namespace zorvane {
namespace {

constexpr std::size_t kMostPictures = 2000;
constexpr std::size_t kMostPatches = 12'000;
constexpr std::size_t kMostPatchesLooked = 64;  // patches for one letter

bool IsBlank(const PdfCharacter& letter) {
    return letter.letter == U' ' || letter.letter == 0xA0 || letter.letter == U'\t';
}

/// The middle of a letter, in the frame of the page.
struct Place {
    float x = 0;
    float y = 0;
};
Place MiddleOf(const PdfCharacter& letter) {
    constexpr float kMiddleOfLetter = 0.3F;  // above the baseline, of the size
    const float along = (letter.x0 + letter.x1) / 2;
    const float across = letter.baseline - kMiddleOfLetter * letter.size;
    switch (letter.direction) {
        case PdfDirection::Left:
            return {-along, -across};
        case PdfDirection::Down:
            return {-across, along};
        case PdfDirection::Up:
            return {across, -along};
        default:
            return {along, across};
    }
}

bool Contains(const PdfBox& box, const Place& place, float slack) {
    return place.x >= box.x0 - slack && place.x <= box.x1 + slack && place.y >= box.y0 - slack &&
           place.y <= box.y1 + slack;
}

// A thin line strikes a letter through, and does not hide it.
bool IsHigh(const PdfBox& box, const PdfCharacter& letter) {
    constexpr float kHigh = 0.5F;  // of the size
    return box.y1 - box.y0 >= kHigh * letter.size && box.x1 - box.x0 >= kHigh * letter.size;
}

bool Near(Color a, Color b) {
    constexpr int kNear = 3;
    for (const int shift : {0, 8, 16}) {
        if (std::abs(((a.value >> shift) & 0xFF) - ((b.value >> shift) & 0xFF)) > kNear)
            return false;
    }
    return true;
}

}  // namespace

void PdfGround::Start() {
    pictures_.clear();
    patches_.clear();
}

void PdfGround::AddPicture(const PdfBox& box) {
    if (pictures_.size() < kMostPictures)
        pictures_.push_back(box);
    AddOther(box);
}

void PdfGround::AddRectangle(const PdfBox& box, Color color, std::size_t letters) {
    if (patches_.size() < kMostPatches)
        patches_.push_back({box, color, true, letters});
}

void PdfGround::AddOther(const PdfBox& box) {
    if (patches_.size() < kMostPatches)
        patches_.push_back({box, {}, false, 0});
}

bool PdfGround::HasColorOf(const PdfCharacter& letter, Color color) const {
    if (patches_.empty() || patches_.size() == kMostPatches ||
        letter.direction == PdfDirection::Slanting)
        return false;
    const Place middle = MiddleOf(letter);
    const std::size_t first =
        patches_.size() > kMostPatchesLooked ? patches_.size() - kMostPatchesLooked : 0;
    for (std::size_t index = patches_.size(); index > first; --index) {
        const Patch& patch = patches_[index - 1];
        if (Contains(patch.box, middle, 0))
            return patch.rectangle && IsHigh(patch.box, letter) && Near(patch.color, color);
    }
    return false;
}

void PdfGround::Settle(std::vector<PdfCharacter>& letters) const {
    Cover(letters);
    ShowScan(letters);
}

bool PdfGround::IsCovered(const PdfCharacter& letter, std::size_t number) const {
    const Place middle = MiddleOf(letter);
    std::size_t looked = 0;
    for (auto patch = patches_.rbegin(); patch != patches_.rend() && looked < kMostPatchesLooked;
         ++patch, ++looked) {
        if (!patch->rectangle)
            continue;
        if (patch->letters <= number)
            return false;
        if (Contains(patch->box, middle, 0) && IsHigh(patch->box, letter))
            return true;
    }
    return false;
}

void PdfGround::Cover(std::vector<PdfCharacter>& letters) const {
    std::vector<std::size_t> covered;
    std::size_t seen = 0;
    for (std::size_t index = 0; index < letters.size(); ++index) {
        const PdfCharacter& letter = letters[index];
        if (letter.hidden != PdfHidden::No || IsBlank(letter))
            continue;
        ++seen;
        if (letter.direction != PdfDirection::Slanting && IsCovered(letter, index))
            covered.push_back(index);
    }
    constexpr std::size_t kScan = 10;  // nine tenths are covered: the page is a picture of itself
    if (covered.size() * kScan >= seen * (kScan - 1))
        return;
    for (const std::size_t index : covered)
        letters[index].hidden = PdfHidden::Unseen;
}

void PdfGround::ShowScan(std::vector<PdfCharacter>& letters) const {
    std::size_t seen = 0;
    std::size_t invisible = 0;
    for (const PdfCharacter& letter : letters) {
        if (IsBlank(letter))
            continue;
        seen += letter.hidden == PdfHidden::No ? 1U : 0U;
        invisible += letter.hidden == PdfHidden::InvisibleMode ? 1U : 0U;
    }
    constexpr std::size_t kNextToNone = 20;  // invisible letters for each that is seen
    const bool only_text = seen * kNextToNone <= invisible;
    for (PdfCharacter& letter : letters) {
        if (letter.hidden != PdfHidden::InvisibleMode)
            continue;
        const Place middle = MiddleOf(letter);
        // Blanks too: they part the words of the layer.
        if (only_text || std::any_of(pictures_.begin(), pictures_.end(), [&](const PdfBox& box) {
                return Contains(box, middle, letter.size / 2);
            }))
            letter.hidden = PdfHidden::No;
    }
}

}  // namespace zorvane
