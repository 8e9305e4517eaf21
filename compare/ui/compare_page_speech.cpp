// What a Compare Files page says to screen readers.
#include <QFileInfo>

#include "common/ui/announce.h"
#include "compare/ui/compare_files_page.h"
#include "compare/view/spoken_difference.h"

namespace zorvane {

QString CompareFilesPage::Spoken(std::int32_t record, const SpokenRules& rules) const {
    const Comparison* shown = viewer_ == nullptr ? nullptr : viewer_->ShownComparison();
    if (shown == nullptr)
        return {};
    return ToQt(SpokenDifference(
        *shown, record, [this](std::string_view english) { return FromQt(text_(english)); },
        rules));
}

// The focus stays where it is, so what was walked to is said, and can be read again as what
// describes the result.
void CompareFilesPage::SayDifference(std::int32_t index) {
    const QString words = Spoken(index, {.with_place = true});
    for (RichTextView* view :
         {&pane_->View(Side::Original), &pane_->View(Side::Modified), &pane_->MergedView()})
        view->setAccessibleDescription(words);
    if (!waiting_)
        Announce(*FocusedView(), words);
}

void CompareFilesPage::ReadAloud() {
    const std::int32_t record = viewer_->mlCurrentDifference() - 1;
    const QString words =
        Spoken(record, {.with_place = true, .longest = 100'000, .most_places = 1000});
    if (record < 0 || words.isEmpty())
        return;
    Announce(*FocusedView(), words);
    ShowStatus(StatusPanel::Main, FromQt(words.section(u'\n', 0, 0)));
}

void CompareFilesPage::SayRun(bool begins) {
    if (begins) {
        has_verdict_ = false;
        announcer_->Begin(text_("Comparing the documents"));
        return;
    }
    announcer_->End(has_verdict_ ? head_->Verdict()
                                 : status_->Panel(static_cast<int>(StatusPanel::Main)));
}

void CompareFilesPage::SayProgress() {
    announcer_->Progress(viewer_->RunPercent());
}

void CompareFilesPage::NameSides() {
    for (const Side side : kBothSides) {
        const QString file = QFileInfo(ToQt(viewer_->ChosenFile(side))).fileName();
        const QString name = text_(side == Side::Original ? "Original" : "Modified");
        editors_->View(side).setAccessibleName(
            file.isEmpty() ? name : QStringLiteral("%1: %2").arg(name, file));
    }
}

}  // namespace zorvane
