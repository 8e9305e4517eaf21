// Draws the window of Find Text In Files to PNG files, to be looked at:
//   QT_QPA_PLATFORM=offscreen zv_find_pictures folder text pictures [language language-files]
#include <QApplication>
#include <QMenu>

#include "tests/ui/picture_saver.h"
#include "tests/ui/window_world.h"

namespace zorvane {
namespace {

class FindPictures {
  public:
    FindPictures(Theme& theme, const PictureRun& run) : theme_(theme), saver_(run.folder) {
        run.ChooseLanguage(fakes_.folder.Path());
    }

    bool Draw(const std::string& folder, const std::string& text) {
        WindowWorld world(fakes_, theme_);
        MainWindow& window = world.window;
        window.showNormal();
        window.resize(1280, 800);
        theme_.Force(ColorTokens::Light());
        window.Commands().Run("window.new_find");
        FindPage& page = *window.ActiveFind();
        Save(window, "13-find-empty");
        FindEntries entries = page.Entries();
        entries.cbSearchFor = text;
        entries.cbDirectory = folder;
        entries.cbSupportOfficeDocs = true;
        page.SetEntries(entries);
        page.Find();
        if (!WindowWorld::Until([&] { return !page.Viewer()->CanAbort(); }))
            return false;
        window.Commands().Run("go.next");
        page.Viewer()->FinishReading();
        Save(window, "13-find-light");
        theme_.Force(ColorTokens::Dark());
        Save(window, "13-find-dark");
        theme_.Force(HighContrast());
        Save(window, "13-find-contrast");
        theme_.Force(ColorTokens::Light());
        DrawParts(window, page);
        return saver_.AllSaved();
    }

  private:
    void DrawParts(MainWindow& window, FindPage& page) {
        page.MarkCurrent();
        QMenu* menu = page.MakeMenu();
        menu->popup(window.mapToGlobal(QPoint(700, 280)));
        Save(*menu, "13-find-menu");
        menu->close();
        window.Commands().Run("find.signs");
        Save(window, "13-find-signs");
        page.Picker().hide();
        for (const int tab : {0, 1}) {
            page.ShowOptions(tab);
            Save(window, "13-find-options-" + std::to_string(tab));
        }
        page.SetOptionsUnfolded(false);
        for (const QSize size :
             {QSize(1600, 900), QSize(900, 600), QSize(700, 480), QSize(480, 480)}) {
            window.resize(size);
            Save(window, "13-find-" + std::to_string(size.width()));
        }
        window.resize(1280, 800);
        FindEntries entries = page.Entries();
        entries.cbSearchFor = "no such words at all";
        entries.cbCaseSensitive = true;
        entries.cbLookInSubfolders = false;
        page.SetEntries(entries);
        page.Find();
        WindowWorld::Until([&] { return !page.Viewer()->CanAbort(); });
        Save(window, "13-find-nothing");
    }
    void Save(QWidget& widget, const std::string& name) { saver_.Save(widget, name); }

    FakePlatform fakes_;
    Theme& theme_;
    PictureSaver saver_;
};

}  // namespace
}  // namespace zorvane

int main(int argc, char** argv) {
    return zorvane::DrawPair(argc, argv, [](zorvane::Theme& theme, const zorvane::PictureRun& run) {
        return zorvane::FindPictures(theme, run).Draw(run.original, run.modified);
    });
}
