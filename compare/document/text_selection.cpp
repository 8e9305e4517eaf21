#include "compare/document/text_selection.h"

#include <algorithm>

namespace zorvane {

TextRange TextSelection::Range() const {
    return TextRange::Between(std::min(anchor_, caret_), std::max(anchor_, caret_));
}

void TextSelection::MoveTo(CharPos place) {
    caret_ = Clipped(std::min(place, CharPos{editor_->Length()}));
    anchor_ = caret_;
    wanted_x_.reset();
}

void TextSelection::ExtendTo(CharPos place) {
    caret_ = Clipped(place);
    wanted_x_.reset();
}

void TextSelection::Select(CharPos anchor, CharPos caret) {
    anchor_ = Clipped(anchor);
    ExtendTo(caret);
}

void TextSelection::Replaced(CharPos first, std::int32_t removed, std::int32_t inserted) {
    const TextRange old = Range();
    // What is inserted exactly at the begin of a selection pushes it along, at a caret it does not.
    const auto moved = [&](CharPos place) {
        const bool pushed = removed == 0 && place == first && old.length > 0 && place == old.first;
        if (place < first || (place == first && !pushed))
            return place;
        if (place >= first + removed)
            return place + (inserted - removed);
        return first + std::min(place - first, inserted);
    };
    const CharPos anchor = moved(anchor_);
    const CharPos caret = moved(caret_);
    const std::optional<double> wanted = caret == caret_ ? wanted_x_ : std::nullopt;
    Select(anchor, caret);
    wanted_x_ = wanted;
}

void TextSelection::Reformatted(CharPos /*first*/, std::int32_t /*length*/) {
    wanted_x_.reset();  // another font, another place
}

void TextSelection::Reset() {
    Select(anchor_, caret_);
}

}  // namespace zorvane
