#include "tools/viewer_driver/viewer_report.h"

#include <fmt/format.h>
#include <functional>

#include "common/base/text_encoding.h"
#include "compare/document/rtf_writer.h"

namespace zorvane {
namespace {

struct NamedEditor {
    const char* name;
    ShownEditor editor;
    RichDocument& (*of)(ViewerEditors& editors);
};
constexpr NamedEditor kEditors[] = {
    {"original", ShownEditor::Original,
     [](ViewerEditors& all) -> RichDocument& { return all.rtbOriginal.editor; }},
    {"modified", ShownEditor::Modified,
     [](ViewerEditors& all) -> RichDocument& { return all.rtbModified.editor; }},
    {"left", ShownEditor::OriginalDiffFinal,
     [](ViewerEditors& all) -> RichDocument& { return all.rtbOriginalDiffFinal.editor; }},
    {"right", ShownEditor::ModifiedDiffFinal,
     [](ViewerEditors& all) -> RichDocument& { return all.rtbModifiedDiffFinal.editor; }},
    {"merged", ShownEditor::AllInOneDiff,
     [](ViewerEditors& all) -> RichDocument& { return all.rtbAIODiff.editor; }},
    {"additions", ShownEditor::Additions,
     [](ViewerEditors& all) -> RichDocument& { return all.rtbAdditions; }},
    {"deletions", ShownEditor::Deletions,
     [](ViewerEditors& all) -> RichDocument& { return all.rtbDeletions; }},
    {"changes", ShownEditor::Changes,
     [](ViewerEditors& all) -> RichDocument& { return all.rtbChanges; }},
};

struct NamedCommand {
    const char* name;
    ViewerCommand command;
};
constexpr NamedCommand kCommands[] = {
    {"refresh", ViewerCommand::Refresh},
    {"abort", ViewerCommand::Abort},
    {"view", ViewerCommand::ChangeView},
    {"filter", ViewerCommand::Filter},
    {"navigate", ViewerCommand::Navigate},
    {"report", ViewerCommand::Report},
    {"save", ViewerCommand::Save},
    {"edit", ViewerCommand::Edit},
    {"options", ViewerCommand::ChangeOptions},
    {"close", ViewerCommand::Close},
};

const char* WordOf(ViewerState state) {
    switch (state) {
        case ViewerState::Idle:
            return "idle";
        case ViewerState::Loading:
            return "loading";
        case ViewerState::Comparing:
            return "comparing";
        case ViewerState::Reporting:
            return "reporting";
        case ViewerState::Closing:
            break;
    }
    return "closing";
}

const char* WordOf(ViewFilter filter) {
    switch (filter) {
        case ViewFilter::All:
            return "all";
        case ViewFilter::Additions:
            return "additions";
        case ViewFilter::Deletions:
            return "deletions";
        case ViewFilter::Changes:
            break;
    }
    return "changes";
}

const char* WordOf(RunEnd end) {
    return end == RunEnd::Finished ? "finished" : end == RunEnd::Aborted ? "aborted" : "failed";
}

const char* YesNo(bool yes) {
    return yes ? "yes" : "no";
}

void Mix(std::uint64_t& hash, const std::string& text) {
    hash = (hash ^ std::hash<std::string>{}(text)) * 0x9E3779B97F4A7C15ULL + (hash >> 29);
}

// As RTF a text holds its formats too.
void Mix(std::uint64_t& hash, const Editor& editor) {
    Mix(hash, WriteRtf(editor.Rich()));
}

std::string Hex(std::uint64_t hash) {
    return fmt::format("{:016x}", hash);
}

std::uint64_t HashOf(const Editor& editor) {
    std::uint64_t hash = 1;
    Mix(hash, editor);
    return hash;
}

std::string EnabledCommands(const frmCompareFiles& viewer) {
    std::string enabled;
    for (const NamedCommand& row : kCommands) {
        if (viewer.IsEnabled(row.command))
            enabled += (enabled.empty() ? "" : ",") + std::string(row.name);
    }
    return enabled;
}

void AddResult(frmCompareFiles& viewer, Hashes hashes, StateValues& values) {
    values["last-run"] = WordOf(viewer.LastRun());
    values["last-report"] = std::to_string(static_cast<std::int32_t>(viewer.LastReport()));
    values["changes"] = std::to_string(viewer.mlChanges());
    values["additions"] = std::to_string(viewer.mlAdditions());
    values["deletions"] = std::to_string(viewer.mlDeletions());
    values["differences"] = std::to_string(viewer.Compared().records.size());
    values["current"] = std::to_string(viewer.mlCurrentDifference());
    values["list"] = std::to_string(viewer.Differences().Count());
    values["list-head"] = viewer.Differences().Line(0);
    if (hashes == Hashes::No)
        return;
    values["result"] = Hex(ResultHash(viewer));
    values["whole"] = Hex(WholeHash(viewer));
}

void AddEditors(frmCompareFiles& viewer, Hashes hashes, StateValues& values) {
    for (const NamedEditor& row : kEditors) {
        const RichDocument& editor = row.of(viewer.Editors());
        const std::string name = row.name;
        if (hashes == Hashes::Yes)
            values[name + "-hash"] = Hex(HashOf(editor));
        values[name + "-length"] = std::to_string(editor.Length());
        values[name + "-head"] = ToUtf8(editor.Text({CharPos{0}, 200}));
        values[name + "-undo"] = YesNo(editor.CanUndo());
        values[name + "-redo"] = YesNo(editor.CanRedo());
        values[name + "-modified"] = YesNo(editor.IsModified());
        const TextRange selected = editor.Selection();
        values[name + "-selection"] =
            std::to_string(selected.first.value) + "+" + std::to_string(selected.length);
        values[name + "-selected"] = ToUtf8(editor.SelectedText());
    }
}

void AddWindow(ScriptedWindow& window, StateValues& values) {
    values["status-main"] = window.status[StatusPanel::Main];
    values["status-detail"] = window.status[StatusPanel::Detail];
    values["status-caret"] = window.status[StatusPanel::Caret];
    values["status-time"] = window.status[StatusPanel::Time];
    values["shown-view"] = window.view == View::AllInOne ? "merged" : "sides";
    values["filter"] = WordOf(window.filter);
    values["abort-button"] = YesNo(window.abort_visible);
    values["please-wait"] = YesNo(window.please_wait);
    values["hourglass"] = YesNo(window.hourglasses > 0);
    values["filter-buttons"] = YesNo(window.filter_buttons);
    values["filter-additions"] = YesNo(window.filters[ViewFilter::Additions]);
    values["filter-deletions"] = YesNo(window.filters[ViewFilter::Deletions]);
    values["filter-changes"] = YesNo(window.filters[ViewFilter::Changes]);
    values["can-next"] = YesNo(window.navigation.next);
    values["can-previous"] = YesNo(window.navigation.previous);
    values["list-index"] = std::to_string(window.list_index);
    values["questions"] = std::to_string(window.questions.size());
    values["question"] = window.questions.empty() ? "" : window.questions.back();
    values["messages"] = std::to_string(window.messages.size());
    values["message"] = window.messages.empty() ? "" : window.messages.back();
}

}  // namespace

std::uint64_t ResultHash(frmCompareFiles& viewer) {
    std::uint64_t hash = 1;
    for (const NamedEditor& row : kEditors) {
        const bool other_view = viewer.CurrentView() == View::AllInOne
                                    ? row.editor == ShownEditor::OriginalDiffFinal ||
                                          row.editor == ShownEditor::ModifiedDiffFinal
                                    : row.editor == ShownEditor::AllInOneDiff;
        if (!other_view)
            Mix(hash, row.of(viewer.Editors()));
    }
    for (std::int32_t index = 0; index < viewer.Differences().Count(); ++index)
        Mix(hash, viewer.Differences().Line(index));
    Mix(hash, fmt::format("{} {} {} {}", viewer.mlChanges(), viewer.mlAdditions(),
                          viewer.mlDeletions(), viewer.Compared().records.size()));
    return hash;
}

std::uint64_t WholeHash(frmCompareFiles& viewer) {
    std::uint64_t hash = ResultHash(viewer);
    for (const NamedEditor& row : kEditors)
        Mix(hash, row.of(viewer.Editors()));
    Mix(hash, fmt::format("{} {} {}", static_cast<int>(viewer.CurrentView()), viewer.IsStale(),
                          viewer.Busy()));
    return hash;
}

StateValues StateOf(DriverSession& session, Hashes hashes) {
    StateValues values;
    values["viewers"] = std::to_string(session.Frame().NumberOpenScreens());
    values["ended"] = YesNo(session.Window().ended);
    values["boxes"] = std::to_string(session.Window().messages.size());
    values["box"] = session.Window().messages.empty() ? "" : session.Window().messages.back();
    values["refused"] = session.Refused().empty() ? "" : session.Refused().back();
    values["automation-differences"] = std::to_string(session.Process().glDifferencesFound);
    frmCompareFiles* viewer = session.Current();
    if (viewer == nullptr)
        return values;
    values["viewer"] = viewer->Description();
    values["state"] = WordOf(viewer->State());
    values["view"] = viewer->CurrentView() == View::AllInOne ? "merged" : "sides";
    values["fresh"] = YesNo(!viewer->IsStale());
    values["early"] = YesNo(viewer->ShowsEarlyResult());
    values["enabled"] = EnabledCommands(*viewer);
    const std::vector<std::string> files = viewer->FileNames();
    values["file-original"] = files.at(0);
    values["file-modified"] = files.at(1);
    AddResult(*viewer, hashes, values);
    AddEditors(*viewer, hashes, values);
    AddWindow(session.WindowOf(*viewer), values);
    return values;
}

RichDocument* EditorNamed(frmCompareFiles& viewer, const std::string& name) {
    for (const NamedEditor& row : kEditors) {
        if (name == row.name)
            return &row.of(viewer.Editors());
    }
    return nullptr;
}

bool ShownEditorNamed(const std::string& name, ShownEditor& editor) {
    for (const NamedEditor& row : kEditors) {
        if (name == row.name) {
            editor = row.editor;
            return true;
        }
    }
    return false;
}

}  // namespace zorvane
