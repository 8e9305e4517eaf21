// What a Compare Files viewer tells its window and asks it.
#include <QApplication>
#include <QFileDialog>
#include <QStackedWidget>

#include "common/ui/progress_card.h"
#include "common/ui/question.h"
#include "compare/ui/compare_files_page.h"

namespace zorvane {
namespace {

constexpr double kPercent = 100;

struct KindLook {
    const char* icon;
    Token color;
};
KindLook LookOf(MarkKind kind) {
    switch (kind) {
        case MarkKind::Deleted:
            return {"deleted", Token::DeletedText};
        case MarkKind::Added:
            return {"added", Token::AddedText};
        case MarkKind::Moved:
            return {"moved", Token::MovedText};
        case MarkKind::Changed:
        case MarkKind::None:
            break;
    }
    return {"changed", Token::ChangedText};
}

}  // namespace

// ---- questions ----

bool CompareFilesPage::AskYesNo(const std::string& text, const std::string& title) {
    return Ask({.title = ToQt(title),
                .text = ToQt(text),
                .choices = {text_("No"), text_("Yes")},
                .usual = 1},
               this) == 1;
}

void CompareFilesPage::ShowMessage(const std::string& text, const std::string& title) {
    Tell(ToQt(title), ToQt(text), text_("OK"), this);
}

std::string CompareFilesPage::BrowseFor(Side side) {
    return FromQt(QFileDialog::getOpenFileName(
        this, text_(side == Side::Original ? "Open Original" : "Open Modified")));
}

void CompareFilesPage::PumpEvents() {
    QCoreApplication::processEvents();
}

void CompareFilesPage::SetHourglass(bool on) {
    if (rooms_ != nullptr)
        result_->setCursor(on ? Qt::BusyCursor : Qt::ArrowCursor);
}

bool CompareFilesPage::ShowNotice(const std::string& text, const std::string& title) {
    return Ask({.title = ToQt(title),
                .text = ToQt(text),
                .choices = {text_("Do Not Show Again"), text_("OK")},
                .usual = 1,
                .escape = 1},
               this) == 0;
}

std::int32_t CompareFilesPage::AskDifferenceNumber(std::int32_t current, std::int32_t count) {
    GoToDialog dialog(text_, current, count, this);
    theme_.Dress(dialog);
    return dialog.exec() == QDialog::Accepted ? dialog.Number() : -1;
}

// The viewer has asked about edits; nothing else is open.
bool CompareFilesPage::ConfirmClose() {
    return true;
}

// The viewer goes, and with it the documents that the views read.
void CompareFilesPage::CloseDialogs() {
    if (viewer_ == nullptr)
        return;
    WriteSettings();
    ReleaseViews();
}

// ---- runs ----

void CompareFilesPage::ShowStatus(StatusPanel panel, const std::string& text) {
    if (rooms_ == nullptr)
        return;
    status_->SetPanel(static_cast<int>(panel), ToQt(text));
}

void CompareFilesPage::SetAbortVisible(bool visible) {
    if (rooms_ == nullptr)
        return;
    bar_->SetAbortVisible(visible);
    host_.commands_changed();
}

// Commands ask the viewer; what is typed goes to the views alone.
void CompareFilesPage::SetEditable(bool editable) {
    if (rooms_ == nullptr)
        return;
    for (const Side side : kBothSides)
        editors_->View(side).SetReadOnly(!editable);
}

void CompareFilesPage::ShowPleaseWait(bool shown) {
    if (rooms_ == nullptr)
        return;
    waiting_ = shown;
    if (shown) {
        started_ = true;
        ShowRoom();
        progress_->Begin(text_("Comparing the documents"));
    } else {
        progress_->End();
        ShowFiles();
        ShowRoom();
    }
    host_.commands_changed();
}

void CompareFilesPage::Tick() {
    if (viewer_ == nullptr)
        return;
    if (viewer_->Busy() && waiting_)
        progress_->SetProgress(kPercent * viewer_->RunShare(),
                               status_->Panel(static_cast<int>(StatusPanel::Main)));
    const bool stale =
        viewer_->ShownComparison() != nullptr && !viewer_->Busy() && viewer_->IsStale();
    if (stale == told_stale_)
        return;
    told_stale_ = stale;
    bar_->SetStale(stale);
    if (stale)
        ShowStatus(StatusPanel::Main, FromQt(text_("Diff View not fresh")));
    host_.commands_changed();
}

void CompareFilesPage::FlashFrame() {
    QApplication::alert(window());
}

void CompareFilesPage::Activate() {
    ReadSettings();
    host_.bring_to_front(*this);
}

// ---- the result ----

void CompareFilesPage::SetDifferenceList(const DifferenceList& list) {
    if (rooms_ == nullptr)
        return;
    ShowResultTexts();
    FillList(list);
    ShowCounts();
    ShowIgnored();
    host_.commands_changed();
}

// The comparison is the viewer's and stays as long as this list does.
void CompareFilesPage::ShowResultTexts() {
    const Comparison* shown = viewer_->ShownComparison();
    pane_->SetComparison(nullptr);
    const ViewerEditors& texts = viewer_->Editors();
    for (const Side side : kBothSides) {
        const SharedText& text = viewer_->ComparedText(side);
        const ShownDocument& marked =
            side == Side::Original ? texts.rtbOriginalDiffFinal : texts.rtbModifiedDiffFinal;
        shown_texts_[side].SetDefaultFormat(marked.editor.DefaultFormat());
        const bool whole = text != nullptr && !viewer_->HasEarlyList();
        shown_texts_[side].SetRich(whole ? *text : marked.editor.Rich());
    }
    if (shown != nullptr)
        pane_->SetComparison(std::shared_ptr<const Comparison>(std::shared_ptr<void>(), shown));
    told_stale_ = false;
    bar_->SetStale(false);
}

void CompareFilesPage::FillList(const DifferenceList& list) {
    const auto row = [this, &list](int at) {
        ListRow line{.text = ToQt(list.Line(at))};
        const Comparison* shown = viewer_ == nullptr ? nullptr : viewer_->ShownComparison();
        if (shown != nullptr && at < static_cast<int>(shown->records.size())) {
            const KindLook look = LookOf(MarkKindOf(*shown, static_cast<std::size_t>(at)));
            line.icon = QString::fromLatin1(look.icon);
            line.icon_color = look.color;
        }
        return line;
    };
    bar_->List().SetRows(list.Count(), row, text_("No differences"));
    bar_->SetPlace(0, list.Count());
}

void CompareFilesPage::ShowCounts() {
    const Comparison* shown = viewer_->ShownComparison();
    ResultCounts counts;
    if (shown != nullptr) {
        counts = {static_cast<int>(shown->records.size()), shown->record_counts.changes,
                  shown->record_counts.additions, shown->record_counts.deletions,
                  static_cast<int>(NotesOf(*shown, Look().CountFormatting).size())};
    }
    head_->SetCounts(counts);
    panel_->Show(shown, Look().CountFormatting, viewer_->NoTextReasons());
}

void CompareFilesPage::ShowIgnored() {
    const clsCompareFileOptions& options = viewer_->Options();
    QStringList kinds;
    if (options.bIgnoreCase.Data())
        kinds.append(text_("case"));
    if (options.bIgnoreWhitespace.Data())
        kinds.append(text_("blanks"));
    if (options.bIgnoreEmptyLines.Data())
        kinds.append(text_("empty lines"));
    if (!options.sIgnoreRegularExpression.Data().empty())
        kinds.append(text_("an expression"));
    head_->SetIgnored(kinds);
}

void CompareFilesPage::SelectInDifferenceList(std::int32_t index) {
    if (rooms_ == nullptr)
        return;
    bar_->List().SetCurrent(index);
    bar_->SetPlace(index + 1, viewer_->Differences().Count());
}

void CompareFilesPage::EnableNavigation(const NavigationButtons&) {
    host_.commands_changed();
}

void CompareFilesPage::EnableFilterButtons(bool enabled) {
    if (rooms_ != nullptr)
        head_->SetFiltersEnabled(enabled);
}

void CompareFilesPage::EnableFilter(ViewFilter filter, bool enabled) {
    if (rooms_ != nullptr)
        head_->SetFilterEnabled(filter, enabled);
}

void CompareFilesPage::ShowView(zorvane::View view) {
    if (rooms_ == nullptr)
        return;
    const bool one = view == zorvane::View::AllInOne;
    if (one != pane_->AllInOne())
        pane_->SetAllInOne(one);
    bar_->SetViewCaption(text_(ViewButtonCaption(view)));
    HookScrolls();
    host_.commands_changed();
}

void CompareFilesPage::ShowFilter(ViewFilter filter) {
    if (rooms_ == nullptr)
        return;
    filter_ = filter;
    head_->SetFilter(filter);
    QWidget* shown = pane_;
    if (filter == ViewFilter::Additions)
        shown = summaries_[0];
    else if (filter == ViewFilter::Deletions)
        shown = summaries_[1];
    else if (filter == ViewFilter::Changes)
        shown = summaries_[2];
    result_->setCurrentWidget(shown);
    host_.commands_changed();
}

// ---- views ----

RichTextView* CompareFilesPage::ViewOf(ShownEditor editor) const {
    switch (editor) {
        case ShownEditor::Original:
            return &editors_->View(Side::Original);
        case ShownEditor::Modified:
            return &editors_->View(Side::Modified);
        case ShownEditor::OriginalDiffFinal:
            return &pane_->View(Side::Original);
        case ShownEditor::ModifiedDiffFinal:
            return &pane_->View(Side::Modified);
        case ShownEditor::AllInOneDiff:
            return &pane_->MergedView();
        case ShownEditor::Additions:
            return summaries_[0];
        case ShownEditor::Deletions:
            return summaries_[1];
        case ShownEditor::Changes:
            break;
    }
    return summaries_[2];
}

void CompareFilesPage::FocusEditor(ShownEditor editor) {
    if (rooms_ == nullptr)
        return;
    RichTextView* view = ViewOf(editor);
    if (view->isVisible())
        view->setFocus();
}

// Paragraphs of an edited text are found by the rows, which moved with the edits.
void CompareFilesPage::SelectByRows(Side side) {
    const ParagraphRows& rows = viewer_->Tools().EditorRows();
    const RowSpan span = rows.RowsOfRecord(viewer_->mlCurrentDifference() - 1);
    if (span.count == 0)
        return;
    const ParagraphNumber first = rows.Row(span.first).paragraphs[side].first;
    const ParagraphNumber end = rows.Row(span.end() - 1).paragraphs[side].end();
    RichTextView& view = editors_->View(side);
    const BlockIndex& index = view.Page().Index();
    const CharPos begin = index.OfParagraph(first).first;
    const bool to_end = end.value > index.ParagraphCount();
    const CharPos stop = to_end ? CharPos{view.Document().Length()} : index.OfParagraph(end).first;
    view.Document().Select(TextRange::Between(begin, std::max(begin, stop)));
}

void CompareFilesPage::RevealSelection(ShownEditor editor) {
    if (rooms_ == nullptr)
        return;
    if (editor == ShownEditor::Original || editor == ShownEditor::Modified) {
        const Side side = editor == ShownEditor::Original ? Side::Original : Side::Modified;
        if (viewer_->IsStale())
            SelectByRows(side);
        RichTextView& view = editors_->View(side);
        view.ShowPosition(view.Document().Selection().first);
        return;
    }
    // The result is shown without the selection of the marked texts; its difference is the place.
    pane_->SetCurrent(viewer_->mlCurrentDifference() - 1);
}

void CompareFilesPage::CheckScrollLock(bool, bool) {
    host_.commands_changed();
}

void CompareFilesPage::CheckAlignParagraphs(bool) {
    host_.commands_changed();
}

void CompareFilesPage::ShowFindReplace(frmCompareFilesFindReplace& find) {
    if (find_ == nullptr) {
        find_ = std::make_unique<FindReplaceDialog>(find, text_, this);
        theme_.Dress(*find_);
        find_->found = [this] { MarkHits(); };
    }
}

}  // namespace zorvane
