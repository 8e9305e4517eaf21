#include "folders/ui/folder_commands.h"

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

constexpr std::string_view kNoWindow = "No Compare Folders window is open";
constexpr std::string_view kBusy = "A run goes on";

class Binder {
  public:
    Binder(CommandSet& commands, std::function<Page*()> active)
        : commands_(commands), active_(std::move(active)) {}

    using Act = std::function<void(Page&)>;
    using WhyNot = std::function<std::string_view(Page&)>;
    using IsOn = std::function<bool(Page&)>;

    /// A command of this window alone.
    void Own(std::string_view id, Act act, WhyNot why_not = {}, IsOn is_on = {}) {
        commands_.Bind(id, Binding(std::move(act), std::move(why_not), std::move(is_on)));
    }
    /// One that other windows have too.
    void Shared(std::string_view id, Act act, WhyNot why_not = {}, IsOn is_on = {}) {
        commands_.BindWhere([active = active_] { return active() != nullptr; }, id,
                            Binding(std::move(act), std::move(why_not), std::move(is_on)));
    }

  private:
    CommandBinding Binding(Act act, WhyNot why_not, IsOn is_on) {
        CommandBinding binding;
        binding.run = [active = active_, act = std::move(act)] {
            if (Page* page = active())
                act(*page);
        };
        binding.why_not = [active = active_, why_not = std::move(why_not)]() -> std::string_view {
            Page* page = active();
            if (page == nullptr)
                return kNoWindow;
            return why_not ? why_not(*page) : std::string_view();
        };
        if (is_on)
            binding.is_on = [active = active_, is_on = std::move(is_on)] {
                Page* page = active();
                return page != nullptr && is_on(*page);
            };
        return binding;
    }

    CommandSet& commands_;
    std::function<Page*()> active_;
};

std::string_view WhyNotFile(Page& page) {
    return page.HasFile() ? std::string_view() : "No file is chosen";
}

std::string_view WhyNotWalk(Page& page) {
    return page.Table().rowCount() == 0 ? "Nothing was compared yet" : std::string_view();
}

void BindFiles(Binder& binder) {
    binder.Own(
        "folders.compare", [](Page& page) { page.Viewer()->OpenRow(page.Cell().row); }, WhyNotFile);
    binder.Own(
        "folders.compare_new",
        [](Page& page) { page.Files().CompareSelectedFiles(page.Cell().row, true); }, WhyNotFile);
    binder.Own(
        "folders.launch",
        [](Page& page) { page.Files().Launch(page.Cell().row, page.Cell().column); }, WhyNotFile);
    const auto copy = [&binder](const char* id, FolderColumn from) {
        binder.Own(
            id, [from](Page& page) { page.Files().CopyToFolder(page.Cell().row, from); },
            WhyNotFile);
    };
    copy("folders.copy_to_modified", FolderColumn::Original);
    copy("folders.copy_to_original", FolderColumn::Modified);
    binder.Own(
        "folders.recycle",
        [](Page& page) { page.Files().RecycleDelete(page.Cell().row, page.Cell().column); },
        WhyNotFile);
    binder.Own(
        "folders.delete", [](Page& page) { page.DeleteChosen(); }, WhyNotWalk);
}

void BindView(Binder& binder) {
    const auto is = [](FolderFilter filter) {
        return [filter](Page& page) { return page.Table().Order().Filter() == filter; };
    };
    const auto show = [](FolderFilter filter) {
        return [filter](Page& page) { page.SetFilter(filter); };
    };
    const auto filter = [&](const char* id, FolderFilter which) {
        binder.Shared(id, show(which), {}, is(which));
    };
    filter("view.show_all", FolderFilter::All);
    filter("view.show_changes", FolderFilter::Changed);
    filter("view.show_additions", FolderFilter::OnlyModified);
    filter("view.show_deletions", FolderFilter::OnlyOriginal);
    binder.Own("folders.show_same", show(FolderFilter::Same), {}, is(FolderFilter::Same));
    binder.Own(
        "folders.legend", [](Page& page) { page.Viewer()->ToggleLegend(); }, {},
        [](Page& page) { return page.Viewer()->Settings().ShowLegend; });
    binder.Shared("view.font", [](Page& page) { page.ChooseFont(); });
    binder.Shared(
        "view.options", [](Page& page) { page.SetOptionsUnfolded(!page.OptionsUnfolded()); }, {},
        [](Page& page) { return page.OptionsUnfolded(); });
}

void BindRuns(Binder& binder) {
    const auto idle = [](Page& page) -> std::string_view {
        return page.Viewer()->Busy() ? kBusy : std::string_view();
    };
    binder.Shared(
        "compare.run", [](Page& page) { page.Compare(); }, idle);
    binder.Shared(
        "compare.abort", [](Page& page) { page.Viewer()->Abort(); },
        [](Page& page) -> std::string_view {
            return page.Viewer()->CanAbort() ? "" : "Nothing runs";
        });
    binder.Shared(
        "compare.swap", [](Page& page) { page.Swap(); }, idle);
    binder.Shared(
        "report.make", [](Page& page) { page.Viewer()->mnuReportTabDelimitedFile(); },
        [](Page& page) -> std::string_view {
            return page.Viewer()->CanReport() ? "" : "Nothing was compared yet";
        });
    binder.Shared("file.open_original", [](Page& page) { page.Viewer()->Browse(Side::Original); });
    binder.Shared("file.open_modified", [](Page& page) { page.Viewer()->Browse(Side::Modified); });
}

void BindWalk(Binder& binder) {
    binder.Shared(
        "go.next", [](Page& page) { page.Grid().GoToDifferent(true); }, WhyNotWalk);
    binder.Shared(
        "go.previous", [](Page& page) { page.Grid().GoToDifferent(false); }, WhyNotWalk);
    binder.Shared("go.list", [](Page& page) { page.Grid().setFocus(Qt::ShortcutFocusReason); });
    binder.Shared(
        "edit.copy", [](Page& page) { page.CopyNames(); }, WhyNotWalk);
    binder.Shared(
        "edit.select_all", [](Page& page) { page.Grid().selectAll(); }, WhyNotWalk);
}

}  // namespace

std::span<const Command> FolderCommands() {
    return kCommands;
}

void BindFolderCommands(CommandSet& commands, std::function<CompareFoldersPage*()> active) {
    Binder binder(commands, std::move(active));
    BindFiles(binder);
    BindView(binder);
    BindRuns(binder);
    BindWalk(binder);
}

}  // namespace zorvane
