#include "app/output_check.h"

#include <algorithm>
#include <filesystem>

#include "app/compare_command.h"
#include "common/platform/native_path.h"

namespace zorvane {
namespace {

// Where a name leads, links and all, whether there is a file yet or not.
std::filesystem::path PlaceOf(const std::string& name) {
    std::error_code error;
    const std::filesystem::path place = BehindLinks(NativePath(AbsolutePath(name)));
    const std::filesystem::path known = std::filesystem::weakly_canonical(place, error);
    return error ? place : known;
}

bool IsSpecial(const std::string& name) {
    std::error_code error;
    const std::filesystem::file_status status = std::filesystem::status(NativePath(name), error);
    return std::filesystem::exists(status) && !std::filesystem::is_regular_file(status) &&
           !std::filesystem::is_directory(status);
}

bool LiesIn(const std::string& name, const std::string& folder) {
    const std::filesystem::path place = PlaceOf(name);
    const std::filesystem::path root = PlaceOf(folder);
    const auto [at, own] = std::mismatch(root.begin(), root.end(), place.begin(), place.end());
    return at == root.end() || at->empty();
}

bool LeadToOneFile(const std::string& first, const std::string& second) {
    return IsSameFile(first, second) || PlaceOf(first) == PlaceOf(second);
}

}  // namespace

Status CheckOutputs(const std::vector<std::string>& inputs,
                    const std::vector<NamedOutput>& outputs) {
    for (std::size_t index = 0; index < outputs.size(); ++index) {
        const NamedOutput& output = outputs[index];
        if (output.file.empty() || output.file == "-" || IsSpecial(output.file))
            continue;
        for (const std::string& input : inputs) {
            if (input != "-" && LeadToOneFile(output.file, input))
                return Failure{output.option + ": " + output.file +
                               ": this is a document that is read; name another file"};
        }
        for (std::size_t other = 0; other < index; ++other) {
            if (LeadToOneFile(output.file, outputs[other].file))
                return Failure{output.option + ": " + output.file + ": " + outputs[other].option +
                               " writes to this file too; name another one"};
        }
    }
    return Status::Ok();
}

Status CheckOutputs(const CompareCommand& command) {
    std::vector<NamedOutput> outputs{{"--log", command.load.log_file}};
    if (command.pairs) {
        outputs.push_back({"-o", command.pairs_output});
        return CheckOutputs({*command.pairs}, outputs);
    }
    for (const ReportTarget& report : command.reports)
        outputs.push_back({"--report", report.file});
    for (const std::string& file : command.redline.files)
        outputs.push_back({"--report", file});
    outputs.push_back({"--json", command.json.value_or("")});
    return CheckOutputs({command.original, command.modified}, outputs);
}

Status CheckOutputs(const TextCommand& command) {
    return CheckOutputs({command.file},
                        {{"--log", command.load.log_file}, {"--output", command.output}});
}

Status CheckOutputs(const FoldersCommand& command) {
    const std::vector<NamedOutput> outputs{{"--log", command.load.log_file},
                                           {"--output", command.output},
                                           {"--json", command.json.value_or("")}};
    if (Status apart = CheckOutputs(std::vector<std::string>{}, outputs); !apart.ok())
        return apart;
    std::vector<NamedOutput> all = outputs;
    all.push_back({"--reports", command.reports});
    for (const NamedOutput& output : all) {
        for (const std::string& folder : {command.original, command.modified}) {
            if (!output.file.empty() && output.file != "-" && !IsSpecial(output.file) &&
                LiesIn(output.file, folder))
                return Failure{output.option + ": " + output.file +
                               ": this lies in a folder that is compared; name another place"};
        }
    }
    return Status::Ok();
}

}  // namespace zorvane
