#include "compare/document_markers.h"

#include <algorithm>

#include "common/base/paragraph_break.h"
#include "common/base/text_encoding.h"
#include "compare/document/api_highlight.h"
#include "compare/engine/report_model.h"
#include "compare/section_pass.h"

namespace zorvane {
namespace {

RichText Paragraphs(clsRTBDocument& document, ParagraphRange range, LastBreak last_break) {
    return document.RichTB().Rich(document.RangeOf(range.first, range.last, last_break));
}

// An entry stands on lines of its own, so each piece ends in a break.
void EndWithBreak(RichText& text) {
    if (!text.text.ends_with(kBreak))
        text.AppendPlain(kBreak,
                         text.char_runs.empty() ? CharFormat{} : text.char_runs.back().format);
}

// What both views share: the counting, the summaries, the work of a change.
class DocumentMarker : public RecordMarker {
  public:
    explicit DocumentMarker(PassContext& context)
        : context_(context), editors_(context.editors), monitor_(context.monitor) {}

    void Addition(RecordIndex index, const DifferenceRecord& record) override {
        Prepend(editors_.rtbAdditions, MarkAddition(static_cast<std::size_t>(index.value), record),
                index, record);
    }
    void Deletion(RecordIndex index, const DifferenceRecord& record) override {
        Prepend(editors_.rtbDeletions, MarkDeletion(static_cast<std::size_t>(index.value), record),
                index, record);
    }
    void Change(RecordIndex index, const DifferenceRecord& record) override {
        Prepend(editors_.rtbChanges, MarkChange(static_cast<std::size_t>(index.value), record),
                index, record);
    }

  protected:
    // Each marks the record in its view and gives the text of the summary entry.
    virtual RichText MarkAddition(std::size_t index, const DifferenceRecord& record) = 0;
    virtual RichText MarkDeletion(std::size_t index, const DifferenceRecord& record) = 0;
    virtual RichText MarkChange(std::size_t index, const DifferenceRecord& record) = 0;

    // Fills the small editors with the changed paragraphs.
    ChangeEditors FillChangeEditors(const DifferenceRecord& record, DocumentEditor& original) {
        original.editor.SetRich(Paragraphs(editors_.rtbOriginal.document,
                                           record.paragraphs.original, LastBreak::LeaveOut));
        monitor_.KeepGoing();  // a long record: the stop is seen by the pass
        MemoryEditor& modified = editors_.rtbModifiedDiffTemp.editor;
        modified.SetRich(Paragraphs(editors_.rtbModified.document, record.paragraphs.modified,
                                    LastBreak::LeaveOut));
        return {original.editor, modified};
    }

    PassContext& context_;
    RunEditors& editors_;
    RunMonitor& monitor_;

  private:
    void Prepend(MemoryEditor& summary, RichText entry, RecordIndex index,
                 const DifferenceRecord& record) {
        if (!monitor_.KeepGoing())
            return;
        EndWithBreak(entry);
        summary.Replace({CharPos{0}, 0}, entry);
        PrependLine(summary, MoveLine(static_cast<std::size_t>(index.value)));
        PrependLine(summary, EntryHeader(monitor_, index, record));
    }

    void PrependLine(MemoryEditor& summary, const std::string& line) {
        if (line.empty())
            return;
        RichText text = RichText::Plain(ToUtf16(line), editors_.rtbScratch.editor.DefaultFormat());
        EndWithBreak(text);
        summary.Replace({CharPos{0}, 0}, text);
    }

    // Where the other half of a move stands, and its number in the summaries.
    std::string MoveLine(std::size_t index) {
        const Comparison& comparison = context_.comparison;
        const Move* move = comparison.MoveOf(index);
        if (move == nullptr)
            return {};
        const DifferenceType own = comparison.records[index].type;
        const bool here = own == DifferenceType::Deletion;
        return monitor_.Translate(here ? "moved to " : "moved from ") +
               MovedPlace(comparison, *move, here ? Side::Modified : Side::Original) + ", <<<" +
               std::to_string(PartnerOf(*move, own).value + 1) + ">>>";
    }
};

class AllInOneMarker : public DocumentMarker {
  public:
    using DocumentMarker::DocumentMarker;
    RunStep Step() const override { return RunStep::MarkAllInOne; }

  protected:
    RichText MarkAddition(std::size_t index, const DifferenceRecord& record) override {
        DocumentEditor& work = editors_.rtbAIODiffTemp;
        work.editor.SetRich(Paragraphs(editors_.rtbModified.document, record.paragraphs.modified,
                                       LastBreak::LeaveOut));
        work.document.ColorizeAll(context_.Style(Mark::Addition));
        RichText entry = work.editor.Rich();
        // A block that opens the document ends with a break, all others begin with one.
        const bool opens = record.paragraphs.original.first.value < 1;
        work.editor.Replace({CharPos{opens ? work.editor.Length() : 0}, 0}, kBreak);
        // Once more: of a blank paragraph the break is all that shows.
        work.document.ColorizeAll(context_.Style(Mark::Addition));
        PutNumber(work.editor, CharPos{opens ? 0 : static_cast<std::int32_t>(kBreak.size())},
                  index);
        clsRTBDocument& merged = editors_.rtbAIODiff.document;
        merged.SetCursorAt(record.paragraphs.original.first);
        merged.RichTB().ReplaceSelection(work.editor.Rich());
        merged.ParagraphCollectionAdjustmentAddDelta(record.paragraphs.original.last + 1,
                                                     work.editor.Length());
        return entry;
    }

