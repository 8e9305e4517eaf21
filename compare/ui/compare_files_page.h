// The window of one Compare Files viewer: shows what the viewer says and asks what it asks.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <span>

#include <QPageLayout>
#include <QPointer>
#include <QWidget>

#include "common/ui/bars.h"
#include "common/ui/command_table.h"
#include "common/ui/theme.h"
#include "compare/compare_files_viewer.h"
#include "compare/ui/asked_passwords.h"
#include "compare/ui/compare_bar.h"
#include "compare/ui/compare_dialogs.h"
#include "compare/ui/compare_pane.h"
#include "compare/ui/difference_panel.h"
#include "compare/ui/editor_pair.h"
#include "compare/ui/file_row.h"
#include "compare/ui/fold_plan.h"
#include "compare/ui/option_pages.h"
#include "compare/ui/panel_room.h"
#include "compare/ui/result_head.h"
#include "compare/ui/result_verdict.h"
#include "compare/ui/run_announcer.h"
#include "compare/ui/start_page.h"
#include "compare/ui/viewer_page.h"
#include "compare/view/rows_follower.h"
#include "compare/view/spoken_difference.h"
#include "compare/viewer_window.h"
#include "load/file_type_options.h"

class QHBoxLayout;
class QPrinter;
class QStackedWidget;
class QVBoxLayout;

namespace zorvane {

class DropShade;
class ProgressCard;

/// What a page asks of the frame around it.
struct PageHost : ViewerHost {
    /// Two texts in a viewer of their own.
    std::function<void(const RichText& original, const RichText& modified)> compare_texts;
    /// The names of a workbook's sheets.
    std::function<Result<std::vector<std::string>>(const std::string& file,
                                                   const std::string& password)>
        sheet_names;
    /// Two folders were dropped.
    std::function<void(const PerSide<std::string>& folders)> compare_folders;
};

class CompareFilesPage : public QWidget, public CompareFilesWindow, public ViewerPage {
  public:
    /// All but the host is borrowed.
    CompareFilesPage(CommandSet& commands, Theme& theme, UiText text, PageHost host);
    ~CompareFilesPage() override;

    /// Makes the contents; once, before the viewer is set up. The viewer goes before this.
    void Connect(frmCompareFiles& viewer);
    frmCompareFiles* Viewer() const { return viewer_; }

    // ---- of the main window ----
    zorvane::Viewer* ShownViewer() const override { return viewer_; }
    /// "lease-2025.rtf vs. lease-2026.rtf".
    QString Caption() const override;
    QString Icon() const override { return QStringLiteral("compare"); }
    void Tick() override;
    void ShowWords() override;
    void MoveFocus(bool forward) override;
    void BeginInteractive() override;

    // ---- what a person does (compare_page_actions.cpp) ----
    /// Loads and compares as the options say, or what the editors hold.
    void Compare();
    /// Why it cannot be; empty: it can.
    std::string_view WhyNotCompare() const;
    void ChooseFile(Side side);
    void TakeFile(Side side, const QString& path);
    /// The same by its bytes, which need not be text.
    void TakePath(Side side, const std::string& path);
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
    void OptionChanged();
    // ---- dialogs (compare_page_dialogs.cpp) ----
    void ChooseFont();
    void AdvancedOptions();
    void ReportOptions();
    /// Of the file that the person works in.
    void OptionsOfThisFile();
    void ShowTypeOptions(FileTypeOptions type);
    FileTypeOptions OptionsOfSide(Side side) const;
    void RestoreDefaults();
    void CountKind(clsVarBoolean& ignored);
    void CountMoves();
    void CountFormatting();
    void CountNumbering();
    /// Counts every kind that is left out, and compares.
    void CountAllKinds();
    void OpenFind(bool replace);
    void FindAgain(bool forward);
    void CopyOver(std::int32_t record, Side from);
    void CompareSelected();
    void ReadAloud();
    void FocusList();
    /// The view that has the focus or had it last; never null while connected.
    RichTextView* FocusedView() const;
    bool IsEditor(const RichTextView* view) const;
    const CompareFilesView& Look() const { return viewer_->Settings().view; }
    /// What is chosen, as far as there is room for it.
    PaneLayout LayoutNow() const;
    ComparePane& Pane() { return *pane_; }
    EditorPair& Editors() { return *editors_; }
    CompareBar& Bar() { return *bar_; }
    ResultHead& Head() { return *head_; }
    DifferencePanel& Panel() { return *panel_; }
    FileRow& Files() { return *files_; }
    /// In place of the result: a verdict, or why there is none; nothing while there is a result.
    Card* ShownCard() const { return verdict_->Shown(); }
    MessageBar& ResultLine() { return *result_line_; }
    bool ShowsStart() const;
    /// One of the sides has a file, read or not.
    bool NamesFiles() const;

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
    bool ShowUnreadable(Side side, const std::vector<std::string>& reasons) override;
    bool ShowFileNews(const FileNotice& notice) override;

    // ---- files (compare_page_files.cpp) ----
    std::int32_t Choose(const WindowQuestion& question) override;
    std::string PickFile(FileQuestion& question) override;
    std::unique_ptr<PagePainter> PickPrinter(PrintQuestion& question) override;
    std::string DefaultPrinter() override;
    void SetDefaultPrinter(const std::string&) override {}
    void RefreshMargins() override;
    void RefreshFileList(Side side) override;
    void RefreshCaption() override;
    void SaveAs();
    void Print();
    void PrintPreview();
    /// The focused text on a printer that is ready, without a dialog.
    void PrintOn(QPrinter& paper);

