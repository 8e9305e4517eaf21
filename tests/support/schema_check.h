// Whether JSON is what the schemas in docs say.
#pragma once

#include <algorithm>
#include <fstream>
#include <nlohmann/json.hpp>
#include <string>

namespace zorvane {

/// What the schemas in docs use of JSON Schema. The answer is the first fault.
class SchemaCheck {
    using Json = nlohmann::json;

  public:
    /// `name`: "zorvane-compare-1".
    explicit SchemaCheck(const std::string& name)
        : schema_(Json::parse(std::ifstream(ZORVANE_DOCS "/" + name + ".schema.json"))) {}

    std::string Fault(const Json& value) const { return Fault(value, schema_, "$"); }

  private:
    std::string Fault(const Json& value, const Json& rule, const std::string& place) const {
        if (rule.contains("$ref"))
            return Fault(value,
                         schema_.at(Json::json_pointer(rule["$ref"].get<std::string>().substr(1))),
                         place);
        if (rule.contains("const") && value != rule["const"])
            return place + ": another constant";
        if (rule.contains("enum") &&
            std::find(rule["enum"].begin(), rule["enum"].end(), value) == rule["enum"].end())
            return place + ": none of the values";
        if (rule.contains("type") && !HasType(value, rule["type"]))
            return place + ": no " + rule["type"].dump();
        if (rule.contains("minimum") && value < rule["minimum"])
            return place + ": too small";
        return value.is_array() ? ArrayFault(value, rule, place) : ObjectFault(value, rule, place);
    }

    static bool HasType(const Json& value, const Json& type) {
        if (type.is_array())
            return std::any_of(type.begin(), type.end(),
                               [&](const Json& one) { return HasType(value, one); });
        return type == "integer" ? value.is_number_integer() : value.type_name() == type;
    }

    std::string ArrayFault(const Json& value, const Json& rule, const std::string& place) const {
        for (std::size_t i = 0; i < value.size(); ++i) {
            std::string fault = Fault(value[i], rule.at("items"), place + "." + std::to_string(i));
            if (!fault.empty())
                return fault;
        }
        return "";
    }

    std::string ObjectFault(const Json& value, const Json& rule, const std::string& place) const {
        if (!value.is_object())
            return "";
        for (const Json& name : rule.at("required")) {
            if (!value.contains(name.get<std::string>()))
                return place + ": no " + name.get<std::string>();
        }
        for (const auto& [name, member] : value.items()) {
            if (!rule.at("properties").contains(name))
                return place + ": unknown " + name;
            std::string fault = Fault(member, rule["properties"][name], place + "." + name);
            if (!fault.empty())
                return fault;
        }
        return "";
    }

    Json schema_;
};

}  // namespace zorvane
