#include "compare/document/text_boundaries.h"

#include <algorithm>
#include <memory>
#include <string>
#include <unicode/ubrk.h>
#include <unicode/uchar.h>

#include "common/base/paragraph_break.h"

namespace zorvane {
namespace {

constexpr std::int32_t kLookAround = 512;  // no word that is read is longer

struct CloseIterator {
    void operator()(UBreakIterator* iterator) const { ubrk_close(iterator); }
};
using Iterator = std::unique_ptr<UBreakIterator, CloseIterator>;

Iterator Open(UBreakIteratorType type, std::u16string_view text) {
    UErrorCode error = U_ZERO_ERROR;
    Iterator iterator(
        ubrk_open(type, "", text.data(), static_cast<std::int32_t>(text.size()), &error));
    return U_SUCCESS(error) != 0 ? std::move(iterator) : nullptr;
}

// What stands in the line of a place, a little around it, and where the place is in it.
struct Surroundings {
    std::u16string text;
    std::int32_t place = 0;

    bool AtBegin() const { return place == 0; }
    bool AtEnd() const { return place == static_cast<std::int32_t>(text.size()); }
    char16_t At(std::int32_t index) const { return text[static_cast<std::size_t>(index)]; }
    std::int32_t Size() const { return static_cast<std::int32_t>(text.size()); }
};

std::u16string LineBehind(const Editor& editor, CharPos place, std::int32_t most) {
    std::u16string text =
        editor.Text({place, std::min(most, std::max(editor.Length() - place.value, 0))});
    text.erase(std::find_if(text.begin(), text.end(), EndsLine), text.end());
    return text;
}

std::u16string LineBefore(const Editor& editor, CharPos place, std::int32_t most) {
    // A begin between CR and LF is moved in front of both, and cut off with them.
    const CharPos begin{std::max(place.value - most, 0)};
    std::u16string text = editor.Text(TextRange::Between(begin, place));
    text.erase(text.begin(), std::find_if(text.rbegin(), text.rend(), EndsLine).base());
    return text;
}

Surroundings Around(const Editor& editor, CharPos place) {
    Surroundings around;
    around.text = LineBefore(editor, place, kLookAround);
    around.place = around.Size();
    around.text += LineBehind(editor, place, kLookAround);
    return around;
}

std::int32_t Boundary(const Iterator& iterator, std::int32_t (*step)(UBreakIterator*, std::int32_t),
                      std::int32_t from, std::int32_t otherwise) {
    if (iterator == nullptr)
        return otherwise;
    const std::int32_t found = step(iterator.get(), from);
    return found == UBRK_DONE ? otherwise : found;
}

std::int32_t CharacterBack(const Surroundings& around) {
    const Iterator characters = Open(UBRK_CHARACTER, around.text);
    return Boundary(characters, ubrk_preceding, around.place, around.place - 1);
}

std::int32_t CharacterForward(const Surroundings& around) {
    const Iterator characters = Open(UBRK_CHARACTER, around.text);
    return Boundary(characters, ubrk_following, around.place, around.place + 1);
}

std::int32_t WordBack(const Surroundings& around) {
    std::int32_t at = around.place;
    while (at > 0 && IsBlankUnit(around.At(at - 1)))
        --at;
    const Iterator words = Open(UBRK_WORD, around.text);
    return at == 0 ? 0 : Boundary(words, ubrk_preceding, at, at - 1);
}

std::int32_t WordForward(const Surroundings& around) {
    const Iterator words = Open(UBRK_WORD, around.text);
    std::int32_t at = around.place;
    if (!IsBlankUnit(around.At(at)))
        at = Boundary(words, ubrk_following, at, at + 1);
    while (at < around.Size() && IsBlankUnit(around.At(at)))
        ++at;
    return at;
}

}  // namespace

bool IsBlankUnit(char16_t unit) {
    return u_isblank(unit) != 0;
}

CharPos PlaceBack(const Editor& editor, CharPos from, TextUnit unit) {
    from = std::min(editor.Clip({from, 0}).first, CharPos{editor.Length()});
    if (unit == TextUnit::Line) {
        const CharPos begin = editor.FirstCharOfLine(editor.LineOfChar(from));
        if (begin < from)
            return begin;
    }
    const Surroundings around = Around(editor, from);
    if (around.AtBegin())
        return editor.Clip({std::max(from - 1, CharPos{0}), 0}).first;
    const bool word = unit == TextUnit::Word;
    return from - (around.place - (word ? WordBack(around) : CharacterBack(around)));
}

CharPos PlaceForward(const Editor& editor, CharPos from, TextUnit unit) {
    from = std::min(editor.Clip({from, 0}).first, CharPos{editor.Length()});
    const Surroundings around = Around(editor, from);
    if (around.AtEnd()) {
        if (from == CharPos{editor.Length()})
            return from;
        const bool break_behind = editor.Text({from, kBreakLength}) == kBreak;
        return from + (break_behind ? kBreakLength : 1);
    }
    if (unit == TextUnit::Line) {
        const CharPos next = editor.FirstCharOfLine(editor.LineOfChar(from) + 1);
        if (next <= from)
            return CharPos{editor.Length()};
        const CharPos end = editor.Clip({next - 1, 0}).first;
        return end;
    }
    const bool word = unit == TextUnit::Word;
    return from + ((word ? WordForward(around) : CharacterForward(around)) - around.place);
}

TextRange WordAt(const Editor& editor, CharPos place) {
    place = std::min(editor.Clip({place, 0}).first, CharPos{editor.Length()});
    const Surroundings around = Around(editor, place);
    const Iterator words = Open(UBRK_WORD, around.text);
    if (around.text.empty() || words == nullptr)
        return {place, 0};
    const std::int32_t inside = std::min(around.place, around.Size() - 1);
    const std::int32_t end = Boundary(words, ubrk_following, inside, around.Size());
    const std::int32_t begin = Boundary(words, ubrk_preceding, end, 0);
    return {place + (begin - around.place), end - begin};
}

std::int32_t CountCharacters(std::u16string_view text) {
    const Iterator characters = Open(UBRK_CHARACTER, text);
    if (characters == nullptr)
        return static_cast<std::int32_t>(text.size());
    std::int32_t count = 0;
    while (ubrk_next(characters.get()) != UBRK_DONE)
        ++count;
    return count;
}

TextRange CharactersBehind(const Editor& editor, CharPos place, std::int32_t count) {
    const std::int32_t most = kLookAround + std::min(count, 1 << 20) * 4;
    const std::u16string text = LineBehind(editor, place, most);
    const Iterator characters = Open(UBRK_CHARACTER, text);
    std::int32_t end = 0;
    for (; characters != nullptr && count > 0; --count) {
        const std::int32_t next = ubrk_next(characters.get());
        if (next == UBRK_DONE)
            break;
        end = next;
    }
    return {place, end};
}

}  // namespace zorvane
