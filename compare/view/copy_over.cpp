#include "compare/view/copy_over.h"

#include <string_view>

#include "common/base/paragraph_break.h"

namespace zorvane {
namespace {

// Where a paragraph begins; the text's end for the one behind the last.
CharPos BeginOf(const CopyTexts& texts, Side side, ParagraphNumber number) {
    const BlockIndex& index = *texts.indexes[side];
    if (number.value > index.ParagraphCount())
        return CharPos{texts.documents[side]->Length()};
    return index.OfParagraph(number).first;
}

bool IsLast(const CopyTexts& texts, Side side, ParagraphNumber number) {
    return number.value >= texts.indexes[side]->ParagraphCount();
}

// Without the break behind the last of them.
TextRange WordsOf(const CopyTexts& texts, Side side, const ParagraphSpan& span) {
    const CharPos first = BeginOf(texts, side, span.first);
    const CharPos end = BeginOf(texts, side, span.end());
    return TextRange::Between(first,
                              IsLast(texts, side, span.end() - 1) ? end : end - kBreakLength);
}

// With one break, so that nothing is left of them: the one behind, at the text's end the one in
// front.
TextRange LinesOf(const CopyTexts& texts, Side side, const ParagraphSpan& span) {
    TextRange range = WordsOf(texts, side, span);
    if (!IsLast(texts, side, span.end() - 1))
        range.length += kBreakLength;
    else if (span.first.value > 1)
        range = {range.first - kBreakLength, range.length + kBreakLength};
    return range;
}

void Insert(const CopyTexts& texts, Side from, const ParagraphSpan& source,
            const ParagraphSpan& place) {
    const Side to = OtherSide(from);
    RichDocument& target = *texts.documents[to];
    const RichText words = texts.documents[from]->Rich(WordsOf(texts, from, source));
    const EditBatch one_step(target);
    if (place.first.value > texts.indexes[to]->ParagraphCount()) {
        const TextRange added = target.Replace({CharPos{target.Length()}, 0}, kBreak);
        target.Replace({added.end(), 0}, words);
        return;
    }
    const CharPos at = BeginOf(texts, to, place.first);
    target.Replace({at, 0}, kBreak);
    target.Replace({at, 0}, words);
}

}  // namespace

bool CopyOver(const ParagraphRows& rows, const CopyTexts& texts, std::int32_t record, Side from) {
    const RowSpan span = rows.RowsOfRecord(record);
    if (span.count == 0)
        return false;
    const ParagraphRow first = rows.Row(span.first);
    const ParagraphRow last = rows.Row(span.end() - 1);
    const auto paragraphs = [&](Side side) {
        const ParagraphNumber begin = first.paragraphs[side].first;
        return ParagraphSpan{begin, last.paragraphs[side].end() - begin};
    };
    const Side to = OtherSide(from);
    const ParagraphSpan source = paragraphs(from);
    const ParagraphSpan target = paragraphs(to);
    RichDocument& document = *texts.documents[to];
    if (source.count == 0 && target.count == 0)
        return false;
    // Rows of other texts than these would name other paragraphs.
    for (const Side side : kBothSides) {
        if (rows.Paragraphs(side) != texts.indexes[side]->ParagraphCount())
            return false;
    }
    if (source.count == 0) {
        document.Replace(LinesOf(texts, to, target), std::u16string_view());
    } else if (target.count == 0) {
        Insert(texts, from, source, target);
    } else {
        document.Replace(WordsOf(texts, to, target),
                         texts.documents[from]->Rich(WordsOf(texts, from, source)));
    }
    return true;
}

}  // namespace zorvane
