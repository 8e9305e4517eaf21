// Character references of HTML: "&eacute;", "&#233;", "&#xE9;".
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>

namespace zorvane {

class HtmlReferences {
  public:
    /// Appends `text` with its references replaced. What is no reference stays as it stands.
    void Decode(std::string_view text, std::string& out) { Decode(text, Place::Text, out); }
    /// As in text, but that "?a=1&copy=2" stays: most addresses are not written with references.
    void DecodeValue(std::string_view text, std::string& out) { Decode(text, Place::Value, out); }

  private:
    enum class Place : std::uint8_t { Text, Value };
    void Decode(std::string_view text, Place place, std::string& out);
    std::size_t DecodeNumber(std::string_view text, std::string& out);
    std::size_t DecodeName(std::string_view text, Place place, std::string& out);
    bool StaysInValue(std::string_view reference, std::string_view behind);
    const std::string& LookUp(std::string_view reference);

    // By the reference as it stands, so that each name is looked up once in a page.
    std::unordered_map<std::string, std::string> known_;
};

}  // namespace zorvane
