#include "compare/view/find_replace.h"

#include <utility>

#include "common/base/parse_number.h"
#include "common/base/text_encoding.h"

namespace zorvane {

void frmCompareFilesFindReplace::Open(Editor& editor) {
    editor_ = &editor;
    last_hit_.reset();
}

TextSearch frmCompareFilesFindReplace::Search() const {
    return TextSearch({NormalizeBreaks(ToUtf16(Text1)), Check1, Check2});
}

// Behind a hit the search goes on at its second character, so that hits may overlap.
CharPos frmCompareFilesFindReplace::From() const {
    const TextRange selection = editor_->Selection();
    return last_hit_ == selection ? selection.first + 1 : selection.end();
}

bool frmCompareFilesFindReplace::Show(const std::optional<TextRange>& hit) {
    last_hit_ = hit;
    if (!hit) {
        show_message_("Nothing found");
        return false;
    }
    editor_->Select(*hit);
    return true;
}

bool frmCompareFilesFindReplace::Command1_Click() {
    if (!IsOpen())
        return false;
    const TextSearch search = Search();
    const CharPos from = From();
    std::optional<TextRange> hit = search.First(*editor_, from, CharPos{editor_->Length()});
    if (!hit)
        hit = search.First(*editor_, CharPos{0}, from);
    return Show(hit);
}

bool frmCompareFilesFindReplace::FindPrevious() {
    if (!IsOpen())
        return false;
    const TextSearch search = Search();
    const CharPos before = editor_->Selection().first;
    std::optional<TextRange> hit = search.Last(*editor_, CharPos{0}, before);
    if (!hit)
        hit = search.Last(*editor_, before, CharPos{editor_->Length()});
    return Show(hit);
}

bool frmCompareFilesFindReplace::Command2_Click() {
    if (!IsOpen())
        return false;
    if (editor_->Selection().length > 0) {
        editor_->ReplaceSelection(NormalizeBreaks(ToUtf16(Text2)));
        last_hit_.reset();  // the caret stands behind the new text
    }
    return Command1_Click();
}

std::int32_t frmCompareFilesFindReplace::ReplaceAll() {
    if (!IsOpen())
        return 0;
    const std::vector<TextRange> hits = Search().All(*editor_);
    if (hits.empty()) {
        Show(std::nullopt);
        return 0;
    }
    const std::u16string text = NormalizeBreaks(ToUtf16(Text2));
    const EditBatch one_step(*editor_);
    // From the last to the first: an edit moves only what lies behind it.
    for (auto hit = hits.rbegin(); hit != hits.rend(); ++hit)
        editor_->Replace(*hit, text);
    last_hit_.reset();
    return static_cast<std::int32_t>(hits.size());
}

void frmCompareFilesGoTo::cmdOK_Click() {
    lNumber_ = ParseNumber<std::int32_t>(Trim(Text1)).value_or(-1);
}

}  // namespace zorvane
