// Number formats of spreadsheets: a value and a format code to the text that the sheet shows.
// Source: the public descriptions of the Office Open XML number formats
// (ECMA-376 18.8.30, 18.8.31).
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace zorvane {

/// A parsed format code; parse once, apply to a million cells.
class NumberFormat {
  public:
    /// Any text; what cannot be understood shows as "General" does.
    explicit NumberFormat(std::string_view code);
    ~NumberFormat();
    NumberFormat(NumberFormat&&) noexcept;
    NumberFormat& operator=(NumberFormat&&) noexcept;

    /// Appends to `out`. `date_1904`: day 0 is 1904-01-01, else serial 1 is 1900-01-01 with the
    /// leap day of 1900 that the format keeps. A date out of range shows as "#####".
    void Apply(double value, bool date_1904, std::string& out) const;
    /// The section for text (@), which can add text around it.
    void ApplyText(std::string_view text, std::string& out) const;
    bool IsDate() const;

    /// Code of a built-in format id (0 to 163); empty for an id without one.
    static std::string_view BuiltIn(std::int32_t id);

  private:
    struct Parsed;
    std::unique_ptr<Parsed> parsed_;
};

/// As "General" shows a number: up to 11 significant characters, else scientific.
void AppendGeneral(double value, std::string& out);

}  // namespace zorvane
