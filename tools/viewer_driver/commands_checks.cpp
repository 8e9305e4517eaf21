// Commands that look: what the state is, and whether it is as a script says.
#include <algorithm>
#include <ostream>

#include "common/base/parse_number.h"
#include "tools/viewer_driver/driver.h"

namespace zorvane {
namespace {

struct Claim {
    std::string key;
    std::string operation;
    std::string value;
};

std::optional<Claim> ReadClaim(const std::string& text) {
    const std::size_t at = text.find_first_of("=!~<>");
    if (at == std::string::npos)
        return std::nullopt;
    const std::size_t length =
        text[at] != '=' && text[at] != '~' && at + 1 < text.size() && text[at + 1] == '=' ? 2 : 1;
    return Claim{text.substr(0, at), text.substr(at, length), text.substr(at + length)};
}

Result<bool> IsSo(const Claim& claim, const std::string& value) {
    if (claim.operation == "=")
        return value == claim.value;
    if (claim.operation == "!=")
        return value != claim.value;
    if (claim.operation == "~")
        return value.find(claim.value) != std::string::npos;
    const auto left = ParseNumber<std::int64_t>(value);
    const auto right = ParseNumber<std::int64_t>(claim.value);
    if (!left || !right || (claim.operation != "<=" && claim.operation != ">="))
        return Failure{"\"" + claim.operation + "\" compares numbers; it is \"" + value + "\""};
    return claim.operation == "<=" ? *left <= *right : *left >= *right;
}

}  // namespace

Status Driver::Value(const std::string& key, std::string& value) {
    const bool hash = key == "result" || key == "whole" || key.find("-hash") != std::string::npos;
    StateValues values = StateOf(*session_, hash ? Hashes::Yes : Hashes::No);
    values.insert(own_.begin(), own_.end());
    const auto found = values.find(key);
    if (found == values.end())
        return Failure{"there is no \"" + key + "\" now"};
    value = found->second;
    return Status::Ok();
}

Status Driver::State(const Words& words) {
    StateValues values = StateOf(*session_, Hashes::Yes);
    values.insert(own_.begin(), own_.end());
    for (const auto& [key, value] : values) {
        if (words.empty() || std::find(words.begin(), words.end(), key) != words.end())
            out_ << key << "=" << value << "\n";
    }
    return Status::Ok();
}

Status Driver::Expect(const Words& words) {
    for (const std::string& word : words) {
        const std::optional<Claim> claim = ReadClaim(word);
        if (!claim)
            return Failure{"\"" + word + "\" is no KEY=VALUE"};
        std::string value;
        Status known = Value(claim->key, value);
        if (!known.ok())
            return known;
        const Result<bool> so = IsSo(*claim, value);
        if (!so.ok())
            return so.failure();
        if (!so.value())
            return Failure{claim->key + " is \"" + value + "\""};
    }
    return Status::Ok();
}

Status Driver::Remember(const Words&) {
    remembered_ = StateOf(*session_, Hashes::Yes);
    return Status::Ok();
}

Status Driver::Same(const Words& words) {
    for (const std::string& key : words) {
        std::string value;
        Status known = Value(key, value);
        if (!known.ok())
            return known;
        if (value != remembered_[key])
            return Failure{key + " was \"" + remembered_[key] + "\" and is \"" + value + "\""};
    }
    return Status::Ok();
}

Status Driver::Changed(const Words& words) {
    for (const std::string& key : words) {
        std::string value;
        Status known = Value(key, value);
        if (!known.ok())
            return known;
        if (value == remembered_[key])
            return Failure{key + " is still \"" + value + "\""};
    }
    return Status::Ok();
}

Status Driver::Echo(const Words& words) {
    for (const std::string& word : words)
        out_ << word << " ";
    out_ << "\n";
    return Status::Ok();
}

}  // namespace zorvane
