// Lines, filled areas and pictures of a page.
#include <algorithm>
#include <cmath>

#include "load/readers/pdf/pdf_characters.h"
#include "load/readers/pdf/pdf_graphics.h"

namespace zorvane {
namespace {

constexpr std::size_t kMaxRules = 20'000;
constexpr float kThickestRule = 3;
constexpr float kShortestRule = 2;

}  // namespace

void PdfCharacterDevice::AddRule(const PdfBox& box) {
    const float width = box.x1 - box.x0;
    const float height = box.y1 - box.y0;
    if (height <= kThickestRule && width >= kShortestRule && width > height) {
        if (page_.rules.size() < kMaxRules)
            page_.rules.push_back(box);
    } else if (width <= kThickestRule && height >= kShortestRule) {
        if (page_.uprights.size() < kMaxRules)
            page_.uprights.push_back(box);
    }
}

// Each straight side by itself: a frame is four rules.
void PdfCharacterDevice::stroke(GfxState* state) {
    constexpr double kThickest = 100;
    constexpr double kStraight = 0.3;
    const GfxPath& path = *state->getPath();
    const auto half = Narrow(std::min(state->getTransformedLineWidth(), kThickest) / 2);
    for (int index = 0; index < path.getNumSubpaths(); ++index) {
        const GfxSubpath& part = *path.getSubpath(index);
        for (int point = 1; point < part.getNumPoints(); ++point) {
            if (part.getCurve(point) || part.getCurve(point - 1))
                continue;
            double x0 = 0;
            double y0 = 0;
            double x1 = 0;
            double y1 = 0;
            state->transform(part.getX(point - 1), part.getY(point - 1), &x0, &y0);
            state->transform(part.getX(point), part.getY(point), &x1, &y1);
            PdfBox box = BoxOf(x0, y0, x1, y1);
            if (std::fabs(y1 - y0) <= kStraight) {
                box.y0 -= half;
                box.y1 += half;
            } else if (std::fabs(x1 - x0) <= kStraight) {
                box.x0 -= half;
                box.x1 += half;
            } else {
                continue;
            }
            if (2 * half > kThickestRule)
                cells_.Paint(box, false);
            AddRule(box);
        }
    }
}

void PdfCharacterDevice::PaintPath(const GfxState& state) {
    GfxRGB rgb{};
    state.getFillRGB(&rgb);
    const Color color = ColorOf(rgb);
    const bool white = IsWhite(color);
    const double opacity = state.getFillOpacity();
    if (opacity <= 0)
        return;
    constexpr double kOpaque = 0.99;
    const bool opaque =
        opacity >= kOpaque && state.getBlendMode() == gfxBlendNormal && !masked_ && groups_ == 0;
    const PdfBox clip = ClipOf(state);
    const GfxPath& path = *state.getPath();
    for (int index = 0; index < path.getNumSubpaths(); ++index) {
        const GfxSubpath& part = *path.getSubpath(index);
        const PdfBox box = Common(BoxOfPath(state, part), clip);
        cells_.Paint(box, white);
        // What is left of one rectangle by another within it is no rectangle.
        if (opaque && path.getNumSubpaths() == 1 && IsUpright(state, part))
            ground_.AddRectangle(box, color, page_.characters.size());
        else
            ground_.AddOther(box);
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

void PdfCharacterDevice::beginTransparencyGroup(GfxState* /*state*/, const double* /*box*/,
                                                GfxColorSpace* /*space*/, bool /*isolated*/,
                                                bool /*knockout*/, bool /*for_mask*/) {
    ++groups_;
}
void PdfCharacterDevice::endTransparencyGroup(GfxState* /*state*/) {
    --groups_;
}
void PdfCharacterDevice::setSoftMask(GfxState* /*state*/, const double* /*box*/, bool /*alpha*/,
                                     Function* /*transfer*/, GfxColor* /*backdrop*/) {
    masked_ = true;
}
void PdfCharacterDevice::clearSoftMask(GfxState* /*state*/) {
    masked_ = false;
}

void PdfCharacterDevice::PaintClip(const GfxState& state) {
    const PdfBox clip = ClipOf(state);
    cells_.Paint(clip, false);
    ground_.AddOther(clip);
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
    const PdfBox box = Common(BoxOf(x0, y0, x1, y1), ClipOf(state));
    cells_.Paint(box, false);
    ground_.AddPicture(box);
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

}  // namespace zorvane
