#include "compare/engine/vestrel_x.h"

#include <algorithm>
#include <limits>

#include "compare/engine/vestrel_x_state.h"

namespace zorvane {
namespace {

constexpr std::int32_t kLargerSectionGap =
    3;  // unchanged lines that do not keep two differences apart

bool IsBlankLine(std::string_view line) {
    return line.find_first_not_of(" \t\r\n\v\f") == std::string_view::npos;
}

Status ReadSide(EngineSide& side) {
    side.file = MappedFile();  // before the new bytes come, so that both are never there together
    Result<MappedFile> file = MappedFile::Open(side.path);
    if (!file.ok())
        return file.failure();
    if (file.value().Bytes().size() >= std::numeric_limits<std::uint32_t>::max())
        return Failure{side.path + ": larger than 4 GiB"};
    side.file = std::move(file).value();
    return Status::Ok();
}

}  // namespace

// Lines that are the same bytes are equal under every switch.
VestrelX::State::CommonEnds VestrelX::State::FindCommonEnds() const {
    const std::string_view left = master.lines.Bytes();
    const std::string_view right = source.lines.Bytes();
    const std::int32_t most = std::min(master.lines.Count(), source.lines.Count());
    CommonEnds ends;
    const auto differ = std::mismatch(
        left.begin(),
        left.begin() + static_cast<std::ptrdiff_t>(std::min(left.size(), right.size())),
        right.begin());
    const auto same = static_cast<std::size_t>(differ.first - left.begin());
    // Both sides are asked: a last line without an end may be no more than the front of its
    // partner.
    ends.front = std::min(master.lines.CountWithin(same), source.lines.CountWithin(same));
    while (ends.front < most && master.lines.Line(ends.front) == source.lines.Line(ends.front))
        ++ends.front;
    // Under a bracket it matters how far the end has moved, so the search has to see it.
    while (!use_line_bracket && ends.back < most - ends.front &&
           master.lines.Line(master.lines.Count() - 1 - ends.back) ==
               source.lines.Line(source.lines.Count() - 1 - ends.back))
        ++ends.back;
    return ends;
}

void VestrelX::State::Number(EngineSide& side, CommonEnds ends, bool identity) {
    const std::int32_t end = side.lines.Count() - ends.back;
    side.numbers.clear();
    side.line_of.clear();
    side.keys.clear();
    const auto count = static_cast<std::size_t>(end - ends.front);
    side.numbers.reserve(count);
    if (!identity)
        side.keys.reserve(count);  // keys are borrowed by the table, so they must not move
    std::string buffer;
    for (std::int32_t line = ends.front; line < end; ++line) {
        std::string_view key = side.lines.Line(line);
        if (!identity)
            key = side.keys.emplace_back(filter.Key(key, buffer));
        if (ignore_empty_lines) {
            if (key.empty())
                continue;
            side.line_of.push_back(line);
        }
        side.numbers.push_back(table.NumberOf(key));
    }
}

void VestrelX::State::Slide(CommonEnds ends) {
    // Sliding looks past the part that was searched, into the common ends, unless lines were left
    // out.
    const auto lines_of = [&](EngineSide& side) {
        SideLines lines;
        if (ignore_empty_lines) {
            lines.equal = [&side](std::int32_t left, std::int32_t right) {
                return side.numbers[static_cast<std::size_t>(left)] ==
                       side.numbers[static_cast<std::size_t>(right)];
            };
            lines.blank = [](std::int32_t) { return false; };
            return lines;
        }
        const auto searched = static_cast<std::int32_t>(side.numbers.size());
        lines.equal = [&side, ends, searched](std::int32_t left, std::int32_t right) {
            const std::int32_t a = left - ends.front;
            const std::int32_t b = right - ends.front;
            if (a >= 0 && a < searched && b >= 0 && b < searched)
                return side.numbers[static_cast<std::size_t>(a)] ==
                       side.numbers[static_cast<std::size_t>(b)];
            return side.lines.Line(left) == side.lines.Line(right);
        };
        lines.blank = [&side](std::int32_t line) { return IsBlankLine(side.lines.Line(line)); };
        return lines;
    };
    ChangedPlaces& changed = search.Changed();
    if (!ignore_empty_lines) {
        for (std::vector<std::uint8_t>* flags : {&changed.original, &changed.modified}) {
            flags->insert(flags->begin(), static_cast<std::size_t>(ends.front), 0);
            flags->insert(flags->end(), static_cast<std::size_t>(ends.back), 0);
        }
    }
    SlideBlocks(changed.original, changed.modified, lines_of(master));
    SlideBlocks(changed.modified, changed.original, lines_of(source));
}

Status VestrelX::State::Run(std::string_view master_text, std::string_view source_text) {
    records.clear();
    const bool expressions = filter_enabled && !filter_expression.empty();
    const Status usable =
        filter.Set({ignore_case, ignore_whitespace, expressions}, filter_expression);
    if (!usable.ok())
        return usable;
    master.lines.Split(master_text);
    source.lines.Split(source_text);
    const CommonEnds ends = FindCommonEnds();
    const bool identity = filter.IsIdentity();
    const auto in_middle = static_cast<std::size_t>(master.lines.Count() + source.lines.Count() -
                                                    2 * (ends.front + ends.back));
    if (in_middle == 0)
        return Status::Ok();
    table.Clear(in_middle);
    Number(master, ends, identity);
    Number(source, ends, identity);
    search.Run(master.numbers, source.numbers, table.Count(),
               {compare_faster, use_line_bracket ? std::max(line_bracket, 1) : 0});
    Slide(ends);
    BuildRecords(search.Changed(), master.line_of, source.line_of,
                 ignore_empty_lines ? ends.front : 0, records);
    if (!ignore_empty_lines)
        JoinAcrossCoincidences(records);
    if (larger_sections)
        MergeNearRecords(records, kLargerSectionGap);
    return Status::Ok();
}

VestrelX::VestrelX() : state_(std::make_unique<State>()) {}
VestrelX::~VestrelX() = default;
VestrelX::VestrelX(VestrelX&&) noexcept = default;
VestrelX& VestrelX::operator=(VestrelX&&) noexcept = default;

void VestrelX::putMasterFile(const std::string& path) {
    state_->master.path = path;
}
void VestrelX::putSourceFile(const std::string& path) {
    state_->source.path = path;
}
void VestrelX::putIgnoreCase(bool on) {
    state_->ignore_case = on;
}
void VestrelX::putIgnoreWhitespace(bool on) {
    state_->ignore_whitespace = on;
}
void VestrelX::putIgnoreEmptyLines(bool on) {
    state_->ignore_empty_lines = on;
}
void VestrelX::putReservedSwitch(bool /*on*/) {}
void VestrelX::putCompareFaster(bool on) {
    state_->compare_faster = on;
}
void VestrelX::putLargerSections(bool on) {
    state_->larger_sections = on;
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
    state_->master_title = title;
}
void VestrelX::putSourceTitle(const std::string& title) {
    state_->source_title = title;
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

Status VestrelX::Compare() {
    state_->records.clear();
    for (EngineSide* side : {&state_->master, &state_->source}) {
        side->lines.Split({});
        const Status read = ReadSide(*side);
        if (!read.ok())
            return read;
    }
    return state_->Run(state_->master.file.Bytes(), state_->source.file.Bytes());
}

Status VestrelX::CompareText(std::string_view master, std::string_view source) {
    return state_->Run(master, source);
}

std::int32_t VestrelX::getDifferenceCount() const {
    return static_cast<std::int32_t>(state_->records.size());
}

std::optional<DifferenceRecord> VestrelX::GetDifference(RecordIndex index) const {
    if (index.value < 0 || index.value >= getDifferenceCount())
        return std::nullopt;
    return state_->records[static_cast<std::size_t>(index.value)];
}

const std::vector<DifferenceRecord>& VestrelX::Records() const {
    return state_->records;
}
std::int32_t VestrelX::MasterLineCount() const {
    return state_->master.lines.Count();
}
std::int32_t VestrelX::SourceLineCount() const {
    return state_->source.lines.Count();
}
std::string_view VestrelX::MasterLine(std::int32_t number) const {
    return state_->master.lines.Line(number - 1);
}
std::string_view VestrelX::SourceLine(std::int32_t number) const {
    return state_->source.lines.Line(number - 1);
}

bool VestrelX::IsIgnoredLine(std::string_view line) const {
    std::string buffer;
    return state_->ignore_empty_lines && state_->filter.Key(line, buffer).empty();
}

std::size_t VestrelX::TextBytes() const {
    return state_->master.lines.Bytes().size() + state_->source.lines.Bytes().size();
}

Status VestrelX::CheckFilterExpression(const std::string& expressions) {
    LineFilter filter;
    return filter.Set({false, false, true}, expressions);
}

}  // namespace zorvane
