#include "folders/ui/folder_commands.h"

#include "common/ui/page_binder.h"
#include "folders/ui/compare_folders_page.h"

namespace zorvane {
namespace {

using enum CommandKind;
constexpr KeyScope kGrid = KeyScope::Focus;

// clang-format off
constexpr Command kCommands[] = {
    {"folders.compare", "&Compare Files (Double Click)", "&Compare|Selected &Row", 51, "Enter; Return", "compare", "Compare the two files of the row in the first Compare Files window", Push, kGrid},
    {"folders.compare_new", "Compare Files, Open &New Window", "&Compare|Selected &Row", 51, "Ctrl+Enter; Ctrl+Return", "side-by-side", "Compare the two files of the row in a window of their own", Push, kGrid},
    {"folders.launch", "&Launch Selected File", "&Compare|Selected &Row", 51, "Shift+Enter; Shift+Return", "launch", "Open the file in its own program", Push, kGrid},
    {"folders.copy_to_modified", "Copy to &Modified Folder", "&Compare|Selected &Row", 52, "Alt+Right", "copy-right", "Put the original's file into the modified folder", Push, kGrid},
    {"folders.copy_to_original", "Copy to &Original Folder", "&Compare|Selected &Row", 52, "Alt+Left", "copy-left", "Put the modified file into the original folder", Push, kGrid},
    {"folders.recycle", "Delete File to &Recycle Bin", "&Compare|Selected &Row", 53, "Ctrl+Del", "trash", "Put the file into the desktop's bin", Push, kGrid},
    {"folders.delete", "&Delete File Permanently", "&Compare|Selected &Row", 53, "Del", "abort", "Delete all chosen files for good", Push, kGrid},
    {"folders.show_same", "&Same", "&View|&Show", 21, "Ctrl+9", "equal", "Show files that are the same in both folders", Choice},
    {"folders.legend", "Le&gend", "&View", 30, "Ctrl+Shift+G", "", "Tell below the grid what its marks mean", Check},
};
// clang-format on

using Page = CompareFoldersPage;

constexpr double kZoomStep = 1.1;
constexpr std::string_view kBusy = "A run goes on";

using Binder = PageBinder<Page>;

std::string_view WhyNotFile(Page& page) {
    return page.HasFile() ? std::string_view() : "No file is chosen";
}

std::string_view WhyNotWalk(Page& page) {
    return page.Table().rowCount() == 0 ? "Nothing was compared yet" : std::string_view();
}

void BindFiles(Binder& binder) {
    binder.Bind(
        "folders.compare", [](Page& page) { page.Viewer()->OpenRow(page.Cell().row); }, WhyNotFile);
    binder.Bind(
        "folders.compare_new",
        [](Page& page) { page.Files().CompareSelectedFiles(page.Cell().row, true); }, WhyNotFile);
    binder.Bind(
        "folders.launch",
        [](Page& page) { page.Files().Launch(page.Cell().row, page.Cell().column); }, WhyNotFile);
    const auto copy = [&binder](const char* id, FolderColumn from) {
        binder.Bind(
            id, [from](Page& page) { page.Files().CopyToFolder(page.Cell().row, from); },
            WhyNotFile);
    };
    copy("folders.copy_to_modified", FolderColumn::Original);
    copy("folders.copy_to_original", FolderColumn::Modified);
    binder.Bind(
        "folders.recycle",
        [](Page& page) { page.Files().RecycleDelete(page.Cell().row, page.Cell().column); },
        WhyNotFile);
    binder.Bind(
        "folders.delete", [](Page& page) { page.DeleteChosen(); }, WhyNotWalk);
}

void BindView(Binder& binder) {
    const auto is = [](FolderFilter filter) {
        return [filter](Page& page) { return page.Table().Filter() == filter; };
    };
    const auto show = [](FolderFilter filter) {
        return [filter](Page& page) { page.SetFilter(filter); };
    };
    const auto filter = [&](const char* id, FolderFilter which) {
        binder.BindShared(id, show(which), {}, is(which));
    };
    filter("view.show_all", FolderFilter::All);
    filter("view.show_changes", FolderFilter::Changed);
    filter("view.show_additions", FolderFilter::OnlyModified);
    filter("view.show_deletions", FolderFilter::OnlyOriginal);
    binder.Bind("folders.show_same", show(FolderFilter::Same), {}, is(FolderFilter::Same));
    binder.Bind(
        "folders.legend", [](Page& page) { page.Viewer()->ToggleLegend(); }, {},
        [](Page& page) { return page.Viewer()->Settings().ShowLegend; });
    binder.BindShared("view.font", [](Page& page) { page.ChooseFont(); });
    binder.BindShared("view.zoom_in", [](Page& page) { page.ZoomFont(kZoomStep); });
    binder.BindShared("view.zoom_out", [](Page& page) { page.ZoomFont(1 / kZoomStep); });
    binder.BindShared("view.zoom_reset", [](Page& page) { page.ZoomFont(std::nullopt); });
    binder.BindShared("report.options", [](Page& page) { page.ShowOptions(1); });
    binder.BindShared(
        "view.options", [](Page& page) { page.SetOptionsUnfolded(!page.OptionsUnfolded()); }, {},
        [](Page& page) { return page.OptionsUnfolded(); });
}

void BindRuns(Binder& binder) {
    const auto idle = [](Page& page) -> std::string_view {
        return page.Viewer()->Busy() ? kBusy : std::string_view();
    };
    binder.BindShared(
        "compare.run", [](Page& page) { page.Compare(); }, idle);
    binder.BindShared(
        "compare.abort", [](Page& page) { page.Viewer()->Abort(); },
        [](Page& page) -> std::string_view {
            return page.Viewer()->CanAbort() ? "" : "Nothing runs";
        });
    binder.BindShared(
        "compare.swap", [](Page& page) { page.Swap(); }, idle);
    binder.BindShared(
        "report.make", [](Page& page) { page.Viewer()->mnuReportTabDelimitedFile(); },
        [](Page& page) -> std::string_view {
            return page.Viewer()->CanReport() ? "" : "Nothing was compared yet";
        });
    binder.BindShared("file.open_original",
                      [](Page& page) { page.Viewer()->Browse(Side::Original); });
    binder.BindShared("file.open_modified",
                      [](Page& page) { page.Viewer()->Browse(Side::Modified); });
}

void BindWalk(Binder& binder) {
    binder.BindShared(
        "go.next", [](Page& page) { page.Grid().GoToDifferent(true); }, WhyNotWalk);
    binder.BindShared(
        "go.previous", [](Page& page) { page.Grid().GoToDifferent(false); }, WhyNotWalk);
    binder.BindShared("go.list", [](Page& page) { page.Grid().setFocus(Qt::ShortcutFocusReason); });
    binder.BindShared(
        "edit.copy", [](Page& page) { page.CopyNames(); }, WhyNotWalk);
    binder.BindShared(
        "edit.select_all", [](Page& page) { page.Grid().selectAll(); }, WhyNotWalk);
}

}  // namespace

std::span<const Command> FolderCommands() {
    return kCommands;
}

void BindFolderCommands(CommandSet& commands, std::function<CompareFoldersPage*()> active) {
    Binder binder(commands, std::move(active), "No Compare Folders window is open");
    BindFiles(binder);
    BindView(binder);
    BindRuns(binder);
    BindWalk(binder);
}

}  // namespace zorvane
