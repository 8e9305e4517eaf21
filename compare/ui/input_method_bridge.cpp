#include "compare/ui/input_method_bridge.h"

#include <algorithm>

#include "common/ui/qt_text.h"

namespace zorvane {
namespace {

// Input methods ask for the text around the caret at each key; they never need more.
constexpr std::int32_t kSurrounding = 1000;

}  // namespace

void InputMethodBridge::Commit(const QInputMethodEvent& event) {
    RichDocument& document = page_.Document();
    if (event.commitString().isEmpty() && event.replacementLength() == 0)
        return;
    if (event.replacementLength() != 0) {
        const std::int32_t caret = document.Caret().Caret().value;
        const std::int32_t first = std::max(0, caret + event.replacementStart());
        document.Select({CharPos{first}, event.replacementLength()});
    }
    document.Type(FromQt16(event.commitString()));
}

void InputMethodBridge::Handle(const QInputMethodEvent& event) {
    RichDocument& document = page_.Document();
    Cancel();
    Commit(event);
    if (event.preeditString().isEmpty())
        return;
    // What is selected gives way as soon as something is composed in its place.
    if (document.Selection().length > 0)
        document.ReplaceSelection(std::u16string_view());
    Preedit preedit;
    preedit.text = FromQt16(event.preeditString());
    preedit.caret = static_cast<std::int32_t>(preedit.text.size());
    for (const QInputMethodEvent::Attribute& attribute : event.attributes()) {
        if (attribute.type == QInputMethodEvent::Cursor)
            preedit.caret = std::clamp(attribute.start, 0, preedit.caret);
    }
    page_.Layouts().SetPreedit(document.Caret().Caret(), preedit);
}

void InputMethodBridge::Cancel() {
    if (IsComposing())
        page_.Layouts().SetPreedit(page_.Layouts().PreeditPlace(), {});
}

QVariant InputMethodBridge::Answer(Qt::InputMethodQuery query) const {
    const RichDocument& document = page_.Document();
    const TextSelection& caret = document.Caret();
    const CharPos first{std::max(0, caret.Caret().value - kSurrounding)};
    switch (query) {
        case Qt::ImSurroundingText:
            return ToQt(document.Text({first, 2 * kSurrounding}));
        case Qt::ImCursorPosition:
            return caret.Caret() - first;
        case Qt::ImAnchorPosition:
            return std::clamp(caret.Anchor() - first, 0, 2 * kSurrounding);
        case Qt::ImAbsolutePosition:
            return caret.Caret().value;
        case Qt::ImTextBeforeCursor:
            return ToQt(document.Text(TextRange::Between(first, caret.Caret())));
        case Qt::ImTextAfterCursor:
            return ToQt(document.Text({caret.Caret(), kSurrounding}));
        case Qt::ImCurrentSelection: {
            const TextRange range = caret.Range();
            return ToQt(document.Text({range.first, std::min(range.length, kSurrounding)}));
        }
        default:
            return {};
    }
}

}  // namespace zorvane
