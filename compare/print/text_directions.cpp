#include <algorithm>
#include <unicode/ubidi.h>

#include "compare/print/line_painter.h"

namespace zorvane {
namespace {

constexpr char16_t kFirstRightToLeft = 0x590;  // nothing below runs that way

bool NeedsOrder(const PrintParagraph& paragraph) {
    return paragraph.format->right_to_left ||
           std::any_of(paragraph.text.begin(), paragraph.text.end(),
                       [](char16_t unit) { return unit >= kFirstRightToLeft; });
}

using Bidi = std::unique_ptr<UBiDi, decltype(&ubidi_close)>;

}  // namespace

struct TextDirections::State {
    Bidi paragraph{ubidi_open(), &ubidi_close};
    Bidi line{ubidi_open(), &ubidi_close};
    bool right_to_left = false;
};

TextDirections::TextDirections(const PrintParagraph& paragraph) {
    if (!NeedsOrder(paragraph))
        return;
    auto state = std::make_unique<State>();
    state->right_to_left = paragraph.format->right_to_left;
    UErrorCode status = U_ZERO_ERROR;
    ubidi_setPara(state->paragraph.get(), paragraph.text.data(),
                  static_cast<std::int32_t>(paragraph.text.size()),
                  state->right_to_left ? UBIDI_RTL : UBIDI_LTR, nullptr, &status);
    if (U_SUCCESS(status))
        state_ = std::move(state);
}

TextDirections::~TextDirections() = default;

bool TextDirections::RightToLeft() const {
    return state_ != nullptr && state_->right_to_left;
}

std::vector<DirectedRun> TextDirections::RunsOf(std::int32_t begin, std::int32_t end) const {
    if (begin >= end)
        return {};
    UErrorCode status = U_ZERO_ERROR;
    std::int32_t count = 0;
    if (state_ != nullptr) {
        ubidi_setLine(state_->paragraph.get(), begin, end, state_->line.get(), &status);
        count = ubidi_countRuns(state_->line.get(), &status);
    }
    // A separator of paragraphs inside ours has no order of its own: it stays as it is read.
    if (state_ == nullptr || U_FAILURE(status))
        return {{begin, end, false}};
    std::vector<DirectedRun> runs;
    for (std::int32_t at = 0; at < count; ++at) {
        std::int32_t first = 0;
        std::int32_t length = 0;
        const bool right_to_left =
            ubidi_getVisualRun(state_->line.get(), at, &first, &length) == UBIDI_RTL;
        runs.push_back({begin + first, begin + first + length, right_to_left});
    }
    return runs;
}

}  // namespace zorvane
