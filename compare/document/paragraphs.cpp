#include "compare/document/paragraphs.h"

#include <algorithm>

#include "common/base/paragraph_break.h"
#include "common/base/unit_search.h"

namespace zorvane {

void Paragraphs::Build(std::span<const std::u16string_view> pieces, RunWatcher* watcher) {
    Clear();
    StopCheck stop(watcher);
    std::int32_t start = 0;
    std::int32_t offset = 0;
    for (const std::u16string_view piece : pieces) {
        for (std::size_t feed = FindUnit(piece, u'\n');
             feed != std::u16string_view::npos && stop.KeepGoing();
             feed = FindUnit(piece, u'\n', feed + 1)) {
            const std::int32_t end = offset + static_cast<std::int32_t>(feed) + 1;
            list_.push_back({CharPos{start}, CharPos{end}});
            start = end;
        }
        offset += static_cast<std::int32_t>(piece.size());
    }
    list_.push_back({CharPos{start}, CharPos{offset + kBreakLength}});
    deltas_.assign(list_.size() + 1, 0);
}

void Paragraphs::Clear() {
    list_.clear();
    deltas_.clear();
}

void Paragraphs::SetLastChar(ParagraphNumber number, CharPos last) {
    if (Has(number))
        list_[static_cast<std::size_t>(number.value - 1)].LastChar = last;
}

void Paragraphs::Replaced(CharPos first, std::int32_t removed, std::int32_t inserted) {
    const CharPos old_end = first + removed;
    const CharPos new_end = first + inserted;
    const auto move = [&](CharPos& place) {
        if (place >= old_end && place > first)
            place = place + (inserted - removed);
        else if (place > new_end)
            place = new_end;  // it stood in what was removed
    };
    const auto behind = std::lower_bound(
        list_.begin(), list_.end(), first,
        [](const clsParagraph& paragraph, CharPos at) { return paragraph.LastChar < at; });
    for (auto paragraph = behind; paragraph != list_.end(); ++paragraph) {
        move(paragraph->FirstChar);
        move(paragraph->LastChar);
    }
}

void Paragraphs::AddDelta(ParagraphNumber number, std::int32_t delta) {
    if (number.value >= 0 && number.value < Count())
        deltas_[static_cast<std::size_t>(number.value)] = delta;
}

void Paragraphs::Adjust() {
    std::int32_t total = 0;
    for (std::size_t i = 0; i < list_.size(); ++i) {
        total += deltas_[i + 1];
        list_[i].FirstChar = list_[i].FirstChar + total;
        list_[i].LastChar = list_[i].LastChar + total;
    }
}

}  // namespace zorvane
