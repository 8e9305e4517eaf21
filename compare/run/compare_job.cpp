#include "compare/run/compare_job.h"

#include <algorithm>
#include <tuple>
#include <utility>

#include "common/base/free_aside.h"
#include "common/log_message.h"
#include "compare/beside_notes.h"
#include "compare/difference_list.h"
#include "compare/document/document_look_of.h"
#include "compare/engine/compare_texts.h"
#include "compare/kind_counts.h"
#include "compare/run/view_builder.h"
#include "compare/run_options.h"
#include "load/file_kind.h"

namespace zorvane {
namespace {

/// A run's places are its own; a bad one is a fault of the program, not of the user.
class NoSound : public Sound {
  public:
    void Beep() override {}
};

class CompareJob {
  public:
    CompareJob(CompareInput input, RunWatcher& watcher)
        : input_(std::move(input)),
          watcher_(watcher),
          own_editors_(std::make_unique<RunEditors>(no_sound_, watcher)),
          editors_(*own_editors_),
          monitor_(input_.process, watcher),
          started_(input_.process.platform.clock->TickMilliseconds()) {
        for (DocumentEditor* entry :
             {&editors_.rtbOriginal, &editors_.rtbModified, &editors_.rtbOriginalDiff,
              &editors_.rtbModifiedDiff, &editors_.rtbAIODiff, &editors_.rtbScratch})
            entry->editor.SetDefaultFormat(input_.default_format);
        for (MemoryEditor* summary :
             {&editors_.rtbDeletions, &editors_.rtbAdditions, &editors_.rtbChanges})
            summary->SetDefaultFormat(input_.default_format);
    }

    CompareOutcome Run() {
        RunEnd end = RunEnd::Finished;
        if (Loads() && !Load()) {
            out_.load_failed = true;
            end = RunEnd::Failed;
        }
        if (end == RunEnd::Finished && input_.source != RunSource::LoadedAgain)
            end = Compare();
        if (!watcher_.KeepGoing())
            end = RunEnd::Aborted;
        out_.options = input_.options;
        out_.settings = std::move(input_.settings);
        if (end == RunEnd::Finished && !HandOut())
            end = RunEnd::Aborted;
        out_.end = end;
        if (end != RunEnd::Finished)
            DropResult();
        return std::move(out_);
    }

  private:
    bool Silent() const { return input_.telling.manner.bSilent; }
    bool Loads() const {
        return input_.source != RunSource::Texts && input_.source != RunSource::Compared;
    }
    bool ViewsWanted() const { return input_.views == BuildViews::Yes; }
    bool Plain() const { return input_.options.bRemoveFormatting.Data(); }
    DocumentEditor& EditorOf(Side side) {
        return side == Side::Original ? editors_.rtbOriginal : editors_.rtbModified;
    }
    ViewWanted Wanted() const {
        return {input_.view, Plain(), input_.settings.sFontName, input_.settings.dFontSize,
                Silent() ? nullptr : input_.questions};
    }
    PassContext Context() {
        return {editors_, Compared(), input_.options, out_.counters, monitor_, input_.presented};
    }
    const Comparison& Compared() const {
        return out_.comparison ? *out_.comparison : *input_.compared;
    }

    // ---- loading ----

    DocumentLoader MakeLoader(PerSide<clsMRU>& unused) {
        return DocumentLoader({input_.process, input_.telling, input_.options, input_.settings,
                               *input_.questions, unused, input_.TextFileExtensions,
                               [this](EditorTarget target) -> clsRTBDocument& {
                                   const Side side = target == EditorTarget::Original
                                                         ? Side::Original
                                                         : Side::Modified;
                                   out_.loaded[side] = true;
                                   return EditorOf(side).document;
                               },
                               [this](const std::string& text) { out_.detail = text; },
                               [this] {
                                   if (!Silent())
                                       started_ = input_.process.platform.clock->TickMilliseconds();
                               },
                               &watcher_, input_.service});
    }

    bool Wants(Side side) const {
        return input_.source == RunSource::LoadedAgain ? input_.load_again[side]
                                                       : !input_.keep[side];
    }

