#include "compare/ui/compare_files_page.h"

#include <QMimeData>
#include <QResizeEvent>
#include <QStackedWidget>
#include <QUrl>
#include <QVBoxLayout>

#include "common/ui/look_style.h"
#include "common/ui/progress_card.h"
#include "compare/ui/theme_colors.h"

namespace zorvane {
namespace {

constexpr int kStatusPanels = 5;
constexpr int kFirstEditors = 250;  // heights of editors and result in a new window
constexpr int kFirstResult = 430;
constexpr double kWhole = 100;

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

CompareFilesPage::CompareFilesPage(CommandSet& commands, Theme& theme, UiText text, PageHost host)
    : commands_(commands), theme_(theme), text_(std::move(text)), host_(std::move(host)) {}

CompareFilesPage::~CompareFilesPage() {
    ReleaseViews();
}

// What borrows documents goes before them.
void CompareFilesPage::ReleaseViews() {
    if (viewer_ == nullptr)
        return;
    ScrollLink& link = viewer_->Tools().Scrolls();
    for (const ShownEditor editor :
         {ShownEditor::Original, ShownEditor::Modified, ShownEditor::OriginalDiffFinal,
          ShownEditor::ModifiedDiffFinal, ShownEditor::AllInOneDiff})
        link.Unhook(editor);
    viewer_->Editors().rtbOriginal.editor.RemoveObserver(*followers_.original);
    viewer_->Editors().rtbModified.editor.RemoveObserver(*followers_.modified);
    find_.reset();
    viewer_ = nullptr;
    delete rooms_;
    rooms_ = nullptr;
    last_focus_ = nullptr;
    finding_in_ = nullptr;
}

void CompareFilesPage::Connect(frmCompareFiles& viewer) {
    viewer_ = &viewer;
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(0);
    rooms_ = new QStackedWidget(this);
    start_ = new StartPage(commands_, text_, rooms_);
    rooms_->addWidget(start_);
    rooms_->addWidget(MakeWork());
    rows->addWidget(rooms_, 1);
    status_ = new StatusBar(kStatusPanels, this);
    rows->addWidget(status_);
    announcer_ = std::make_unique<RunAnnouncer>(*status_, text_);
    connect(status_, &StatusBar::PanelClicked, this, [this](int number) {
        if (number == static_cast<int>(StatusPanel::Main) && viewer_ != nullptr)
            viewer_->Abort();
    });
    start_->files_dropped = [this](Side side, const QStringList& paths) { DropFiles(side, paths); };
    start_->recent_chosen = [this](Side side, const QString& path) { TakeFile(side, path); };
    start_->text_given = [this](Side side, const QString& words) { GiveText(side, words); };
    ConnectEditors();
    ConnectPane();
    ApplyColors();
    connect(&theme_, &Theme::Changed, this, &CompareFilesPage::ApplyColors);
    viewer_->Tools().RefreshStatusBarItems(ShownEditor::Original);
    ShowStatus(StatusPanel::Detail, FromQt(text_("Ready")));
    ShowRoom();
}

QWidget* CompareFilesPage::MakeWork() {
    auto* work = new QWidget(rooms_);
    auto* rows = new QVBoxLayout(work);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(0);
    bar_ = new CompareBar(commands_, text_, work);
    connect(&bar_->List(), &DifferenceBox::Chosen, this,
            [this](int row) { viewer_->SelectListItem(row); });
    rows->addWidget(bar_);
    MakeOptions(work);
    rows->addWidget(options_);
    files_ = new FileRow(commands_, text_, work);
    files_->path_chosen = [this](Side side, const QString& path) { TakeFile(side, path); };
    files_->files_dropped = [this](Side side, const QStringList& paths) { DropFiles(side, paths); };
    rows->addWidget(files_);
    splitter_ = new Splitter(Qt::Vertical, text_("Editors and result"), work);
    ViewerEditors& texts = viewer_->Editors();
    editors_ = new EditorPair(texts.rtbOriginal.editor, texts.rtbModified.editor, splitter_);
    splitter_->addWidget(editors_);
    splitter_->addWidget(MakeBelow());
    splitter_->setStretchFactor(1, 1);
    splitter_->setSizes({kFirstEditors, kFirstResult});
    rows->addWidget(splitter_, 1);
    return work;
}

QWidget* CompareFilesPage::MakeBelow() {
    below_ = new QWidget(splitter_);
    auto* rows = new QVBoxLayout(below_);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(0);
    head_ = new ResultHead(commands_, text_, below_);
    head_->filter_chosen = [this](ViewFilter filter) { viewer_->ShowFilter(filter); };
    head_->ignored_clicked = [this] { SetOptionsUnfolded(true); };
    rows->addWidget(head_);
    auto* line = new QHBoxLayout;
    line->setSpacing(0);
    result_ = new QStackedWidget(below_);
    pane_ = new ComparePane(shown_texts_.original, shown_texts_.modified, result_);
    result_->addWidget(pane_);
    ViewerEditors& texts = viewer_->Editors();
    const std::pair<RichDocument*, const char*> kinds[] = {{&texts.rtbAdditions, "Additions"},
                                                           {&texts.rtbDeletions, "Deletions"},
                                                           {&texts.rtbChanges, "Changes"}};
    for (const auto& [document, name] : kinds) {
        auto* view = new RichTextView(*document, result_);
        view->SetReadOnly(true);
        view->SetNumberColumns(NumberColumns::None);
        view->setAccessibleName(text_(name));
        summaries_.push_back(view);
        result_->addWidget(view);
    }
    line->addWidget(result_, 1);
    panel_ = new DifferencePanel(commands_, text_, below_);
    panel_->hide();
    panel_->place_chosen = [this](Side side, ParagraphNumber paragraph) {
        pane_->ShowParagraph(side, paragraph);
    };
    line->addWidget(panel_);
    rows->addLayout(line, 1);
    progress_ = new ProgressCard(text_, result_);
    connect(progress_, &ProgressCard::AbortClicked, this, [this] { viewer_->Abort(); });
    return below_;
}

void CompareFilesPage::MakeOptions(QWidget* parent) {
    options_ = new OptionArea(text_, parent);
    compare_options_ = new CompareOptionsPage(*viewer_, commands_, text_, options_);
    report_options_ = new ReportOptionsPage(*viewer_, commands_, text_, options_);
    view_options_ = new ViewOptionsPage(*viewer_, commands_, text_, options_);
    options_->AddPage(compare_options_, text_("Compare Options"));
    options_->AddPage(report_options_, text_("Report Options"));
    options_->AddPage(view_options_, text_("View Options"));
    compare_options_->Binding().changed = [this] { OptionChanged(); };
    view_options_->Binding().changed = [this] { ApplyLook(); };
    connect(options_, &OptionArea::FoldWanted, this, [this] { SetOptionsUnfolded(false); });
}

void CompareFilesPage::ConnectEditors() {
    ScrollLink& link = viewer_->Tools().Scrolls();
    ViewerEditors& texts = viewer_->Editors();
    for (const Side side : kBothSides) {
        const bool original = side == Side::Original;
        RichTextView& view = editors_->View(side);
        RichDocument& document = original ? texts.rtbOriginal.editor : texts.rtbModified.editor;
        const ShownEditor editor = original ? ShownEditor::Original : ShownEditor::Modified;
        view.setAccessibleName(text_(original ? "Original" : "Modified"));
        // The rows learn of an edit before the view's index does.
        followers_[side] = std::make_unique<RowsFollower>(viewer_->Tools().EditorRows(), side,
                                                          document, view.Page().Index());
        document.RemoveObserver(view);
        document.AddObserver(*followers_[side]);
        document.AddObserver(view);
        RichTextViewEvents& events = view.Events();
        events.top_moved = [&link, editor](double) { link.OnLinkedEditorScrolled(editor); };
        events.bar_used = [&link, editor](const ScrollMessage& message) {
            link.HandleLinkedEditorMessage(message, editor);
        };
        events.pressed = [&link, editor] { link.OnPointerPressed(editor); };
        events.caret_moved = [this, editor](std::int32_t, std::int32_t) {
            viewer_->Tools().RefreshStatusBarItems(editor);
        };
        events.files_dropped = [this, side](const QMimeData& dropped) {
            QStringList paths;
            for (const QUrl& url : dropped.urls()) {
                if (url.isLocalFile())
                    paths.append(url.toLocalFile());
            }
            DropFiles(side, paths);
            return !paths.isEmpty();
        };
    }
    ForViews([this](RichTextView& view) {
        Append(view.Events().focus_changed, [this, seen = &view](bool in) {
            if (in)
                last_focus_ = seen;
            host_.commands_changed();
        });
        view.Events().context_menu = [this](QPoint place, CharPos) { ShowContextMenu(place); };
    });
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
        events.caret_moved = [this](std::int32_t row, std::int32_t column) {
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

void CompareFilesPage::ForViews(const std::function<void(RichTextView&)>& act) {
    for (const Side side : kBothSides) {
        act(editors_->View(side));
        act(pane_->View(side));
    }
    act(pane_->MergedView());
    for (RichTextView* view : summaries_)
        act(*view);
}

void CompareFilesPage::ApplyColors() {
    if (viewer_ == nullptr)
        return;
    const ViewColors colors = ViewColorsOf(theme_.GetTokens(), viewer_->Options());
    editors_->SetColors(colors);
    pane_->SetColors(colors);
    for (RichTextView* view : summaries_)
        view->SetColors(colors);
}

// Once the viewer has read its section.
void CompareFilesPage::ReadSettings() {
    if (settings_read_)
        return;
    settings_read_ = true;
    const CompareFilesView& view = Look();
    viewer_->LookForMoves(view.CountMoves);
    compare_options_->Binding().Show();
    report_options_->Binding().Show();
    view_options_->Binding().Show();
    options_->Tabs().setCurrentIndex(view.OptionsTab);
    options_->SetUnfolded(view.OptionsUnfolded);
    const double ratio = viewer_->Settings().dRatioTopEditor;
    if (ratio > 0 && ratio < 1)
        splitter_->setSizes(
            {static_cast<int>(ratio * kWhole), static_cast<int>((1 - ratio) * kWhole)});
    ApplyLook();
    ApplyColors();
    ShowFiles();
    ShowIgnored();
    ShowRoom();
}

void CompareFilesPage::WriteSettings() {
    if (!settings_read_)
        return;
    CompareFilesView& view = viewer_->Settings().view;
    view.OptionsTab = options_->Tabs().currentIndex();
    view.AllInOne = pane_->AllInOne();
    const QList<int> sizes = splitter_->sizes();
    const double all = sizes.value(0) + sizes.value(1);
    if (view.Layout == PaneLayout::EditorsAndResult && sizes.value(0) > 0 && sizes.value(1) > 0)
        viewer_->Settings().dRatioTopEditor = sizes.value(0) / all;
}

// Everything that the view's settings say.
void CompareFilesPage::ApplyLook() {
    const CompareFilesView& view = Look();
    const double zoom = view.ZoomPercent / kWhole;
    const bool wrap = viewer_->Settings().mnuWordWrap;
    pane_->SetZoom(zoom);
    pane_->SetWrap(wrap);
    for (const Side side : kBothSides) {
        editors_->View(side).SetZoom(zoom);
        editors_->View(side).SetWrap(wrap);
    }
    for (RichTextView* summary : summaries_) {
        summary->SetZoom(zoom);
        summary->SetWrap(wrap);
    }
    pane_->MergedView().SetLineLength(view.LineLength);
    pane_->SetAligned(view.KeepParagraphsOpposite);
    pane_->SetFolded(view.FoldUnchanged);
    viewer_->Tools().AlignParagraphs(view.KeepParagraphsOpposite);
    editors_->setVisible(view.Layout != PaneLayout::Result);
    below_->setVisible(view.Layout != PaneLayout::Editors);
    panel_->setVisible(view.PanelOpen);
    bar_->SetLayout(static_cast<int>(view.Layout));
    HookScrolls();
    host_.commands_changed();
}

void CompareFilesPage::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    if (viewer_ == nullptr)
        return;
    bar_->FitTo(width());
    head_->FitTo(width());
}

}  // namespace zorvane
