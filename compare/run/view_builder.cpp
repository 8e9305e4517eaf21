#include "compare/run/view_builder.h"

#include <utility>

#include "common/base/text_encoding.h"
#include "compare/document_markers.h"
#include "compare/run/compare_job.h"

namespace zorvane {
namespace {

struct FooterRow {
    MemoryEditor RunEditors::*editor;
    std::int32_t DifferenceCounts::*count;
    const char* frame;
    const char* title;
    const char* none;
    const char* some;
};
constexpr FooterRow kFooters[] = {
    {&RunEditors::rtbDeletions, &DifferenceCounts::deletions, "-------", "Deletions Summary",
     "No deletions found", "deletions found"},
    {&RunEditors::rtbAdditions, &DifferenceCounts::additions, "+++++++", "Additions Summary",
     "No additions found", "additions found"},
    {&RunEditors::rtbChanges, &DifferenceCounts::changes, "^^^^^^^", "Change Summary",
     "No changes found", "changes found"},
};

// The same text has the same paragraphs, so these are not looked for again.
bool Copy(const DocumentEditor& from, DocumentEditor& to, bool plain, RunMonitor& monitor) {
    RichText text;
    if (plain) {
        text.text = from.editor.Text();
        text.SetOneFormat(to.editor.DefaultFormat());
    } else {
        text = from.editor.Rich();
    }
    if (!monitor.KeepGoing())
        return false;
    to.editor.SetRich(std::move(text));
    to.document.SetParagraphs(from.document.AllParagraphs());
    return monitor.KeepGoing();
}

bool UserWantsAdjustment(RunMonitor& monitor, LoadQuestions* questions) {
    return questions == nullptr ||
           questions->AskYesNo(
               monitor.Translate("Your document has more than 50,000 paragraphs.  The comparison "
                                 "has been completed, but to") +
                   "\n" +
                   monitor.Translate("handle navigation within the document one more scan is "
                                     "required. It could take a long time.") +
                   "\n\n" + monitor.Translate("Continue?"),
               monitor.Translate("Compare"));
}

bool BuildAllInOne(PassContext& context, const ViewWanted& wanted) {
    RunEditors& editors = context.editors;
    if (!Copy(editors.rtbOriginal, editors.rtbAIODiff, wanted.plain, context.monitor))
        return false;
    clsRTBDocument& merged = editors.rtbAIODiff.document;
    const std::int32_t paragraphs = merged.ParagraphCount();
    if (UpdateChangesToRTFFileAIO(context) == WalkEnd::Aborted)
        return false;
    if (paragraphs <= kParagraphsBeforeAsking ||
        UserWantsAdjustment(context.monitor, wanted.questions))
        merged.ParagraphCollectionAdjust();
    return context.monitor.KeepGoing();
}

bool BuildSideBySide(PassContext& context, const ViewWanted& wanted) {
    RunEditors& editors = context.editors;
    if (!Copy(editors.rtbModified, editors.rtbModifiedDiff, wanted.plain, context.monitor) ||
        !Copy(editors.rtbOriginal, editors.rtbOriginalDiff, wanted.plain, context.monitor))
        return false;
    if (UpdateChangesToRTFFile_SBS(context) == WalkEnd::Aborted)
        return false;
    RunWatcher* const watcher = &context.monitor.Watcher();
    editors.rtbOriginalDiff.document.ParagraphCollectionCreate(watcher);
    if (!context.monitor.KeepGoing())
        return false;
    editors.rtbModifiedDiff.document.ParagraphCollectionCreate(watcher);
    return context.monitor.KeepGoing();
}

// The first line of a summary, such as "------- Deletions Summary. 5 deletions found -------".
void PutSummaryFooters(PassContext& context) {
    RunMonitor& monitor = context.monitor;
    for (const FooterRow& row : kFooters) {
        const std::int32_t count = context.counters.document.*row.count;
        const std::string frame = row.frame;
        std::string text =
            monitor.Translate(frame + " ") + monitor.Translate(row.title) + monitor.Translate(". ");
        text += count == 0 ? monitor.Translate(row.none)
                           : std::to_string(count) + " " + monitor.Translate(row.some);
        text += monitor.Translate(" " + frame) + "\n";
        (context.editors.*row.editor).Replace({CharPos{0}, 0}, ToUtf16(text));
    }
}

}  // namespace

void UseFont(RunEditors& editors, const ViewWanted& wanted) {
    for (DocumentEditor* entry : {&editors.rtbOriginal, &editors.rtbModified, &editors.rtbAIODiff,
                                  &editors.rtbOriginalDiff, &editors.rtbModifiedDiff})
        entry->document.ChangeFontAll(wanted.font, wanted.font_size);
}

void PrepareTexts(RunEditors& editors, const ViewWanted& wanted, RunWatcher& watcher) {
    if (wanted.plain)
        UseFont(editors, wanted);
    for (DocumentEditor* entry : {&editors.rtbOriginal, &editors.rtbModified}) {
        if (watcher.KeepGoing())
            entry->document.ParagraphCollectionCreate(&watcher);
    }
}

bool BuildView(PassContext& context, const ViewWanted& wanted) {
    for (MemoryEditor* summary : context.editors.Summaries())
        summary->Clear();
    if (!(wanted.view == View::AllInOne ? BuildAllInOne(context, wanted)
                                        : BuildSideBySide(context, wanted)))
        return false;
    PutSummaryFooters(context);
    return true;
}

}  // namespace zorvane
