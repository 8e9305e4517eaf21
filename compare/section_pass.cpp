#include "compare/section_pass.h"

#include <algorithm>
#include <string>
#include <vector>

#include "compare/document/api_highlight.h"
#include "compare/record_walker.h"

namespace zorvane {
namespace {

TextRange RangeOf(const DetailPlace& place, std::int32_t offset = 0) {
    return {CharPos{offset + place.begin}, place.Length()};
}

// From the last difference to the first, so that the places of those still to come stay valid.
class SectionPass {
  public:
    SectionPass(PassContext& context, const ChangeEditors& editors)
        : context_(context),
          original_(editors.original),
          modified_(editors.modified),
          addition_(context.SubParagraphStyle(Mark::Addition)),
          deletion_(context.SubParagraphStyle(Mark::Deletion)),
          change_original_(context.Style(Mark::ChangeOriginal)),
          change_modified_(context.Style(Mark::ChangeModified)) {}
    virtual ~SectionPass() = default;

    bool Run(std::size_t record) {
        const auto sections = context_.comparison.SectionsOf(record);
        if (context_.paragraphs_only) {
            MarkWhole();
            return true;
        }
        Show(RunStep::MarkSections, 0, sections.size());
        for (std::size_t i = sections.size(); i > 0; --i) {
            if (!context_.monitor.KeepGoing())
                return false;
            Section(sections[i - 1]);
            Show(RunStep::MarkSections, sections.size() - i + 1, sections.size());
        }
        context_.monitor.Progress(RunStep::None, 0);
        return true;
    }

  protected:
    virtual void Mark(const DetailRecord& difference, std::int32_t original_offset,
                      std::int32_t modified_offset, bool letters) = 0;

    MarkStyle OriginalStyle(DifferenceType type) const {
        return type == DifferenceType::Change ? change_original_ : deletion_;
    }
    MarkStyle ModifiedStyle(DifferenceType type) const {
        return type == DifferenceType::Change ? change_modified_ : addition_;
    }

    PassContext& context_;
    Editor& original_;
    Editor& modified_;

  private:
    void MarkWhole() {
        DetailRecord whole;
        whole.places.original.end = original_.Length();
        whole.places.modified.end = modified_.Length();
        Mark(whole, 0, 0, true);
    }

    void Section(const SectionDetail& section) {
        const auto letters = context_.comparison.CharactersOf(section);
        if (letters.empty()) {
            Mark(section, 0, 0, false);
            return;
        }
        for (std::size_t i = letters.size(); i > 0; --i) {
            if (!context_.monitor.KeepGoing())
                return;
            Mark(letters[i - 1], section.places.original.begin, section.places.modified.begin,
                 true);
            Show(RunStep::MarkLetters, letters.size() - i + 1, letters.size());
        }
    }

    void Show(RunStep step, std::size_t done, std::size_t count) {
        context_.monitor.Progress(
            step, count == 0 ? 0 : static_cast<double>(done) / static_cast<double>(count));
    }

    MarkStyle addition_;
    MarkStyle deletion_;
    MarkStyle change_original_;
    MarkStyle change_modified_;
};

class AllInOnePass : public SectionPass {
  public:
    using SectionPass::SectionPass;

  protected:
    void Mark(const DetailRecord& difference, std::int32_t original_offset,
              std::int32_t modified_offset, bool letters) override {
        const TextRange old_range = RangeOf(difference.places.original, original_offset);
        const TextRange new_range = RangeOf(difference.places.modified, modified_offset);
        if (context_.presented && !letters && MarkCells(difference.type, old_range, new_range))
            return;
        if (old_range.length > 0)
            ApplyMark(original_, old_range, OriginalStyle(difference.type));
        if (new_range.length == 0)
            return;
        const TextRange place{old_range.end(), 0};
        ApplyMark(original_, Insert(place, new_range, letters), ModifiedStyle(difference.type));
    }

  private:
    // Words take the looks of those in front of them; whole paragraphs bring their own, so that a
    // heading stays one.
    TextRange Insert(TextRange place, TextRange new_range, bool letters) {
        if (letters)
            return original_.Replace(place, modified_.Rich(new_range));
        const TextRange words = WithBlankInFront(new_range);
        const std::u16string text = modified_.Text(words);
        if (text.find(u'\r') != std::u16string::npos)
            return original_.Replace(place, modified_.Rich(words));
        return original_.Replace(place, text);
    }

    static std::vector<TextRange> CellsOf(const Editor& editor, TextRange range) {
        constexpr char16_t kCell = 7;
        const std::u16string text = editor.Text(range);
        std::vector<TextRange> cells;
        std::size_t begin = 0;
        for (std::size_t end = 0; end != std::u16string::npos; begin = end + 1) {
            end = text.find(kCell, begin);
            cells.push_back({range.first + static_cast<std::int32_t>(begin),
                             static_cast<std::int32_t>(std::min(end, text.size()) - begin)});
        }
        return cells;
    }

    // Between as many ends of cells the words are marked cell by cell, so that old and new stand in
    // one cell and the row keeps its columns. False when this is no such change.
    bool MarkCells(DifferenceType type, TextRange old_range, TextRange new_range) {
        const std::vector<TextRange> old_cells = CellsOf(original_, old_range);
        const std::vector<TextRange> new_cells = CellsOf(modified_, new_range);
        if (old_cells.size() == 1 || old_cells.size() != new_cells.size())
            return false;
        for (std::size_t i = old_cells.size(); i > 0; --i) {
            const TextRange old_cell = old_cells[i - 1];
            const std::u16string words = modified_.Text(new_cells[i - 1]);
            if (words == original_.Text(old_cell))
                continue;
            ApplyMark(original_, old_cell, OriginalStyle(type));
            if (words.empty())
                continue;
            const bool part = old_cell.length > 0 && words.front() != u' ';
            const TextRange place{old_cell.end(), 0};
            ApplyMark(original_, original_.Replace(place, part ? u" " + words : words),
                      ModifiedStyle(type));
        }
        return true;
    }

    // New words come with the blank that parts them from what stands in front of them.
    TextRange WithBlankInFront(TextRange range) const {
        if (range.first.value > 0 && modified_.Text({range.first - 1, 1}) == u" ")
            return {range.first - 1, range.length + 1};
        return range;
    }
};

class SideBySidePass : public SectionPass {
  public:
    using SectionPass::SectionPass;

  protected:
    void Mark(const DetailRecord& difference, std::int32_t original_offset,
              std::int32_t modified_offset, bool /*letters*/) override {
        if (difference.places.modified.Length() > 0)
            ApplyMark(modified_, RangeOf(difference.places.modified, modified_offset),
                      ModifiedStyle(difference.type));
        if (difference.places.original.Length() > 0)
            ApplyMark(original_, RangeOf(difference.places.original, original_offset),
                      OriginalStyle(difference.type));
    }
};

}  // namespace

bool UpdateChangesToParagraphsRTF_AIO(PassContext& context, std::size_t record,
                                      const ChangeEditors& editors) {
    return AllInOnePass(context, editors).Run(record);
}

bool UpdateChangesToParagraphsRTF_SBS(PassContext& context, std::size_t record,
                                      const ChangeEditors& editors) {
    return SideBySidePass(context, editors).Run(record);
}

}  // namespace zorvane