    RichText MarkDeletion(std::size_t index, const DifferenceRecord& record) override {
        const ParagraphRange range = record.paragraphs.original;
        RichText entry = ColorizeDeletion(index, range);
        clsRTBDocument& merged = editors_.rtbAIODiff.document;
        const TextRange text = merged.RangeOf(range.first, range.last, LastBreak::LeaveOut);
        // Without a delta: it would replace that of an addition directly behind, and nobody
        // navigates in a text with numbers.
        PutNumber(merged.RichTB(), text.first, index);
        return entry;
    }

    RichText MarkChange(std::size_t index, const DifferenceRecord& record) override {
        RichText entry = ColorizeParagraphsInRTB_AIO(index, record);
        // Kept: the changed text stands twice in the summary.
        EndWithBreak(entry);
        entry.Append(CopyOf(entry, &monitor_.Watcher()), &monitor_.Watcher());
        return entry;
    }

  private:
    // Deleted text stays where it is; nothing moves.
    RichText ColorizeDeletion(std::size_t index, ParagraphRange range) {
        clsRTBDocument& merged = editors_.rtbAIODiff.document;
        const MarkStyle style = context_.Style(Mark::Deletion);
        const std::int32_t added = AddedBehind(index);
        if (added == 0) {
            merged.ColorizeParagraphs(range.first, range.last, style);
            return Paragraphs(merged, range, LastBreak::Keep);
        }
        // What was added stands in front of the last paragraph's own break.
        Editor& editor = merged.RichTB();
        const TextRange text = merged.RangeOf(range.first, range.last, LastBreak::LeaveOut);
        ApplyMark(editor, text, style);
        if (const CharPos end = text.end() + added; end.value < editor.Length())
            ApplyMark(editor, {end, static_cast<std::int32_t>(kBreak.size())}, style);
        return Paragraphs(merged, range, LastBreak::LeaveOut);
    }

    // How much text the additions directly behind a record have put into the document.
    std::int32_t AddedBehind(std::size_t index) {
        const std::vector<DifferenceRecord>& records = context_.comparison.records;
        std::int32_t added = 0;
        for (std::size_t i = index + 1; i < records.size(); ++i) {
            if (records[i].type != DifferenceType::Addition ||
                records[i].paragraphs.original.first != records[index].paragraphs.original.last)
                break;
            const ParagraphRange range = records[i].paragraphs.modified;
            added +=
                editors_.rtbModified.document.RangeOf(range.first, range.last, LastBreak::LeaveOut)
                    .length +
                static_cast<std::int32_t>(kBreak.size() + NumberText(i).size());
        }
        return added;
    }

    // "[3] ", of a move "[3 moved to 7] "; empty where none is wanted.
    std::u16string NumberText(std::size_t index) const {
        if (!context_.presented)
            return {};
        const Comparison& comparison = context_.comparison;
        std::string text = "[" + std::to_string(index + 1);
        if (const Move* move = comparison.MoveOf(index)) {
            const DifferenceType own = comparison.records[index].type;
            text += monitor_.Translate(own == DifferenceType::Deletion ? " moved to "
                                                                       : " moved from ") +
                    std::to_string(PartnerOf(*move, own).value + 1);
        }
        return ToUtf16(text + "] ");
    }

    // Small and raised, without a mark: the number is no part of the text. Returns its length.
    std::int32_t PutNumber(Editor& editor, CharPos place, std::size_t index) const {
        const std::u16string number = NumberText(index);
        if (number.empty())
            return 0;
        const RichText there = editor.Rich({place, static_cast<std::int32_t>(kBreak.size())});
        CharFormat format;
        if (!there.char_runs.empty()) {
            format.font = there.char_runs.front().format.font;
            format.half_points = std::min(there.char_runs.front().format.half_points,
                                          format.half_points);  // small beside a heading too
        }
        format.baseline = Baseline::Superscript;
        RichText text = RichText::Plain(number, format);
        if (!there.paragraph_runs.empty())
            text.paragraph_runs = {{text.Length(), there.paragraph_runs.front().format}};
        editor.Replace({place, 0}, text);
        return text.Length();
    }

