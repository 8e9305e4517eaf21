#include "compare/engine/vestrel_x.h"

#include <algorithm>
#include <limits>

#include "common/platform/files.h"
#include "common/platform/mapped_file.h"
#include "compare/engine/folder_state.h"
#include "compare/engine/line_filter.h"
#include "compare/engine/report_model.h"

namespace zorvane {
namespace {

struct EngineFile {
    std::string path;
    MappedFile file;  // of the last `Compare`; the lines lie in it
};

Status ReadSide(EngineFile& side) {
    Result<MappedFile> file = MappedFile::Open(side.path);
    if (!file.ok())
        return file.failure();
    if (file.value().Bytes().size() >= std::numeric_limits<std::uint32_t>::max())
        return Failure{side.path + ": larger than 4 GiB"};
    side.file = std::move(file).value();
    return Status::Ok();
}

}  // namespace

struct VestrelX::State {
    PerSide<EngineFile> files;
    bool from_files = false;  // the last compare read the files
    CompareOptions options;
    bool use_line_bracket = false;
    std::int32_t line_bracket = 1;
    std::string filter_expression;
    bool filter_enabled = false;

    PerSide<std::string> titles;
    PerSide<std::string> dates;
    PerSide<DocumentLook> document_looks;
    std::string report_title;
    bool high_detail_summary = false;
    bool double_byte_locale = false;
    std::uint32_t report_mode = 0666;
    ReportLook look;
    UnchangedText unchanged = UnchangedText::Fitting;
    Status report_status;

    Comparison comparison;

    CompareOptions Asked() const {
        CompareOptions asked = options;
        asked.bracket = use_line_bracket ? std::max(line_bracket, 1) : 0;
        asked.expressions = filter_enabled ? filter_expression : std::string();
        return asked;
    }

    Status Take(Result<Comparison> result) {
        if (!result.ok())
            return result.failure();
        comparison = std::move(result).value();
        return Status::Ok();
    }

