#include "compare/sections.h"

#include "compare/engine/section_lines.h"

namespace zorvane {

void Sections::Index() {
    FindSectionEnds(editor_.Text(), ends_);
}

CharPos Sections::EndOf(SectionNumber number) const {
    if (number.value < 1 || ends_.empty())
        return CharPos{0};
    const auto at = static_cast<std::size_t>(number.value - 1);
    return CharPos{at < ends_.size() ? ends_[at] : ends_.back()};
}

CharPos Sections::BeginOf(SectionNumber number) const {
    return EndOf(number - 1);
}

TextRange Sections::RangeOf(SectionNumber first, SectionNumber last) const {
    return TextRange::Between(BeginOf(first), EndOf(last));
}

TextRange Sections::RangeWithSeparator(SectionNumber first, SectionNumber last) const {
    const CharPos begin = BeginOf(first);
    return editor_.Clip(TextRange::Between(begin.value > 0 ? begin - 1 : begin, EndOf(last)));
}

void Sections::ColorizeSections(SectionNumber first, SectionNumber last, const MarkStyle& mark) {
    ApplyMark(editor_, RangeOf(first, last), mark);
}

std::u16string Sections::GetSectionsText(SectionNumber first, SectionNumber last) const {
    TextRange range = RangeOf(first, last);
    if (range.first.value > 0 && editor_.Text({range.first - 1, 1}) == u" ")
        range = {range.first - 1, range.length + 1};
    return editor_.Text(range);
}

RichText Sections::GetSectionsRTF(SectionNumber first, SectionNumber last) const {
    return editor_.Rich(RangeWithSeparator(first, last));
}

void Sections::ReplaceSectionsRTF(SectionNumber first, SectionNumber last, const RichText& text) {
    editor_.Replace(RangeWithSeparator(first, last), text);
}

void Sections::InsertTextAfterSection(SectionNumber number, const std::u16string& text,
                                      const MarkStyle& mark) {
    const TextRange inserted = editor_.Replace({EndOf(number), 0}, text);
    ApplyMark(editor_, inserted, mark);
}

}  // namespace zorvane
