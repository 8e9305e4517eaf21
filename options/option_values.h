// Option values that know their key and default and load and save themselves.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "common/base/result.h"
#include "common/platform/ini_profile.h"

namespace zorvane {

class OptionSet;

/// One option of a set. It enrols itself in the set, so that it is copied with its set alone.
class OptionValue {
  public:
    OptionValue(OptionSet& set, const char* name, std::string default_text);
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

  protected:
    /// What a load reads where the file has nothing.
    const std::string& Default() const { return default_; }

  private:
    friend class OptionSet;
    /// Of the same option of another set.
    virtual void TakeData(const OptionValue& other) = 0;
    virtual bool HasSameData(const OptionValue& other) const = 0;

    std::string name_;
    std::string default_;
};

/// What the three kinds share.
template <typename T>
class OptionOf : public OptionValue {
  public:
    const T& Data() const { return data_; }
    void SetData(T data) { data_ = std::move(data); }

  protected:
    OptionOf(OptionSet& set, const char* name, std::string default_text, T before_load)
        : OptionValue(set, name, std::move(default_text)), data_(std::move(before_load)) {}

  private:
    bool HasSameData(const OptionValue& other) const override {
        return data_ == static_cast<const OptionOf&>(other).data_;
    }
    void TakeData(const OptionValue& other) override {
        data_ = static_cast<const OptionOf&>(other).data_;
    }

    T data_;
};

class clsVarBoolean : public OptionOf<bool> {
  public:
    clsVarBoolean(OptionSet& set, const char* name, bool default_value)
        : OptionOf(set, name, default_value ? "True" : "False", false) {}
    /// Any text but "FALSE", in any case, reads as true.
    Status LoadStateFromFile(IniProfile& file, std::string_view section) override;
    void SaveStateToFile(IniProfile& file, std::string_view section) const override;
    Status SetFromText(std::string_view text) override;
    std::string ActiveData() const override { return Data() ? "True" : "False"; }
};

class clsVarLong : public OptionOf<std::int32_t> {
  public:
    clsVarLong(OptionSet& set, const char* name, std::int32_t default_value)
        : OptionOf(set, name, std::to_string(default_value), 0) {}
    Status LoadStateFromFile(IniProfile& file, std::string_view section) override;
    void SaveStateToFile(IniProfile& file, std::string_view section) const override;
    Status SetFromText(std::string_view text) override;
    std::string ActiveData() const override { return std::to_string(Data()); }
};

class clsVarString : public OptionOf<std::string> {
  public:
    clsVarString(OptionSet& set, const char* name, std::string default_value)
        : OptionOf(set, name, std::move(default_value), "Not Initialized") {}
    Status LoadStateFromFile(IniProfile& file, std::string_view section) override;
    void SaveStateToFile(IniProfile& file, std::string_view section) const override;
    Status SetFromText(std::string_view text) override;
    std::string ActiveData() const override { return Data(); }
};

/// The options of a viewer. Defaults reach the data only through a load. A set is a value: a class
/// of options offers copies by `CopyFrom` and comparison by `HasSameData`. For one thread at a
/// time.
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

  protected:
    /// The data and section of a set of the same class.
    void CopyFrom(const OptionSet& other);
    /// Wherever the two are kept.
    bool HasSameData(const OptionSet& other) const;

  private:
    friend class OptionValue;

    std::vector<OptionValue*> options_;
};

}  // namespace zorvane
