// Edits of a document at random, of every kind that a user or the programme does.
#pragma once

#include <random>
#include <string>

#include "compare/document/rich_document.h"

namespace zorvane {

class RandomEdits {
  public:
    RandomEdits(RichDocument& document, unsigned seed) : document_(document), random_(seed) {}

    std::int32_t Below(std::int32_t limit) {
        return static_cast<std::int32_t>(random_() % static_cast<unsigned>(limit));
    }
    CharPos Place() { return CharPos{Below(document_.Length() + 3)}; }
    TextRange Range() {
        const std::int32_t length = Below(4) == 0 ? Below(document_.Length() + 3) : Below(5);
        return {Place(), length};
    }
    /// A few letters, breaks, characters of two units and of two letters.
    std::u16string Text() {
        constexpr std::u16string_view kPieces[] = {u"a",    u"bc", u" ",      u"\r\n",
                                                   u"\r\n", u"\v", u"e\x301", u"\xD83D\xDE00"};
        std::u16string text;
        for (std::int32_t piece = Below(6); piece > 0; --piece)
            text += kPieces[static_cast<std::size_t>(Below(std::ssize(kPieces)))];
        return text;
    }
    RichText Rich() {
        RichText rich = RichText::Plain(Text());
        if (rich.Empty())
            return rich;
        rich.char_runs.front().format.italic = Below(2) == 0;
        rich.paragraph_runs.front().format.left_indent = Below(3) * 100;
        return rich;
    }

    /// A change of the selection, or an edit that a user can undo.
    void One() {
        switch (Below(12)) {
            case 0:
                return document_.MoveCaret(Place());
            case 1:
                return document_.Select(Range());
            case 2:
                return document_.ExtendSelection(Place());
            case 3:
                return document_.TypeOver(Text());
            case 4:
                return document_.DeleteBack(Unit());
            case 5:
                return document_.DeleteForward(Unit());
            case 6:
                return Format();
            case 7:
                document_.Replace(Range(), Text());
                return;
            case 8:
                document_.Replace(Range(), Rich());
                return;
            case 9:
                return document_.ReplaceSelection(Rich());
            default:
                return document_.Type(Text());
        }
    }
    void Batch() {
        const EditBatch batch(document_);
        for (std::int32_t edits = Below(4); edits >= 0; --edits)
            One();
    }

  private:
    TextUnit Unit() { return static_cast<TextUnit>(Below(3)); }
    void Format() {
        CharFormatChange change;
        change.bold = Below(2) == 0;
        ParagraphFormatChange paragraph;
        paragraph.alignment = Below(2) == 0 ? Alignment::Center : Alignment::Left;
        if (Below(3) == 0)
            return document_.FormatParagraphs(Range(), paragraph);
        document_.Format(Range(), change);
    }

    RichDocument& document_;
    std::mt19937 random_;
};

}  // namespace zorvane
