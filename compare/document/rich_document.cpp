#include "compare/document/rich_document.h"

#include <algorithm>
#include <cassert>
#include <utility>

#include "common/base/paragraph_break.h"

namespace zorvane {
namespace {

// Above this whoever listens is faster to look at the whole text again.
constexpr std::int32_t kResetAbove = 1 << 20;

}  // namespace

// ---- a whole new text ----

RichDocument::RichDocument() = default;

RichDocument::~RichDocument() = default;

RichText RichDocument::TakeRich() {
    RichText rich = text_.TakeRich();
    NoteReset();
    return rich;
}

void RichDocument::SetText(std::u16string_view text) {
    text_.SetText(text);
    NoteReset();
}

void RichDocument::SetRich(RichText text) {
    text_.SetRich(std::move(text));
    NoteReset();
}

Status RichDocument::LoadFile(const std::string& path, FileFormat format) {
    Status status = text_.LoadFile(path, format);
    if (status.ok())
        NoteReset();
    return status;
}

// ---- edits ----

EditStep RichDocument::NewStep(EditStep::Part part, TextRange range) const {
    return {part, range.first, range.length, {}, text_.EmptyLastParagraph()};
}

void RichDocument::Remember(EditStep step, EditKind kind, std::u16string_view typed,
                            SelectionMark before) {
    if (ByUser())
        undo_.Add(std::move(step), kind, typed, before, Mark());
}

TextRange RichDocument::Put(TextRange range, const RichText& text, EditKind kind, CaretGoes caret) {
    range = Clip(range);
    const std::int32_t length = Length();
    const TextRange inside = text_.InText(range);
    EditStep step = NewStep(EditStep::Part::Text, inside);
    if (ByUser())
        step.old = Rich(inside);
    const SelectionMark before = Mark();
    const TextRange put = text_.Replace(range, text);
    step.length = Length() - length + inside.length;
    if (step.length == 0 && inside.length == 0)
        return put;
    programme_wrote_ = programme_wrote_ || !ByUser();
    NoteReplaced(inside.first.value, inside.length, step.length);
    if (caret == CaretGoes::BehindIt)
        selection_.MoveTo(put.end());
    Remember(std::move(step), kind, text.text, before);
    SendPending();
    return put;
}

TextRange RichDocument::Replace(TextRange range, const RichText& text) {
    return Put(range, text, EditKind::Other, CaretGoes::Nowhere);
}

TextRange RichDocument::Replace(TextRange range, std::u16string_view text) {
    return Put(range, text_.Dressed(range, text), EditKind::Other, CaretGoes::Nowhere);
}

void RichDocument::Format(TextRange range, const CharFormatChange& change) {
    range = text_.InText(Clip(range));
    if (range.length == 0)
        return;
    EditStep step = NewStep(EditStep::Part::CharFormats, range);
    if (ByUser())
        step.old.char_runs = text_.CharRuns(range);
    text_.Format(range, change);
    NoteReformatted(range);
    Remember(std::move(step), EditKind::Other, {}, Mark());
    SendPending();
}

void RichDocument::FormatParagraphs(TextRange range, const ParagraphFormatChange& change) {
    const TextRange paragraphs = text_.ParagraphsOf(range);
    EditStep step = NewStep(EditStep::Part::ParagraphFormats, paragraphs);
    if (ByUser())
        step.old.paragraph_runs = text_.ParagraphRuns(paragraphs);
    text_.FormatParagraphs(range, change);
    NoteReformatted(paragraphs);
    Remember(std::move(step), EditKind::Other, {}, Mark());
    SendPending();
}

// ---- the selection ----

void RichDocument::NoteSelection() {
    undo_.Seal();
    pending_.selection = true;
    SendPending();
}

void RichDocument::Select(TextRange range) {
    selection_.Select(Clip(range));
    NoteSelection();
}

void RichDocument::MoveCaret(CharPos place) {
    selection_.MoveTo(place);
    NoteSelection();
}

void RichDocument::ExtendSelection(CharPos caret) {
    selection_.ExtendTo(caret);
    NoteSelection();
}

void RichDocument::ReplaceSelection(std::u16string_view text) {
    ReplaceSelection(text_.Dressed(Selection(), text));
}

void RichDocument::ReplaceSelection(const RichText& text) {
    Put(Selection(), text, EditKind::Other, CaretGoes::BehindIt);
}

// ---- typing ----

CharFormat RichDocument::TypingFormat() const {
    // A paragraph goes on as it begins, not as the one before it ended.
    const CharPos caret = selection_.Caret();
    const bool begins = selection_.Empty() && caret.value >= kBreakLength &&
                        text_.Text({CharPos{caret.value - kBreakLength}, kBreakLength}) == kBreak;
    return begins ? FormatAt(caret) : text_.InsertionFormat(Selection());
}

RichText RichDocument::Typed(TextRange range, std::u16string_view text) const {
    RichText rich = text_.Dressed(range, text);
    if (!rich.Empty())
        rich.char_runs = {{rich.Length(), TypingFormat()}};
    return rich;
}

void RichDocument::Type(std::u16string_view text) {
    Put(Selection(), Typed(Selection(), text), EditKind::Typing, CaretGoes::BehindIt);
}

void RichDocument::TypeOver(std::u16string_view text) {
    // A break is put in, not typed over a character.
    if (!selection_.Empty() || text.find_first_of(u"\r\n") != std::u16string_view::npos)
        return Type(text);
    const CharPos caret = selection_.Caret();
    const TextRange over = CharactersBehind(text_, caret, CountCharacters(text));
    Put(over, Typed({caret, 0}, text), EditKind::TypingOver, CaretGoes::BehindIt);
}

void RichDocument::Delete(TextRange range, EditKind kind) {
    Put(range, RichText{}, kind, CaretGoes::BehindIt);
}

void RichDocument::DeleteBack(TextUnit unit) {
    if (!selection_.Empty())
        return Delete(Selection(), EditKind::Other);
    const CharPos caret = selection_.Caret();
    Delete(TextRange::Between(PlaceBack(text_, caret, unit), caret), EditKind::DeletingBack);
}

void RichDocument::DeleteForward(TextUnit unit) {
    if (!selection_.Empty())
        return Delete(Selection(), EditKind::Other);
    const CharPos caret = selection_.Caret();
    Delete(TextRange::Between(caret, PlaceForward(text_, caret, unit)), EditKind::DeletingForward);
}

// ---- undo ----

void RichDocument::SwapStep(EditStep& step) {
    const TextRange range{step.first, step.length};
    RichText now;
    const std::optional<ParagraphFormat> empty_now = text_.EmptyLastParagraph();
    switch (step.part) {
        case EditStep::Part::Text:
            now = Rich(range);
            text_.Replace(range, step.old);
            NoteReplaced(step.first.value, step.length, step.old.Length());
            step.length = step.old.Length();
            break;
        case EditStep::Part::CharFormats:
            now.char_runs = text_.CharRuns(range);
            text_.SetCharRuns(range, step.old.char_runs);
            NoteReformatted(range);
            break;
        case EditStep::Part::ParagraphFormats:
            now.paragraph_runs = text_.ParagraphRuns(range);
            text_.SetParagraphRuns(range, step.old.paragraph_runs);
            NoteReformatted(range);
    }
    step.old = std::move(now);
    text_.SetEmptyLastParagraph(std::exchange(step.empty_last_paragraph, empty_now));
}

std::optional<TextRange> RichDocument::AfterUndo(const std::optional<UndoList::Change>& change) {
    if (!change)
        return std::nullopt;
    const TextRange range = change->range;
    const SelectionMark mark = change->selection;
    const bool there = std::min(mark.anchor, mark.caret) <= range.end() &&
                       std::max(mark.anchor, mark.caret) >= range.first;
    if (there)
        selection_.Select(mark.anchor, mark.caret);
    else
        selection_.Select(range);
    pending_.selection = true;
    return range;
}

std::optional<TextRange> RichDocument::Undo() {
    const EditBatch batch(*this);
    return AfterUndo(undo_.Undo([this](EditStep& step) { SwapStep(step); }));
}

std::optional<TextRange> RichDocument::Redo() {
    const EditBatch batch(*this);
    return AfterUndo(undo_.Redo([this](EditStep& step) { SwapStep(step); }));
}

// ---- notices ----

void RichDocument::BeginBatch() {
    ++batches_;
    undo_.BeginBatch();
}

void RichDocument::EndBatch() {
    --batches_;
    undo_.EndBatch();
    SendPending();
}

void RichDocument::EndProgrammeEdit() {
    --programme_edits_;
    if (ByUser() && std::exchange(programme_wrote_, false))
        undo_.Clear();
}

void RichDocument::NoteReplaced(std::int32_t first, std::int32_t removed, std::int32_t inserted) {
    selection_.Replaced(CharPos{first}, removed, inserted);
    pending_.selection = true;
    pending_.text = true;
    if (!pending_.any) {
        pending_.any = true;
        pending_.first = first;
        pending_.old_end = pending_.new_end = first;
    }
    const std::int32_t beyond = std::max(first + removed - pending_.new_end, 0);
    pending_.first = std::min(pending_.first, first);
    pending_.old_end += beyond;
    pending_.new_end += beyond + inserted - removed;
}

void RichDocument::NoteReformatted(TextRange range) {
    const bool text = pending_.text;
    const bool selection = pending_.selection;
    const TextSelection kept = selection_;
    NoteReplaced(range.first.value, range.length, range.length);
    selection_ = kept;
    selection_.Reformatted(range.first, range.length);
    pending_.text = text;
    pending_.selection = selection;
}

void RichDocument::NoteReset() {
    selection_.MoveTo(CharPos{0});
    undo_.Clear();
    undo_.SetCleanPoint();
    programme_wrote_ = false;
    pending_.reset = true;
    pending_.selection = true;
    SendPending();
}

void RichDocument::SendPending() {
    if (batches_ > 0)
        return;
    assert(!observers_.Busy());  // observers do not edit
    const Pending sent = std::exchange(pending_, {});
    const std::int32_t removed = sent.old_end - sent.first;
    const std::int32_t inserted = sent.new_end - sent.first;
    const bool much = std::max(removed, inserted) > kResetAbove;
    observers_.Notify([&](DocumentObserver& observer) {
        if (sent.reset || (sent.any && much))
            observer.Reset();
        else if (sent.text)
            observer.Replaced(CharPos{sent.first}, removed, inserted);
        else if (sent.any)
            observer.Reformatted(CharPos{sent.first}, inserted);
        if (sent.selection)
            observer.SelectionChanged();
    });
}

}  // namespace zorvane
