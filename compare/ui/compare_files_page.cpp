#include "compare/ui/compare_files_page.h"

#include <utility>

#include <QResizeEvent>
#include <QStackedWidget>
#include <QVBoxLayout>

#include "common/ui/look_style.h"
#include "common/ui/measures.h"
#include "common/ui/progress_card.h"
#include "compare/ui/theme_colors.h"

namespace zorvane {
namespace {

constexpr int kStatusPanels = 5;
constexpr int kFirstEditors = 250;  // heights of editors and result in a new window
constexpr int kFirstResult = 430;
constexpr double kWhole = 100;

}  // namespace

CompareFilesPage::CompareFilesPage(CommandSet& commands, Theme& theme, UiText text, PageHost host)
    : commands_(commands), theme_(theme), text_(std::move(text)), host_(std::move(host)) {}

void CompareFilesPage::BeginInteractive() {
    if (viewer_ != nullptr)
        viewer_->RunInBackground(true);
}

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
    room_ = new PanelRoom(work);
    panel_ = new DifferencePanel(commands_, text_, room_);
    room_->SetParts(MakeContent(), panel_);
    room_->width_wanted = [this](int width) {
        viewer_->Settings().view.PanelWidth = width;
        room_->SetPanelWidth(width);
    };
    panel_->Beside().place_chosen = [this](Side side, ParagraphNumber paragraph) {
        pane_->ShowParagraph(side, paragraph);
        ShowPlaceInEditor(side, paragraph);
    };
    rows->addWidget(room_, 1);
    return work;
}

QWidget* CompareFilesPage::MakeContent() {
    auto* content = new QWidget(room_);
    auto* rows = new QVBoxLayout(content);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(0);
    top_line_ = new QHBoxLayout;
    top_line_->setSpacing(0);
    files_ = new FileRow(commands_, text_, content);
    files_->path_chosen = [this](Side side, const QString& path) { TakeFile(side, path); };
    files_->files_dropped = [this](Side side, const QStringList& paths) { DropFiles(side, paths); };
    files_->ratio_wanted = [this](double ratio) { SetRatio(ratio); };
    top_line_->addWidget(files_, 1);
    rows->addLayout(top_line_);
    splitter_ = new Splitter(Qt::Vertical, text_("Editors and result"), content);
    ViewerEditors& texts = viewer_->Editors();
    editors_ = new EditorPair(texts.rtbOriginal.editor, texts.rtbModified.editor, splitter_);
    editors_->ratio_wanted = [this](double ratio) { SetRatio(ratio); };
    splitter_->addWidget(editors_);
    splitter_->addWidget(MakeBelow());
    splitter_->setStretchFactor(1, 1);
    splitter_->setSizes({kFirstEditors, kFirstResult});
    splitter_->installEventFilter(this);
    rows->addWidget(splitter_, 1);
    return content;
}

QWidget* CompareFilesPage::MakeBelow() {
    below_ = new QWidget(splitter_);
    below_rows_ = new QVBoxLayout(below_);
    below_rows_->setContentsMargins(0, 0, 0, 0);
    below_rows_->setSpacing(0);
    head_ = new ResultHead(commands_, text_, below_);
    head_->filter_chosen = [this](ViewFilter filter) { viewer_->ShowFilter(filter); };
    head_->ignored_clicked = [this] { SetOptionsUnfolded(true); };
    below_rows_->addWidget(head_);
    result_line_ = new MessageBar(below_);
    below_rows_->addWidget(result_line_);
    MakeResult();
    below_rows_->addWidget(result_, 1);
    progress_ = new ProgressCard(text_, result_);
    connect(progress_, &ProgressCard::AbortClicked, this, [this] { viewer_->Abort(); });
    return below_;
}

void CompareFilesPage::MakeResult() {
    result_ = new QStackedWidget(below_);
    pane_ = new ComparePane(shown_texts_.original, shown_texts_.modified, result_);
    pane_->sight_changed = [this](ParagraphsInSight sight) {
        if (viewer_ != nullptr)
            viewer_->Look(sight);
    };
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
    verdict_ = new CardGround(result_);
    result_->addWidget(verdict_);
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
        view->SetColors(MarkedTextColorsOf(theme_.GetTokens(), viewer_->Options()));
}

