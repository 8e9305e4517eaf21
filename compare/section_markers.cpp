#include "compare/section_markers.h"

#include "compare/character_markers.h"
#include "compare/engine/section_lines.h"
#include "compare/record_walker.h"
#include "compare/sections.h"

namespace zorvane {
namespace {

struct SectionRange {
    SectionNumber first;
    SectionNumber last;
};
SectionRange OriginalSections(const DifferenceRecord& record) {
    return {SectionNumber{record.first_original}, SectionNumber{record.last_original}};
}
SectionRange ModifiedSections(const DifferenceRecord& record) {
    return {SectionNumber{record.first_modified}, SectionNumber{record.last_modified}};
}

// What both views share.
class SectionMarker : public RecordMarker {
  public:
    explicit SectionMarker(PassContext& context)
        : context_(context),
          original_(context.editors.rtbOriginalDiffTemp.editor),
          modified_(context.editors.rtbModifiedDiffTemp.editor),
          addition_(context.SubParagraphStyle(Mark::Addition)),
          deletion_(context.SubParagraphStyle(Mark::Deletion)),
          change_original_(context.Style(Mark::ChangeOriginal)),
          change_modified_(context.Style(Mark::ChangeModified)) {
        original_.Index();
        modified_.Index();
        context_.monitor.Show(StatusPanel::Detail, context_.monitor.Translate("Section: 0% Done"));
    }
    void Change(RecordIndex /*index*/, const DifferenceRecord& record) override {
        ++context_.counters.section.changes;
        if (context_.options.bCompareByCharacter.Data())
            ChangeByCharacter(record);
        else
            ChangeWhole(record);
    }
    void Progress(double percent) override {
        context_.monitor.Show(StatusPanel::Detail, context_.monitor.Translate("Section: ") +
                                                       PercentText(percent) +
                                                       context_.monitor.Translate("% Done"));
    }

  protected:
    virtual void ChangeWhole(const DifferenceRecord& record) = 0;
    virtual void ChangeByCharacter(const DifferenceRecord& record) = 0;

    void FillCharacterEditors(const DifferenceRecord& record) {
        const SectionRange original = OriginalSections(record);
        const SectionRange modified = ModifiedSections(record);
        context_.editors.rtbOriginalDiffCharacterTemp.SetRich(
            original_.GetSectionsRTF(original.first, original.last));
        context_.editors.rtbModifiedDiffCharacterTemp.SetRich(
            modified_.GetSectionsRTF(modified.first, modified.last));
    }

    PassContext& context_;
    Sections original_;
    Sections modified_;
    MarkStyle addition_;
    MarkStyle deletion_;
    MarkStyle change_original_;
    MarkStyle change_modified_;
};

class AllInOneSections : public SectionMarker {
  public:
    explicit AllInOneSections(PassContext& context)
        : SectionMarker(context), merged_(context.editors.rtbAIODiffTemp.editor) {
        merged_.Index();
    }
    void Addition(RecordIndex /*index*/, const DifferenceRecord& record) override {
        ++context_.counters.section.additions;
        Insert(record, record.first_original, addition_);
    }
    void Deletion(RecordIndex /*index*/, const DifferenceRecord& record) override {
        ++context_.counters.section.deletions;
        const SectionRange range = OriginalSections(record);
        merged_.ColorizeSections(range.first, range.last, deletion_);
    }

  protected:
    // The old words stand marked, and the new ones follow them.
    void ChangeWhole(const DifferenceRecord& record) override {
        const SectionRange range = OriginalSections(record);
        merged_.ColorizeSections(range.first, range.last, change_original_);
        Insert(record, record.last_original, change_modified_);
    }

    void ChangeByCharacter(const DifferenceRecord& record) override {
        FillCharacterEditors(record);
        for (MemoryEditor* editor : {&context_.editors.rtbOriginalDiffCharacterTemp,
                                     &context_.editors.rtbModifiedDiffCharacterTemp}) {
            editor->Replace({CharPos{0}, 0}, u" ");
            editor->Replace({CharPos{editor->Length()}, 0}, u" ");
        }
        IgnoreFailure(RunCharacterEngine(context_), "nothing is filtered at this level");
        const SectionRange range = OriginalSections(record);
        merged_.ReplaceSectionsRTF(range.first, range.last, HighlightPerCharacter_AIO(context_));
    }

  private:
    void Insert(const DifferenceRecord& record, std::int32_t behind, const MarkStyle& mark) {
        const SectionRange range = ModifiedSections(record);
        merged_.InsertTextAfterSection(SectionNumber{behind},
                                       modified_.GetSectionsText(range.first, range.last), mark);
    }

    Sections merged_;
};

class SideBySideSections : public SectionMarker {
  public:
    using SectionMarker::SectionMarker;
    void Addition(RecordIndex /*index*/, const DifferenceRecord& record) override {
        ++context_.counters.section.additions;
        const SectionRange range = ModifiedSections(record);
        modified_.ColorizeSections(range.first, range.last, addition_);
    }
    void Deletion(RecordIndex /*index*/, const DifferenceRecord& record) override {
        ++context_.counters.section.deletions;
        const SectionRange range = OriginalSections(record);
        original_.ColorizeSections(range.first, range.last, deletion_);
    }

  protected:
    void ChangeWhole(const DifferenceRecord& record) override {
        const SectionRange modified = ModifiedSections(record);
        modified_.ColorizeSections(modified.first, modified.last, change_modified_);
        const SectionRange original = OriginalSections(record);
        original_.ColorizeSections(original.first, original.last, change_original_);
    }

    void ChangeByCharacter(const DifferenceRecord& record) override {
        FillCharacterEditors(record);
        IgnoreFailure(RunCharacterEngine(context_), "nothing is filtered at this level");
        const MarkedRuns marked = HighlightPerCharacter_SBS(context_);
        const SectionRange original = OriginalSections(record);
        original_.ReplaceSectionsRTF(original.first, original.last, marked.original);
        const SectionRange modified = ModifiedSections(record);
        modified_.ReplaceSectionsRTF(modified.first, modified.last, marked.modified);
    }
};

void Walk(PassContext& context, RecordMarker& marker) {
    WalkRecords(context.VXMiniDiff, marker, context.monitor);
    context.monitor.Show(StatusPanel::Detail, "");
}

}  // namespace

Status RunSectionEngine(PassContext& context) {
    std::string original;
    std::string modified;
    AppendSectionLines(context.editors.rtbOriginalDiffTemp.editor.Text(), original);
    AppendSectionLines(context.editors.rtbModifiedDiffTemp.editor.Text(), modified);
    const clsCompareFileOptions& options = context.options;
    VestrelX& engine = context.VXMiniDiff;
    engine.putIgnoreCase(options.bIgnoreCase.Data());
    engine.putIgnoreEmptyLines(false);
    engine.putIgnoreWhitespace(options.bIgnoreWhitespace.Data());
    engine.putCompareMode(0);
    const bool filter = options.bIgnoreRegExOnBothPasses.Data();
    if (filter)
        engine.putFilterExpression(options.sIgnoreRegularExpression.Data());
    engine.putFilterEnabled(filter);
    return engine.CompareText(original, modified);
}

void UpdateChangesToParagraphsRTF_AIO(PassContext& context) {
    AllInOneSections marker(context);
    Walk(context, marker);
}

void UpdateChangesToParagraphsRTF_SBS(PassContext& context) {
    SideBySideSections marker(context);
    Walk(context, marker);
}

}  // namespace zorvane
