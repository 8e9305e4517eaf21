// What a record of settings needs to go to the settings file and back: a row for each key, and
// loops over the rows.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <variant>

#include "common/platform/ini_profile.h"

namespace zorvane {

/// How each kind of value stands in the file: TRUE or FALSE, of which all but FALSE reads as true;
/// decimal numbers, of which one that is none leaves the value, with either decimal separator;
/// text.
std::string SettingText(bool value);
std::string SettingText(std::int32_t value);
std::string SettingText(double value);
inline std::string SettingText(const std::string& value) {
    return value;
}
void SetFromSettingText(const std::string& text, bool& value);
void SetFromSettingText(const std::string& text, std::int32_t& value);
void SetFromSettingText(const std::string& text, double& value);
inline void SetFromSettingText(const std::string& text, std::string& value) {
    value = text;
}

/// One value; a missing key leaves it as it is.
template <typename T>
void ReadSetting(IniProfile& file, std::string_view section, std::string_view key, T& value) {
    SetFromSettingText(file.Read(section, key, SettingText(value)), value);
}
template <typename T>
void SaveSetting(IniProfile& file, std::string_view section, std::string_view key, const T& value) {
    file.Write(section, key, SettingText(value));
}

/// A font's size in points as it was read, or `otherwise` for one that no window can show.
inline double ShownFontSize(double points, double otherwise) {
    constexpr double kSmallest = 1;
    constexpr double kLargest = 400;
    return points >= kSmallest && points <= kLargest ? points : otherwise;
}

template <typename Settings>
struct SettingRow {
    using Member = std::variant<bool Settings::*, std::int32_t Settings::*, double Settings::*,
                                std::string Settings::*>;
    const char* key;
    Member member;
};

template <typename Settings>
void ReadSetting(IniProfile& file, std::string_view section, const SettingRow<Settings>& row,
                 std::type_identity_t<Settings>& settings) {
    std::visit([&](auto member) { ReadSetting(file, section, row.key, settings.*member); },
               row.member);
}
template <typename Settings>
void SaveSetting(IniProfile& file, std::string_view section, const SettingRow<Settings>& row,
                 const std::type_identity_t<Settings>& settings) {
    std::visit([&](auto member) { SaveSetting(file, section, row.key, settings.*member); },
               row.member);
}

template <typename Settings>
void ReadSettings(IniProfile& file, std::string_view section,
                  std::span<const SettingRow<Settings>> rows,
                  std::type_identity_t<Settings>& settings) {
    for (const auto& row : rows)
        ReadSetting(file, section, row, settings);
}
template <typename Settings>
void SaveSettings(IniProfile& file, std::string_view section,
                  std::span<const SettingRow<Settings>> rows,
                  const std::type_identity_t<Settings>& settings) {
    for (const auto& row : rows)
        SaveSetting(file, section, row, settings);
}

}  // namespace zorvane
