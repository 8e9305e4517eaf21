// What the commands of Compare Files do, and why they can not be run.
#include <utility>

#include "common/ui/page_binder.h"
#include "compare/ui/compare_files_page.h"

namespace zorvane {
namespace {

using Page = CompareFilesPage;

constexpr std::string_view kBusy = "A run goes on";
constexpr std::string_view kNoResult = "Nothing was compared yet";

using Binder = PageBinder<Page>;

Binder::WhyNot Unless(ViewerCommand command, bool needs_result = false) {
    return [command, needs_result](Page& page) -> std::string_view {
        if (!page.Viewer()->IsEnabled(command))
            return kBusy;
        return needs_result && page.Viewer()->ShownComparison() == nullptr ? kNoResult
                                                                           : std::string_view();
    };
}

std::string_view WhyNotWalk(Page& page) {
    if (page.Viewer()->Busy())
        return kBusy;
    return page.Viewer()->Differences().Count() == 0 ? "There are no differences"
                                                     : std::string_view();
}

std::string_view WhyNotEdit(Page& page) {
    return page.FocusedView()->IsReadOnly() || !page.Viewer()->IsEnabled(ViewerCommand::Edit)
               ? "This text cannot be edited"
               : std::string_view();
}

std::string_view WhyNotCopyOver(Page& page) {
    if (page.Viewer()->Busy())
        return kBusy;
    return page.Viewer()->mlCurrentDifference() < 1 ? "No difference is current"
                                                    : std::string_view();
}

void BindFiles(Binder& binder) {
    binder.Bind("file.open_original", [](Page& page) { page.ChooseFile(Side::Original); });
    binder.Bind("file.open_modified", [](Page& page) { page.ChooseFile(Side::Modified); });
    const auto again = Unless(ViewerCommand::Refresh, true);
    binder.Bind(
        "file.reload_original", [](Page& page) { page.Viewer()->LoadAgain(Side::Original); },
        again);
    binder.Bind(
        "file.reload_modified", [](Page& page) { page.Viewer()->LoadAgain(Side::Modified); },
        again);
    binder.Bind(
        "file.save_as", [](Page& page) { page.SaveAs(); }, Unless(ViewerCommand::Save));
    binder.Bind(
        "file.print", [](Page& page) { page.Print(); }, Unless(ViewerCommand::Save));
    binder.Bind(
        "file.print_preview", [](Page& page) { page.PrintPreview(); }, Unless(ViewerCommand::Save));
    binder.Bind(
        "report.make", [](Page& page) { page.Viewer()->cmdViewReport(); },
        Unless(ViewerCommand::Report, true));
}

std::string_view WhyNotOptions(Page& page) {
    return page.Viewer()->Busy() ? kBusy : std::string_view();
}

// A dialog gives back what it was opened with; a run that ended meanwhile would be overwritten.
void BindDialogs(Binder& binder) {
    binder.Bind(
        "report.options", [](Page& page) { page.ReportOptions(); }, WhyNotOptions);
    binder.Bind(
        "compare.advanced", [](Page& page) { page.AdvancedOptions(); }, WhyNotOptions);
    binder.Bind(
        "file.type_options", [](Page& page) { page.OptionsOfThisFile(); },
        [](Page& page) -> std::string_view {
            for (const Side side : kBothSides)
                if (page.OptionsOfSide(side) != FileTypeOptions::None)
                    return WhyNotOptions(page);
            return "Neither file is of a type with options";
        });
    constexpr std::pair<const char*, FileTypeOptions> kTypes[] = {
        {"types.text", FileTypeOptions::Text},     {"types.word", FileTypeOptions::Word},
        {"types.pdf", FileTypeOptions::Pdf},       {"types.sheets", FileTypeOptions::Spreadsheet},
        {"types.slides", FileTypeOptions::Slides}, {"types.html", FileTypeOptions::Html}};
    for (const auto& [id, type] : kTypes)
        binder.Bind(
            id, [shown = type](Page& page) { page.ShowTypeOptions(shown); }, WhyNotOptions);
}

void BindText(Binder& binder) {
    const auto view = [](auto act) { return [act](Page& page) { (page.FocusedView()->*act)(); }; };
    binder.Bind("edit.undo", view(&RichTextView::Undo), [](Page& page) -> std::string_view {
        return page.FocusedView()->Document().CanUndo() ? WhyNotEdit(page) : "Nothing to undo";
    });
    binder.Bind("edit.redo", view(&RichTextView::Redo), [](Page& page) -> std::string_view {
        return page.FocusedView()->Document().CanRedo() ? WhyNotEdit(page) : "Nothing to do again";
    });
    binder.Bind("edit.cut", view(&RichTextView::Cut), WhyNotEdit);
    binder.Bind("edit.copy", [](Page& page) { page.FocusedView()->Copy(); });
    binder.Bind("edit.paste", view(&RichTextView::Paste), WhyNotEdit);
    binder.Bind("edit.paste_plain", view(&RichTextView::PastePlain), WhyNotEdit);
    binder.Bind("edit.select_all", view(&RichTextView::SelectAll));
    binder.Bind("edit.find", [](Page& page) { page.OpenFind(false); });
    binder.Bind("edit.find_next", [](Page& page) { page.FindAgain(true); });
    binder.Bind("edit.find_previous", [](Page& page) { page.FindAgain(false); });
    binder.Bind(
        "edit.replace", [](Page& page) { page.OpenFind(true); }, WhyNotEdit);
}

void BindViews(Binder& binder) {
    const auto layout = [&](const char* id, PaneLayout wanted) {
        binder.Bind(
            id, [wanted](Page& page) { page.SetLayout(wanted); }, {},
            [wanted](Page& page) { return page.LayoutNow() == wanted; });
    };
    layout("view.both", PaneLayout::EditorsAndResult);
    layout("view.result", PaneLayout::Result);
    layout("view.editors", PaneLayout::Editors);
    binder.Bind(
        "view.all_in_one", [](Page& page) { page.Viewer()->cmdChangeViewFormat_Click(); },
        Unless(ViewerCommand::ChangeView, true));
    const auto filter = [&](const char* id, ViewFilter wanted) {
        binder.Bind(
            id, [wanted](Page& page) { page.Viewer()->ShowFilter(wanted); },
            Unless(ViewerCommand::Filter, true),
            [wanted](Page& page) { return page.Filter() == wanted; });
    };
    filter("view.show_all", ViewFilter::All);
    filter("view.show_changes", ViewFilter::Changes);
    filter("view.show_additions", ViewFilter::Additions);
    filter("view.show_deletions", ViewFilter::Deletions);
    const auto toggle = [&](const char* id, void (Page::*set)(bool), const Binder::IsOn& is_on) {
        binder.Bind(
            id, [set, is_on](Page& page) { (page.*set)(!is_on(page)); }, {}, is_on);
    };
    toggle("view.fold", &Page::SetFolded, [](Page& page) { return page.Look().FoldUnchanged; });
    binder.Bind("view.unfold_all", [](Page& page) { page.SetFolded(false); });
    toggle("view.panel", &Page::SetPanel, [](Page& page) { return page.Look().PanelOpen; });
    toggle("view.align", &Page::SetAligned,
           [](Page& page) { return page.Look().KeepParagraphsOpposite; });
    toggle("view.wrap", &Page::SetWrap,
           [](Page& page) { return page.Viewer()->Settings().mnuWordWrap; });
    toggle("view.options", &Page::SetOptionsUnfolded,
           [](Page& page) { return page.Look().OptionsUnfolded; });
    binder.Bind(
        "view.lock_vertical",
        [](Page& page) { page.Viewer()->Tools().mnuScrollLockVertical_Click(); }, {},
        [](Page& page) { return page.Viewer()->Tools().Scrolls().LocksVertical(); });
    binder.Bind(
        "view.lock_horizontal",
        [](Page& page) { page.Viewer()->Tools().mnuScrollLockHorizontal_Click(); }, {},
        [](Page& page) { return page.Viewer()->Tools().Scrolls().LocksHorizontal(); });
    constexpr int kStep = 10;
    constexpr int kActual = 100;
    binder.Bind("view.zoom_in", [](Page& page) { page.SetZoom(page.Look().ZoomPercent + kStep); });
    binder.Bind("view.zoom_out", [](Page& page) { page.SetZoom(page.Look().ZoomPercent - kStep); });
    binder.Bind("view.zoom_reset", [](Page& page) { page.SetZoom(kActual); });
    binder.Bind("view.font", [](Page& page) { page.ChooseFont(); });
}

void BindCompare(Binder& binder) {
    binder.Bind(
        "compare.run", [](Page& page) { page.Compare(); },
        [](Page& page) { return page.WhyNotCompare(); });
    binder.Bind(
        "compare.abort", [](Page& page) { page.Viewer()->Abort(); },
        [](Page& page) -> std::string_view {
            return page.Viewer()->IsEnabled(ViewerCommand::Abort) ? "" : "Nothing runs";
        });
    binder.Bind(
        "compare.swap", [](Page& page) { page.SwapSides(); }, Unless(ViewerCommand::Refresh));
    binder.Bind(
        "compare.selected", [](Page& page) { page.CompareSelected(); },
        [](Page& page) -> std::string_view {
            for (const Side side : kBothSides) {
                if (page.Editors().View(side).Document().Selection().length == 0)
                    return "Select text on both sides first";
            }
            return {};
        });
    binder.Bind(
        "compare.copy_to_modified",
        [](Page& page) { page.CopyOver(page.Viewer()->mlCurrentDifference() - 1, Side::Original); },
        WhyNotCopyOver);
    binder.Bind(
        "compare.copy_to_original",
        [](Page& page) { page.CopyOver(page.Viewer()->mlCurrentDifference() - 1, Side::Modified); },
        WhyNotCopyOver);
    const auto kind = [&](const char* id, clsVarBoolean clsCompareFileOptions::*ignored) {
        binder.Bind(
            id, [ignored](Page& page) { page.CountKind(page.Viewer()->Options().*ignored); },
            Unless(ViewerCommand::Refresh),
            [ignored](Page& page) { return !(page.Viewer()->Options().*ignored).Data(); });
    };
    kind("compare.count_case", &clsCompareFileOptions::bIgnoreCase);
    kind("compare.count_blanks", &clsCompareFileOptions::bIgnoreWhitespace);
    binder.Bind(
        "compare.count_formatting", [](Page& page) { page.CountFormatting(); }, {},
        [](Page& page) { return page.Look().CountFormatting; });
    binder.Bind(
        "compare.count_moves", [](Page& page) { page.CountMoves(); },
        Unless(ViewerCommand::Refresh), [](Page& page) { return page.Look().CountMoves; });
    binder.Bind(
        "compare.count_numbering", [](Page& page) { page.CountNumbering(); },
        Unless(ViewerCommand::Refresh), [](Page& page) { return page.Look().CountNumbering; });
    binder.Bind("compare.defaults", [](Page& page) { page.RestoreDefaults(); });
}

void BindGo(Binder& binder) {
    const auto walk = [&](const char* id, void (frmCompareFiles::*go)()) {
        binder.Bind(
            id, [go](Page& page) { (page.Viewer()->*go)(); }, WhyNotWalk);
    };
    walk("go.next", &frmCompareFiles::ShowDifferenceNext);
    walk("go.previous", &frmCompareFiles::ShowDifferencePrevious);
    walk("go.first", &frmCompareFiles::ShowDifferenceFirst);
    walk("go.last", &frmCompareFiles::ShowDifferenceLast);
    walk("go.to", &frmCompareFiles::tbShowDifferenceUnknown);
    binder.Bind(
        "go.list", [](Page& page) { page.FocusList(); }, WhyNotWalk);
    binder.Bind(
        "go.read", [](Page& page) { page.ReadAloud(); }, WhyNotCopyOver);
}

}  // namespace

void BindCompareCommands(CommandSet& commands, std::function<CompareFilesPage*()> active) {
    Binder binder(
        commands,
        [active = std::move(active)] {
            Page* page = active();
            return page == nullptr || page->Viewer() == nullptr ? nullptr : page;
        },
        "No Compare Files window is open");
    BindFiles(binder);
    BindDialogs(binder);
    BindText(binder);
    BindViews(binder);
    BindCompare(binder);
    BindGo(binder);
}

}  // namespace zorvane
