#include "compare/ui/compare_commands.h"

#include <array>

namespace zorvane {

namespace {

using enum CommandKind;

// clang-format off
constexpr Command kFileAndEdit[] = {
    {"file.open_original", "&Open Original...", "&File", 20, "Ctrl+O", "open", "Choose the document that was first"},
    {"file.open_modified", "Open &Modified...", "&File", 20, "Ctrl+Shift+O", "open", "Choose the document that came of it"},
    {"file.reload_original", "Load Original &Again", "&File", 30, "Ctrl+R", "refresh", "Read the original file once more"},
    {"file.reload_modified", "Load Modified A&gain", "&File", 30, "Ctrl+Shift+R", "refresh", "Read the modified file once more"},
    {"file.type_options", "Options for This File &Type...", "&File", 30, "Alt+Return", "options", "How files of this type become text"},
    {"types.text", "&Text Comparison Options...", "&File|&File Type Options", 31, "", "options", "Which extensions are those of text files"},
    {"types.word", "&Word Comparison Options...", "&File|&File Type Options", 31, "", "options", "Passwords of word processor documents"},
    {"types.pdf", "&PDF Comparison Options...", "&File|&File Type Options", 31, "", "options", "Extraction, pages and passwords of PDF documents"},
    {"types.sheets", "&Spreadsheet Comparison Options...", "&File|&File Type Options", 31, "", "options", "Sheets, rows, columns and passwords of workbooks and CSV files"},
    {"types.slides", "P&owerPoint Comparison Options...", "&File|&File Type Options", 31, "", "options", "Slides and notes"},
    {"types.html", "&HTML Comparison Options...", "&File|&File Type Options", 31, "", "options", "Web pages and XML as text or as source"},
    {"file.save_as", "&Save As...", "&File", 40, "Ctrl+S; Ctrl+Shift+S", "save", "Write the text of the pane that has the focus to a file"},
    {"report.make", "&Report", "&File", 50, "F2", "report", "Write the differences to a report"},
    {"report.options", "Report O&ptions...", "&File", 50, "Shift+F2", "options", "Type, style and file of the report"},
    {"file.print", "Pr&int...", "&File", 60, "Ctrl+P", "print", "Print the pane that has the focus"},
    {"file.print_preview", "Print Pre&view", "&File", 60, "Ctrl+Alt+P", "print", "See the pages before they are printed"},

    {"edit.undo", "&Undo", "&Edit", 10, "Ctrl+Z", "", "Take the last edit back"},
    {"edit.redo", "&Redo", "&Edit", 10, "Ctrl+Shift+Z; Ctrl+Y", "", "Do again what was taken back"},
    {"edit.cut", "Cu&t", "&Edit", 20, "Ctrl+X", "", "Move the selected text to the clipboard"},
    {"edit.copy", "&Copy", "&Edit", 20, "Ctrl+C", "", "Copy the selected text to the clipboard"},
    {"edit.paste", "&Paste", "&Edit", 20, "Ctrl+V", "paste", "Put in the clipboard's text with its formats"},
    {"edit.paste_plain", "Paste P&lain Text", "&Edit", 20, "Ctrl+Shift+V", "paste", "Put in the clipboard's words alone"},
    {"edit.select_all", "Select &All", "&Edit", 20, "Ctrl+A", "", "Select the whole text of the pane"},
    {"edit.find", "&Find...", "&Edit", 30, "Ctrl+F", "find", "Look for words in the pane that has the focus"},
    {"edit.find_next", "Find &Next", "&Edit", 30, "F3", "find", "Go to the next place that was looked for"},
    {"edit.find_previous", "Find Pre&vious", "&Edit", 30, "Shift+F3", "find", "Go to the place before"},
    {"edit.replace", "R&eplace...", "&Edit", 30, "Ctrl+H", "find", "Put other words in place of those found"},
};

constexpr Command kView[] = {
    {"view.both", "&Editors and Result", "&View", 10, "Ctrl+1", "layout-both", "Both documents above, the differences below", Choice},
    {"view.result", "&Result", "&View", 10, "Ctrl+2", "layout-result", "Give the whole window to the differences", Choice},
    {"view.editors", "E&ditors", "&View", 10, "Ctrl+3", "layout-editors", "Give the whole window to the documents", Choice},
    {"view.all_in_one", "View All In &One", "&View", 20, "Ctrl+4", "all-in-one", "Show both documents as one text, or side by side again"},
    {"view.show_all", "&All", "&View|&Show", 21, "Ctrl+5", "", "Show all differences", Choice},
    {"view.show_changes", "&Changes", "&View|&Show", 21, "Ctrl+6", "changed", "Show changed paragraphs alone", Choice},
    {"view.show_additions", "A&dditions", "&View|&Show", 21, "Ctrl+7", "added", "Show what only the modified document has", Choice},
    {"view.show_deletions", "De&letions", "&View|&Show", 21, "Ctrl+8", "deleted", "Show what only the original document has", Choice},
    {"view.fold", "&Fold Unchanged", "&View", 30, "Ctrl+U", "fold", "Hide stretches that are the same on both sides", Check},
    {"view.unfold_all", "&Unfold All", "&View", 30, "Ctrl+Alt+U", "unfold", "Show every paragraph"},
    {"view.panel", "Difference &Panel", "&View", 30, "Ctrl+Shift+B", "panel", "Kinds counted, and what differs beside the words", Check},
    {"view.align", "&Align Paragraphs", "&View", 40, "Ctrl+Shift+A", "side-by-side", "Put paragraphs that belong together at one height", Check},
    {"view.lock_vertical", "&Vertical", "&View|Scroll Loc&k", 41, "Ctrl+Alt+V", "lock", "Scroll all panes up and down together", Check},
    {"view.lock_horizontal", "&Horizontal", "&View|Scroll Loc&k", 41, "Ctrl+Alt+H", "lock", "Scroll all panes sideways together", Check},
    {"view.wrap", "&Word Wrap", "&View", 40, "Alt+Z", "", "Break lines at the edge of the pane", Check},
    {"view.zoom_in", "Zoom &In", "&View|Zoo&m", 51, "Ctrl++; Ctrl+=", "", "Show the documents larger"},
    {"view.zoom_out", "Zoom &Out", "&View|Zoo&m", 51, "Ctrl+-", "", "Show the documents smaller"},
    {"view.zoom_reset", "&Actual Size", "&View|Zoo&m", 51, "Ctrl+0", "", "Show the documents in their own size"},
    {"view.font", "Fon&t...", "&View", 50, "Ctrl+T", "formatting", "Font of documents that bring none along"},
    {"view.options", "Optio&ns", "&View", 60, "Ctrl+,", "options", "Unfold what is compared, reported and shown", Check},
};

constexpr Command kCompareAndGo[] = {
    {"compare.run", "&Compare", "&Compare", 10, "F5", "refresh", "Load both documents as the options say, and compare them"},
    {"compare.abort", "&Abort", "&Compare", 10, "", "abort", "Stop; the old result stays"},
    {"compare.swap", "&Swap Sides", "&Compare", 20, "F9", "swap", "Make the original the modified document, and the reverse"},
    {"compare.selected", "Compare Selected &Text", "&Compare", 20, "Ctrl+K", "compare", "Compare what is selected on both sides in a new window"},
    {"compare.copy_to_modified", "Copy to &Modified", "&Compare", 30, "Alt+Right", "copy-right", "Put the original's words of this difference into the modified document"},
    {"compare.copy_to_original", "Copy to &Original", "&Compare", 30, "Alt+Left", "copy-left", "Put the modified document's words of this difference into the original"},
    {"compare.count_case", "&Case", "&Compare|Count &Kinds", 41, "", "formatting", "Count differences in case", Check},
    {"compare.count_blanks", "&Blanks", "&Compare|Count &Kinds", 41, "", "blanks", "Count differences in blanks", Check},
    {"compare.count_numbering", "&Numbering", "&Compare|Count &Kinds", 41, "", "numbering", "Count differences in list numbers", Check},
    {"compare.count_formatting", "&Formatting", "&Compare|Count &Kinds", 41, "", "formatting", "Count differences in formats", Check},
    {"compare.count_moves", "&Moves", "&Compare|Count &Kinds", 41, "", "moved", "Tell paragraphs that moved", Check},
    {"compare.advanced", "Ad&vanced Options...", "&Compare", 40, "", "options", "Options that few documents need"},
    {"compare.defaults", "Restore De&faults", "&Compare", 40, "", "", "Set all compare options as they came"},

    {"go.next", "&Next Difference", "&Go", 10, "F8; Alt+Down", "next", "Go to the next difference"},
    {"go.previous", "&Previous Difference", "&Go", 10, "F7; Alt+Up", "previous", "Go to the difference before"},
    {"go.first", "&First Difference", "&Go", 10, "Alt+Home", "first", "Go to the first difference"},
    {"go.last", "&Last Difference", "&Go", 10, "Alt+End", "last", "Go to the last difference"},
    {"go.to", "&Go To Difference...", "&Go", 20, "Ctrl+G", "", "Go to a difference by its number"},
    {"go.list", "Difference L&ist", "&Go", 20, "Ctrl+L", "", "Put the focus into the list of differences"},
    {"go.read", "&Read Difference Aloud", "&Go", 20, "Ctrl+I", "", "Tell the current difference in full to a screen reader"},
};
// clang-format on

constexpr auto kAll = [] {
    std::array<Command, std::size(kFileAndEdit) + std::size(kView) + std::size(kCompareAndGo)> all;
    std::size_t at = 0;
    for (const Command& command : kFileAndEdit)
        all[at++] = command;
    for (const Command& command : kView)
        all[at++] = command;
    for (const Command& command : kCompareAndGo)
        all[at++] = command;
    return all;
}();

}  // namespace

std::span<const Command> CompareCommands() {
    return kAll;
}

}  // namespace zorvane