    bool Load() {
        const bool again = input_.source == RunSource::ReloadedFiles;
        watcher_.Progress(
            input_.source == RunSource::Files ? RunStep::LoadFiles : RunStep::ReloadFiles, 0);
        PerSide<clsMRU> unused;  // the viewer remembers what was loaded
        DocumentLoader loader = MakeLoader(unused);
        loader.Memory() = std::move(input_.memory);
        if (again && !Silent())
            Advise(loader);
        if (Wants(Side::Original))
            loader.Expect(Side::Original, input_.options.sFileOriginal.Data(), HowToLoad());
        bool loaded = true;
        for (const Side side : {Side::Modified, Side::Original}) {
            loaded = loaded && (!Wants(side) || (watcher_.KeepGoing() && LoadSide(loader, side)));
            out_.tried[side] = unused[side].Count() > 0;
            if (!loaded && !out_.unread)
                out_.unread = side;
        }
        out_.memory = std::move(loader.Memory());
        return loaded && watcher_.KeepGoing();
    }

    Reload HowToLoad() const {
        return input_.source == RunSource::LoadedAgain ? Reload::Forced : Reload::WhenChanged;
    }

    bool LoadSide(DocumentLoader& loader, Side side) {
        const std::string wanted = side == Side::Original ? input_.options.sFileOriginal.Data()
                                                          : input_.options.sFileModified.Data();
        std::string file = wanted;
        // Before the load: what is written meanwhile is then seen as a change.
        out_.stamps[side] = FileStampOf(file);
        if (!loader.LoadSide(side, file, HowToLoad()))
            return false;
        if (file != wanted)  // the user picked another
            out_.stamps[side] = FileStampOf(file);
        out_.looked_at[side] = true;
        return true;
    }

    void Advise(DocumentLoader& loader) {
        const PerSide<std::string> files{input_.options.sFileOriginal.Data(),
                                         input_.options.sFileModified.Data()};
        loader.WarnIfPPTAndRetainingFormatting(files);
        loader.WarnIfHTMLAndRetainingFormatting(files);
        loader.WarnIfXLSAndWordWrapIsTrue(files);
    }

    bool IsText() const {
        const clsCompareFileOptions& options = input_.options;
        return bIsFileTextOrExcel(options.sFileOriginal.Data(), input_.TextFileExtensions) ||
               bIsFileTextOrExcel(options.sFileModified.Data(), input_.TextFileExtensions);
    }

    // ---- comparing ----

    // What was not loaded comes from the input.
    void TakeTexts() {
        for (const Side side : kBothSides) {
            if (!out_.loaded[side] && input_.texts[side] != nullptr && watcher_.KeepGoing())
                EditorOf(side).editor.SetRich(CopyOf(*input_.texts[side], &watcher_));
        }
        out_.viewer_font = (Loads() && IsText()) || (ViewsWanted() && Plain());
        if (Loads() && IsText())
            UseFont(editors_, Wanted());
        if (ViewsWanted() && watcher_.KeepGoing())
            PrepareTexts(editors_, Wanted(), watcher_);
    }

    RunEnd Compare() {
        watcher_.Progress(RunStep::PrepareCompare, 0);
        TakeTexts();
        if (!watcher_.KeepGoing())
            return RunEnd::Aborted;
        if (input_.compared == nullptr) {
            if (const Status compared = RunEngine(); !compared.ok()) {
                if (!watcher_.KeepGoing())
                    return RunEnd::Aborted;
                LogMessage(input_.telling, compared.failure().reason);
                return RunEnd::Failed;
            }
        }
        if (!watcher_.KeepGoing())
            return RunEnd::Aborted;
        out_.counters = {Compared().record_counts, Compared().section_counts,
                         Compared().character_counts};
        if (!ViewsWanted())
            return RunEnd::Finished;
        PassContext context = Context();
        return BuildView(context, Wanted()) ? RunEnd::Finished : RunEnd::Aborted;
    }

    Status RunEngine() {
        watcher_.Progress(RunStep::Compare, 0);
        const Failure stopped{std::string(kCompareStopped)};
        CompareOptions asked = CompareOptionsOf(input_.options);
        asked.find_moves = input_.find_moves;
        if (!input_.count_numbering)
            LeaveNumberingOut(asked);
        for (const Side side : kBothSides) {
            Editor& editor = EditorOf(side).editor;
            out_.texts[side] =
                std::make_shared<const RichText>(ViewsWanted() ? editor.Rich() : editor.TakeRich());
            if (!watcher_.KeepGoing())
                return stopped;
        }
        const auto text_of = [this](Side side) {
            const SharedText& rich = out_.texts[side];
            return std::shared_ptr<const std::u16string>(rich, &rich->text);
        };
        const PerSide<std::shared_ptr<const std::u16string>> texts{text_of(Side::Original),
                                                                   text_of(Side::Modified)};
        Result<Comparison> compared = CompareTexts(texts, asked, &watcher_, Reader());
        if (!compared.ok())
            return compared.failure();
        out_.comparison = std::make_shared<Comparison>(std::move(compared).value());
        TellBeside();
        if (!watcher_.KeepGoing())
            return stopped;
        // From here on nothing changes it.
        if (ShowsEarly())
            input_.show_early({out_.texts, out_.comparison});
        return Status::Ok();
    }

