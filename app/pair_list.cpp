#include "app/pair_list.h"

#include <nlohmann/json.hpp>
#include <utility>
#include <vector>

#include "app/compare_arguments.h"
#include "app/passwords.h"

namespace zorvane {
namespace {

using Json = nlohmann::json;

std::vector<std::string> FieldsOf(std::string_view line) {
    std::vector<std::string> fields;
    while (true) {
        const std::size_t end = line.find('\t');
        fields.emplace_back(line.substr(0, end));
        if (end == std::string_view::npos)
            return fields;
        line.remove_prefix(end + 1);
    }
}

Status TakeFields(std::string_view line, CompareCommand& command) {
    std::vector<std::string> fields = FieldsOf(line);
    command.original = fields[0];
    if (fields.size() < 2)
        return Failure{"write ORIGINAL, a tab and MODIFIED, or a JSON object"};
    command.modified = fields[1];
    fields.erase(fields.begin(), fields.begin() + 2);
    std::erase(fields, "");
    return TakeReports(fields, command);
}

std::string ValueText(const Json& value) {
    return value.is_string() ? value.get<std::string>() : value.dump();
}

// A list gives an option several times; the names of "set" are fields of their own.
Status AddOption(const std::string& name, const Json& value, std::vector<PairOption>& options) {
    if (value.is_null())
        return Failure{name + ": null is no value"};
    if (value.is_array()) {
        for (const Json& item : value) {
            if (item.is_structured())
                return Failure{name + ": a list of plain values is wanted"};
            options.push_back({name, ValueText(item)});
        }
        return Status::Ok();
    }
    if (!value.is_object()) {
        options.push_back({name, ValueText(value)});
        return Status::Ok();
    }
    if (name != "set")
        return Failure{name + ": a plain value is wanted"};
    for (const auto& [setting, wanted] : value.items()) {
        if (wanted.is_structured())
            return Failure{setting + ": a plain value is wanted"};
        options.push_back({name, setting + "=" + ValueText(wanted)});
    }
    return Status::Ok();
}

Status TakeFile(const Json& object, const char* name, std::string& file) {
    const auto found = object.find(name);
    if (found == object.end() || !found->is_string())
        return Failure{std::string(name) + ": the name of a file is wanted"};
    file = found->get<std::string>();
    return Status::Ok();
}

Status TakeObject(std::string_view line, CompareCommand& command) {
    const Json object = Json::parse(line, nullptr, false);
    if (object.is_discarded())
        return Failure{"this is no JSON object"};
    Status step = TakeFile(object, "original", command.original);
    if (step.ok())
        step = TakeFile(object, "modified", command.modified);
    std::vector<PairOption> options;
    bool password_file = false;
    for (const auto& [name, value] : object.items()) {
        if (name == "original" || name == "modified" || !step.ok())
            continue;
        step = AddOption(name, value, options);
        password_file = password_file || name == "password-file";
    }
    if (step.ok() && !options.empty())
        step = TakePairOptions(options, command);
    return step.ok() && password_file ? FillPasswords(command.load) : step;
}

}  // namespace

ListedPair ReadPair(std::string_view line, const CompareCommand& common) {
    ListedPair pair{common, Status::Ok()};
    pair.command.pairs.reset();
    pair.command.quiet = true;
    pair.fault =
        line.starts_with('{') ? TakeObject(line, pair.command) : TakeFields(line, pair.command);
    for (const std::string& file : {pair.command.original, pair.command.modified}) {
        if (pair.fault.ok() && (file.empty() || file == "-"))
            pair.fault = Failure{"a pair of a list is two files; standard input is none of them"};
    }
    return pair;
}

}  // namespace zorvane
