// Draws the window of Compare Folders to PNG files, to be looked at:
//   QT_QPA_PLATFORM=offscreen zv_folder_pictures original modified folder
#include <iostream>

#include <QApplication>
#include <QHeaderView>
#include <QMenu>

#include "tests/ui/window_world.h"

namespace zorvane {
namespace {

class FolderPictures {
  public:
    FolderPictures(Theme& theme, std::string folder) : theme_(theme), folder_(std::move(folder)) {}

    bool Draw(const std::string& original, const std::string& modified) {
        FakePlatform fakes;
        WindowWorld world(fakes, theme_);
        MainWindow& window = world.window;
        window.showNormal();
        window.resize(1280, 800);
        theme_.Force(ColorTokens::Light());
        window.Commands().Run("window.new_compare_folders");
        CompareFoldersPage& page = *window.ActiveFolders();
        Save(window, "11-folders-empty");
        page.Viewer()->ClickContentCompareText(true);
        window.OpenFiles({original, modified});
        if (!WindowWorld::Until([&] { return page.Viewer()->CanReport(); }))
            return false;
        page.Grid().setCurrentIndex(page.Table().index(1, 1));
        Save(window, "11-folders-light");
        QMenu* menu = page.MakeMenu();
        menu->popup(window.mapToGlobal(QPoint(700, 280)));
        Save(*menu, "11-folders-menu");
        menu->close();
        theme_.Force(ColorTokens::Dark());
        page.Errors().SetUnfolded(true);
        Save(window, "12-folders-dark");
        page.Errors().SetUnfolded(false);
        theme_.Force(ColorTokens::Light());
        for (const int tab : {0, 1}) {
            page.ShowOptions(tab);
            Save(window, "11-folders-options-" + std::to_string(tab));
        }
        page.SetOptionsUnfolded(false);
        window.Commands().Run("view.show_changes");
        window.resize(1000, 700);
        Save(window, "11-folders-changed");
        window.Commands().Run("view.show_all");
        Q_EMIT page.Grid().horizontalHeader()->sectionClicked(0);
        window.resize(700, 480);
        Save(window, "11-folders-small");
        return saved_;
    }

  private:
    void Save(QWidget& widget, const std::string& name) {
        QTest::qWait(60);
        const std::string ratio = widget.devicePixelRatio() > 1 ? "-2x" : "";
        saved_ = widget.grab().save(ToQt(folder_ + "/" + name + ratio + ".png")) && saved_;
    }

    Theme& theme_;
    std::string folder_;
    bool saved_ = true;
};

}  // namespace
}  // namespace zorvane

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    zorvane::Theme theme(application);
    if (argc < 4) {
        std::cerr << "usage: zv_folder_pictures original modified folder\n";
        return 2;
    }
    return zorvane::FolderPictures(theme, argv[3]).Draw(argv[1], argv[2]) ? 0 : 1;
}