void CompareFilesPage::ShowWords() {
    if (viewer_ == nullptr)
        return;
    pane_->SetTexts(TextsOfPane());
    ShowFiles();
    ShowCounts();
    ShowIgnored();
    bar_->SetPlace(viewer_->mlCurrentDifference(), viewer_->Differences().Count());
    viewer_->Tools().RefreshStatusBarItems(ShownEditor::Original);
    viewer_->UpdateStatusBar();
    ApplyLook();
}

// Once the viewer has read its section.
void CompareFilesPage::ReadSettings() {
    if (settings_read_)
        return;
    settings_read_ = true;
    const CompareFilesView& view = Look();
    viewer_->LookForMoves(view.CountMoves);
    viewer_->CountNumbering(view.CountNumbering);
    viewer_->BeginWith(view.AllInOne ? zorvane::View::AllInOne : zorvane::View::SideBySide);
    pane_->SetFoldRule({.context_above = view.FoldKeepParagraphs,
                        .context_below = view.FoldKeepParagraphs,
                        .least = view.FoldFromParagraphs,
                        .headings = {}},
                       view.FoldKeepHeadings);
    room_->SetPanelWidth(view.PanelWidth);
    SetRatio(view.RatioColumns);
    compare_options_->Binding().Show();
    report_options_->Binding().Show();
    view_options_->Binding().Show();
    options_->Tabs().setCurrentIndex(view.OptionsTab);
    options_->SetUnfolded(view.OptionsUnfolded);
    const double ratio = viewer_->Settings().dRatioTopEditor;
    if (ratio > 0 && ratio < 1)
        editors_share_ = ratio;
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
    // What was never shown has no sizes yet.
    if (editors_share_ == 0 && LayoutNow() == PaneLayout::EditorsAndResult && sizes.value(0) > 0 &&
        sizes.value(1) > 0)
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
    if (std::exchange(folded_, view.FoldUnchanged) != view.FoldUnchanged)
        pane_->SetFolded(view.FoldUnchanged);
    viewer_->Tools().AlignParagraphs(view.KeepParagraphsOpposite);
    room_->SetPanelShown(view.PanelOpen);
    ApplyPlan();
    HookScrolls();
    host_.commands_changed();
}

PaneLayout CompareFilesPage::LayoutNow() const {
    const PaneLayout chosen = Look().Layout;
    const bool short_of_room = !plan_.editors && !editors_wanted_;
    return chosen == PaneLayout::EditorsAndResult && short_of_room ? PaneLayout::Result : chosen;
}

// What the person chose stays chosen; it comes back with the room.
void CompareFilesPage::ApplyPlan() {
    plan_ = PlanFor(width(), height() + measures::kMenuBarHeight, options_->IsUnfolded());
    editors_wanted_ = editors_wanted_ && !plan_.editors;
    const PaneLayout layout = LayoutNow();
    const bool in_text = last_focus_ != nullptr && last_focus_->hasFocus();
    editors_->setVisible(layout != PaneLayout::Result);
    below_->setVisible(layout != PaneLayout::Editors);
    // Else the next button would have it.
    if (in_text && !last_focus_->isVisible())
        FocusedView()->setFocus();
    bar_->SetLayout(static_cast<int>(layout));
    bar_->FitTo(plan_, width());
    head_->FitTo(plan_);
    room_->SetBeside(plan_.panel_beside);
    if (plan_.head_own_line == (below_rows_->indexOf(head_) >= 0))
        return;
    if (plan_.head_own_line) {
        top_line_->removeWidget(head_);
        below_rows_->insertWidget(0, head_);
    } else {
        below_rows_->removeWidget(head_);
        top_line_->addWidget(head_);
    }
    head_->show();
}

// Of both, once there is a height to be shared.
void CompareFilesPage::ShareHeight() {
    if (editors_share_ == 0 || !editors_->isVisible() || !below_->isVisible())
        return;
    const double all = splitter_->height();
    const double share = std::exchange(editors_share_, 0);
    splitter_->setSizes({static_cast<int>(share * all), static_cast<int>((1 - share) * all)});
}

void CompareFilesPage::SetRatio(double ratio) {
    viewer_->Settings().view.RatioColumns = ratio;
    files_->SetRatio(ratio);
    editors_->SetRatio(ratio);
    pane_->SetRatio(ratio);
}

void CompareFilesPage::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    if (viewer_ == nullptr)
        return;
    ApplyPlan();
}

}  // namespace zorvane
