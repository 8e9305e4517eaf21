#include "compare/document_markers.h"

#include <algorithm>

#include "common/base/text_encoding.h"
#include "compare/section_markers.h"

namespace zorvane {
namespace {

constexpr std::u16string_view kBreak = u"\r\n";

struct ParagraphRange {
    ParagraphNumber first;
    ParagraphNumber last;
};
ParagraphRange OriginalParagraphs(const DifferenceRecord& record) {
    return {ParagraphNumber{record.first_original}, ParagraphNumber{record.last_original}};
}
ParagraphRange ModifiedParagraphs(const DifferenceRecord& record) {
    return {ParagraphNumber{record.first_modified}, ParagraphNumber{record.last_modified}};
}

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
        ++context_.counters.document.additions;
        Prepend(editors_.rtbAdditions, MarkAddition(record), index, record);
    }
    void Deletion(RecordIndex index, const DifferenceRecord& record) override {
        ++context_.counters.document.deletions;
        Prepend(editors_.rtbDeletions, MarkDeletion(record), index, record);
    }
    void Change(RecordIndex index, const DifferenceRecord& record) override {
        ++context_.counters.document.changes;
        Prepend(editors_.rtbChanges, MarkChange(record), index, record);
    }

  protected:
    // Each marks the record in its view and gives the text of the summary entry.
    virtual RichText MarkAddition(const DifferenceRecord& record) = 0;
    virtual RichText MarkDeletion(const DifferenceRecord& record) = 0;
    virtual RichText MarkChange(const DifferenceRecord& record) = 0;

    // Fills the two small editors with the changed paragraphs, each with a guard blank behind it.
    void FillChangeEditors(const DifferenceRecord& record) {
        FillOne(editors_.rtbOriginal.document, OriginalParagraphs(record),
                editors_.rtbOriginalDiffTemp.editor);
        FillOne(editors_.rtbModified.document, ModifiedParagraphs(record),
                editors_.rtbModifiedDiffTemp.editor);
    }

    PassContext& context_;
    ViewerEditors& editors_;
    RunMonitor& monitor_;

  private:
    static void FillOne(clsRTBDocument& from, ParagraphRange range, MemoryEditor& to) {
        to.SetRich(Paragraphs(from, range, LastBreak::LeaveOut));
        to.Replace({CharPos{to.Length()}, 0}, u" ");
    }

    void Prepend(MemoryEditor& summary, RichText entry, RecordIndex index,
                 const DifferenceRecord& record) {
        EndWithBreak(entry);
        summary.Replace({CharPos{0}, 0}, entry);
        RichText header = RichText::Plain(ToUtf16(EntryHeader(monitor_, index, record)),
                                          editors_.rtbScratch.editor.DefaultFormat());
        EndWithBreak(header);
        summary.Replace({CharPos{0}, 0}, header);
    }
};

class AllInOneMarker : public DocumentMarker {
  public:
    using DocumentMarker::DocumentMarker;
    void Progress(double percent) override {
        monitor_.Show(StatusPanel::Main, monitor_.Translate("Document: ") + PercentText(percent) +
                                             monitor_.Translate("% Done."));
    }

  protected:
    RichText MarkAddition(const DifferenceRecord& record) override {
        DocumentEditor& work = editors_.rtbAIODiffTemp;
        work.editor.SetRich(Paragraphs(editors_.rtbModified.document, ModifiedParagraphs(record),
                                       LastBreak::LeaveOut));
        work.document.ColorizeAll(context_.Style(Mark::Addition));
        RichText entry = work.editor.Rich();
        // A block that opens the document ends with a break, all others begin with one.
        const bool opens = record.first_original < 1;
        work.editor.Replace({CharPos{opens ? work.editor.Length() : 0}, 0}, kBreak);
        clsRTBDocument& merged = editors_.rtbAIODiff.document;
        merged.SetCursorAt(ParagraphNumber{record.first_original});
        merged.RichTB().ReplaceSelection(work.editor.Rich());
        merged.ParagraphCollectionAdjustmentAddDelta(ParagraphNumber{record.last_original + 1},
                                                     work.editor.Length());
        return entry;
    }

    // Deleted text stays where it is; nothing moves.
    RichText MarkDeletion(const DifferenceRecord& record) override {
        clsRTBDocument& merged = editors_.rtbAIODiff.document;
        const ParagraphRange range = OriginalParagraphs(record);
        merged.ColorizeParagraphs(range.first, range.last, context_.Style(Mark::Deletion));
        return Paragraphs(merged, range, LastBreak::Keep);
    }

