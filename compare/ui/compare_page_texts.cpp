// The texts of a page: what its views tell, and what is told of them.
#include <utility>

#include "compare/ui/compare_files_page.h"

namespace zorvane {
namespace {

// Behind what the view's owner does already.
template <class Event, class More>
void Append(Event& event, More more) {
    event = [first = std::move(event), more = std::move(more)](const auto&... arguments) {
        if (first)
            first(arguments...);
        more(arguments...);
    };
}

}  // namespace

void CompareFilesPage::ConnectEditor(Side side) {
    const bool original = side == Side::Original;
    ScrollLink& link = viewer_->Tools().Scrolls();
    RichTextView& view = editors_->View(side);
    ViewerEditors& texts = viewer_->Editors();
    RichDocument& document = original ? texts.rtbOriginal.editor : texts.rtbModified.editor;
    const ShownEditor editor = original ? ShownEditor::Original : ShownEditor::Modified;
    view.setAccessibleName(text_(original ? "Original" : "Modified"));
    // The rows learn of an edit before the view's index does.
    followers_[side] = std::make_unique<RowsFollower>(viewer_->Tools().EditorRows(), side, document,
                                                      view.Page().Index());
    document.RemoveObserver(view);
    document.AddObserver(*followers_[side]);
    document.AddObserver(view);
    RichTextViewEvents& events = view.Events();
    events.top_moved = [&link, editor](double) { link.OnLinkedEditorScrolled(editor); };
    events.bar_used = [&link, editor](const ScrollMessage& message) {
        link.HandleLinkedEditorMessage(message, editor);
    };
    events.pressed = [&link, editor] { link.OnPointerPressed(editor); };
    events.caret_moved = [this, editor, seen = &view](std::int32_t, std::int32_t) {
        if (seen == FocusedView())
            viewer_->Tools().RefreshStatusBarItems(editor);
    };
    events.focus_changed = [this, editor](bool in) {
        if (in)
            viewer_->Tools().RefreshStatusBarItems(editor);
    };
}

void CompareFilesPage::ConnectEditors() {
    for (const Side side : kBothSides)
        ConnectEditor(side);
    ForViews([this](RichTextView& view) {
        Append(view.Events().focus_changed, [this, seen = &view](bool in) {
            if (in)
                last_focus_ = seen;
            host_.commands_changed();
        });
        view.Events().context_menu = [this, seen = &view](QPoint place, CharPos at) {
            ShowTextMenu(*seen, place, at);
        };
    });
    ConnectDrops();
}

void CompareFilesPage::ConnectPane() {
    ScrollLink& link = viewer_->Tools().Scrolls();
    pane_->SetTexts(TextsOfPane());
    pane_->copy_over = [this](std::int32_t record, Side from) { CopyOver(record, from); };
    pane_->record_clicked = [this](std::int32_t record) { viewer_->SelectListItem(record); };
    const std::pair<RichTextView*, ShownEditor> views[] = {
        {&pane_->View(Side::Original), ShownEditor::OriginalDiffFinal},
        {&pane_->View(Side::Modified), ShownEditor::ModifiedDiffFinal},
        {&pane_->MergedView(), ShownEditor::AllInOneDiff}};
    for (const auto& [view, number] : views) {
        view->SetReadOnly(true);
        RichTextViewEvents& events = view->Events();
        const ShownEditor editor = number;
        Append(events.top_moved, [&link, editor](double) { link.OnLinkedEditorScrolled(editor); });
        Append(events.bar_used, [&link, editor](const ScrollMessage& message) {
            link.HandleLinkedEditorMessage(message, editor);
        });
        Append(events.pressed, [&link, editor] { link.OnPointerPressed(editor); });
        events.caret_moved = [this, seen = view](std::int32_t row, std::int32_t column) {
            if (seen != FocusedView())
                return;
            ShowStatus(StatusPanel::Caret,
                       FromQt(text_("Row") + QStringLiteral(": %1   ").arg(row) + text_("Column") +
                              QStringLiteral(": %1").arg(column)));
        };
    }
    pane_->View(Side::Original).setAccessibleName(text_("Result, original side"));
    pane_->View(Side::Modified).setAccessibleName(text_("Result, modified side"));
    pane_->MergedView().setAccessibleName(text_("Result, all in one"));
}

// Of a pair that the pane itself keeps opposite each other the link moves one; where the views go
// free it has both. What is hidden scrolls with nothing.
void CompareFilesPage::HookScrolls() {
    ScrollLink& link = viewer_->Tools().Scrolls();
    const bool one = pane_->AllInOne();
    const auto hook = [&](ShownEditor editor, RichTextView& view, bool wanted) {
        if (wanted)
            link.Hook(editor, view);
        else
            link.Unhook(editor);
    };
    const bool free = !Look().KeepParagraphsOpposite;
    hook(ShownEditor::Original, editors_->View(Side::Original), true);
    hook(ShownEditor::Modified, editors_->View(Side::Modified), true);
    hook(ShownEditor::OriginalDiffFinal, pane_->View(Side::Original), !one);
    hook(ShownEditor::ModifiedDiffFinal, pane_->View(Side::Modified), !one && free);
    hook(ShownEditor::AllInOneDiff, pane_->MergedView(), one);
}

PaneTexts CompareFilesPage::TextsOfPane() const {
    const UiText text = text_;
    PaneTexts texts;
    texts.fold = [text](std::int32_t count) { return text("%1 unchanged paragraphs").arg(count); };
    texts.fold_spoken = [text](std::int32_t count) {
        return text("%1 unchanged paragraphs, folded").arg(count);
    };
    texts.overview = [text](std::int32_t count) {
        return text("Overview, %1 differences").arg(count);
    };
    texts.in_sight = [text](std::int32_t first, std::int32_t last, std::int32_t all) {
        return text("paragraphs %1 to %2 of %3").arg(first).arg(last).arg(all);
    };
    texts.only_in = [text](Side only, std::int32_t count) {
        const QString words =
            text(only == Side::Original ? "only in Original" : "only in Modified");
        return count < 2 ? words : words + QStringLiteral(", ") + text("%1 paragraphs").arg(count);
    };
    texts.moved_to = [text](std::int32_t paragraph) {
        return text("moved to paragraph %1").arg(paragraph);
    };
    texts.copy = [this, text](std::int32_t record, Side from) {
        return text(from == Side::Original ? "Copy change %1 of %2 to Modified"
                                           : "Copy change %1 of %2 to Original")
            .arg(record + 1)
            .arg(viewer_ == nullptr ? 0 : viewer_->Differences().Count());
    };
    texts.difference = [this](std::int32_t record) { return Spoken(record, {.with_place = true}); };
    return texts;
}

}  // namespace zorvane
