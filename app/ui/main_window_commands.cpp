// What the commands of the frame do.
#include <algorithm>

#include <QApplication>
#include <QMenuBar>
#include <QWhatsThis>

#include "app/ui/about_dialog.h"
#include "app/ui/main_window.h"
#include "app/ui/rescued_edits.h"
#include "common/installed_data.h"
#include "common/platform/system_name.h"
#include "common/ui/question.h"
#include "common/ui/toolkit_texts.h"
#include "common/ui/widget_words.h"
#include "find/ui/find_commands.h"
#include "folders/ui/folder_commands.h"

namespace zorvane {

void MainWindow::BindCommands() {
    BindWindows();
    BindHelp();
    BindCompareCommands(*commands_, [this] { return ActivePage(); });
    BindFolderCommands(*commands_, [this] { return ActiveFolders(); });
    BindFindCommands(*commands_, [this] { return ActiveFind(); });
}

void MainWindow::BindWindows() {
    const auto one = [this]() -> std::string_view {
        return area_ != nullptr && !area_->Pages().empty() ? "" : "No window is open";
    };
    const auto two = [this]() -> std::string_view {
        return area_ != nullptr && area_->Pages().size() > 1 ? "" : "There is no other window";
    };
    commands_->Bind("window.new_compare_files",
                    {.run = [this] { frame_->CreateNewCompareFilesForm(); }});
    commands_->Bind("window.show_compare_files",
                    {.run = [this] { ShowFirst(ViewerKind::CompareFiles); }});
    commands_->Bind("window.new_compare_folders",
                    {.run = [this] { frame_->CreateNewCompareFoldersForm(); }});
    commands_->Bind("window.show_compare_folders",
                    {.run = [this] { ShowFirst(ViewerKind::CompareFolders); }});
    commands_->Bind("window.new_find", {.run = [this] { frame_->CreateNewFindTextForm(); }});
    commands_->Bind("window.show_find", {.run = [this] { ShowFirst(ViewerKind::FindText); }});
    commands_->Bind("window.close", {.run =
                                         [this] {
                                             if (ViewerPage* page = ActiveViewerPage())
                                                 frame_->CloseViewer(*page->ShownViewer());
                                         },
                                     .why_not = one});
    commands_->Bind("app.quit", {.run = [this] { frame_->CloseFrame(); }});
    commands_->Bind("window.next", {.run = [this] { area_->ShowNext(1); }, .why_not = two});
    commands_->Bind("window.previous", {.run = [this] { area_->ShowNext(-1); }, .why_not = two});
    commands_->Bind("window.cascade", {.run = [this] { area_->Cascade(); }, .why_not = one});
    commands_->Bind("window.tile", {.run = [this] { area_->Tile(); }, .why_not = one});
    // The translator stays as it is while a run asks it.
    commands_->Bind("app.language", {.run = [this] { ChooseLanguageNow(); },
                                     .why_not = [this]() -> std::string_view {
                                         return AnyBusy() ? "A run goes on" : "";
                                     }});
    commands_->Bind("app.full_screen",
                    {.run = [this] { setWindowState(windowState() ^ Qt::WindowFullScreen); },
                     .is_on = [this] { return isFullScreen(); }});
    const auto pane = [this](bool forward) {
        if (ViewerPage* page = ActiveViewerPage())
            page->MoveFocus(forward);
    };
    commands_->Bind("go.next_pane", {.run = [pane] { pane(true); }, .why_not = one});
    commands_->Bind("go.previous_pane", {.run = [pane] { pane(false); }, .why_not = one});
    commands_->Bind("go.menus", {.run = [this] {
                        const QList<QAction*> menus = menuBar()->actions();
                        menuBar()->setFocus(Qt::MenuBarFocusReason);
                        if (!menus.isEmpty())
                            menuBar()->setActiveAction(menus.front());
                    }});
}

void MainWindow::BindHelp() {
    commands_->Bind("help.contents", {.run = [this] { OpenPath(process_.sHelpFile); }});
    commands_->Bind("help.what_is_this", {.run = [] { QWhatsThis::enterWhatsThisMode(); }});
    commands_->Bind("help.palette", {.run = [this] { palette_->Open(); }});
    commands_->Bind("help.example", {.run = [this] { OpenExample(); }});
    // What leads nowhere is not offered.
    for (const char* page : {"help.online", "help.home_page", "help.updates"})
        commands_->Bind(page, {.run = [this] { OpenPath(process_.sHelpWebRoot); },
                               .why_not = [this]() -> std::string_view {
                                   return process_.sHelpWebRoot.empty()
                                              ? "There is no page on the web yet"
                                              : "";
                               }});
    commands_->Bind("help.about", {.run = [this] { About(); }});
}

void MainWindow::ShowFirst(ViewerKind kind) {
    Viewer* viewer = kind == ViewerKind::FindText         ? frame_->frmGetFTNumber(1)
                     : kind == ViewerKind::CompareFolders ? frame_->frmGetCDNumber(1)
                                                          : frame_->frmGetCFNumber(1);
    if (viewer != nullptr)
        frame_->Activate(*viewer);
}

void MainWindow::OpenPath(const std::string& path) {
    const Status opened = process_.platform.shell->Open(path);
    if (!opened.ok())
        ShowMessage(opened.failure().reason);
}

void MainWindow::OpenExample() {
    OpenPair(InstalledData(*process_.platform.folders, "examples/lease-2025.rtf"),
             InstalledData(*process_.platform.folders, "examples/lease-2026.rtf"));
}

void MainWindow::RescueEdits() {
    const RescuedEdits rescued(process_.gsDataFolder);
    for (const ViewerPage* page : OpenPages()) {
        if (auto* viewer = dynamic_cast<frmCompareFiles*>(page->ShownViewer()))
            rescued.Keep(*viewer);
    }
}

void MainWindow::TellRescued() {
    const RescuedEdits rescued(process_.gsDataFolder);
    QStringList names;
    for (const std::string& name : rescued.TakeUntold())
        names.append(ToQt(name));
    if (names.isEmpty())
        return;
    const QString text =
        text_("The program ended before these edits were saved. They were kept as rich text.");
    constexpr int kShow = 1;
    if (Ask({.title = text_("Unsaved edits"),
             .text = text + QStringLiteral("\n\n") + names.join(u'\n'),
             .choices = {text_("Continue"), text_("Show the Folder")},
             .usual = kShow},
            this) == kShow)
        OpenPath(rescued.Folder());
}

bool MainWindow::AnyBusy() const {
    const std::vector<ViewerPage*> open = OpenPages();
    return std::any_of(open.begin(), open.end(),
                       [](const ViewerPage* page) { return page->ShownViewer()->Busy(); });
}

// Here windows need not wait for the next start, so the user is not told to.
void MainWindow::ChooseLanguageNow() {
    bool notify = false;
    if (!ChooseLanguage(process_, *this, notify))
        return;
    InitializeTranslator(process_, this);
    ApplyLanguageFont(process_.translator.gsLanguageFont);
    ShowToolkitIn(process_.translator.gsLanguage);
    ShowLanguage();
}

void MainWindow::ShowLanguage() {
    const ShownTexts before =
        std::exchange(shown_texts_, shown_texts_.InLanguageOf([this](const std::string& english) {
            return process_.Translate(english);
        }));
    commands_->Retranslate();
    TranslateWidgets(*this, process_.translator, before);
    for (ViewerPage* page : OpenPages())
        page->ShowWords();
    ShowCaptions();
}

void MainWindow::About() {
    ShowAbout({.version = QStringLiteral(ZORVANE_VERSION),
               .system = ToQt(OperatingSystemName()),
               .settings_file = ToQt(process_.gsSettingsFile)},
              text_, this);
}

}  // namespace zorvane
