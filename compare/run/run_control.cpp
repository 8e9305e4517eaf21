#include "compare/run/run_control.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <string_view>
#include <utility>

#include "common/process_state.h"

namespace zorvane {
namespace {

constexpr double kWhole = 1'000'000;
constexpr int kPartBits = 32;
constexpr double kPercent = 100;

enum class Number : std::uint8_t { None, Percent, Whole };

// What stands in front of the number and behind it.
struct StepRow {
    RunStep step{};
    bool detail = false;  ///< belongs to the detail panel
    const char* front = "";
    Number number = Number::None;
    const char* back = "";
    const char* fixed_back = "";   ///< behind it, in every language
    const char* fixed_front = "";  ///< between the front and the number
};
constexpr StepRow kSteps[] = {
    {RunStep::LoadFiles, true, "Loading files", Number::None, "", "..."},
    {RunStep::ReloadFiles, false, "Re-loading files", Number::None, "", "..."},
    {RunStep::ImportPdf, true, "Importing PDF: ", Number::Percent, "% Complete "},
    {RunStep::ImportSlides, true, "Importing PPT: ", Number::Whole, "% Complete "},
    {RunStep::PrepareCompare, false, "Comparing", Number::None, "", "..."},
    {RunStep::Compare, false, "Compare In Process", Number::None, "", "..."},
    {RunStep::List, false, "Updating List Box: ", Number::Percent, "% Done. Click here to Abort."},
    {RunStep::BeginMarking, false, "Document: ", Number::None, "% Done."},
    {RunStep::MarkAllInOne, false, "Document: ", Number::Percent, "% Done."},
    // Kept: no colon here.
    {RunStep::MarkSideBySide, false, "Document ", Number::Percent, "% Done. Click here to Abort."},
    {RunStep::MarkSections, true, "Section: ", Number::Percent, "% Done"},
    {RunStep::MarkLetters, true, "By Character: ", Number::Percent, "% Done"},
    {RunStep::WriteReport, true, "Creating Report", Number::None, ""},
    {RunStep::LaunchReport, true, "Launching Report", Number::None, ""},
    {RunStep::Save, true, "Saving", Number::None, "", "..."},
    {RunStep::Print, true, "Printing", Number::Percent, "", "%", ": "},
};

const StepRow* RowOf(RunStep step) {
    const auto* row = std::find_if(std::begin(kSteps), std::end(kSteps),
                                   [step](const StepRow& known) { return known.step == step; });
    return row == std::end(kSteps) ? nullptr : row;
}

std::string NumberText(const StepRow& row, double part) {
    switch (row.number) {
        case Number::None:
            return row.step == RunStep::BeginMarking ? "0" : "";
        case Number::Whole:
            return std::to_string(std::lround(kPercent * part));
        case Number::Percent:
            break;
    }
    // Kept: one more blank in the text of the list.
    if (row.step == RunStep::List)
        return PercentText(kPercent * part) + " ";
    // Kept: no leading zero in the steps of a compare.
    if (row.step != RunStep::ImportPdf && row.step != RunStep::Print)
        return PercentText(kPercent * part);
    const std::string text = PercentText(kPercent * part);
    return text.starts_with('.') ? "0" + text : text;
}

}  // namespace

std::string PercentText(double percent) {
    std::array<char, 32> text{};
    const int size = std::snprintf(text.data(), text.size(), "%.1f", percent);
    const std::string_view digits(text.data(), static_cast<std::size_t>(size));
    return std::string(digits.starts_with("0.") ? digits.substr(1) : digits);
}

std::string StepText(ProcessState& process, RunStep step, double part) {
    const StepRow* row = RowOf(step);
    if (row == nullptr)
        return {};
    return process.Translate(row->front) + row->fixed_front + NumberText(*row, part) +
           process.Translate(row->back) + row->fixed_back;
}

void RunControl::Progress(RunStep step, double part) {
    const auto packed = (static_cast<std::uint64_t>(step) << kPartBits) |
                        static_cast<std::uint64_t>(std::clamp(part, 0.0, 1.0) * kWhole);
    const StepRow* row = RowOf(step);
    const bool detail = row == nullptr || row->detail;  // no step: the detail is over
    (detail ? detail_ : main_).store(packed, std::memory_order_relaxed);
}

RunControl::Told RunControl::Unpack(std::uint64_t packed) {
    return {static_cast<RunStep>(packed >> kPartBits),
            static_cast<double>(static_cast<std::uint32_t>(packed)) / kWhole};
}

void RunControl::Look(ParagraphsInSight sight) {
    const auto begin = static_cast<std::uint32_t>(std::max(0, sight.begin));
    const auto end = static_cast<std::uint32_t>(std::max(0, sight.end));
    sight_.store(static_cast<std::uint64_t>(begin) << kPartBits | end, std::memory_order_relaxed);
}

ParagraphsInSight RunControl::InSight() const {
    const std::uint64_t sight = sight_.load(std::memory_order_relaxed);
    return {static_cast<std::int32_t>(sight >> kPartBits),
            static_cast<std::int32_t>(static_cast<std::uint32_t>(sight))};
}

RunTexts RunControl::Texts(ProcessState& process) const {
    const Told main = Unpack(main_.load(std::memory_order_relaxed));
    const Told detail = Unpack(detail_.load(std::memory_order_relaxed));
    return {StepText(process, main.step, main.part), StepText(process, detail.step, detail.part)};
}

void RunControl::CallWhileRunning(std::function<void()> tick, std::chrono::milliseconds interval) {
    tick_ = std::move(tick);
    interval_ = interval;
}

bool RunControl::KeepGoing() {
    if (tick_ && !stop_) {
        const auto now = std::chrono::steady_clock::now();
        if (now - last_tick_ >= interval_) {
            last_tick_ = now;
            tick_();
        }
    }
    return !stop_.load(std::memory_order_relaxed);
}

}  // namespace zorvane
