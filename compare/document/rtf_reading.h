// The reading of one RTF file: what its groups and words say, and the text that comes of it. For
// rtf_reader.cpp; others call ReadRtf.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "common/base/run_watcher.h"
#include "common/base/text_encoding.h"
#include "compare/document/rich_text.h"
#include "compare/document/rtf_beside.h"
#include "compare/document/rtf_boxes.h"
#include "compare/document/rtf_header.h"
#include "compare/document/rtf_output.h"
#include "compare/document/rtf_scanner.h"
#include "compare/document/rtf_tables.h"

namespace zorvane {

class RtfReading {
  public:
    /// `beside` and `watcher` may be null; both and the bytes outlive the reading.
    RtfReading(std::string_view bytes, std::vector<BesideItem>* beside, RunWatcher* watcher)
        : scanner_(bytes), beside_(beside), stop_(watcher) {}

    RichText Read();

  private:
    enum class Destination : std::uint8_t { Body, Footnote, Fonts, Colors, Skip };

    struct State {
        CharFormat chars;
        ParagraphFormat paragraph;
        std::int32_t unicode_skip = 1;
        CodePage page;
        TabKind next_tab = TabKind::Left;
        Destination destination = Destination::Body;
        Destination unicode_destination = Destination::Skip;  // of the second text of an \upr group
        bool in_table = false;
        bool deleted = false;
        int boxes = 0;  // that are open
    };

    void BeginDocument();
    void Step();

    void OpenGroup();
    void NextDocument();
    void CloseGroup();
    void OpenNote();

    void OpenBox();
    void CloseBox(bool in_another);
    std::int32_t Paragraph() const;
    void EndBodyParagraph();
    void ShowLastBoxes(bool paragraph_open);
    RtfOutput& Out() { return state_.boxes > 0 ? boxes_.AtWork() : out_; }

    bool Seen() const;
    bool IsUnseenText() const;
    void RawText(std::string_view text);
    void TakeBytes(std::string_view text);
    void EndRow();
    void Flush();
    static std::u16string SymbolText(std::string_view bytes);
    void TakeCharacter(char16_t unit);
    void EndParagraph();
    void EndParagraphOf();
    void BreakLine();

    void ControlSymbol(char symbol);
    bool SkipOne();
    void ControlWord(std::string_view name, std::optional<std::int32_t> parameter);
    void SkipUnseenGroup();
    void SkipGroup() { state_.destination = Destination::Skip; }
    void Act(const RtfWord& word, std::optional<std::int32_t> parameter, bool begins_group);
    bool ActOnGroup(const RtfWord& word, bool begins_group);
    bool ActOnText(const RtfWord& word, std::int32_t number);
    void TakeUnicode(char16_t unit);
    bool ActOnChars(const RtfWord& word, std::optional<std::int32_t> parameter);
    bool ActOnParagraph(const RtfWord& word, std::int32_t number);
    void ActOnHeader(const RtfWord& word, std::int32_t number);
    void UseFont(std::int32_t number);
    void SetPlain();

    RtfScanner scanner_;
    RtfToken token_;
    std::vector<State> stack_;
    std::size_t too_deep_ = 0;
    std::size_t documents_ = 0;  // that have ended
    State state_;
    RtfHeader header_;
    RtfOutput out_;
    RtfBoxes boxes_;
    RtfBeside beside_;
    std::string pending_;
    std::size_t skip_left_ = 0;
    bool group_begins_ = false;
    bool starred_ = false;
    bool cell_tab_ = false;
    bool row_hides_ = false;  // the paragraph at work has hidden text
    StopCheck stop_;
};

}  // namespace zorvane
