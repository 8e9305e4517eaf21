// The window of one Compare Files viewer: shows what the viewer says and asks what it asks.
#pragma once

#include <functional>
#include <memory>

#include <QWidget>

#include "common/ui/bars.h"
#include "common/ui/command_table.h"
#include "common/ui/theme.h"
#include "compare/compare_files_viewer.h"
#include "compare/ui/compare_bar.h"
#include "compare/ui/compare_dialogs.h"
#include "compare/ui/compare_pane.h"
#include "compare/ui/difference_panel.h"
#include "compare/ui/editor_pair.h"
#include "compare/ui/file_row.h"
#include "compare/ui/option_pages.h"
#include "compare/ui/result_head.h"
#include "compare/ui/start_page.h"
#include "compare/view/rows_follower.h"
#include "compare/viewer_window.h"

class QStackedWidget;

namespace zorvane {

class ProgressCard;

/// What a page asks of the frame around it.
struct PageHost {
    std::function<void(QWidget&)> bring_to_front;
    /// What commands can do may have changed.
    std::function<void()> commands_changed;
    /// The names of its files changed.
    std::function<void()> caption_changed;
    /// Two texts in a viewer of their own.
    std::function<void(const RichText& original, const RichText& modified)> compare_texts;
};

class CompareFilesPage : public QWidget, public CompareFilesWindow {
  public:
    /// All but the host is borrowed.
    CompareFilesPage(CommandSet& commands, Theme& theme, UiText text, PageHost host);
    ~CompareFilesPage() override;

    /// Makes the contents; once, before the viewer is set up. The viewer goes before this.
    void Connect(frmCompareFiles& viewer);
    frmCompareFiles* Viewer() const { return viewer_; }
    /// "lease-2025.rtf vs. lease-2026.rtf".
    QString Caption() const;
    /// Behind each poll of the viewer.
    void Tick();

    // ---- what a person does (compare_page_actions.cpp) ----
    /// Loads and compares as the options say, or what the editors hold.
    void Compare();
    /// Why it cannot be; empty: it can.
    std::string_view WhyNotCompare() const;
    void ChooseFile(Side side);
    void TakeFile(Side side, const QString& path);
    void DropFiles(Side side, const QStringList& paths);
    void GiveText(Side side, const QString& words);
    void SwapSides();
    void SetLayout(PaneLayout layout);
    void SetZoom(int percent);
    void SetFolded(bool folded);
    void SetAligned(bool aligned);
    void SetWrap(bool wrap);
    void SetPanel(bool open);
    void SetOptionsUnfolded(bool unfolded);
    /// Unfolds one of the three tabs.
    void ShowOptions(int tab) {
        options_->Tabs().setCurrentIndex(tab);
        SetOptionsUnfolded(true);
    }
    ViewFilter Filter() const { return filter_; }
    void ChooseFont();
    void OptionChanged();
    void AdvancedOptions();
    void RestoreDefaults();
    void CountKind(clsVarBoolean& ignored);
    void CountMoves();
    void CountFormatting();
    void OpenFind(bool replace);
    void FindAgain(bool forward);
    void CopyOver(std::int32_t record, Side from);
    void CompareSelected();
    void ReadAloud();
    void FocusList();
    void MoveFocus(bool forward);
    /// The view that has the focus or had it last; never null while connected.
    RichTextView* FocusedView() const;
    bool IsEditor(const RichTextView* view) const;
    const CompareFilesView& Look() const { return viewer_->Settings().view; }
    ComparePane& Pane() { return *pane_; }
    EditorPair& Editors() { return *editors_; }
    CompareBar& Bar() { return *bar_; }
    bool ShowsStart() const;