    Status CompareBytes(PerSide<std::string_view> texts, bool find_sections) {
        CompareOptions asked = Asked();
        asked.find_sections = find_sections;
        return Take(CompareLineFiles(texts, asked, nullptr));
    }
};

VestrelX::VestrelX()
    : state_(std::make_unique<State>()), folders_(std::make_unique<FolderState>()) {}
VestrelX::~VestrelX() = default;
VestrelX::VestrelX(VestrelX&&) noexcept = default;
VestrelX& VestrelX::operator=(VestrelX&&) noexcept = default;

void VestrelX::putMasterFile(const std::string& path) {
    state_->files.original.path = path;
}
void VestrelX::putSourceFile(const std::string& path) {
    state_->files.modified.path = path;
}
void VestrelX::putIgnoreCase(bool on) {
    state_->options.ignore_case = on;
}
void VestrelX::putIgnoreWhitespace(bool on) {
    state_->options.ignore_whitespace = on;
}
void VestrelX::putIgnoreEmptyLines(bool on) {
    state_->options.ignore_empty_lines = on;
}
void VestrelX::putReservedSwitch(bool /*on*/) {}
void VestrelX::putCompareFaster(bool on) {
    state_->options.faster = on;
}
void VestrelX::putLargerSections(bool on) {
    state_->options.larger_sections = on;
}
void VestrelX::putUseLineBracket(bool on) {
    state_->use_line_bracket = on;
}
void VestrelX::putLineBracket(std::int32_t lines) {
    state_->line_bracket = lines;
}
void VestrelX::putFilterExpression(const std::string& expressions) {
    state_->filter_expression = expressions;
}
void VestrelX::putFilterEnabled(bool on) {
    state_->filter_enabled = on;
}
void VestrelX::putCompareMode(std::int32_t /*mode*/) {}

void VestrelX::putMasterTitle(const std::string& title) {
    state_->titles.original = title;
}
void VestrelX::putSourceTitle(const std::string& title) {
    state_->titles.modified = title;
}
void VestrelX::putFileDates(PerSide<std::string> dates) {
    state_->dates = std::move(dates);
}
void VestrelX::putDocumentLooks(PerSide<DocumentLook> looks) {
    state_->document_looks = std::move(looks);
}
void VestrelX::putReportTitle(const std::string& title) {
    state_->report_title = title;
}
void VestrelX::putHighDetailSummary(bool on) {
    state_->high_detail_summary = on;
}
void VestrelX::putDoubleByteLocale(bool on) {
    state_->double_byte_locale = on;
}
void VestrelX::putReportLook(const ReportLook& look) {
    state_->look = look;
}
void VestrelX::putReportMode(std::uint32_t mode) {
    state_->report_mode = mode;
}
void VestrelX::putUnchangedText(UnchangedText unchanged) {
    state_->unchanged = unchanged;
}

void VestrelX::SetOptions(const CompareOptions& options) {
    state_->options = options;
    state_->use_line_bracket = options.bracket > 0;
    state_->line_bracket = options.bracket;
    state_->filter_expression = options.expressions;
    state_->filter_enabled = !options.expressions.empty();
}

Status VestrelX::Compare() {
    state_->comparison = Comparison();
    state_->document_looks = {};
    state_->from_files = true;
    // Both old files go before the new ones come, so that memory never holds four.
    for (const Side side : kBothSides)
        state_->files[side].file = MappedFile();
    for (const Side side : kBothSides) {
        Status read = ReadSide(state_->files[side]);
        if (!read.ok())
            return read;
    }
    constexpr bool kRecordsAreEnough = false;
    return state_->CompareBytes(
        {state_->files.original.file.Bytes(), state_->files.modified.file.Bytes()},
        kRecordsAreEnough);
}

Status VestrelX::CompareText(std::string_view master, std::string_view source) {
    state_->comparison = Comparison();
    state_->document_looks = {};
    state_->from_files = false;
    return state_->CompareBytes({master, source}, true);
}

Status VestrelX::CompareEditors(PerSide<std::shared_ptr<const std::u16string>> texts,
                                RunWatcher* watcher) {
    state_->comparison = Comparison();
    state_->from_files = false;
    return state_->Take(CompareTexts(std::move(texts), state_->Asked(), watcher));
}

void VestrelX::Show(Comparison comparison) {
    state_->comparison = std::move(comparison);
    state_->from_files = false;
}

void VestrelX::putBeside(std::vector<BesideNote> notes, const std::string& sentence) {
    state_->comparison.beside = std::move(notes);
    state_->comparison.beside_sentence = sentence;
}

void VestrelX::putSameFiles(bool same) {
    state_->comparison.same_files = same;
}

const Comparison& VestrelX::Compared() const {
    return state_->comparison;
}

std::int32_t VestrelX::getDifferenceCount() const {
    return static_cast<std::int32_t>(state_->comparison.records.size());
}

std::optional<DifferenceRecord> VestrelX::GetDifference(RecordIndex index) const {
    if (index.value < 0 || index.value >= getDifferenceCount())
        return std::nullopt;
    return state_->comparison.records[static_cast<std::size_t>(index.value)];
}

const std::vector<DifferenceRecord>& VestrelX::Records() const {
    return state_->comparison.records;
}

ReportResult VestrelX::WhyNotCompared() {
    State& state = *state_;
    state.report_status = Status::Ok();
    if (!state.from_files)
        return ReportResult::NotCompared;
    state.report_status = CheckReadable(state.files.original.path);
    if (!state.report_status.ok())
        return ReportResult::MasterNotLoaded;
    state.report_status = CheckReadable(state.files.modified.path);
    return state.report_status.ok() ? ReportResult::NotCompared : ReportResult::SourceNotLoaded;
}

ReportResult VestrelX::CreateEngineReport(const std::string& file, ReportType type,
                                          std::int32_t flags, RunWatcher* watcher) {
    State& state = *state_;
    state.report_status = Status::Ok();
    if (type == ReportType::Document)
        return ReportResult::TargetNotCreated;
    if (state.from_files) {
        if (const ReportResult why = WhyNotCompared(); why != ReportResult::NotCompared)
            return why;
        state.report_status = state.CompareBytes(
            {state.files.original.file.Bytes(), state.files.modified.file.Bytes()}, true);
        if (!state.report_status.ok())
            return ReportResult::NotCompared;
    }
    ReportModel model{state.comparison};
    model.title = state.report_title;
    model.names = state.titles;
    model.dates = state.dates;
    for (const Side side : kBothSides) {
        const DocumentLook& look = state.document_looks[side];
        model.document_looks[side] = look.Plain() ? nullptr : &look;
    }
    model.high_detail = state.high_detail_summary;
    model.look = state.look;
    model.unchanged = state.unchanged;
    model.file_mode = state.report_mode;
    model.watcher = watcher;
    state.report_status = WriteEngineReport(model, file, type, flags);
    if (state.report_status.ok())
        return ReportResult::Ok;  // a stop behind the last question came too late
    return KeepGoing(watcher) ? ReportResult::TargetNotCreated : ReportResult::Aborted;
}

const Status& VestrelX::getReportStatus() const {
    return state_->report_status;
}

Status VestrelX::CheckFilterExpression(const std::string& expressions) {
    LineFilter filter;
    return filter.Set({false, false, true}, expressions);
}

}  // namespace zorvane
