#include "compare/unsaved_edits.h"

#include <algorithm>

#include "common/process_state.h"

namespace zorvane {

UnsavedEdits::Answer UnsavedEdits::Ask(LosingStep step, const EditedText& text) {
    WindowQuestion question;
    question.title = process_.Translate("Unsaved edits");
    question.text = text.name + "\r\n\r\n" +
                    process_.Translate(step == LosingStep::Close
                                           ? "Save your edits before this window is closed?"
                                           : "Save your edits before another text takes their "
                                             "place?");
    question.icon = MessageIcon::Warning;
    question.answers = {process_.Translate("Save"), process_.Translate("Don't save"),
                        process_.Translate("Cancel")};
    question.safe = 2;
    switch (window_.Choose(question)) {
        case 0:
            return Answer::Save;
        case 1:
            return Answer::Discard;
        default:
            return Answer::Cancel;
    }
}

EditsOrFiles UnsavedEdits::AskWhatToCompare(const PerSide<bool>& edited) {
    WindowQuestion question;
    question.title = process_.Translate("Unsaved edits");
    if (edited.original && edited.modified)
        question.text = process_.Translate(
            "Original and Modified have edits that are not saved. Loading them again loses them.");
    else if (edited.original)
        question.text = process_.Translate(
            "Original has edits that are not saved. Loading it again loses them.");
    else
        question.text = process_.Translate(
            "Modified has edits that are not saved. Loading it again loses them.");
    question.icon = MessageIcon::Warning;
    question.answers = {process_.Translate("Compare My Edits"), process_.Translate("Load Again"),
                        process_.Translate("Cancel")};
    question.safe = 2;
    switch (window_.Choose(question)) {
        case 0:
            return EditsOrFiles::Edits;
        case 1:
            return EditsOrFiles::Files;
        default:
            return EditsOrFiles::Cancel;
    }
}

bool UnsavedEdits::MayGoOn(LosingStep step, const std::vector<EditedText>& texts) {
    std::vector<const EditedText*> to_save;
    for (const EditedText& text : texts) {
        if (!text.is_modified())
            continue;
        const Answer answer = Ask(step, text);
        if (answer == Answer::Cancel)
            return false;
        if (answer == Answer::Save)
            to_save.push_back(&text);
    }
    return std::all_of(to_save.begin(), to_save.end(),
                       [](const EditedText* text) { return text->save(); });
}

}  // namespace zorvane