    // ---- the viewer's verbs (compare_page_verbs.cpp) ----
    bool AskYesNo(const std::string& text, const std::string& title) override;
    void ShowMessage(const std::string& text, const std::string& title) override;
    std::string BrowseFor(Side side) override;
    void PumpEvents() override;
    void SetHourglass(bool on) override;
    bool ShowNotice(const std::string& text, const std::string& title) override;
    void ShowStatus(StatusPanel panel, const std::string& text) override;
    void SetAbortVisible(bool visible) override;
    void SetEditable(bool editable) override;
    void ShowPleaseWait(bool shown) override;
    void EnableFilterButtons(bool enabled) override;
    void EnableFilter(ViewFilter filter, bool enabled) override;
    void ShowView(zorvane::View view) override;
    void ShowFilter(ViewFilter filter) override;
    void SetDifferenceList(const DifferenceList& list) override;
    void SelectInDifferenceList(std::int32_t index) override;
    void EnableNavigation(const NavigationButtons& buttons) override;
    void FlashFrame() override;
    void Activate() override;
    bool ConfirmClose() override;
    void CloseDialogs() override;
    void FocusEditor(ShownEditor editor) override;
    void RevealSelection(ShownEditor editor) override;
    void CheckScrollLock(bool vertical, bool horizontal) override;
    void CheckAlignParagraphs(bool on) override;
    std::int32_t AskDifferenceNumber(std::int32_t current, std::int32_t count) override;
    void ShowFindReplace(frmCompareFilesFindReplace& find) override;

    // ---- files (compare_page_files.cpp) ----
    std::int32_t Choose(const WindowQuestion& question) override;
    std::string PickFile(FileQuestion& question) override;
    std::unique_ptr<PagePainter> PickPrinter(PrintQuestion& question) override;
    std::string DefaultPrinter() override { return {}; }
    void SetDefaultPrinter(const std::string&) override {}
    void RefreshMargins() override;
    void RefreshFileList(Side side) override;
    void RefreshCaption() override;
    void SaveAs();
    void Print();

  protected:
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    QWidget* MakeWork();
    QWidget* MakeBelow();
    void MakeOptions(QWidget* parent);
    void ConnectEditors();
    void ConnectPane();
    void HookScrolls();
    void ApplyColors();
    void ApplyLook();
    void ReadSettings();
    void WriteSettings();
    void ReleaseViews();
    void ShowRoom();
    void ShowFiles();
    void ShowResultTexts();
    void ShowCounts();
    void ShowIgnored();
    void FillList(const DifferenceList& list);
    void SelectByRows(Side side);
    void MarkHits();
    void ShowContextMenu(QPoint place);
    /// Tells the viewer which text the person works in.
    void TellActiveEditor();
    PaneTexts TextsOfPane() const;
    void ForViews(const std::function<void(RichTextView&)>& act);
    RichTextView* ViewOf(ShownEditor editor) const;

    CommandSet& commands_;
    Theme& theme_;
    UiText text_;
    PageHost host_;
    frmCompareFiles* viewer_ = nullptr;
    PerSide<RichDocument> shown_texts_;  ///< what the result pane shows, without marks
    QStackedWidget* rooms_ = nullptr;    ///< start page or work
    StartPage* start_ = nullptr;
    CompareBar* bar_ = nullptr;
    OptionArea* options_ = nullptr;
    CompareOptionsPage* compare_options_ = nullptr;
    ReportOptionsPage* report_options_ = nullptr;
    ViewOptionsPage* view_options_ = nullptr;
    FileRow* files_ = nullptr;
    Splitter* splitter_ = nullptr;
    EditorPair* editors_ = nullptr;
    QWidget* below_ = nullptr;
    ResultHead* head_ = nullptr;
    QStackedWidget* result_ = nullptr;
    ComparePane* pane_ = nullptr;
    std::vector<RichTextView*> summaries_;  ///< additions, deletions, changes
    DifferencePanel* panel_ = nullptr;
    ProgressCard* progress_ = nullptr;
    StatusBar* status_ = nullptr;
    PerSide<std::unique_ptr<RowsFollower>> followers_;
    std::unique_ptr<FindReplaceDialog> find_;
    RichTextView* last_focus_ = nullptr;
    RichTextView* finding_in_ = nullptr;
    ViewFilter filter_ = ViewFilter::All;
    bool settings_read_ = false;
    bool told_stale_ = false;
    bool started_ = false;  ///< a person chose to work, so the start page is over
    bool waiting_ = false;
};

/// Binds the commands of Compare Files to the page in front; nullptr: none is.
void BindCompareCommands(CommandSet& commands, std::function<CompareFilesPage*()> active);

}  // namespace zorvane
