#include "app/pair_results.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <nlohmann/json.hpp>
#include <sys/stat.h>

#include "common/base/append_format.h"
#include "common/base/json_text.h"
#include "common/platform/file_lock.h"
#include "common/platform/native_path.h"
#include "common/platform/process_end.h"
#include "common/platform/system_failure.h"
#include "common/platform/terminal.h"
#include "compare/engine/report_model.h"

namespace zorvane {
namespace {

using Json = nlohmann::json;

constexpr const char* kSchema = "zorvane-pairs/1";
constexpr mode_t kNewFile = 0666;

Json Parsed(std::string_view line) {
    Json object = Json::parse(line, nullptr, false);
    const bool ours = object.is_object() && object.value("schema", Json()) == kSchema &&
                      object.value("status", Json()).is_number_integer();
    return ours ? object : Json();
}

void AppendList(const char* field, const std::vector<std::string>& items, std::string& out) {
    if (items.empty())
        return;
    out.append(",\"").append(field).append("\":[");
    for (std::size_t i = 0; i < items.size(); ++i) {
        out += i == 0 ? "" : ",";
        AppendJsonString(items[i], out);
    }
    out += ']';
}

}  // namespace

std::string FoundFields(const Comparison& comparison) {
    const DifferenceCounts& counts = comparison.record_counts;
    std::string out = fmt::format(
        ",\"counts\":{{\"records\":{},\"moves\":{},\"changes\":{},\"additions\":{},"
        "\"deletions\":{},\"beside\":{}}},\"verdict\":",
        comparison.records.size(), comparison.moves.size(), counts.changes, counts.additions,
        counts.deletions, comparison.beside.size());
    AppendJsonString(VerdictText(comparison), out);
    return out;
}

std::string PairLine(const PairOutcome& outcome) {
    std::string out = fmt::format("{{\"schema\":\"{}\",\"pair\":{},", kSchema, outcome.number);
    AppendJsonPath("original", outcome.original, out);
    out += ',';
    AppendJsonPath("modified", outcome.modified, out);
    AppendFormat(out, ",\"status\":{}", static_cast<int>(outcome.status));
    out += outcome.found;
    AppendList("reports", outcome.written, out);
    AppendList("messages", outcome.messages, out);
    out += "}\n";
    return out;
}

Result<PairResults> PairResults::Open(const std::string& file) {
    PairResults results;
    if (file.empty() || file == "-")
        return results;
    results.file_ = file;
    const std::string path = NativePath(file);
    results.descriptor_ =
        FileDescriptor(open(path.c_str(), O_RDWR | O_CREAT | O_APPEND | O_CLOEXEC, kNewFile));
    struct stat facts {};
    if (!results.descriptor_.IsOpen() || fstat(results.descriptor_.Get(), &facts) != 0)
        return SystemFailure(file);
    if (!S_ISREG(facts.st_mode))  // a device or a pipe keeps nothing
        return results;
    if (!TryLock(results.descriptor_))
        return Failure{file + ": another run writes its results there"};
    results.old_.open(path, std::ios::binary);
    if (const Status found = results.FindKept(); !found.ok())
        return found.failure();
    return results;
}

bool PairResults::IsWhole(std::string_view line) const {
    return !Parsed(line).is_null();
}

// A run that was ended in the middle of its last line leaves a part of it, which goes.
Status PairResults::FindKept() {
    std::string line;
    std::string last;
    std::int64_t end = 0;       // of the lines with an end
    std::int64_t last_end = 0;  // without the last of these
    while (std::getline(old_, line) && !old_.eof()) {
        ++kept_;
        last_end = end;
        end += static_cast<std::int64_t>(line.size()) + 1;
        last.swap(line);
    }
    if (!old_.is_open() || old_.bad())
        return Failure{file_ + ": the results in it cannot be read"};
    if (kept_ == 1 && !IsWhole(last))
        return Failure{file_ + ": this holds no results of pairs; name another file"};
    if (kept_ > 0 && !IsWhole(last)) {
        --kept_;
        end = last_end;
    }
    if (kept_ == 0 && end == 0 && !line.empty() && !line.starts_with("{\"sch"))
        return Failure{file_ + ": this holds no results of pairs; name another file"};
    if (ftruncate(descriptor_.Get(), end) != 0)
        return SystemFailure(file_);
    old_.clear();
    old_.seekg(0);
    return Status::Ok();
}

Result<CompareStatus> PairResults::TakeKept(const PairOutcome& pair) {
    std::string line;
    if (!std::getline(old_, line))
        return Failure{file_ + ": the results in it cannot be read"};
    const Json object = Parsed(line);
    const std::string place = file_ + ": line " + std::to_string(pair.number);
    if (object.is_null())
        return Failure{place + " is no result of a pair; name another file"};
    // Both as they are written, so that names that are no UTF-8 compare too.
    std::string names;
    AppendJsonPath("original", pair.original, names);
    names += ',';
    AppendJsonPath("modified", pair.modified, names);
    if (line.find("," + names + ",\"status\"") == std::string::npos)
        return Failure{place +
                       " tells of another pair than the list; name another file, or the "
                       "list that it was made from"};
    const int status = object["status"].get<int>();
    constexpr int kWorst = static_cast<int>(CompareStatus::Trouble);
    return status >= 0 && status <= kWorst ? static_cast<CompareStatus>(status)
                                           : CompareStatus::Trouble;
}

Status PairResults::Write(std::string_view line) {
    if (!descriptor_.IsOpen())
        return WriteStream(Stream::Output, line);
    return WriteAll(descriptor_.Get(), line) ? Status::Ok() : Status(SystemFailure(file_));
}

Status PairResults::Close() {
    return descriptor_.Close() ? Status::Ok() : Status(SystemFailure(file_));
}

}  // namespace zorvane
