// Draws the window of Compare Folders to PNG files, to be looked at:
//   QT_QPA_PLATFORM=offscreen zv_folder_pictures original modified folder [language language-files]
#include <QApplication>
#include <QHeaderView>
#include <QMenu>

#include "tests/ui/picture_saver.h"
#include "tests/ui/window_world.h"

namespace zorvane {
namespace {

class FolderPictures {
  public:
    FolderPictures(Theme& theme, const PictureRun& run) : theme_(theme), saver_(run.folder) {
        run.ChooseLanguage(fakes_.folder.Path());
    }

    bool Draw(const std::string& original, const std::string& modified) {
        WindowWorld world(fakes_, theme_);
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
        theme_.Force(HighContrast());
        Save(window, "12-folders-contrast");
        theme_.Force(ColorTokens::Light());
        for (const int tab : {0, 1}) {
            page.ShowOptions(tab);
            Save(window, "11-folders-options-" + std::to_string(tab));
        }
        page.SetOptionsUnfolded(false);
        for (const auto tab : {PairOptionsDialog::Tab::Compare, PairOptionsDialog::Tab::Report}) {
            page.ShowTextOptions(tab);
            Save(*page.TextOptions(),
                 "11-folders-pair-options-" + std::to_string(static_cast<int>(tab)));
        }
        page.TextOptions()->close();
        window.Commands().Run("view.show_changes");
        window.resize(1000, 700);
        Save(window, "11-folders-changed");
        window.Commands().Run("view.show_all");
        Q_EMIT page.Grid().horizontalHeader()->sectionClicked(0);
        window.resize(700, 480);
        Save(window, "11-folders-small");
        return saver_.AllSaved();
    }

  private:
    void Save(QWidget& widget, const std::string& name) { saver_.Save(widget, name); }

    FakePlatform fakes_;
    Theme& theme_;
    PictureSaver saver_;
};

}  // namespace
}  // namespace zorvane

int main(int argc, char** argv) {
    return zorvane::DrawPair(argc, argv, [](zorvane::Theme& theme, const zorvane::PictureRun& run) {
        return zorvane::FolderPictures(theme, run).Draw(run.original, run.modified);
    });
}
