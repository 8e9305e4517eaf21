#include "find/ui/find_commands.h"

#include <algorithm>

#include <QLineEdit>

#include "common/ui/page_binder.h"
#include "find/ui/find_page.h"

namespace zorvane {
namespace {

using enum CommandKind;
constexpr KeyScope kGrid = KeyScope::Focus;
constexpr double kStep = 1.1;
constexpr double kLeastZoom = 0.5;
constexpr double kMostZoom = 4;

// clang-format off
constexpr Command kCommands[] = {
    {"find.case", "&Case Sensitive", "&Edit|Find In F&iles", 41, "", "", "Upper and lower case are different letters", Check},
    {"find.word", "&Whole Word Only", "&Edit|Find In F&iles", 41, "", "", "Nothing but blanks may stand beside what is found", Check},
    {"find.expression", "&Regular Expression", "&Edit|Find In F&iles", 41, "", "", "Symbols such as * and [] have their meaning", Check},
    {"find.subfolders", "Look In &Subfolders", "&Edit|Find In F&iles", 41, "", "", "Look through the folders in the folder too", Check},
    {"find.office", "Support &Office Docs", "&Edit|Find In F&iles", 41, "", "", "Read documents, workbooks, slides, PDF and web pages as their text", Check},
    {"find.signs", "S&ymbols of Expressions...", "&Edit|Find In F&iles", 42, "F4", "regex", "Choose a symbol of regular expressions from a list"},
    {"find.show", "Sho&w Hit (Double Click)", "&Compare|Selected &Hit", 54, "Enter; Return", "find", "Show the lines around the hit", Push, kGrid},
    {"find.open", "&Open File", "&Compare|Selected &Hit", 54, "Shift+Enter; Shift+Return", "launch", "Open the hit's file in its own program", Push, kGrid},
    {"find.document", "S&how the Document", "&View", 31, "", "file", "Show a hit in its whole document, not in the lines around it", Check},
    {"find.mark", "&Mark Hit", "&Compare|Selected &Hit", 55, "Ctrl+M", "check", "Remember the hit, to compare its file with that of another", Check, kGrid},
    {"find.compare", "&Compare With...", "&Compare|Selected &Hit", 55, "Ctrl+Enter; Ctrl+Return", "compare", "Compare the files of two hits that are marked or chosen, or this one with another file", Push, kGrid},
};
// clang-format on

using Page = FindPage;
using Binder = PageBinder<Page>;

std::string_view WhyNotHit(Page& page) {
    return page.CurrentHit() < 0 ? "No hit is chosen" : std::string_view();
}

std::string_view WhyNotWalk(Page& page) {
    return page.Hits().rowCount() == 0 ? "Nothing was found yet" : std::string_view();
}

void BindSwitches(Binder& binder) {
    for (std::size_t number = 0; number < kFindSwitches; ++number) {
        binder.Bind(
            FindSwitches()[number].command,
            [number](Page& page) { page.Boxes().Switch(number).toggle(); }, {},
            [number](Page& page) { return page.Boxes().Switch(number).isChecked(); });
    }
    binder.Bind("find.signs", [](Page& page) { page.OpenSigns(); });
}

void BindHits(Binder& binder) {
    binder.Bind(
        "find.show", [](Page& page) { page.ShowCurrent(); }, WhyNotHit);
    binder.Bind(
        "find.open", [](Page& page) { page.OpenCurrent(); }, WhyNotHit);
    binder.Bind(
        "find.mark", [](Page& page) { page.MarkCurrent(); }, WhyNotHit,
        [](Page& page) { return page.Viewer()->Marked().Has(page.CurrentHit()); });
    binder.Bind(
        "find.document", [](Page& page) { page.ToggleDocument(); }, {},
        [](Page& page) { return page.Pane().ShowsDocument(); });
    binder.Bind(
        "find.compare", [](Page& page) { page.CompareChosen(); }, WhyNotHit);
}

void BindRuns(Binder& binder) {
    binder.BindAs(
        {.text = "Fin&d", .tip = "Look through the files of the folder"}, "compare.run",
        [](Page& page) { page.Find(); },
        [](Page& page) -> std::string_view {
            return page.Viewer()->CanAbort() ? "A run goes on" : "";
        });
    binder.BindAs(
        {.tip = "Stop; what was found stays"}, "compare.abort",
        [](Page& page) { page.Viewer()->Abort(); },
        [](Page& page) -> std::string_view {
            return page.Viewer()->CanAbort() ? "" : "Nothing runs";
        });
    binder.BindAs(
        {.tip = "Write all hits to a table"}, "report.make",
        [](Page& page) { page.Viewer()->mnuReportTabDelimitedFile_Click(); }, WhyNotWalk);
    binder.BindAs({.text = "&Open Folder...", .tip = "Choose the folder that is looked through"},
                  "file.open_original", [](Page& page) { page.Viewer()->ChooseFolder(); });
    binder.BindShared("report.options", [](Page& page) { page.ShowOptions(1); });
}

void BindWalk(Binder& binder) {
    const auto walk = [](bool forward) { return [forward](Page& page) { page.GoToHit(forward); }; };
    binder.BindAs({.text = "&Next Hit", .tip = "Show the next hit"}, "go.next", walk(true),
                  WhyNotWalk);
    binder.BindAs({.text = "&Previous Hit", .tip = "Show the hit before"}, "go.previous",
                  walk(false), WhyNotWalk);
    binder.BindAs({.tip = "Show the next hit"}, "edit.find_next", walk(true), WhyNotWalk);
    binder.BindAs({.tip = "Show the hit before"}, "edit.find_previous", walk(false), WhyNotWalk);
    const auto what = [](Page& page) {
        page.Boxes().SearchFor().setFocus(Qt::ShortcutFocusReason);
        page.Boxes().SearchFor().lineEdit()->selectAll();
    };
    binder.BindAs({.tip = "Type what to look for"}, "edit.find", what);
    binder.BindAs({.text = "What To Fin&d", .tip = "Type what to look for"}, "go.list", what);
}

void BindView(Binder& binder) {
    const auto zoom = [](double factor) {
        return [factor](Page& page) {
            page.SetZoom(std::clamp(page.Zoom() * factor, kLeastZoom, kMostZoom));
        };
    };
    binder.BindShared("view.zoom_in", zoom(kStep));
    binder.BindShared("view.zoom_out", zoom(1 / kStep));
    binder.BindShared("view.zoom_reset", [](Page& page) { page.SetZoom(1); });
    binder.BindShared(
        "view.wrap", [](Page& page) { page.SetWrap(!page.Wraps()); }, {},
        [](Page& page) { return page.Wraps(); });
    binder.BindAs({.tip = "Font of hits, errors and lines"}, "view.font",
                  [](Page& page) { page.ChooseFont(); });
    binder.BindAs(
        {.tip = "Unfold how a search goes and where its report is written"}, "view.options",
        [](Page& page) { page.SetOptionsUnfolded(!page.OptionsUnfolded()); }, {},
        [](Page& page) { return page.OptionsUnfolded(); });
    binder.BindShared("edit.copy", [](Page& page) { page.Copy(); });
    binder.BindShared("edit.select_all", [](Page& page) { page.SelectAll(); });
}

}  // namespace

std::span<const Command> FindCommands() {
    return kCommands;
}

void BindFindCommands(CommandSet& commands, std::function<FindPage*()> active) {
    Binder binder(commands, std::move(active), "No Find window is open");
    BindSwitches(binder);
    BindHits(binder);
    BindRuns(binder);
    BindWalk(binder);
    BindView(binder);
}

}  // namespace zorvane
