#include "compare/viewer_printing.h"

#include <array>
#include <cmath>
#include <fmt/format.h>

#include "common/base/text_encoding.h"
#include "common/file_utilities.h"
#include "common/log_message.h"
#include "common/process_state.h"
#include "common/string_utilities.h"

namespace zorvane {
namespace {

constexpr double kTwipsPerInch = 1440;
constexpr const char* kDefaultMargin = "0.5";

// A print dialog may change the default printer of the whole system.
class DefaultPrinterKept {
  public:
    explicit DefaultPrinterKept(FileWindow& window)
        : window_(window), name_(window.DefaultPrinter()) {}
    ~DefaultPrinterKept() {
        if (!name_.empty() && window_.DefaultPrinter() != name_)
            window_.SetDefaultPrinter(name_);
    }
    DefaultPrinterKept(const DefaultPrinterKept&) = delete;
    DefaultPrinterKept& operator=(const DefaultPrinterKept&) = delete;

  private:
    FileWindow& window_;
    std::string name_;
};

struct MarginRow {
    std::string CompareFilesSettings::*text;
    double PageSetup::*margin;
};
constexpr std::array<MarginRow, 4> kMargins = {{
    {&CompareFilesSettings::txtLeftMargin, &PageSetup::left},
    {&CompareFilesSettings::txtTopMargin, &PageSetup::top},
    {&CompareFilesSettings::txtRightMargin, &PageSetup::right},
    {&CompareFilesSettings::txtBottomMargin, &PageSetup::bottom},
}};

PageEdges EdgesOf(ProcessState& process, const std::string& title) {
    // Without its seconds.
    const std::string stamp = sMakeTimeStamp(process.platform.clock->Now());
    return {title, stamp.substr(0, stamp.rfind(':')), process.Translate("Page"),
            process.Translate("of")};
}

}  // namespace

double MarginOf(std::string& inches) {
    constexpr double kNone = -1;
    const double value = dSafeCDbl(Trim(inches), kNone);
    if (!std::isfinite(value) || value < 0) {
        inches = kDefaultMargin;
        return kTwipsPerInch / 2;
    }
    return std::round(static_cast<double>(static_cast<float>(value)) * kTwipsPerInch);
}

PageSetup MarginsOf(CompareFilesSettings& settings) {
    PageSetup page;
    for (const MarginRow& row : kMargins)
        page.*row.margin = MarginOf(settings.*row.text);
    return page;
}

void TakeMargins(const PageSetup& before, const PageSetup& now, CompareFilesSettings& settings) {
    for (const MarginRow& row : kMargins) {
        if (now.*row.margin != before.*row.margin)
            settings.*row.text = fmt::format("{:.4g}", now.*row.margin / kTwipsPerInch);
    }
}

PrintEnd PrintEditor(const PrintingParts& parts, const Editor& editor, const std::string& title) {
    PrintQuestion question;
    question.title = parts.process.Translate("Print");
    question.has_selection = editor.Selection().length > 0;
    question.range = question.has_selection ? PrintRange::Selection : PrintRange::Whole;
    question.page = MarginsOf(parts.settings);
    const PageSetup before = question.page;
    parts.window.RefreshMargins();
    const DefaultPrinterKept kept(parts.window);
    const std::unique_ptr<PagePainter> printer = parts.window.PickPrinter(question);
    if (printer == nullptr)
        return PrintEnd::Cancelled;
    TakeMargins(before, question.page, parts.settings);
    parts.window.RefreshMargins();
    const bool selection = question.has_selection && question.range == PrintRange::Selection;
    const RichText text = selection ? editor.SelectedRich() : editor.Rich();
    const Result<std::int32_t> printed =
        PrintRTF({text, question.page, EdgesOf(parts.process, title)}, *printer, parts.watcher);
    if (!printed.ok() && printed.failure().reason == kPrintStopped)
        return PrintEnd::Stopped;
    if (!printed.ok()) {
        LogMessage(parts.telling,
                   parts.process.Translate("Unable to print") + ": " + printed.failure().reason);
        return PrintEnd::Failed;
    }
    if (const std::string remark = printer->Remark(); !remark.empty())
        LogMessage(parts.telling, remark);
    return PrintEnd::Printed;
}

}  // namespace zorvane