    // Of a long text what is known is shown before all of it is.
    bool ShowsEarly() const {
        const std::int32_t paragraphs = std::max(editors_.rtbOriginal.document.ParagraphCount(),
                                                 editors_.rtbModified.document.ParagraphCount());
        return input_.show_early && ViewsWanted() && paragraphs >= kParagraphsOfEarlyResult;
    }

    EarlyReader Reader() {
        if (!ShowsEarly())
            return {};
        return {[this](Comparison found) {
                    input_.show_early(
                        {out_.texts, std::make_shared<const Comparison>(std::move(found))});
                },
                input_.in_sight};
    }

    void TellBeside() {
        Comparison& comparison = *out_.comparison;
        const LoadMemory& memory = Memory();
        BesideFound found =
            FindBeside(comparison, {{&memory.beside.original, &memory.beside.modified},
                                    {out_.texts.original.get(), out_.texts.modified.get()},
                                    memory.FormattingDepth(),
                                    &watcher_});
        if (!watcher_.KeepGoing())
            return;
        comparison.same_files = comparison.Same() && found.notes.empty() &&
                                HaveSameBytes({input_.options.sFileOriginal.Data(),
                                               input_.options.sFileModified.Data()});
        if (!watcher_.KeepGoing())
            return;
        comparison.beside = std::move(found.notes);
        comparison.beside_sentence = std::move(found.sentence);
        for (const Side side : kBothSides) {
            if (watcher_.KeepGoing())
                out_.looks[side] = LookOf(*out_.texts[side]);
        }
    }

    const LoadMemory& Memory() const { return Loads() ? out_.memory : input_.memory; }

    // ---- the result ----

    static ResultText Take(DocumentEditor& editor) {
        return {editor.editor.TakeRich(), editor.document.TakeParagraphs()};
    }

    void HandOutTexts() {
        for (const Side side : kBothSides) {
            if (!out_.loaded[side])
                continue;
            EditorOf(side).document.ParagraphCollectionCreate(&watcher_);
            out_.sources[side] = Take(EditorOf(side));
        }
    }

    // A text in many pieces is put together here, so each may take its time.
    bool HandOutViews() {
        const auto take = [this](DocumentEditor& from, ResultText& to) {
            if (watcher_.KeepGoing())
                to = Take(from);
        };
        take(editors_.rtbOriginal, out_.sources.original);
        take(editors_.rtbModified, out_.sources.modified);
        if (input_.view == View::AllInOne) {
            take(editors_.rtbAIODiff, out_.all_in_one);
        } else {
            take(editors_.rtbOriginalDiff, out_.side_by_side.original);
            take(editors_.rtbModifiedDiff, out_.side_by_side.modified);
        }
        if (!watcher_.KeepGoing())
            return false;
        out_.deletions = editors_.rtbDeletions.TakeRich();
        out_.additions = editors_.rtbAdditions.TakeRich();
        out_.changes = editors_.rtbChanges.TakeRich();
        return watcher_.KeepGoing();
    }

    // False after a stop.
    bool HandOut() {
        out_.memory = Memory();
        if (input_.source == RunSource::LoadedAgain) {
            HandOutTexts();
            return watcher_.KeepGoing();
        }
        if (ViewsWanted() && !HandOutViews())
            return false;
        out_.view = input_.view;
        out_.views_built = ViewsWanted();
        out_.elapsed = input_.process.platform.clock->TickMilliseconds() - started_;
        return true;
    }

    void DropResult() {
        const auto drop = [](auto&... parts) {
            FreeAside(std::make_tuple(std::move(parts)...));
            ((parts = {}), ...);
        };
        drop(out_.comparison, out_.texts, out_.sources, out_.side_by_side, out_.all_in_one,
             out_.deletions, out_.additions, out_.changes, own_editors_);
    }

    CompareInput input_;
    RunWatcher& watcher_;
    NoSound no_sound_;
    std::unique_ptr<RunEditors> own_editors_;  // nothing once the result is dropped
    RunEditors& editors_;
    RunMonitor monitor_;
    std::uint32_t started_;
    CompareOutcome out_;
};

}  // namespace

CompareOutcome RunCompareJob(CompareInput input, RunWatcher& watcher) {
    return CompareJob(std::move(input), watcher).Run();
}

}  // namespace zorvane
