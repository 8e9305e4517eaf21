// One editor of the viewer with its numbered paragraphs. Paragraph k is line k of the file written
// from it.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include "common/base/number.h"
#include "common/base/result.h"
#include "compare/document/api_highlight.h"
#include "compare/document/editor.h"
#include "compare/document/paragraphs.h"

namespace zorvane {

class Clipboard;
class Clock;
class Sound;

/// Whether a selection of paragraphs takes the break of the last one.
enum class LastBreak { Keep, LeaveOut };

/// Numbers begin at 1; 0 is the place before the first paragraph where a call allows it. The
/// collection must be built before a call that takes a number, and it is stale after an edit.
class clsRTBDocument {
  public:
    /// `sound` beeps for a bad range. Both outlive this object.
    void Setup(Editor& editor, Sound& sound);
    Editor& RichTB() { return *editor_; }
    const Editor& RichTB() const { return *editor_; }
    std::int32_t ParagraphCount() const { return paragraphs_.Count(); }

    /// True when both lie between 0 and the count; else beeps.
    bool bIsValidSelection(ParagraphNumber first, ParagraphNumber last);
    /// Where the paragraphs stand; an empty range at 0 when the numbers are bad (and a beep).
    TextRange RangeOf(ParagraphNumber first, ParagraphNumber last, LastBreak last_break);
    void SelectParagraphs(ParagraphNumber first, ParagraphNumber last, LastBreak last_break);
    /// The text behind `first` up to the end of `last`.
    void SelectAllTextBetween(ParagraphNumber first, ParagraphNumber last, LastBreak last_break);
    void ColorizeParagraphs(ParagraphNumber first, ParagraphNumber last, const MarkStyle& mark);
    void ColorizeAll(const MarkStyle& mark);
    /// An empty name or a size of 0 points leaves that as it is.
    void ChangeFontAll(std::string_view font_name, double font_size);

    CharPos GetFirstCharLocationOfParagraph(ParagraphNumber number) const;
    CharPos GetLastCharLocationOfParagraph(ParagraphNumber number) const;
    void SetLastCharLocationOfParagraph(ParagraphNumber number, CharPos value);

    void Clear() { editor_->Clear(); }
    void SelectAll() { editor_->SelectAll(); }
    /// The selection goes to the clipboard; nothing selected leaves both as they are.
    void Cut(Clipboard& clipboard);
    void Copy(Clipboard& clipboard) const;
    /// In place of the selection, the caret behind it; an empty clipboard changes nothing.
    void Paste(const Clipboard& clipboard);
    void Undo() { editor_->Undo(); }
    /// The caret in front of the break of a paragraph; for 0 in front of the first.
    void SetCursorAt(ParagraphNumber number);

    /// Two carriage returns in a row are taken out first, and with them all formatting. After a
    /// stop the last paragraph is all the rest.
    bool ParagraphCollectionCreate(RunWatcher* watcher = nullptr);
    void ParagraphCollectionAdjustmentAddDelta(ParagraphNumber number, std::int32_t delta);
    void ParagraphCollectionAdjust();
    void ParagraphCollectionEmpty();
    /// The collection as a value: a run builds it where the text is not shown yet.
    const Paragraphs& AllParagraphs() const { return paragraphs_; }
    Paragraphs TakeParagraphs() { return std::exchange(paragraphs_, {}); }
    void SetParagraphs(Paragraphs paragraphs) { paragraphs_ = std::move(paragraphs); }

    Status LoadFile(const std::string& path);
    Status LoadFile2(const std::string& path, FileFormat format);

    struct EditStatus {
        std::int32_t column = 0;  ///< 0-based, from the line's first character
        std::int32_t line = 1;    ///< 1-based
    };
    EditStatus GetEditStatus() const;
    /// Selects the first character of the next or previous line.
    void ScrollRTB(bool bUp);
    /// Replaces all from the end backward; gives back the count.
    std::int32_t FindAndReplaceString(std::u16string_view find, std::u16string_view replace,
                                      bool bMatchCase);

    /// The bytes of the line file: the text in UTF-8 with a break behind it.
    std::string LineFileText() const;
    Status SaveAsLineFile(const std::string& path) const;
    /// The same lines, paragraph by paragraph; leaves a selection behind.
    Status SaveAsLineFileNew(const std::string& path);

  private:
    void RemoveDoubledReturns(RunWatcher* watcher);
    bool MayOccur(std::u16string_view find, bool bMatchCase) const;

    Editor* editor_ = nullptr;
    Sound* sound_ = nullptr;
    Paragraphs paragraphs_;
};

}  // namespace zorvane
