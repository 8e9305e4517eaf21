#include "options/option_values.h"

#include <charconv>
#include <optional>

#include "common/base/text_encoding.h"

namespace zorvane {
namespace {

std::optional<std::int32_t> Long(std::string_view text) {
    text = Trim(text);
    if (text.starts_with('+'))
        text.remove_prefix(1);
    std::int32_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size())
        return std::nullopt;
    return number;
}

std::string Upper(std::string_view text) {
    std::string upper(text);
    for (char& character : upper) {
        if (character >= 'a' && character <= 'z')
            character = static_cast<char>(character - 'a' + 'A');
    }
    return upper;
}

}  // namespace

OptionValue::OptionValue(OptionSet& set, const char* name) : name_(name) {
    set.options_.push_back(this);
}

void OptionValue::CreateReport_ActiveData(std::string& out) const {
    out.append("   ").append(name_).append(" = ").append(ActiveData()).append("\r\n");
}

Status clsVarBoolean::LoadStateFromFile(IniProfile& file, std::string_view section) {
    data_ = Upper(file.Read(section, Name(), default_ ? "True" : "False")) != "FALSE";
    return Status::Ok();
}

void clsVarBoolean::SaveStateToFile(IniProfile& file, std::string_view section) const {
    file.Write(section, Name(), data_ ? "TRUE" : "FALSE");
}

Status clsVarBoolean::SetFromText(std::string_view text) {
    const std::string upper = Upper(Trim(text));
    if (upper != "TRUE" && upper != "YES" && upper != "1" && upper != "FALSE" && upper != "NO" &&
        upper != "0")
        return Failure{Name() + "=" + std::string(text) + ": write true or false"};
    data_ = upper == "TRUE" || upper == "YES" || upper == "1";
    return Status::Ok();
}

Status clsVarLong::LoadStateFromFile(IniProfile& file, std::string_view section) {
    const std::string text = file.Read(section, Name(), default_);
    if (SetFromText(text).ok())
        return Status::Ok();
    data_ = Long(default_).value_or(0);
    return Failure{"[" + std::string(section) + "] " + Name() + "=" + text + ": not a number"};
}

void clsVarLong::SaveStateToFile(IniProfile& file, std::string_view section) const {
    file.Write(section, Name(), std::to_string(data_));
}

Status clsVarLong::SetFromText(std::string_view text) {
    const std::optional<std::int32_t> number = Long(text);
    if (!number)
        return Failure{Name() + "=" + std::string(text) + ": not a number"};
    data_ = *number;
    return Status::Ok();
}

Status clsVarString::LoadStateFromFile(IniProfile& file, std::string_view section) {
    data_ = file.Read(section, Name(), default_);
    return Status::Ok();
}

void clsVarString::SaveStateToFile(IniProfile& file, std::string_view section) const {
    file.Write(section, Name(), data_);
}

Status clsVarString::SetFromText(std::string_view text) {
    data_ = text;
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

}  // namespace zorvane
