// The viewers that the main window makes, and what each asks of it.
#include "app/ui/main_window.h"
#include "load/extracted_texts.h"
#include "load/grid_bridge.h"
#include "load/sheet_names.h"

namespace zorvane {

ViewerFactories MainWindow::Viewers() {
    ViewerFactories factories;
    factories.compare_files = [this](const CommandLineRequest& request) {
        return MakeViewer(request);
    };
    factories.compare_folders = [this](const CommandLineRequest& request) {
        return MakeFoldersViewer(request);
    };
    factories.find_text = [this](const CommandLineRequest&) { return MakeFindViewer(); };
    return factories;
}

void MainWindow::FillHost(ViewerHost& host) {
    host.bring_to_front = [this](QWidget& page) { BringToFront(page); };
    host.commands_changed = [this] { RefreshLater(); };
    host.caption_changed = [this] { ShowCaptions(); };
}

PageHost MainWindow::HostOfFiles() {
    PageHost host;
    FillHost(host);
    host.compare_texts = [this](const RichText& original, const RichText& modified) {
        CompareTexts(original, modified);
    };
    host.compare_folders = [this](const PerSide<std::string>& folders) { CompareFolders(folders); };
    host.sheet_names = [this](const std::string& file, const std::string& password) {
        ConversionService service(process_);
        GridBridge bridge(service, {});
        bridge.OptPasswordSet(password);
        return ReadSheetNames(
            bridge, file, [this](std::string_view english) { return process_.Translate(english); });
    };
    return host;
}

MadeViewer MainWindow::MakeViewer(const CommandLineRequest& request) {
    auto made_page = std::make_unique<CompareFilesPage>(*commands_, theme_, text_, HostOfFiles());
    CompareFilesPage* page = made_page.get();
    MadeViewer made = MakeCompareFiles(process_, request, std::move(made_page));
    auto& viewer = dynamic_cast<frmCompareFiles&>(*made.viewer);
    viewer.RunInBackground(!process_.gbCommandLineRunning);
    page->Connect(viewer);
    area_->Add(*page, page->Icon());
    return made;
}

MadeViewer MainWindow::MakeFoldersViewer(const CommandLineRequest& request) {
    FoldersHost host;
    FillHost(host);
    host.compare_files = [this](const PerSide<std::string>& files, bool new_window) {
        CompareFiles(files, new_window);
    };
    host.make_text_options = [this](QWidget& page) {
        return new PairOptionsDialog(process_, text_, &page);
    };
    auto page = std::make_unique<CompareFoldersPage>(*commands_, theme_, text_, std::move(host),
                                                     *process_.platform.folders);
    auto viewer = std::make_unique<frmCompareDir>(process_, *page, request.bClearHistory);
    viewer->KeepChecksIn(UserTextCache(process_));
    page->Connect(*viewer);
    area_->Add(*page, page->Icon());
    return {std::move(page), std::move(viewer)};
}

MadeViewer MainWindow::MakeFindViewer() {
    FindHost host;
    FillHost(host);
    host.compare_files = [this](const PerSide<std::string>& files) { CompareFiles(files, false); };
    auto page = std::make_unique<FindPage>(*commands_, theme_, text_, std::move(host),
                                           *process_.platform.folders);
    auto viewer = std::make_unique<frmFindTextInFiles>(process_, *page);
    page->Connect(*viewer);
    area_->Add(*page, page->Icon());
    return {std::move(page), std::move(viewer)};
}

}  // namespace zorvane