  protected:
    void resizeEvent(QResizeEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    QWidget* MakeWork();
    QWidget* MakeContent();
    QWidget* MakeBelow();
    void MakeResult();
    void MakeOptions(QWidget* parent);
    void ConnectEditor(Side side);
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
    void ShowText(Side side, const RichText* text);
    void ShowCounts();
    void ShowIgnored();
    void ShowVerdict();
    void RestoreFocus();
    void CompareAgain();
    QStringList NotCompared() const;
    QStringList KindsOut() const;
    /// What gives way in the room that there is.
    void ApplyPlan();
    void ShareHeight();
    void SetRatio(double ratio);
    void ForgetNews();
    MessageBar& LineOf(Side side);
    void TellChanged(Side side, const FileNotice& notice);
    void TellGone(Side side, const FileNotice& notice);
    QPushButton* MakeStep(const char* words, std::function<void()> step);
    void FillList(const DifferenceList& list);
    void SelectByRows(Side side);
    void ShowPlaceInEditor(Side side, ParagraphNumber paragraph);
    void MarkHits();
    template <class Shown>
    bool EditOptions();
    template <class Shown>
    bool EditSettings();
    bool TextOptions();
    bool SheetOptions();
    void TellNotFresh();
    Card* MakeUnread(Side side, const std::vector<std::string>& reasons, UnreadSteps steps);
    void ShowTextMenu(RichTextView& view, QPoint place, CharPos at);
    void ShowMenu(std::span<const char* const> ids, QPoint place);
    void ConnectDrops();
    /// Tells the viewer which text the person works in.
    void TellActiveEditor();
    bool HasOwnSelection() const;
    QString PdfName() const;
    QString FolderToBrowse(Side side) const;
    void SavePdf();
    bool SetUpPages(QPrinter& printer);
    PaneTexts TextsOfPane() const;
    // For screen readers (compare_page_speech.cpp).
    QString Spoken(std::int32_t record, const SpokenRules& rules) const;
    void SayDifference(std::int32_t index);
    void SayRun(bool begins);
    void SayProgress();
    void NameSides();
    void ForViews(const std::function<void(RichTextView&)>& act);
    RichTextView* ViewOf(ShownEditor editor) const;

    CommandSet& commands_;
    Theme& theme_;
    UiText text_;
    PageHost host_;
    frmCompareFiles* viewer_ = nullptr;
    PerSide<RichDocument> shown_texts_;  ///< what the result pane shows, without marks
    PerSide<SharedText> texts_shown_;    ///< what it was made from
    QStackedWidget* rooms_ = nullptr;    ///< start page or work
    StartPage* start_ = nullptr;
    CompareBar* bar_ = nullptr;
    OptionArea* options_ = nullptr;
    CompareOptionsPage* compare_options_ = nullptr;
    ReportOptionsPage* report_options_ = nullptr;
    ViewOptionsPage* view_options_ = nullptr;
    PanelRoom* room_ = nullptr;
    QHBoxLayout* top_line_ = nullptr;  ///< files, and where room is short the result's head
    QVBoxLayout* below_rows_ = nullptr;
    FileRow* files_ = nullptr;
    Splitter* splitter_ = nullptr;
    EditorPair* editors_ = nullptr;
    QWidget* below_ = nullptr;
    ResultHead* head_ = nullptr;
    MessageBar* result_line_ = nullptr;
    CardGround* verdict_ = nullptr;
    QStackedWidget* result_ = nullptr;
    std::int32_t hourglasses_ = 0;  ///< how many want the busy pointer
    ComparePane* pane_ = nullptr;
    std::vector<RichTextView*> summaries_;  ///< additions, deletions, changes
    DifferencePanel* panel_ = nullptr;
    ProgressCard* progress_ = nullptr;
    StatusBar* status_ = nullptr;
    DropShade* shade_ = nullptr;
    QPrinter* paper_ = nullptr;                ///< while it is printed on without a dialog
    std::optional<QPageLayout> paper_layout_;  ///< as it was chosen last
    AskedPasswords passwords_;
    PerSide<std::unique_ptr<RowsFollower>> followers_;
    std::unique_ptr<FindReplaceDialog> find_;
    RichTextView* last_focus_ = nullptr;
    PerSide<TextRange> walked_to_;   ///< what the walk selected last
    QPointer<QWidget> focus_after_;  ///< of the run under way
    RichTextView* finding_in_ = nullptr;
    ViewFilter filter_ = ViewFilter::All;
    FoldPlan plan_;
    KindCounts kinds_;
    std::vector<std::string> missing_;  ///< what a run told of files that are not there
    double editors_share_ = 0;          ///< of the height, until there is one; 0: it has been given
    bool folded_ = false;               ///< as the pane has it
    bool editors_wanted_ = false;       ///< though the room is short
    bool settings_read_ = false;
    bool told_stale_ = false;
    bool started_ = false;  ///< a person chose to work, so the start page is over
    bool waiting_ = false;
    bool has_verdict_ = false;  ///< of the run under way
    std::unique_ptr<RunAnnouncer> announcer_;
};

/// Binds the commands of Compare Files to the page in front; nullptr: none is.
void BindCompareCommands(CommandSet& commands, std::function<CompareFilesPage*()> active);

}  // namespace zorvane
