// Collects what a page shows while poppler draws it.
#pragma once

#include <OutputDev.h>
#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "load/readers/pdf/pdf_document.h"
#include "load/readers/pdf/pdf_hidden.h"
#include "load/readers/pdf/pdf_page.h"
#include "load/readers/pdf/pdf_painted_cells.h"

namespace zorvane {

class PdfCharacterDevice : public OutputDev {
  public:
    /// More characters than this on a page are not collected; see `Overflow`.
    static constexpr std::size_t kMaxCharacters = 4'000'000;

    PdfCharacterDevice(PdfStyles& styles, PdfPageClock& clock) : styles_(styles), clock_(clock) {}

    const PdfPage& Page() const { return page_; }
    /// Adds the links of the page that was shown last.
    void AddLinks(PDFDoc& document, int number);
    bool Overflow() const { return page_.characters.size() >= kMaxCharacters; }

    bool upsideDown() override { return true; }
    bool useDrawChar() override { return true; }
    bool interpretType3Chars() override { return false; }
    bool useTilingPatternFill() override { return true; }
    bool useShadedFills(int /*type*/) override { return true; }

    void startPage(int number, GfxState* state, XRef* xref) override;
    void endPage() override;
    void updateFont(GfxState* state) override;
    void updateFillColor(GfxState* state) override;
    void updateStrokeColor(GfxState* state) override;
    void updateFillColorSpace(GfxState* state) override;
    void updateRender(GfxState* state) override;
    void saveState(GfxState* state) override;
    void restoreState(GfxState* state) override;
    void drawChar(GfxState* state, double x, double y, double dx, double dy, double origin_x,
                  double origin_y, CharCode code, int bytes, const Unicode* letters,
                  int count) override;
    void beginActualText(GfxState* state, const GooString* text) override;
    void endActualText(GfxState* state) override;
    void stroke(GfxState* state) override;
    void fill(GfxState* state) override;
    void eoFill(GfxState* state) override;
    void beginTransparencyGroup(GfxState* state, const double* box, GfxColorSpace* space,
                                bool isolated, bool knockout, bool for_mask) override;
    void endTransparencyGroup(GfxState* state) override;
    void setSoftMask(GfxState* state, const double* box, bool alpha, Function* transfer,
                     GfxColor* backdrop) override;
    void clearSoftMask(GfxState* state) override;
    bool tilingPatternFill(GfxState* state, Gfx* gfx, Catalog* catalog, GfxTilingPattern* pattern,
                           const double* matrix, int x0, int y0, int x1, int y1, double step_x,
                           double step_y) override;
    bool functionShadedFill(GfxState* state, GfxFunctionShading* shading) override;
    bool axialShadedFill(GfxState* state, GfxAxialShading* shading, double low,
                         double high) override;
    bool radialShadedFill(GfxState* state, GfxRadialShading* shading, double low,
                          double high) override;
    bool gouraudTriangleShadedFill(GfxState* state, GfxGouraudTriangleShading* shading) override;
    bool patchMeshShadedFill(GfxState* state, GfxPatchMeshShading* shading) override;
    void drawImageMask(GfxState* state, Object* reference, Stream* stream, int width, int height,
                       bool invert, bool interpolate, bool inline_image) override;
    void drawImage(GfxState* state, Object* reference, Stream* stream, int width, int height,
                   GfxImageColorMap* colors, bool interpolate, const int* mask_colors,
                   bool inline_image) override;

  private:
    /// A text that stands for the glyphs which are drawn until its end.
    struct Replacement {
        bool active = false;
        bool drawn = false;
        std::u32string text;
        PdfCharacter place;
    };

    void UseFont(const GfxState& state);
    void UseStyle(GfxState& state);
    PdfCharacter Placed(const GfxState& state, double x, double y, double dx, double dy) const;
    PdfHidden HiddenAt(const GfxState& state, double x, double y, double dx, double dy) const;
    void Add(const PdfCharacter& place, std::u32string_view letters);
    void PaintPath(const GfxState& state);
    void PaintImage(const GfxState& state);
    void PaintClip(const GfxState& state);
    void AddRule(const PdfBox& box);
    void AddLink(const Object& annotation);

    PdfStyles& styles_;
    PdfPageClock& clock_;
    PdfPage page_;
    PaintedCells cells_;
    PdfGround ground_;
    Replacement replacement_;
    std::unordered_map<std::string, std::uint32_t> font_numbers_;
    std::unordered_map<std::uint64_t, std::uint32_t> style_numbers_;
    std::uint32_t font_ = 0;
    double font_height_ = 1;  // of a Type 3 font, whose size alone says nothing
    bool nameless_font_ = false;
    std::uint32_t style_ = 0;
    bool huge_ = false;  // the page, so that nothing is outside of it
    bool white_ = false;
    bool plain_ = false;  // filled with one colour
    Color color_;
    bool masked_ = false;  // by a soft mask: nothing that is painted hides what lies below
    int groups_ = 0;       // open groups, which may be painted in any way
    bool style_known_ = false;
};

}  // namespace zorvane
