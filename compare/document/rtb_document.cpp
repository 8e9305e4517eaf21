#include "compare/document/rtb_document.h"

#include <cmath>

#include "common/base/paragraph_break.h"
#include "common/base/surrogates.h"
#include "common/base/text_encoding.h"
#include "common/base/unit_search.h"
#include "common/platform/files.h"
#include "common/platform/services.h"
#include "compare/document/clipboard.h"

namespace zorvane {
namespace {

constexpr ParagraphNumber kFirst{1};
constexpr ParagraphNumber kBeforeFirst{0};

std::int32_t HalfPoints(double points) {
    return static_cast<std::int32_t>(std::lround(points * 2));
}

bool EndsInHighSurrogate(std::u16string_view text) {
    return !text.empty() && IsHighSurrogate(text.back());
}

}  // namespace

void clsRTBDocument::Setup(Editor& editor, Sound& sound) {
    editor_ = &editor;
    sound_ = &sound;
    paragraphs_.Clear();
}

bool clsRTBDocument::bIsValidSelection(ParagraphNumber first, ParagraphNumber last) {
    const auto valid = [this](ParagraphNumber number) {
        return number >= kBeforeFirst && number.value <= ParagraphCount();
    };
    if (valid(first) && valid(last))
        return true;
    sound_->Beep();
    return false;
}

TextRange clsRTBDocument::RangeOf(ParagraphNumber first, ParagraphNumber last,
                                  LastBreak last_break) {
    if (!bIsValidSelection(first, last))
        return {};
    const CharPos begin = first == kBeforeFirst ? CharPos{0} : paragraphs_.At(first).FirstChar;
    const CharPos end = last == kBeforeFirst ? CharPos{1} : paragraphs_.At(last).LastChar;
    if (end < begin)
        return {};
    const TextRange whole = TextRange::Between(begin, end);
    const TextRange range = editor_->Clip(whole);
    // The text got shorter since the collection was built.
    if (range.length != whole.length)
        return {range.first, 0};
    // One position less falls into the break, and so in front of it.
    const bool shorten = last_break == LastBreak::LeaveOut && last != kBeforeFirst;
    return shorten ? editor_->Clip({range.first, range.length - 1}) : range;
}

void clsRTBDocument::SelectParagraphs(ParagraphNumber first, ParagraphNumber last,
                                      LastBreak last_break) {
    editor_->Select(RangeOf(first, last, last_break));
}

void clsRTBDocument::SelectAllTextBetween(ParagraphNumber first, ParagraphNumber last,
                                          LastBreak last_break) {
    const std::int32_t count = ParagraphCount();
    if (!bIsValidSelection(first, last)) {
        if (last.value > count && paragraphs_.Has(first)) {
            const CharPos begin = paragraphs_.At(first).LastChar;
            editor_->Select(TextRange::Between(begin, CharPos{editor_->Length()}));
        }
        return;
    }
    TextRange range;
    if (first == kBeforeFirst) {
        range.length = last == kBeforeFirst ? 1 : paragraphs_.At(last).LastChar.value;
    } else if (first.value < count) {
        range.first = paragraphs_.At(first).LastChar;
        range.length = last == kBeforeFirst
                           ? 0
                           : paragraphs_.At(last).LastChar - paragraphs_.At(first).FirstChar;
    } else {
        range = {paragraphs_.At(first).LastChar - 2, 2};
    }
    const std::u16string text = editor_->Text(range);
    if (last_break == LastBreak::LeaveOut && text.ends_with(u'\n'))
        --range.length;
    editor_->Select(range);
}

void clsRTBDocument::ColorizeParagraphs(ParagraphNumber first, ParagraphNumber last,
                                        const MarkStyle& mark) {
    const ProgrammeEdit programme(*editor_);
    const TextRange range = RangeOf(first, last, LastBreak::Keep);
    ApplyMark(*editor_, range, mark);
    editor_->Select({range.first, 0});
}

void clsRTBDocument::ColorizeAll(const MarkStyle& mark) {
    const ProgrammeEdit programme(*editor_);
    ApplyMark(*editor_, {CharPos{0}, editor_->Length()}, mark);
    editor_->Select({});
}

void clsRTBDocument::ChangeFontAll(std::string_view font_name, double font_size) {
    CharFormatChange change;
    if (!font_name.empty())
        change.font = FontName(font_name);
    if (font_size > 0)
        change.half_points = HalfPoints(font_size);
    const ProgrammeEdit programme(*editor_);
    editor_->Format({CharPos{0}, editor_->Length()}, change);
    CharFormat format = editor_->DefaultFormat();
    change.ApplyTo(format);
    editor_->SetDefaultFormat(format);
    editor_->Select({});
}

CharPos clsRTBDocument::GetFirstCharLocationOfParagraph(ParagraphNumber number) const {
    return paragraphs_.Has(number) ? paragraphs_.At(number).FirstChar : CharPos{0};
}

CharPos clsRTBDocument::GetLastCharLocationOfParagraph(ParagraphNumber number) const {
    return paragraphs_.Has(number) ? paragraphs_.At(number).LastChar : CharPos{0};
}

void clsRTBDocument::SetLastCharLocationOfParagraph(ParagraphNumber number, CharPos value) {
    paragraphs_.SetLastChar(number, value);
}

void clsRTBDocument::Cut(Clipboard& clipboard) {
    if (editor_->Selection().length == 0)
        return;
    Copy(clipboard);
    editor_->ReplaceSelection(std::u16string_view());
}

void clsRTBDocument::Copy(Clipboard& clipboard) const {
    if (editor_->Selection().length > 0)
        clipboard.Put(ClipboardTextOf(editor_->SelectedRich()));
}

void clsRTBDocument::Paste(const Clipboard& clipboard) {
    const RichText text = RichTextOf(clipboard.Get(), editor_->SelectionFormat());
    if (!text.Empty())
        editor_->ReplaceSelection(text);
}

void clsRTBDocument::SetCursorAt(ParagraphNumber number) {
    const CharPos place = number >= kFirst ? GetLastCharLocationOfParagraph(number) - 1
                                           : GetFirstCharLocationOfParagraph(kFirst);
    editor_->Select({place, 0});
}

namespace {

constexpr std::u16string_view kTwoReturns = u"\r\r";

bool HasTwoReturns(std::u16string_view text, StopCheck& stop) {
    for (std::size_t at = 0;
         stop.KeepGoing() && (at = FindUnit(text, u'\r', at)) != std::u16string_view::npos; ++at) {
        if (text.substr(at, kTwoReturns.size()) == kTwoReturns)
            return true;
    }
    return false;
}

}  // namespace

void clsRTBDocument::RemoveDoubledReturns(RunWatcher* watcher) {
    StopCheck stop(watcher);
    bool doubled = false;
    char16_t last = 0;
    for (const std::u16string_view piece : editor_->TextPieces()) {
        doubled =
            doubled || (last == u'\r' && piece.starts_with(u'\r')) || HasTwoReturns(piece, stop);
        last = piece.empty() ? last : piece.back();
    }
    if (!doubled)
        return;
    const std::u16string text = editor_->Text();
    std::u16string rest;
    std::size_t begin = 0;
    for (std::size_t at = 0; (at = text.find(kTwoReturns, begin)) != std::u16string::npos;
         begin = at + kTwoReturns.size())
        rest.append(text, begin, at - begin);
    rest.append(text, begin);
    editor_->SetText(rest);
}

bool clsRTBDocument::ParagraphCollectionCreate(RunWatcher* watcher) {
    RemoveDoubledReturns(watcher);
    if (KeepGoing(watcher))
        paragraphs_.Build(editor_->TextPieces(), watcher);
    else
        paragraphs_.Clear();
    return true;
}

void clsRTBDocument::ParagraphCollectionAdjustmentAddDelta(ParagraphNumber number,
                                                           std::int32_t delta) {
    paragraphs_.AddDelta(number, delta);
}

void clsRTBDocument::ParagraphCollectionAdjust() {
    paragraphs_.Adjust();
}

void clsRTBDocument::ParagraphCollectionEmpty() {
    paragraphs_.Clear();
}

Status clsRTBDocument::LoadFile(const std::string& path) {
    return LoadFile2(path, FileFormat::RichText);
}

Status clsRTBDocument::LoadFile2(const std::string& path, FileFormat format) {
    return editor_->LoadFile(path, format);
}

clsRTBDocument::EditStatus clsRTBDocument::GetEditStatus() const {
    const CharPos caret = editor_->Selection().first;
    const std::int32_t line = editor_->LineOfChar(caret);
    return {caret - editor_->FirstCharOfLine(line), line + 1};
}

void clsRTBDocument::ScrollRTB(bool bUp) {
    const std::int32_t line = editor_->LineOfChar(editor_->Selection().first);
    if (bUp) {
        // Kept: the selection stays on the first two lines.
        if (line >= 2)
            editor_->Select({editor_->FirstCharOfLine(line - 1), 1});
        return;
    }
    const CharPos next = editor_->FirstCharOfLine(line + 1);
    if (editor_->LineOfChar(next) == line + 1)
        editor_->Select({next, 1});
}

// Most documents hold none of what is replaced at a load; that is told without a copy.
bool clsRTBDocument::MayOccur(std::u16string_view find, bool bMatchCase) const {
    if (!bMatchCase)
        return true;
    for (const std::u16string_view piece : editor_->TextPieces()) {
        if (FindUnit(piece, find.front()) != std::u16string_view::npos)
            return true;
    }
    return false;
}

std::int32_t clsRTBDocument::FindAndReplaceString(std::u16string_view find,
                                                  std::u16string_view replace, bool bMatchCase) {
    if (find.empty() || !MayOccur(find, bMatchCase))
        return 0;
    const std::u16string text = editor_->Text();
    const std::u16string searched = bMatchCase ? text : FoldCase(text);
    const std::u16string wanted = bMatchCase ? std::u16string(find) : FoldCase(find);
    const auto length = static_cast<std::int32_t>(find.size());
    const EditBatch batch(*editor_);
    std::int32_t count = 0;
    std::size_t before = searched.size();
    while (before >= wanted.size()) {
        const std::size_t at = searched.rfind(wanted, before - wanted.size());
        if (at == std::u16string::npos)
            break;
        editor_->Replace({CharPos{static_cast<std::int32_t>(at)}, length}, replace);
        ++count;
        before = at;
    }
    return count;
}

std::string clsRTBDocument::LineFileText() const {
    std::string bytes;
    bytes.reserve(static_cast<std::size_t>(editor_->Length()) + 16);
    // An edit may have stood inside a surrogate pair, which must be read as one.
    std::u16string half;
    for (std::u16string_view piece : editor_->TextPieces()) {
        if (!half.empty()) {
            AppendUtf8(half + piece.front(), bytes);
            piece.remove_prefix(1);
            half.clear();
        }
        if (EndsInHighSurrogate(piece)) {
            half = piece.back();
            piece.remove_suffix(1);
        }
        AppendUtf8(piece, bytes);
    }
    AppendUtf8(half, bytes);
    AppendUtf8(kBreak, bytes);
    return bytes;
}

Status clsRTBDocument::SaveAsLineFile(const std::string& path) const {
    return WriteWholeFile(path, LineFileText());
}

Status clsRTBDocument::SaveAsLineFileNew(const std::string& path) {
    std::string bytes;
    for (ParagraphNumber number = kFirst; number.value <= ParagraphCount(); ++number) {
        SelectParagraphs(number, number, LastBreak::Keep);
        AppendUtf8(editor_->SelectedText(), bytes);
    }
    return WriteWholeFile(path, bytes);
}

}  // namespace zorvane
