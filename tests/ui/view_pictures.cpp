// Draws the views of two RTF files to PNG files, to be looked at:
//   QT_QPA_PLATFORM=offscreen zv_view_pictures original.rtf modified.rtf folder [scale]
#include <iostream>
#include <string>

#include <QApplication>
#include <QFont>

#include "common/ui/qt_text.h"
#include "compare/engine/compare_texts.h"
#include "compare/ui/compare_pane.h"

namespace zorvane {
namespace {

bool SavePicture(ComparePane& pane, const std::string& name) {
    QApplication::processEvents();
    pane.Overview().Flush();
    return pane.grab().save(ToQt(name));
}

int DrawPictures(const std::string& original_file, const std::string& modified_file,
                 const std::string& folder) {
    RichDocument original;
    RichDocument modified;
    if (!original.LoadFile(original_file, FileFormat::RichText).ok() ||
        !modified.LoadFile(modified_file, FileFormat::RichText).ok()) {
        std::cerr << "a file could not be read\n";
        return 2;
    }
    Result<Comparison> result =
        CompareTexts({std::make_shared<const std::u16string>(original.Text()),
                      std::make_shared<const std::u16string>(modified.Text())},
                     CompareOptions(), nullptr);
    if (!result.ok()) {
        std::cerr << "the files could not be compared" << '\n';
        return 2;
    }
    ComparePane pane(original, modified);
    pane.resize(1440, 900);
    pane.copy_over = [](std::int32_t, Side) {};
    pane.SetComparison(std::make_shared<const Comparison>(std::move(result).value()));
    pane.show();
    bool saved = true;
    for (const bool dark : {false, true}) {
        const std::string theme = dark ? "dark" : "light";
        pane.SetColors(dark ? ViewColors::Dark() : ViewColors::Light());
        pane.SetAllInOne(false);
        pane.SetFolded(false);
        pane.SetCurrent(1);
        saved = SavePicture(pane, folder + "/pair-" + theme + ".png") && saved;
        pane.SetFolded(true);
        saved = SavePicture(pane, folder + "/folded-" + theme + ".png") && saved;
        pane.SetAllInOne(true);
        pane.SetCurrent(1);
        saved = SavePicture(pane, folder + "/all-in-one-" + theme + ".png") && saved;
    }
    return saved ? 0 : 1;
}

}  // namespace
}  // namespace zorvane

int main(int argc, char** argv) {
    if (argc > 4)
        qputenv("QT_SCALE_FACTOR", argv[4]);
    const QApplication application(argc, argv);
    if (argc < 4) {
        std::cerr << "usage: zv_view_pictures original.rtf modified.rtf folder [scale]\n";
        return 2;
    }
    return zorvane::DrawPictures(argv[1], argv[2], argv[3]);
}