    RichText MarkChange(const DifferenceRecord& record) override {
        MemoryEditor& work = editors_.rtbAIODiffTemp.editor;
        ColorizeParagraphsInRTB_AIO(record);
        // Kept: the changed text stands twice in the summary.
        RichText entry = work.Rich();
        EndWithBreak(entry);
        entry.Append(RichText(entry));
        return entry;
    }

  private:
    void ColorizeParagraphsInRTB_AIO(const DifferenceRecord& record) {
        FillChangeEditors(record);
        MemoryEditor& work = editors_.rtbAIODiffTemp.editor;
        const ParagraphRange range = OriginalParagraphs(record);
        work.SetRich(Paragraphs(editors_.rtbOriginal.document, range, LastBreak::LeaveOut));
        IgnoreFailure(RunSectionEngine(context_), "the expressions were good at document level");
        UpdateChangesToParagraphsRTF_AIO(context_);
        clsRTBDocument& merged = editors_.rtbAIODiff.document;
        const TextRange old = merged.RangeOf(range.first, range.last, LastBreak::LeaveOut);
        merged.RichTB().Replace(old, work.Rich());
        const std::int32_t growth = work.Length() - old.length;
        merged.ParagraphCollectionAdjustmentAddDelta(range.last + 1, growth);
        merged.SetLastCharLocationOfParagraph(
            range.last,
            editors_.rtbOriginal.document.GetLastCharLocationOfParagraph(range.last) + growth);
    }
};

class SideBySideMarker : public DocumentMarker {
  public:
    using DocumentMarker::DocumentMarker;
    void Progress(double percent) override {
        monitor_.Show(StatusPanel::Main, monitor_.Translate("Document ") + PercentText(percent) +
                                             monitor_.Translate("% Done. Click here to Abort."));
    }

  protected:
    RichText MarkAddition(const DifferenceRecord& record) override {
        return MarkWhole(editors_.rtbModifiedDiff.document, ModifiedParagraphs(record),
                         Mark::Addition);
    }
    RichText MarkDeletion(const DifferenceRecord& record) override {
        return MarkWhole(editors_.rtbOriginalDiff.document, OriginalParagraphs(record),
                         Mark::Deletion);
    }
    RichText MarkChange(const DifferenceRecord& record) override {
        FillChangeEditors(record);
        IgnoreFailure(RunSectionEngine(context_), "the expressions were good at document level");
        UpdateChangesToParagraphsRTF_SBS(context_);
        RichText entry = PutBack(editors_.rtbOriginalDiffTemp.editor,
                                 editors_.rtbOriginalDiff.document, OriginalParagraphs(record));
        EndWithBreak(entry);
        entry.Append(PutBack(editors_.rtbModifiedDiffTemp.editor, editors_.rtbModifiedDiff.document,
                             ModifiedParagraphs(record)));
        return entry;
    }

  private:
    RichText MarkWhole(clsRTBDocument& document, ParagraphRange range, Mark mark) {
        document.ColorizeParagraphs(range.first, range.last, context_.Style(mark));
        return Paragraphs(document, range, LastBreak::Keep);
    }

    // The marked text without its guard blank, which is also put in the place of the same text
    // unmarked.
    static RichText PutBack(const MemoryEditor& marked, clsRTBDocument& document,
                            ParagraphRange range) {
        RichText text = marked.Rich({CharPos{0}, marked.Length() - 1});
        document.RichTB().Replace(document.RangeOf(range.first, range.last, LastBreak::LeaveOut),
                                  text);
        return text;
    }
};

}  // namespace

std::string EntryHeader(RunMonitor& monitor, RecordIndex index, const DifferenceRecord& record) {
    const std::string number = "<<<" + std::to_string(index.value + 1);
    const std::string place = std::to_string(record.first_original);
    const std::int32_t lines = std::max(record.OriginalCount(), record.ModifiedCount());
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
    context.monitor.Show(StatusPanel::Main, context.monitor.Translate("Document: ") + "0" +
                                                context.monitor.Translate("% Done."));
    return WalkRecords(context.VXMacroDiff, marker, context.monitor);
}

WalkEnd UpdateChangesToRTFFile_SBS(PassContext& context) {
    SideBySideMarker marker(context);
    context.monitor.Show(StatusPanel::Main, context.monitor.Translate("Document: ") + "0" +
                                                context.monitor.Translate("% Done."));
    return WalkRecords(context.VXMacroDiff, marker, context.monitor);
}

}  // namespace zorvane
