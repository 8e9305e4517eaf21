// The window of the frame: menus, the area of the viewers, and what the frame asks of it.
#pragma once

#include <memory>

#include <QMainWindow>
#include <QTimer>

#include "app/main_frame.h"
#include "app/ui/work_area.h"
#include "common/choose_language.h"
#include "common/process_state.h"
#include "common/ui/command_palette.h"
#include "common/ui/command_table.h"
#include "common/ui/shown_texts.h"
#include "common/ui/theme.h"
#include "compare/ui/compare_files_page.h"
#include "find/ui/find_page.h"
#include "folders/ui/compare_folders_page.h"

namespace zorvane {

class MainWindow : public QMainWindow, public FrameWindow, public LanguageQuestions {
  public:
    MainWindow(ProcessState& process, Theme& theme);
    ~MainWindow() override;

    /// The frame of this window; before anything else. Borrowed, and goes before this.
    void SetFrame(frmMainMDI& frame);
    /// The viewers of a program with windows.
    ViewerFactories Viewers();
    /// Runs go on beside the windows from here on, and the frame is polled.
    void BeginInteractive();
    /// The same for a program that nobody has opened a window of yet.
    void BeginInBackground() { poll_.start(); }
    /// Messages go to standard error from here on: nobody could close a box.
    void HaveNoDisplay() { has_display_ = false; }
    /// Compares two folders in a viewer of their own; the empty one of a fresh session goes.
    void OpenFolders(const PerSide<std::string>& folders);
    /// Compares two files in the viewer in front, or a new one.
    void OpenPair(const std::string& original, const std::string& modified);
    /// As on a command line: two files, or one, the original.
    void OpenFiles(std::vector<std::string> files);
    /// The window in front, of whatever kind; nullptr: none is, or its viewer has gone.
    ViewerPage* ActiveViewerPage() const;
    /// The same where it is one of that kind.
    CompareFilesPage* ActivePage() const;
    CompareFoldersPage* ActiveFolders() const;
    FindPage* ActiveFind() const;
    CommandSet& Commands() { return *commands_; }
    /// Writes what is not saved where the next start finds it; the display has gone.
    void RescueEdits();
    /// Tells of what was written so.
    void TellRescued();
    CommandPalette& Palette() { return *palette_; }

    // ---- of the frame ----
    void Load() override;
    WindowState State() const override;
    void SetState(WindowState state) override;
    FrameRectangle Rectangle() const override;
    void SetRectangle(const FrameRectangle& rectangle) override;
    void ViewersChanged() override;
    void CloseDialogs() override;
    void ShowMessage(const std::string& message) override;
    void EndProgram() override;

    // ---- of the language's choice ----
    LanguageChoice AskLanguage(const LanguageList& offered, const std::string& font) override;
    void ShowInformation(const std::string& text, const std::string& caption) override;

  protected:
    void closeEvent(QCloseEvent* event) override;

  private:
    void BindCommands();
    void BindWindows();
    void BindHelp();
    MadeViewer MakeViewer(const CommandLineRequest& request);
    MadeViewer MakeFoldersViewer(const CommandLineRequest& request);
    MadeViewer MakeFindViewer();
    void FillHost(ViewerHost& host);
    PageHost HostOfFiles();
    void BringToFront(QWidget& page);
    /// The viewers' windows, but for those whose viewer has gone.
    std::vector<ViewerPage*> OpenPages() const;
    void CompareFiles(const PerSide<std::string>& files, bool new_window);
    void CompareFolders(const PerSide<std::string>& folders);
    void CompareTexts(const RichText& original, const RichText& modified);
    CompareFilesPage* FreePage();
    void OpenExample();
    void OpenPath(const std::string& path);
    void Tick();
    void ShowCaptions();
    void ShareCommands();
    void ShowFirst(ViewerKind kind);
    void ChooseLanguageNow();
    void ShowLanguage();
    bool AnyBusy() const;
    void About();
    void RefreshLater();

    ProcessState& process_;
    Theme& theme_;
    ShownTexts shown_texts_;
    UiText text_;
    frmMainMDI* frame_ = nullptr;
    CommandSet* commands_ = nullptr;
    CommandPalette* palette_ = nullptr;
    WorkArea* area_ = nullptr;
    QTimer poll_;
    QTimer refresh_;
    bool loaded_ = false;
    bool ended_ = false;
    bool has_display_ = true;
};

}  // namespace zorvane
