// The engine's own reports, on the files of its last compare.
#include "common/platform/files.h"
#include "compare/engine/comparison_model.h"
#include "compare/engine/vestrel_x_state.h"

namespace zorvane {

ReportResult VestrelX::CreateEngineReport(const std::string& file, ReportType type,
                                          std::int32_t flags) {
    state_->report_status = CheckReadable(state_->master.path);
    if (!state_->report_status.ok())
        return ReportResult::MasterNotLoaded;
    state_->report_status = CheckReadable(state_->source.path);
    if (!state_->report_status.ok())
        return ReportResult::SourceNotLoaded;
    ComparisonModel model{
        *this,
        state_->report_title,
        state_->master_title,
        state_->source_title,
        state_->high_detail_summary,
        state_->look,
        {state_->ignore_case, state_->ignore_whitespace, state_->look.by_character,
         state_->look.filter_sections, state_->filter_expression}};
    std::string bytes;
    switch (type) {
        case ReportType::Html:
            bytes = WriteHtmlReport(model, flags);
            break;
        case ReportType::Text:
            bytes = WriteTextReport(model);
            break;
        case ReportType::Csv:
            bytes = WriteCsvReport(model);
            break;
        case ReportType::Document:
            return ReportResult::TargetNotCreated;
    }
    state_->report_status = ReplaceFile(file, bytes);
    return state_->report_status.ok() ? ReportResult::Ok : ReportResult::TargetNotCreated;
}

const Status& VestrelX::getReportStatus() const {
    return state_->report_status;
}

}  // namespace zorvane
