#include "load/readers/pdf/pdf_characters.h"

#include <GfxFont.h>
#include <GfxState.h>
#include <Page.h>
#include <UTF.h>
#include <algorithm>
#include <cmath>
#include <limits>
#include <string_view>

#include "load/readers/pdf/pdf_letters.h"

namespace zorvane {
namespace {

constexpr double kLargestPlace = 1e5;  // points; what lies farther away is on no page
constexpr std::size_t kMaxRules = 20'000;
constexpr int kMaxLinks = 10'000;
constexpr int kMaxReplacement = 65'536;

constexpr int kStrokeMode = 1;
constexpr int kInvisibleMode = 3;
constexpr int kClipMode = 7;

bool IsPlace(double value) {
    return std::fabs(value) < kLargestPlace;  // false for what is no number
}

float Narrow(double value) {
    return static_cast<float>(value);
}

Color ColorOf(const GfxRGB& rgb) {
    return {colToByte(rgb.r) | colToByte(rgb.g) << 8 | colToByte(rgb.b) << 16};
}

bool IsWhite(Color color) {
    constexpr std::int32_t kNearWhite = 0xFA;
    for (const int shift : {0, 8, 16}) {
        if (((color.value >> shift) & 0xFF) < kNearWhite)
            return false;
    }
    return true;
}

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

bool IsDropped(char32_t letter) {
    return (letter < 0x20 && letter != '\t') || (letter >= 0x7F && letter < 0xA0) ||
           letter == 0xFEFF || (letter >= 0x200B && letter <= 0x200F) ||
           (letter >= 0x202A && letter <= 0x202E) || (letter >= 0xD800 && letter < 0xE000) ||
           letter > 0x10FFFF;
}

std::string NameOf(const GfxFont& font) {
    std::string name = font.getName().value_or(std::string());
    constexpr std::size_t kPrefix = 6;
    const bool subset = name.size() > kPrefix + 1 && name[kPrefix] == '+' &&
                        std::all_of(name.begin(), name.begin() + kPrefix,
                                    [](char letter) { return letter >= 'A' && letter <= 'Z'; });
    return subset ? name.substr(kPrefix + 1) : name;
}

bool HasWord(std::string_view name, std::initializer_list<std::string_view> words) {
    return std::any_of(words.begin(), words.end(), [&](std::string_view word) {
        return name.find(word) != std::string_view::npos;
    });
}

PdfFont FontOf(const GfxFont& font) {
    PdfFont result;
    result.name = NameOf(font);
    result.bold = font.isBold() || font.getWeight() >= GfxFont::W600 ||
                  HasWord(result.name, {"Bold", "bold", "Black", "Heavy", "Demi"});
    result.italic = font.isItalic() ||
                    HasWord(result.name, {"Italic", "italic", "Oblique", "oblique", "Slanted"});
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

PdfBox BoxOf(double x0, double y0, double x1, double y1) {
    return {Narrow(std::min(x0, x1)), Narrow(std::min(y0, y1)), Narrow(std::max(x0, x1)),
            Narrow(std::max(y0, y1))};
}

PdfBox ClipOf(const GfxState& state) {
    double x0 = 0;
    double y0 = 0;
    double x1 = 0;
    double y1 = 0;
    state.getClipBBox(&x0, &y0, &x1, &y1);
    return BoxOf(x0, y0, x1, y1);
}

PdfBox Common(const PdfBox& a, const PdfBox& b) {
    return {std::max(a.x0, b.x0), std::max(a.y0, b.y0), std::min(a.x1, b.x1), std::min(a.y1, b.y1)};
}

PdfBox BoxOfPath(const GfxState& state, const GfxSubpath& path) {
    PdfBox box{std::numeric_limits<float>::max(), std::numeric_limits<float>::max(),
               std::numeric_limits<float>::lowest(), std::numeric_limits<float>::lowest()};
    for (int point = 0; point < path.getNumPoints(); ++point) {
        double x = 0;
        double y = 0;
        state.transform(path.getX(point), path.getY(point), &x, &y);
        box.x0 = std::min(box.x0, Narrow(x));
        box.y0 = std::min(box.y0, Narrow(y));
        box.x1 = std::max(box.x1, Narrow(x));
        box.y1 = std::max(box.y1, Narrow(y));
    }
    return box;
}

PdfDirection DirectionOf(double cosine, double sine) {
    constexpr double kStraight = 0.03;
    if (std::fabs(sine) < kStraight)
        return cosine > 0 ? PdfDirection::Right : PdfDirection::Left;
    if (std::fabs(cosine) < kStraight)
        return sine > 0 ? PdfDirection::Down : PdfDirection::Up;
    return PdfDirection::Slanting;
}

}  // namespace

void PdfCharacterDevice::startPage(int /*number*/, GfxState* state, XRef* /*xref*/) {
    page_.width = Narrow(state->getPageWidth());
    page_.height = Narrow(state->getPageHeight());
    page_.characters.clear();
    page_.rules.clear();
    page_.links.clear();
    cells_.Start(page_.width, page_.height);
    replacement_ = {};
    style_known_ = false;
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
    PdfFont font;
    if (state.getFont()) {
        font = FontOf(*state.getFont());
        font_height_ = HeightOf(*state.getFont());
    }
    const std::string key = font.name + (font.bold ? "\nB" : "\n") + (font.italic ? "I" : "");
    const auto [found, added] =
        font_numbers_.try_emplace(key, static_cast<std::uint32_t>(styles_.fonts.size()));
    if (added)
        styles_.fonts.push_back(std::move(font));
    font_ = found->second;
}

void PdfCharacterDevice::UseStyle(const GfxState& state) {
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
    const bool outside = at_x < 0 || at_y < 0 || at_x > page_.width || at_y - reach > page_.height;
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
        const std::u32string_view parts = LettersOfLigature(letter);
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

void PdfCharacterDevice::AddRule(const PdfBox& box) {
    constexpr float kThickest = 3;
    constexpr float kShortest = 2;
    if (box.y1 - box.y0 <= kThickest && box.x1 - box.x0 >= kShortest &&
        page_.rules.size() < kMaxRules)
        page_.rules.push_back(box);
}

void PdfCharacterDevice::stroke(GfxState* state) {
    const GfxPath& path = *state->getPath();
    const auto half = Narrow(std::min(state->getTransformedLineWidth(), 100.0) / 2);
    for (int index = 0; index < path.getNumSubpaths(); ++index) {
        PdfBox box = BoxOfPath(*state, *path.getSubpath(index));
        box.y0 -= half;
        box.y1 += half;
        AddRule(box);
    }
}

void PdfCharacterDevice::PaintPath(const GfxState& state) {
    GfxRGB rgb{};
    state.getFillRGB(&rgb);
    const bool white = IsWhite(ColorOf(rgb));
    if (state.getFillOpacity() <= 0)
        return;
    const PdfBox clip = ClipOf(state);
    const GfxPath& path = *state.getPath();
    for (int index = 0; index < path.getNumSubpaths(); ++index) {
        const PdfBox box = Common(BoxOfPath(state, *path.getSubpath(index)), clip);
        cells_.Paint(box, white);
        if (!white)
            AddRule(box);
    }
}

void PdfCharacterDevice::fill(GfxState* state) {
    PaintPath(*state);
}
void PdfCharacterDevice::eoFill(GfxState* state) {
    PaintPath(*state);
}

void PdfCharacterDevice::PaintClip(const GfxState& state) {
    cells_.Paint(ClipOf(state), false);
}

// NOLINTNEXTLINE(readability-function-size): poppler's signature
bool PdfCharacterDevice::tilingPatternFill(GfxState* state, Gfx* /*gfx*/, Catalog* /*catalog*/,
                                           GfxTilingPattern* /*pattern*/, const double* /*matrix*/,
                                           int /*x0*/, int /*y0*/, int /*x1*/, int /*y1*/,
                                           double /*step_x*/, double /*step_y*/) {
    PaintClip(*state);
    return true;
}
bool PdfCharacterDevice::functionShadedFill(GfxState* state, GfxFunctionShading* /*shading*/) {
    PaintClip(*state);
    return true;
}
bool PdfCharacterDevice::axialShadedFill(GfxState* state, GfxAxialShading* /*shading*/,
                                         double /*low*/, double /*high*/) {
    PaintClip(*state);
    return true;
}
bool PdfCharacterDevice::radialShadedFill(GfxState* state, GfxRadialShading* /*shading*/,
                                          double /*low*/, double /*high*/) {
    PaintClip(*state);
    return true;
}
bool PdfCharacterDevice::gouraudTriangleShadedFill(GfxState* state,
                                                   GfxGouraudTriangleShading* /*shading*/) {
    PaintClip(*state);
    return true;
}
bool PdfCharacterDevice::patchMeshShadedFill(GfxState* state, GfxPatchMeshShading* /*shading*/) {
    PaintClip(*state);
    return true;
}

void PdfCharacterDevice::PaintImage(const GfxState& state) {
    double x0 = 0;
    double y0 = 0;
    double x1 = 0;
    double y1 = 0;
    state.transform(0, 0, &x0, &y0);
    state.transform(1, 1, &x1, &y1);
    cells_.Paint(Common(BoxOf(x0, y0, x1, y1), ClipOf(state)), false);
}

// NOLINTNEXTLINE(readability-function-size): poppler's signature
void PdfCharacterDevice::drawImageMask(GfxState* state, Object* reference, Stream* stream,
                                       int width, int height, bool invert, bool interpolate,
                                       bool inline_image) {
    PaintImage(*state);
    OutputDev::drawImageMask(state, reference, stream, width, height, invert, interpolate,
                             inline_image);
}

// NOLINTNEXTLINE(readability-function-size): poppler's signature
void PdfCharacterDevice::drawImage(GfxState* state, Object* reference, Stream* stream, int width,
                                   int height, GfxImageColorMap* colors, bool interpolate,
                                   const int* mask_colors, bool inline_image) {
    PaintImage(*state);
    OutputDev::drawImage(state, reference, stream, width, height, colors, interpolate, mask_colors,
                         inline_image);
}

void PdfCharacterDevice::AddLinks(PDFDoc& document, int number) {
    ::Page* const page = document.getPage(number);
    if (page == nullptr)
        return;
    const Object annotations = page->getAnnotsObject();
    if (!annotations.isArray())
        return;
    for (int index = 0; index < std::min(annotations.arrayGetLength(), kMaxLinks); ++index)
        AddLink(annotations.arrayGet(index));
}

void PdfCharacterDevice::AddLink(const Object& annotation) {
    if (!annotation.isDict() || !annotation.dictLookup("Subtype").isName("Link"))
        return;
    const Object action = annotation.dictLookup("A");
    const Object place = annotation.dictLookup("Rect");
    if (!action.isDict() || !place.isArray() || place.arrayGetLength() != 4)
        return;
    const Object address = action.dictLookup("URI");
    if (!address.isString())
        return;
    PdfLink link;
    link.address = address.getString()->toStr();
    // An address is ASCII; anything else is none, or was not decrypted.
    const bool printable = std::all_of(link.address.begin(), link.address.end(),
                                       [](char letter) { return letter > ' ' && letter < 0x7F; });
    if (link.address.empty() || !printable)
        return;
    std::array<double, 4> corners{};
    for (int index = 0; index < 4; ++index)
        corners[static_cast<std::size_t>(index)] = place.arrayGet(index).getNumWithDefaultValue(0);
    const double* matrix = getDefCTM();
    const auto x = [&](std::size_t corner) {
        return matrix[0] * corners[corner] + matrix[2] * corners[corner + 1] + matrix[4];
    };
    const auto y = [&](std::size_t corner) {
        return matrix[1] * corners[corner] + matrix[3] * corners[corner + 1] + matrix[5];
    };
    link.box = BoxOf(x(0), y(0), x(2), y(2));
    page_.links.push_back(std::move(link));
}

}  // namespace zorvane
