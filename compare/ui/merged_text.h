// Both texts of a compare as one, old before new, with what is marked in it: the view "all in one".
#pragma once

#include <array>
#include <vector>

#include "compare/document/editor.h"
#include "compare/document/rich_text.h"
#include "compare/engine/comparison.h"
#include "compare/ui/mark_source.h"

namespace zorvane {

/// Marks of a merged text, one entry for each of its paragraphs.
class MergedMarks : public MarkSource {
  public:
    struct Paragraph {
        ParagraphMark mark;
        std::array<std::int32_t, 2> numbers{};
        std::vector<WordMark> words;
    };

    ParagraphMark Of(ParagraphNumber paragraph) const override { return At(paragraph).mark; }
    std::vector<WordMark> Words(ParagraphNumber paragraph) const override {
        return At(paragraph).words;
    }
    std::array<std::int32_t, 2> Numbers(ParagraphNumber paragraph) const override {
        return At(paragraph).numbers;
    }
    const std::vector<Paragraph>& Paragraphs() const { return paragraphs_; }
    void Add(Paragraph paragraph) { paragraphs_.push_back(std::move(paragraph)); }

  private:
    const Paragraph& At(ParagraphNumber paragraph) const;
    std::vector<Paragraph> paragraphs_;
};

struct MergedText {
    RichText text;
    MergedMarks marks;
};

/// `editors` hold the texts that were compared, with their formats.
MergedText MergeTexts(const Comparison& comparison, const PerSide<const Editor*>& editors);

}  // namespace zorvane
