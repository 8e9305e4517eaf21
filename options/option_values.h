// Option values that know their key and default and load and save themselves.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "common/base/result.h"
#include "common/platform/ini_profile.h"

namespace zorvane {

class OptionSet;

/// One option of a set. It enrols itself in the set, so neither is ever copied or moved.
class OptionValue {
  public:
    OptionValue(OptionSet& set, const char* name);
    virtual ~OptionValue() = default;
    OptionValue(const OptionValue&) = delete;
    OptionValue& operator=(const OptionValue&) = delete;

    const std::string& Name() const { return name_; }
    /// A missing key gives the default. Fails for a number that is none.
    virtual Status LoadStateFromFile(IniProfile& file, std::string_view section) = 0;
    virtual void SaveStateToFile(IniProfile& file, std::string_view section) const = 0;
    /// From a text that a user wrote; stricter than a load.
    virtual Status SetFromText(std::string_view text) = 0;
    virtual std::string ActiveData() const = 0;
    /// Appends three blanks, the name, " = ", the data and a line end.
    void CreateReport_ActiveData(std::string& out) const;

  private:
    std::string name_;
};

class clsVarBoolean : public OptionValue {
  public:
    clsVarBoolean(OptionSet& set, const char* name, bool default_value)
        : OptionValue(set, name), default_(default_value) {}
    bool Data() const { return data_; }
    void SetData(bool data) { data_ = data; }
    /// Any text but "FALSE", in any case, reads as true.
    Status LoadStateFromFile(IniProfile& file, std::string_view section) override;
    void SaveStateToFile(IniProfile& file, std::string_view section) const override;
    Status SetFromText(std::string_view text) override;
    std::string ActiveData() const override { return data_ ? "True" : "False"; }

  private:
    bool default_;
    bool data_ = false;
};

class clsVarLong : public OptionValue {
  public:
    clsVarLong(OptionSet& set, const char* name, std::int32_t default_value)
        : OptionValue(set, name), default_(std::to_string(default_value)) {}
    std::int32_t Data() const { return data_; }
    void SetData(std::int32_t data) { data_ = data; }
    Status LoadStateFromFile(IniProfile& file, std::string_view section) override;
    void SaveStateToFile(IniProfile& file, std::string_view section) const override;
    Status SetFromText(std::string_view text) override;
    std::string ActiveData() const override { return std::to_string(data_); }

  private:
    std::string default_;
    std::int32_t data_ = 0;
};

class clsVarString : public OptionValue {
  public:
    clsVarString(OptionSet& set, const char* name, const char* default_value)
        : OptionValue(set, name), default_(default_value) {}
    const std::string& Data() const { return data_; }
    void SetData(std::string data) { data_ = std::move(data); }
    Status LoadStateFromFile(IniProfile& file, std::string_view section) override;
    void SaveStateToFile(IniProfile& file, std::string_view section) const override;
    Status SetFromText(std::string_view text) override;
    std::string ActiveData() const override { return data_; }

  private:
    std::string default_;
    std::string data_ = "Not Initialized";
};

/// The options of a viewer. Defaults reach the data only through a load.
class OptionSet {
  public:
    explicit OptionSet(const char* section) : sSectionName(section) {}
    virtual ~OptionSet() = default;
    OptionSet(const OptionSet&) = delete;
    OptionSet& operator=(const OptionSet&) = delete;

    std::string sSectionName;  ///< the viewer's `sDescription` once it owns the set

    /// Loads every option; the first failure is given back, and the others are loaded all the same.
    Status LoadStateFromFile(IniProfile& file);
    void SaveStateToFile(IniProfile& file) const;
    /// By its exact name; a wrong name is a failure that says so.
    Status SetByName(std::string_view name, std::string_view text);
    const std::vector<OptionValue*>& colOptions() const { return options_; }

  private:
    friend class OptionValue;
    std::vector<OptionValue*> options_;
};

}  // namespace zorvane
