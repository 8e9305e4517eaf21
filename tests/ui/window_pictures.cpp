// Draws windows to PNG files, to be looked at; "find" takes a folder and a text in place of the
// files:
//   QT_QPA_PLATFORM=offscreen zv_window_pictures compare|dialogs|find|folders
//       original modified folder [language language-files]
#include <filesystem>
#include <fstream>
#include <iostream>

#include <QAbstractItemView>
#include <QApplication>
#include <QHeaderView>
#include <QMenu>

#include "common/ui/progress_card.h"
#include "tests/ui/pictures.h"

namespace zorvane {
namespace {

/// White on black, as some people set their desktop.
ColorTokens HighContrast() {
    QPalette contrast;
    contrast.setColor(QPalette::Window, Qt::black);
    contrast.setColor(QPalette::Base, Qt::black);
    contrast.setColor(QPalette::WindowText, Qt::white);
    contrast.setColor(QPalette::Text, Qt::white);
    return ColorTokens::FromPalette(contrast);
}

void SaveMenu(PictureRun& run, QMenu& menu, const std::string& name) {
    menu.popup(run.world.window.mapToGlobal(QPoint(700, 280)));
    run.Save(menu, name);
    menu.close();
}

void DrawOverlays(PictureRun& run) {
    MainWindow& window = run.world.window;
    auto* progress = window.findChild<ProgressCard*>();
    progress->Begin(QStringLiteral("Comparing the documents"));
    progress->SetProgress(46.2, QStringLiteral("Document: 46.2 % Done."));
    progress->show();
    run.Save(window, "09-progress");
    progress->End();
    SaveMenu(run, *window.Commands().Menu("&View"), "09-menu");
}

bool DrawEnds(PictureRun& run) {
    WindowWorld& world = run.world;
    world.Viewer().Options().bIgnoreCase.SetData(true);
    world.Page().SetLayout(PaneLayout::Result);
    if (!world.Compare(run.original, run.original))
        return false;
    run.Save(world.window, "10-no-differences");
    world.Page().SetLayout(PaneLayout::EditorsAndResult);
    world.Page().TakeFile(Side::Modified, QStringLiteral("/nowhere/draft 4.docx"));
    world.Page().Compare();
    WindowWorld::Until([&] { return !world.Viewer().Busy(); });
    run.Save(world.window, "10-unread");
    world.frame.CreateNewCompareFilesForm();
    run.Save(world.window, "10-tabs");
    world.window.Commands().Run("window.tile");
    run.Save(world.window, "11-tile");
    world.window.Palette().Open();
    world.window.Palette().Line().setText(QStringLiteral("fold"));
    run.Save(world.window, "16-palette");
    world.window.Palette().Close();
    return true;
}

void DrawFindParts(PictureRun& run, FindPage& page) {
    MainWindow& window = run.world.window;
    page.MarkCurrent();
    SaveMenu(run, *page.MakeMenu(), "13-find-menu");
    window.Commands().Run("find.signs");
    run.Save(window, "13-find-signs");
    page.Picker().hide();
    for (const int tab : {0, 1}) {
        page.ShowOptions(tab);
        run.Save(window, "13-find-options-" + std::to_string(tab));
    }
    page.SetOptionsUnfolded(false);
    for (const QSize size : {QSize(1600, 900), QSize(900, 600), QSize(700, 480), QSize(480, 480)}) {
        window.resize(size);
        run.Save(window, "13-find-" + std::to_string(size.width()));
    }
    window.resize(1280, 800);
    FindEntries entries = page.Entries();
    entries.cbSearchFor = "no such words at all";
    entries.cbCaseSensitive = true;
    entries.cbLookInSubfolders = false;
    page.SetEntries(entries);
    page.Find();
    WindowWorld::Until([&] { return !page.Viewer()->CanAbort(); });
    run.Save(window, "13-find-nothing");
}

/// As a person who chose it the day before.
void ChooseLanguage(const std::string& user_folder, const std::string& language,
                    const std::string& language_files) {
    namespace fs = std::filesystem;
    const fs::path home = fs::path(user_folder) / "26" / "Tarnwick, Inc" / "Zorvane";
    const std::string name = language + "-Zorvane.txt";
    fs::create_directories(home / "Languages");
    fs::copy_file(fs::path(language_files) / name, home / "Languages" / name);
    std::ofstream(home / "Zorvane.INI") << "[Language]\r\nLanguage_Code=" << language << "\r\n";
}

/// So that documents of any kind can be drawn.
void LinkConverter(FakePlatform& fakes) {
    namespace fs = std::filesystem;
    const fs::path folder = fakes.platform.folders->ProgramFolder();
    const fs::path built = QApplication::applicationDirPath().toStdString() + "/../..";
    fs::create_directories(folder);
    fs::create_symlink(built / "zorvane-convert", folder / "zorvane-convert");
}

}  // namespace

bool DrawCompare(PictureRun& run) {
    WindowWorld& world = run.world;
    MainWindow& window = world.window;
    run.Save(window, "01-start");
    if (!world.Compare(run.original, run.modified))
        return false;
    world.Page().SetFolded(true);
    world.Viewer().ShowDifferenceNext();
    run.Save(window, "02-compare");
    run.theme.Force(ColorTokens::Dark());
    run.Save(window, "03-compare-dark");
    world.Page().Bar().List().showPopup();
    run.Save(*world.Page().Bar().List().view()->window(), "03-list-dark");
    world.Page().Bar().List().hidePopup();
    run.theme.Force(ColorTokens::Light());
    world.Page().SetOptionsUnfolded(true);
    for (const int tab : {0, 1, 2}) {
        world.Page().ShowOptions(tab);
        run.Save(window, "04-options-" + std::to_string(tab));
    }
    world.Page().SetOptionsUnfolded(false);
    world.Page().SetLayout(PaneLayout::Result);
    world.Page().SetPanel(true);
    run.Save(window, "05-result-panel");
    world.Page().SetPanel(false);
    world.Page().SetLayout(PaneLayout::EditorsAndResult);
    window.resize(1000, 700);
    run.Save(window, "07-small");
    window.resize(1440, 900);
    run.theme.Force(ColorTokens::Dark());
    world.Viewer().cmdChangeViewFormat_Click();
    WindowWorld::Until([&] { return !world.Viewer().Busy(); });
    run.Save(window, "08-all-in-one-dark");
    run.theme.Force(ColorTokens::Light());
    world.Viewer().cmdChangeViewFormat_Click();
    WindowWorld::Until([&] { return !world.Viewer().Busy(); });
    DrawOverlays(run);
    return DrawEnds(run);
}

bool DrawFind(PictureRun& run) {
    MainWindow& window = run.world.window;
    window.resize(1280, 800);
    window.Commands().Run("window.new_find");
    FindPage& page = *window.ActiveFind();
    run.Save(window, "13-find-empty");
    FindEntries entries = page.Entries();
    entries.cbSearchFor = run.modified;
    entries.cbDirectory = run.original;
    entries.cbSupportOfficeDocs = true;
    page.SetEntries(entries);
    page.Find();
    if (!WindowWorld::Until([&] { return !page.Viewer()->CanAbort(); }))
        return false;
    window.Commands().Run("go.next");
    page.Viewer()->FinishReading();
    run.Save(window, "13-find-light");
    run.theme.Force(ColorTokens::Dark());
    run.Save(window, "13-find-dark");
    run.theme.Force(HighContrast());
    run.Save(window, "13-find-contrast");
    run.theme.Force(ColorTokens::Light());
    DrawFindParts(run, page);
    return true;
}

bool DrawFolders(PictureRun& run) {
    MainWindow& window = run.world.window;
    window.resize(1280, 800);
    window.Commands().Run("window.new_compare_folders");
    CompareFoldersPage& page = *window.ActiveFolders();
    run.Save(window, "11-folders-empty");
    page.Viewer()->ClickContentCompareText(true);
    window.OpenFiles({run.original, run.modified});
    if (!WindowWorld::Until([&] { return page.Viewer()->CanReport(); }))
        return false;
    page.Grid().setCurrentIndex(page.Table().index(1, 1));
    run.Save(window, "11-folders-light");
    SaveMenu(run, *page.MakeMenu(), "11-folders-menu");
    run.theme.Force(ColorTokens::Dark());
    page.Errors().SetUnfolded(true);
    run.Save(window, "12-folders-dark");
    page.Errors().SetUnfolded(false);
    run.theme.Force(HighContrast());
    run.Save(window, "12-folders-contrast");
    run.theme.Force(ColorTokens::Light());
    for (const int tab : {0, 1}) {
        page.ShowOptions(tab);
        run.Save(window, "11-folders-options-" + std::to_string(tab));
    }
    page.SetOptionsUnfolded(false);
    for (const auto tab : {PairOptionsDialog::Tab::Compare, PairOptionsDialog::Tab::Report}) {
        page.ShowTextOptions(tab);
        run.Save(*page.TextOptions(),
                 "11-folders-pair-options-" + std::to_string(static_cast<int>(tab)));
    }
    page.TextOptions()->close();
    window.Commands().Run("view.show_changes");
    window.resize(1000, 700);
    run.Save(window, "11-folders-changed");
    window.Commands().Run("view.show_all");
    Q_EMIT page.Grid().horizontalHeader()->sectionClicked(0);
    window.resize(700, 480);
    run.Save(window, "11-folders-small");
    return true;
}

}  // namespace zorvane

int main(int argc, char** argv) {
    using namespace zorvane;
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    Theme theme(application);
    const std::string kind = argc == 5 || argc == 7 ? argv[1] : "";
    bool (*draw)(PictureRun&) = kind == "compare"   ? DrawCompare
                                : kind == "dialogs" ? DrawDialogs
                                : kind == "find"    ? DrawFind
                                : kind == "folders" ? DrawFolders
                                                    : nullptr;
    if (draw == nullptr) {
        std::cerr << "usage: " << argv[0]
                  << " compare|dialogs|find|folders original modified folder [language files]\n";
        return 2;
    }
    FakePlatform fakes;
    LinkConverter(fakes);
    if (argc == 7)
        ChooseLanguage(fakes.folder.Path(), argv[5], argv[6]);
    WindowWorld world(fakes, theme);
    world.window.showNormal();
    world.window.resize(1440, 900);
    theme.Force(ColorTokens::Light());
    PictureRun run{theme, world, argv[2], argv[3], argv[4]};
    return draw(run) && run.saved ? 0 : 1;
}
