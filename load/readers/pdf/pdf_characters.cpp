#include "load/readers/pdf/pdf_characters.h"

#include <GfxFont.h>
#include <GfxState.h>
#include <UTF.h>
#include <algorithm>
#include <cmath>
#include <string>
#include <string_view>

#include "common/base/ascii.h"
#include "common/base/surrogates.h"
#include "load/readers/pdf/pdf_font_style.h"
#include "load/readers/pdf/pdf_graphics.h"
#include "load/readers/pdf/pdf_letters.h"

namespace zorvane {
namespace {

constexpr int kMaxReplacement = 65'536;

constexpr int kStrokeMode = 1;
constexpr int kInvisibleMode = 3;
constexpr int kClipMode = 7;

// Letters that fonts of symbols put into the private area.
char32_t PublicLetter(char32_t letter) {
    switch (letter) {
        case 0xF0B7:
            return 0x2022;
        case 0xF0A7:
            return 0x25AA;
        case 0xF0D8:
            return 0x27A2;
        case 0xF0FC:
            return 0x2713;
        default:
            return letter;
    }
}

// In TeX's fonts of drawings, which name no letters, ff, fi, fl, ffi and ffl have these codes.
char32_t LigatureOfCode(char32_t letter) {
    constexpr char32_t kFirst = 0x1B;
    constexpr char32_t kLast = 0x1F;
    return letter >= kFirst && letter <= kLast ? 0xFB00 + letter - kFirst : letter;
}

bool IsDropped(char32_t letter) {
    return (letter < 0x20 && letter != '\t') || (letter >= 0x7F && letter < 0xA0) ||
           letter == 0xFEFF || (letter >= 0x200B && letter <= 0x200F) ||
           (letter >= 0x202A && letter <= 0x202E) || IsSurrogate(letter) || letter > 0x10FFFF;
}

std::string NameOf(const GfxFont& font) {
    std::string name = font.getName().value_or(std::string());
    constexpr std::size_t kPrefix = 6;
    const bool subset = name.size() > kPrefix + 1 && name[kPrefix] == '+' &&
                        std::all_of(name.begin(), name.begin() + kPrefix, IsAsciiUpper<char>);
    return subset ? name.substr(kPrefix + 1) : name;
}

PdfFont FontOf(const GfxFont& font) {
    PdfFont result;
    result.name = NameOf(font);
    const PdfFontStyle style = StyleOfFontName(result.name);
    result.bold = font.isBold() || font.getWeight() >= GfxFont::W600 || style.bold;
    result.italic = font.isItalic() || style.italic;
    return result;
}

// The height of a Type 3 font whose size is 1: its matrix may be anything.
double HeightOf(const GfxFont& font) {
    if (font.getType() != fontType3)
        return 1;
    const double* box = font.getFontBBox();
    const double height = std::fabs((box[3] - box[1]) * font.getFontMatrix()[3]);
    constexpr double kUsualLow = 0.6;
    constexpr double kUsualHigh = 1.6;
    const bool usual = height > kUsualLow && height < kUsualHigh;
    return usual || !(height > 0) || height > kLargestPlace ? 1 : height;
}

// Filled with one colour; a pattern has none.
bool InPlainColor(GfxState& state) {
    constexpr int kFillOnly = 0;
    return state.getRender() % 4 == kFillOnly && state.getFillColorSpace() != nullptr &&
           state.getFillColorSpace()->getMode() != csPattern;
}

PdfDirection DirectionOf(double cosine, double sine) {
    constexpr double kStraight = 0.03;
    if (std::fabs(sine) < kStraight)
        return cosine > 0 ? PdfDirection::Right : PdfDirection::Left;
    if (std::fabs(cosine) < kStraight)
        return sine > 0 ? PdfDirection::Down : PdfDirection::Up;
    return PdfDirection::Slanting;
}

// On a page of kilometres, places are told from near the point that its text counts from: a page so
// large is one by mistake, and a float holds no places so far away.
bool ShiftHugePage(GfxState& state) {
    constexpr double kHuge = 20'000;  // points; more than the format allows a page
    constexpr double kRoom = 14'400;  // above that point
    double x = 0;
    double y = 0;
    state.transform(0, 0, &x, &y);
    if (state.getPageWidth() <= kHuge && state.getPageHeight() <= kHuge)
        return false;
    state.shiftCTMAndClip(-x, kRoom - y);
    return true;
}

}  // namespace

void PdfCharacterDevice::startPage(int /*number*/, GfxState* state, XRef* /*xref*/) {
    page_.width = Narrow(state->getPageWidth());
    page_.height = Narrow(state->getPageHeight());
    huge_ = ShiftHugePage(*state);
    page_.characters.clear();
    page_.rules.clear();
    page_.uprights.clear();
    page_.links.clear();
    ground_.Start();
    masked_ = false;
    groups_ = 0;
    cells_.Start(page_.width, page_.height);
    replacement_ = {};
    style_known_ = false;
}

void PdfCharacterDevice::endPage() {
    ground_.Settle(page_.characters);
}

void PdfCharacterDevice::updateFont(GfxState* /*state*/) {
    style_known_ = false;
}
void PdfCharacterDevice::updateFillColor(GfxState* /*state*/) {
    style_known_ = false;
}
void PdfCharacterDevice::updateStrokeColor(GfxState* /*state*/) {
    style_known_ = false;
}
void PdfCharacterDevice::updateFillColorSpace(GfxState* /*state*/) {
    style_known_ = false;
}
void PdfCharacterDevice::updateRender(GfxState* /*state*/) {
    style_known_ = false;
}
void PdfCharacterDevice::saveState(GfxState* /*state*/) {
    clock_.Tick();
}
void PdfCharacterDevice::restoreState(GfxState* /*state*/) {
    style_known_ = false;
}

void PdfCharacterDevice::UseFont(const GfxState& state) {
    font_height_ = 1;
    nameless_font_ = false;
    PdfFont font;
    if (state.getFont()) {
        font = FontOf(*state.getFont());
        font_height_ = HeightOf(*state.getFont());
        nameless_font_ = state.getFont()->getType() == fontType3;
    }
    const std::string key = font.name + (font.bold ? "\nB" : "\n") + (font.italic ? "I" : "");
    const auto [found, added] =
        font_numbers_.try_emplace(key, static_cast<std::uint32_t>(styles_.fonts.size()));
    if (added)
        styles_.fonts.push_back(std::move(font));
    font_ = found->second;
}

void PdfCharacterDevice::UseStyle(GfxState& state) {
    if (style_known_)
        return;
    style_known_ = true;
    UseFont(state);
    GfxRGB rgb{};
    if (state.getRender() % 4 == kStrokeMode)
        state.getStrokeRGB(&rgb);
    else
        state.getFillRGB(&rgb);
    const Color color = ColorOf(rgb);
    white_ = IsWhite(color);
    color_ = color;
    plain_ = InPlainColor(state);
    const std::uint64_t key = std::uint64_t{font_} << 32 | static_cast<std::uint32_t>(color.value);
    const auto [found, added] =
        style_numbers_.try_emplace(key, static_cast<std::uint32_t>(styles_.styles.size()));
    if (added)
        styles_.styles.push_back({font_, color});
    style_ = found->second;
}

PdfHidden PdfCharacterDevice::HiddenAt(const GfxState& state, double x, double y, double dx,
                                       double dy) const {
    if (state.getRender() == kInvisibleMode)
        return PdfHidden::InvisibleMode;
    constexpr double kSmallest = 0.3;  // points
    const double size = state.getTransformedFontSize() * font_height_;
    const double opacity =
        state.getRender() % 4 == kStrokeMode ? state.getStrokeOpacity() : state.getFillOpacity();
    if (size < kSmallest || opacity <= 0)
        return PdfHidden::Unseen;
    const double middle_x = x + dx / 2;
    const double middle_y = y + dy / 2;
    const PdfBox clip = ClipOf(state);
    const auto reach = Narrow(size);
    const auto at_x = Narrow(middle_x);
    const auto at_y = Narrow(middle_y);
    const bool outside =
        !huge_ && (at_x < 0 || at_y < 0 || at_x > page_.width || at_y - reach > page_.height);
    const bool clipped = at_x < clip.x0 - reach || at_x > clip.x1 + reach ||
                         at_y < clip.y0 - reach || at_y - reach > clip.y1;
    if (outside || clipped)
        return PdfHidden::Unseen;
    constexpr double kMiddleOfLetters = 0.3;
    const bool on_white =
        white_ && state.getRender() != kClipMode &&
        !cells_.IsPainted(middle_x,
                          middle_y - (std::fabs(dx) > std::fabs(dy) ? size : 0) * kMiddleOfLetters);
    return on_white ? PdfHidden::Unseen : PdfHidden::No;
}

PdfCharacter PdfCharacterDevice::Placed(const GfxState& state, double x, double y, double dx,
                                        double dy) const {
    const double* matrix = state.getTextMat();
    const bool vertical = state.getFont() && state.getFont()->getWMode() != 0;
    double along_x = 0;
    double along_y = 0;
    state.transformDelta(vertical ? -matrix[2] : matrix[0], vertical ? -matrix[3] : matrix[1],
                         &along_x, &along_y);
    const double length = std::hypot(along_x, along_y);
    const double cosine = length > 0 ? along_x / length : 1;
    const double sine = length > 0 ? along_y / length : 0;
    const double start = x * cosine + y * sine;
    const double end = (x + dx) * cosine + (y + dy) * sine;
    PdfCharacter place;
    place.x0 = Narrow(std::min(start, end));
    place.x1 = Narrow(std::max(start, end));
    place.baseline = Narrow(y * cosine - x * sine);
    place.size = Narrow(std::clamp(state.getTransformedFontSize() * font_height_, 0.1, 2000.0));
    place.style = style_;
    place.direction = DirectionOf(cosine, sine);
    place.hidden = HiddenAt(state, x, y, dx, dy);
    if (place.hidden == PdfHidden::No && !white_ && plain_ && ground_.HasColorOf(place, color_))
        place.hidden = PdfHidden::Unseen;
    return place;
}

// NOLINTNEXTLINE(readability-function-size): poppler's signature
void PdfCharacterDevice::drawChar(GfxState* state, double x, double y, double dx, double dy,
                                  double /*origin_x*/, double /*origin_y*/, CharCode code,
                                  int /*bytes*/, const Unicode* letters, int count) {
    if (count <= 0 || letters == nullptr || Overflow())
        return;
    UseStyle(*state);
    // The spacing of letters and words is no part of a letter.
    const double spacing = state->getCharSpace() + (code == ' ' ? state->getWordSpace() : 0);
    double spacing_x = 0;
    double spacing_y = 0;
    state->textTransformDelta(spacing * state->getHorizScaling(), 0, &spacing_x, &spacing_y);
    double at_x = 0;
    double at_y = 0;
    double width = 0;
    double height = 0;
    state->transform(x, y, &at_x, &at_y);
    state->transformDelta(dx - spacing_x, dy - spacing_y, &width, &height);
    if (!IsPlace(at_x) || !IsPlace(at_y) || !IsPlace(width) || !IsPlace(height))
        return;
    const PdfCharacter place = Placed(*state, at_x, at_y, width, height);
    if (replacement_.active) {
        PdfCharacter& whole = replacement_.place;
        const float x0 = replacement_.drawn ? std::min(whole.x0, place.x0) : place.x0;
        const float x1 = replacement_.drawn ? std::max(whole.x1, place.x1) : place.x1;
        if (!replacement_.drawn)
            whole = place;
        whole.x0 = x0;
        whole.x1 = x1;
        replacement_.drawn = true;
        return;
    }
    std::array<char32_t, 8> known{};
    const std::size_t used = std::min<std::size_t>(static_cast<std::size_t>(count), known.size());
    std::copy_n(letters, used, known.begin());
    Add(place, {known.data(), used});
}

void PdfCharacterDevice::Add(const PdfCharacter& place, std::u32string_view letters) {
    std::u32string expanded;
    for (const char32_t letter : letters) {
        const std::u32string_view parts =
            LettersOfLigature(nameless_font_ ? LigatureOfCode(letter) : letter);
        if (!parts.empty())
            expanded += parts;
        else if (!IsDropped(letter))
            expanded += PublicLetter(letter);
    }
    const float width =
        (place.x1 - place.x0) / static_cast<float>(std::max<std::size_t>(1, expanded.size()));
    PdfCharacter character = place;
    for (const char32_t letter : expanded) {
        character.letter = letter;
        character.x1 = character.x0 + width;
        page_.characters.push_back(character);
        character.x0 = character.x1;
    }
}

void PdfCharacterDevice::beginActualText(GfxState* /*state*/, const GooString* text) {
    if (replacement_.active || text == nullptr)
        return;
    replacement_ = {};
    replacement_.active = true;
    Unicode* letters = nullptr;
    const int count = TextStringToUCS4(text->toStr(), &letters);
    for (int index = 0; index < std::min(count, kMaxReplacement); ++index)
        replacement_.text += static_cast<char32_t>(letters[index]);
    gfree(letters);
}

void PdfCharacterDevice::endActualText(GfxState* /*state*/) {
    if (replacement_.active && replacement_.drawn && !Overflow())
        Add(replacement_.place, replacement_.text);
    replacement_ = {};
}

}  // namespace zorvane