    // Returns the marked text.
    RichText ColorizeParagraphsInRTB_AIO(std::size_t index, const DifferenceRecord& record) {
        MemoryEditor& work = editors_.rtbAIODiffTemp.editor;
        const ParagraphRange range = record.paragraphs.original;
        const ChangeEditors change = FillChangeEditors(record, editors_.rtbAIODiffTemp);
        if (!UpdateChangesToParagraphsRTF_AIO(context_, index, change) || !monitor_.KeepGoing())
            return {};
        RichText entry = work.Rich();
        if (!monitor_.KeepGoing())
            return {};
        PutNumber(work, CharPos{0}, index);
        clsRTBDocument& merged = editors_.rtbAIODiff.document;
        const TextRange old = merged.RangeOf(range.first, range.last, LastBreak::LeaveOut);
        merged.RichTB().Replace(old, work.Rich());
        const std::int32_t growth = work.Length() - old.length;
        merged.ParagraphCollectionAdjustmentAddDelta(range.last + 1, growth);
        merged.SetLastCharLocationOfParagraph(
            range.last,
            editors_.rtbOriginal.document.GetLastCharLocationOfParagraph(range.last) + growth);
        return entry;
    }
};

class SideBySideMarker : public DocumentMarker {
  public:
    using DocumentMarker::DocumentMarker;
    RunStep Step() const override { return RunStep::MarkSideBySide; }

  protected:
    RichText MarkAddition(std::size_t /*index*/, const DifferenceRecord& record) override {
        return MarkWhole(editors_.rtbModifiedDiff.document, record.paragraphs.modified,
                         Mark::Addition);
    }
    RichText MarkDeletion(std::size_t /*index*/, const DifferenceRecord& record) override {
        return MarkWhole(editors_.rtbOriginalDiff.document, record.paragraphs.original,
                         Mark::Deletion);
    }
    RichText MarkChange(std::size_t index, const DifferenceRecord& record) override {
        const ChangeEditors change = FillChangeEditors(record, editors_.rtbOriginalDiffTemp);
        if (!UpdateChangesToParagraphsRTF_SBS(context_, index, change) || !monitor_.KeepGoing())
            return {};
        RichText entry = PutBack(editors_.rtbOriginalDiffTemp.editor,
                                 editors_.rtbOriginalDiff.document, record.paragraphs.original);
        if (!monitor_.KeepGoing())
            return {};
        EndWithBreak(entry);
        entry.Append(PutBack(editors_.rtbModifiedDiffTemp.editor, editors_.rtbModifiedDiff.document,
                             record.paragraphs.modified),
                     &monitor_.Watcher());
        return entry;
    }

  private:
    RichText MarkWhole(clsRTBDocument& document, ParagraphRange range, Mark mark) {
        document.ColorizeParagraphs(range.first, range.last, context_.Style(mark));
        return Paragraphs(document, range, LastBreak::Keep);
    }

    // The marked text, which is also put in the place of the same text unmarked.
    static RichText PutBack(const MemoryEditor& marked, clsRTBDocument& document,
                            ParagraphRange range) {
        RichText text = marked.Rich();
        document.RichTB().Replace(document.RangeOf(range.first, range.last, LastBreak::LeaveOut),
                                  text);
        return text;
    }
};

}  // namespace

std::string EntryHeader(RunMonitor& monitor, RecordIndex index, const DifferenceRecord& record) {
    std::string number = "<<<" + std::to_string(index.value + 1);
    const std::string place = std::to_string(record.paragraphs.original.first.value);
    const std::int32_t lines = std::max(record.Count(Side::Original), record.Count(Side::Modified));
    const std::string count = std::to_string(lines);
    switch (record.type) {
        case DifferenceType::Addition:
            if (lines == 1)
                return number + monitor.Translate(">>> Addition of 1 line at paragraph (") + place +
                       ")";
            return number + monitor.Translate(">>> Addition of ") + count +
                   monitor.Translate(" lines at paragraph (") + place + ") ";
        case DifferenceType::Deletion:
            if (lines == 1)
                return number + monitor.Translate(">>> Deletion of 1 line at paragraph (") + place +
                       ")";
            return number + monitor.Translate(">>> Deletion of ") + count +
                   monitor.Translate(" lines at paragraph (") + place + ")";
        case DifferenceType::Change:
            if (lines == 1)
                return number + monitor.Translate(">>> 1 change at paragraph (") + place + ") ";
            return number + ">>> " + count + monitor.Translate(" changes at paragraph (") + place +
                   ") ";
    }
    return number;
}

WalkEnd UpdateChangesToRTFFileAIO(PassContext& context) {
    AllInOneMarker marker(context);
    context.monitor.Progress(RunStep::BeginMarking, 0);
    return WalkRecords(context.comparison, marker, context.monitor);
}

WalkEnd UpdateChangesToRTFFile_SBS(PassContext& context) {
    SideBySideMarker marker(context);
    context.monitor.Progress(RunStep::BeginMarking, 0);
    return WalkRecords(context.comparison, marker, context.monitor);
}

}  // namespace zorvane
