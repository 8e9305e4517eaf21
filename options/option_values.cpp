#include "options/option_values.h"

#include <algorithm>
#include <cassert>
#include <optional>

#include "common/base/ascii.h"
#include "common/base/parse_number.h"
#include "common/base/text_encoding.h"

namespace zorvane {

OptionValue::OptionValue(OptionSet& set, const char* name, std::string default_text)
    : name_(name), default_(std::move(default_text)) {
    set.options_.push_back(this);
}

void OptionValue::CreateReport_ActiveData(std::string& out) const {
    out.append("   ").append(name_).append(" = ").append(ActiveData()).append("\r\n");
}

Status clsVarBoolean::LoadStateFromFile(IniProfile& file, std::string_view section) {
    SetData(AsciiUpper(file.Read(section, Name(), Default())) != "FALSE");
    return Status::Ok();
}

void clsVarBoolean::SaveStateToFile(IniProfile& file, std::string_view section) const {
    file.Write(section, Name(), Data() ? "TRUE" : "FALSE");
}

Status clsVarBoolean::SetFromText(std::string_view text) {
    const std::string upper = AsciiUpper(Trim(text));
    if (upper != "TRUE" && upper != "YES" && upper != "1" && upper != "FALSE" && upper != "NO" &&
        upper != "0")
        return Failure{Name() + "=" + std::string(text) + ": write true or false"};
    SetData(upper == "TRUE" || upper == "YES" || upper == "1");
    return Status::Ok();
}

Status clsVarLong::LoadStateFromFile(IniProfile& file, std::string_view section) {
    const std::string text = file.Read(section, Name(), Default());
    if (SetFromText(text).ok())
        return Status::Ok();
    SetData(ParseTypedNumber(Default()).value_or(0));
    return Failure{"[" + std::string(section) + "] " + Name() + "=" + text + ": not a number"};
}

void clsVarLong::SaveStateToFile(IniProfile& file, std::string_view section) const {
    file.Write(section, Name(), std::to_string(Data()));
}

Status clsVarLong::SetFromText(std::string_view text) {
    const std::optional<std::int32_t> number = ParseTypedNumber(text);
    if (!number)
        return Failure{Name() + "=" + std::string(text) + ": not a number"};
    SetData(*number);
    return Status::Ok();
}

Status clsVarString::LoadStateFromFile(IniProfile& file, std::string_view section) {
    SetData(file.Read(section, Name(), Default()));
    return Status::Ok();
}

void clsVarString::SaveStateToFile(IniProfile& file, std::string_view section) const {
    file.Write(section, Name(), Data());
}

Status clsVarString::SetFromText(std::string_view text) {
    SetData(std::string(text));
    return Status::Ok();
}

Status OptionSet::LoadStateFromFile(IniProfile& file) {
    Status first = Status::Ok();
    for (OptionValue* option : options_) {
        const Status loaded = option->LoadStateFromFile(file, sSectionName);
        if (first.ok() && !loaded.ok())
            first = loaded;
    }
    return first;
}

void OptionSet::SaveStateToFile(IniProfile& file) const {
    for (const OptionValue* option : options_)
        option->SaveStateToFile(file, sSectionName);
}

Status OptionSet::SetByName(std::string_view name, std::string_view text) {
    for (OptionValue* option : options_) {
        if (option->Name() == name)
            return option->SetFromText(text);
    }
    return Failure{std::string(name) + ": there is no option of this name"};
}

void OptionSet::CopyFrom(const OptionSet& other) {
    assert(options_.size() == other.options_.size());
    sSectionName = other.sSectionName;
    for (std::size_t i = 0; i < options_.size(); ++i) {
        options_[i]->default_ = other.options_[i]->default_;
        options_[i]->TakeData(*other.options_[i]);
    }
}

bool OptionSet::HasSameData(const OptionSet& other) const {
    return std::equal(
        options_.begin(), options_.end(), other.options_.begin(), other.options_.end(),
        [](const OptionValue* one, const OptionValue* two) { return one->HasSameData(*two); });
}

}  // namespace zorvane
