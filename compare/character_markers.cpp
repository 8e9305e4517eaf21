#include "compare/character_markers.h"

#include <algorithm>

#include "compare/engine/section_lines.h"
#include "compare/record_walker.h"

namespace zorvane {
namespace {

void ColorizeCharacters(Editor& editor, CharacterRange range, const MarkStyle& mark) {
    if (range.first < 1)
        return;
    ApplyMark(editor, {CharPos{range.first - 1}, range.last - range.first + 1}, mark);
}

CharacterRange OriginalRange(const std::u16string& text, const DifferenceRecord& record) {
    return WholeCharacters(text, {record.first_original, record.last_original});
}
CharacterRange ModifiedRange(const std::u16string& text, const DifferenceRecord& record) {
    return WholeCharacters(text, {record.first_modified, record.last_modified});
}

// What both views share: the styles, the counting, the progress.
class CharacterMarker : public RecordMarker {
  public:
    explicit CharacterMarker(PassContext& context)
        : context_(context),
          original_(context.editors.rtbOriginalDiffCharacterTemp),
          modified_(context.editors.rtbModifiedDiffCharacterTemp),
          original_text_(original_.Text()),
          modified_text_(modified_.Text()),
          addition_(context.SubParagraphStyle(Mark::Addition)),
          deletion_(context.SubParagraphStyle(Mark::Deletion)),
          change_original_(context.Style(Mark::ChangeOriginal)),
          change_modified_(context.Style(Mark::ChangeModified)) {
        context_.monitor.Show(StatusPanel::Detail,
                              context_.monitor.Translate("By Character: 0% Done"));
    }
    void Deletion(RecordIndex /*index*/, const DifferenceRecord& record) override {
        ++context_.counters.character.deletions;
        ColorizeCharacters(original_, OriginalRange(original_text_, record), deletion_);
    }
    void Progress(double percent) override {
        context_.monitor.Show(StatusPanel::Detail, context_.monitor.Translate("By Character: ") +
                                                       PercentText(percent) +
                                                       context_.monitor.Translate("% Done"));
    }

  protected:
    PassContext& context_;
    Editor& original_;
    Editor& modified_;
    std::u16string original_text_;  // as they were compared
    std::u16string modified_text_;
    MarkStyle addition_;
    MarkStyle deletion_;
    MarkStyle change_original_;
    MarkStyle change_modified_;
};

class AllInOneCharacters : public CharacterMarker {
  public:
    using CharacterMarker::CharacterMarker;
    void Addition(RecordIndex /*index*/, const DifferenceRecord& record) override {
        ++context_.counters.character.additions;
        Insert(record, record.first_original, addition_);
    }
    void Change(RecordIndex /*index*/, const DifferenceRecord& record) override {
        ++context_.counters.character.changes;
        ColorizeCharacters(original_, OriginalRange(original_text_, record), change_original_);
        Insert(record, record.last_original, change_modified_);
    }

  private:
    void Insert(const DifferenceRecord& record, std::int32_t position, const MarkStyle& mark) {
        const CharacterRange range = ModifiedRange(modified_text_, record);
        const RichText text =
            modified_.Rich({CharPos{range.first - 1}, range.last - range.first + 1});
        // In front of the first guard there is no place.
        const TextRange inserted = original_.Replace({CharPos{std::max(position, 1)}, 0}, text);
        ApplyMark(original_, inserted, mark);
    }
};

class SideBySideCharacters : public CharacterMarker {
  public:
    using CharacterMarker::CharacterMarker;
    void Addition(RecordIndex /*index*/, const DifferenceRecord& record) override {
        ++context_.counters.character.additions;
        ColorizeCharacters(modified_, ModifiedRange(modified_text_, record), addition_);
    }
    void Change(RecordIndex /*index*/, const DifferenceRecord& record) override {
        ++context_.counters.character.changes;
        ColorizeCharacters(original_, OriginalRange(original_text_, record), change_original_);
        ColorizeCharacters(modified_, ModifiedRange(modified_text_, record), change_modified_);
    }
};

void Walk(PassContext& context, RecordMarker& marker) {
    WalkRecords(context.VXMicroDiff, marker, context.monitor);
    context.monitor.Show(StatusPanel::Detail, "");
}

}  // namespace

Status RunCharacterEngine(PassContext& context) {
    std::string original;
    std::string modified;
    AppendCharacterLines(context.editors.rtbOriginalDiffCharacterTemp.Text(), original);
    AppendCharacterLines(context.editors.rtbModifiedDiffCharacterTemp.Text(), modified);
    VestrelX& engine = context.VXMicroDiff;
    engine.putIgnoreCase(context.options.bIgnoreCase.Data());
    engine.putIgnoreEmptyLines(false);
    engine.putIgnoreWhitespace(context.options.bIgnoreWhitespace.Data());
    engine.putCompareMode(0);
    engine.putFilterEnabled(false);
    return engine.CompareText(original, modified);
}

RichText HighlightPerCharacter_AIO(PassContext& context) {
    AllInOneCharacters marker(context);
    Walk(context, marker);
    const Editor& merged = context.editors.rtbOriginalDiffCharacterTemp;
    return merged.Rich({CharPos{1}, merged.Length() - 2});
}

MarkedRuns HighlightPerCharacter_SBS(PassContext& context) {
    SideBySideCharacters marker(context);
    Walk(context, marker);
    return {context.editors.rtbOriginalDiffCharacterTemp.Rich(),
            context.editors.rtbModifiedDiffCharacterTemp.Rich()};
}

}  // namespace zorvane
