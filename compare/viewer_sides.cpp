// The Compare Files viewer: what its window asks of the two sides.
#include <utility>

#include "common/process_state.h"
#include "compare/compare_files_viewer.h"

namespace zorvane {

// The parts of a run by their usual cost, so that one bar tells of all of it.
double frmCompareFiles::RunPercent() const {
    if (run_ == nullptr)
        return 0;
    constexpr double kLoaded = 25;
    constexpr double kCompared = 50;
    constexpr double kAll = 100;
    const double part = run_->Control().Part();
    switch (run_->Control().Step()) {
        case RunStep::LoadFiles:
        case RunStep::ReloadFiles:
            return kLoaded * part;
        case RunStep::PrepareCompare:
            return kLoaded;
        case RunStep::Compare:
            return kLoaded + (kCompared - kLoaded) * part;
        case RunStep::List:
        case RunStep::BeginMarking:
            return kCompared;
        case RunStep::MarkAllInOne:
        case RunStep::MarkSideBySide:
            return kCompared + (kAll - kCompared) * part;
        case RunStep::None:
        case RunStep::ImportPdf:
        case RunStep::ImportSlides:
        case RunStep::MarkSections:
        case RunStep::MarkLetters:
        case RunStep::WriteReport:
        case RunStep::Save:
        case RunStep::Print:
        case RunStep::LaunchReport:
            break;
    }
    return 0;
}

FileKind frmCompareFiles::KindOfFile(Side side) const {
    const std::string& file =
        side == Side::Original ? options_.sFileOriginal.Data() : options_.sFileModified.Data();
    return lFileType(file, options_.bRemoveFormatting.Data(), TextFileExtensions_);
}

const Comparison* frmCompareFiles::ShownComparison() const {
    if (early_)
        return early_->comparison.get();
    return shown_ ? &Compared() : nullptr;
}

void frmCompareFiles::Look(ParagraphsInSight sight) {
    in_sight_ = sight;
    if (run_ != nullptr)
        run_->Control().Look(sight);
}

void frmCompareFiles::SelectFile(Side side, const std::string& path) {
    clsVarString& file = side == Side::Original ? options_.sFileOriginal : options_.sFileModified;
    if (file.Data() == path)
        return;
    file.SetData(path);
    OptionsChanged();
}

void frmCompareFiles::LoadAgain(Side side) {
    if (!IsEnabled(ViewerCommand::Refresh) || asking_ > 0)
        return;
    const Asking asking(*this);
    PerSide<bool> loaded{false, false};
    loaded[side] = true;
    if (!MayLoseEdits(LosingStep::Load, loaded) || asking.GivenUp())
        return;
    PerSide<std::string> files;
    files[side] = ChosenFile(side);
    LoadAgain(files);
}

void frmCompareFiles::SwapSides() {
    if (!IsEnabled(ViewerCommand::Refresh))
        return;
    const bool compared = shown_.has_value();
    const std::string original = options_.sFileOriginal.Data();
    options_.sFileOriginal.SetData(options_.sFileModified.Data());
    options_.sFileModified.SetData(original);
    RichDocument& left = editors_.rtbOriginal.editor;
    RichDocument& right = editors_.rtbModified.editor;
    const PerSide<bool> unsaved{right.IsModified(), left.IsModified()};
    RichText text = left.TakeRich();
    left.SetRich(right.TakeRich());
    right.SetRich(std::move(text));
    if (unsaved.original)
        left.SetModified();
    if (unsaved.modified)
        right.SetModified();
    file_watch_.SwapSides();
    const auto swap_sides = [](auto& sides) { std::swap(sides.original, sides.modified); };
    swap_sides(load_memory_.loaded);
    swap_sides(load_memory_.bForceReload);
    swap_sides(load_memory_.bSlidesFailed);
    swap_sides(load_memory_.sNoText);
    swap_sides(load_memory_.beside);
    swap_sides(load_memory_.looks);
    OptionsChanged();
    if (compared)
        RunCompare(false);
}

}  // namespace zorvane
