// The quick road: poppler's own reading order, with ligatures as letters and shadows taken away.
#include <GfxState.h>
#include <TextOutputDev.h>
#include <array>
#include <cmath>
#include <cstdint>
#include <unordered_map>
#include <vector>

#include "common/base/text_bytes.h"
#include "load/readers/pdf/pdf_characters.h"
#include "load/readers/pdf/pdf_document.h"
#include "load/readers/pdf/pdf_letters.h"
#include "load/readers/pdf/pdf_lines.h"
#include "load/readers/pdf/pdf_reader.h"

namespace zorvane {
namespace {

void AppendText(void* stream, const char* text, int length) {
    static_cast<std::string*>(stream)->append(text, static_cast<std::size_t>(length));
}

class NoMonitor : public ReadMonitor {
  public:
    bool Progress(std::int64_t /*done*/, std::int64_t /*total*/) override { return true; }
};

/// A text device that leaves out a character which lies on an equal one.
class ShadowlessDevice : public TextOutputDev {
  public:
    ShadowlessDevice(std::string& target, double max_delta_x, PdfPageClock& clock)
        : TextOutputDev(AppendText, &target, false, 0, false),
          max_delta_x_(max_delta_x),
          clock_(clock) {}

    void saveState(GfxState* /*state*/) override { clock_.Tick(); }

    /// Whether the page that was shown last has so many scattered pieces of text that sorting them
    /// would take seconds; its text was left out.
    bool Crowded() const { return pieces_ > kMostPieces; }

    void startPage(int page, GfxState* state, XRef* xref) override {
        drawn_.clear();
        pieces_ = 0;
        TextOutputDev::startPage(page, state, xref);
    }

    // NOLINTNEXTLINE(readability-function-size): poppler's signature
    void drawChar(GfxState* state, double x, double y, double dx, double dy, double origin_x,
                  double origin_y, CharCode code, int bytes, const Unicode* letters,
                  int count) override {
        CountPiece(*state, x, y, dx);
        if (Crowded())
            return;
        if (max_delta_x_ > 0 && count > 0 && IsShadow(*state, x, y, dx, letters[0]))
            return;
        TextOutputDev::drawChar(state, x, y, dx, dy, origin_x, origin_y, code, bytes, letters,
                                count);
    }

    void endPage() override {
        if (!Crowded())
            TextOutputDev::endPage();
    }

  private:
    static constexpr std::size_t kMostPieces = 12'000;

    // A letter that does not stand behind the last one begins a piece.
    void CountPiece(const GfxState& state, double x, double y, double dx) {
        Place here;
        state.transform(x, y, &here.x, &here.y);
        const double reach = 3 * state.getTransformedFontSize();
        if (std::fabs(here.y - end_.y) > reach / 10 || std::fabs(here.x - end_.x) > reach)
            ++pieces_;
        state.transform(x + dx, y, &end_.x, &end_.y);
    }

    struct Place {
        double x = 0;
        double y = 0;
    };

    // The neighbour in a word like "all" starts where the first one ends; a shadow lies over it.
    static constexpr double kLargestShareOfWidth = 0.75;
    static constexpr double kLargestShareOfHeight = 0.2;

    bool IsShadow(const GfxState& state, double x, double y, double dx, Unicode letter) {
        Place here;
        state.transform(x, y, &here.x, &here.y);
        double width = 0;
        double unused = 0;
        state.transformDelta(dx, 0, &width, &unused);
        const double reach = std::min(max_delta_x_, std::fabs(width) * kLargestShareOfWidth);
        const double height = state.getTransformedFontSize() * kLargestShareOfHeight;
        // Cells as wide as the tolerance: an equal letter within it lies in this or a next cell.
        const auto cell = static_cast<std::int64_t>(std::floor(here.x / max_delta_x_));
        for (std::int64_t near = cell - 1; near <= cell + 1; ++near) {
            const auto found = drawn_.find(Key(letter, near));
            if (found != drawn_.end() && AnyNear(found->second, here, reach, height))
                return true;
        }
        drawn_[Key(letter, cell)].push_back(here);
        return false;
    }

    static bool AnyNear(const std::vector<Place>& places, const Place& here, double reach,
                        double height) {
        // The last ones are looked at first, and no more than a page of lines.
        constexpr std::size_t kMaxLooked = 256;
        const std::size_t first = places.size() > kMaxLooked ? places.size() - kMaxLooked : 0;
        for (std::size_t index = places.size(); index > first; --index) {
            const Place& place = places[index - 1];
            if (std::fabs(place.x - here.x) <= reach && std::fabs(place.y - here.y) <= height)
                return true;
        }
        return false;
    }

    static std::uint64_t Key(Unicode letter, std::int64_t cell) {
        return (static_cast<std::uint64_t>(cell) << 24) ^ letter;
    }

    Place end_;  // of the last letter
    std::size_t pieces_ = 0;
    double max_delta_x_;
    PdfPageClock& clock_;
    std::unordered_map<std::uint64_t, std::vector<Place>> drawn_;
};

// The text of a page by the layout of the robust road, which has a bound for each step.
ReadEnd CrowdedText(PDFDoc& document, std::int32_t page, std::string& text) {
    PdfStyles styles;
    PdfPageClock clock;
    PdfCharacterDevice device(styles, clock);
    NoMonitor monitor;
    std::vector<PdfLine> lines;
    ReadEnd end = WalkPages(document, {{page, page}, PageBox::Media, device, clock}, monitor,
                            [&](std::int32_t number) {
                                AppendLines(device.Page(), number, {}, lines);
                                return !device.Overflow();
                            });
    for (const PdfLine& line : lines) {
        for (const PdfLetter& letter : line.letters)
            AppendUtf8(letter.letter == static_cast<char32_t>(kCellEnd) ? U'\t' : letter.letter,
                       text);
        text += '\n';
    }
    text += '\f';
    return end;
}

}  // namespace

ReadEnd ReadPdfText(std::string_view bytes, const PdfPasswords& passwords, const PdfPages& pages,
                    double max_delta_x, std::string& text, ReadMonitor& monitor) {
    ReadEnd end;
    const PdfFile file = OpenPdfForText(bytes, passwords, end);
    if (!file.document)
        return end;
    text.clear();
    PdfPageClock clock;
    ShadowlessDevice device(text, max_delta_x, clock);
    std::size_t page_start = 0;
    end = WalkPages(*file.document, {pages, PageBox::Media, device, clock}, monitor,
                    [&](std::int32_t page) {
                        if (device.Crowded() && !CrowdedText(*file.document, page, text).ok())
                            return false;
                        PlainLetters(text, page_start);
                        page_start = text.size();
                        return text.size() < kMaxPartBytes;
                    });
    // A form feed stands between pages, none behind the last one.
    if (text.ends_with('\f'))
        text.pop_back();
    return end;
}

}  // namespace zorvane
