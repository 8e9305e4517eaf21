// Draws the main window to PNG files, to be looked at:
//   QT_QPA_PLATFORM=offscreen zv_window_pictures original modified folder
#include <QAbstractItemView>
#include <QApplication>
#include <QDir>
#include <QFile>

#include "tests/ui/picture_saver.h"
#include "tests/ui/window_world.h"

namespace zorvane {
namespace {

class Pictures {
  public:
    Pictures(Theme& theme, std::string folder) : theme_(theme), saver_(std::move(folder)) {}

    bool Draw(const std::string& original, const std::string& modified) {
        FakePlatform fakes;
        LinkConverter(fakes);
        WindowWorld world(fakes, theme_);
        MainWindow& window = world.window;
        window.showNormal();
        window.resize(1440, 900);
        theme_.Force(ColorTokens::Light());
        Save(window, "01-start");
        if (!world.Compare(original, modified))
            return false;
        world.Page().SetFolded(true);
        world.Viewer().ShowDifferenceNext();
        Save(window, "02-compare");
        theme_.Force(ColorTokens::Dark());
        Save(window, "03-compare-dark");
        world.Page().Bar().List().showPopup();
        Save(*world.Page().Bar().List().view()->window(), "03-list-dark");
        world.Page().Bar().List().hidePopup();
        theme_.Force(ColorTokens::Light());
        world.Page().SetOptionsUnfolded(true);
        for (const int tab : {0, 1, 2}) {
            world.Page().ShowOptions(tab);
            Save(window, "04-options-" + std::to_string(tab));
        }
        world.Page().SetOptionsUnfolded(false);
        world.Page().SetLayout(PaneLayout::Result);
        world.Page().SetPanel(true);
        Save(window, "05-result-panel");
        world.Page().SetPanel(false);
        world.Page().SetLayout(PaneLayout::EditorsAndResult);
        window.resize(1000, 700);
        Save(window, "07-small");
        window.resize(1440, 900);
        theme_.Force(ColorTokens::Dark());
        world.Viewer().cmdChangeViewFormat_Click();
        WindowWorld::Until([&] { return !world.Viewer().Busy(); });
        Save(window, "08-all-in-one-dark");
        theme_.Force(ColorTokens::Light());
        world.Viewer().cmdChangeViewFormat_Click();
        WindowWorld::Until([&] { return !world.Viewer().Busy(); });
        world.Viewer().Options().bIgnoreCase.SetData(true);
        world.Page().SetLayout(PaneLayout::Result);
        if (!world.Compare(original, original))
            return false;
        Save(window, "10-no-differences");
        world.Page().SetLayout(PaneLayout::EditorsAndResult);
        world.Page().TakeFile(Side::Modified, QStringLiteral("/nowhere/draft 4.docx"));
        world.Page().Compare();
        WindowWorld::Until([&] { return !world.Viewer().Busy(); });
        Save(window, "10-unread");
        world.frame.CreateNewCompareFilesForm();
        Save(window, "10-tabs");
        window.Commands().Run("window.tile");
        Save(window, "11-tile");
        window.Palette().Open();
        window.Palette().Line().setText(QStringLiteral("fold"));
        Save(window, "16-palette");
        window.Palette().Close();
        return saver_.AllSaved();
    }

  private:
    // So that documents of any kind can be drawn.
    static void LinkConverter(FakePlatform& fakes) {
        const QString folder = ToQt(fakes.platform.folders->ProgramFolder());
        QDir().mkpath(folder);
        QFile::link(QApplication::applicationDirPath() + QStringLiteral("/../../zorvane-convert"),
                    folder + QStringLiteral("/zorvane-convert"));
    }
    void Save(QWidget& widget, const std::string& name) { saver_.Save(widget, name); }

    Theme& theme_;
    PictureSaver saver_;
};

}  // namespace
}  // namespace zorvane

int main(int argc, char** argv) {
    return zorvane::DrawPair(argc, argv, [](zorvane::Theme& theme, const zorvane::PictureRun& run) {
        return zorvane::Pictures(theme, run.folder).Draw(run.original, run.modified);
    });
}
