// Character references of HTML: "&eacute;", "&#233;", "&#xE9;".
#pragma once

#include <string>
#include <string_view>
#include <unordered_map>

namespace zorvane {

class HtmlReferences {
  public:
    /// Appends `text` with its references replaced. What is no reference stays as it stands.
    void Decode(std::string_view text, std::string& out);

  private:
    std::size_t DecodeNumber(std::string_view text, std::string& out);
    std::size_t DecodeName(std::string_view text, std::string& out);
    const std::string& LookUp(std::string_view reference);

    // By the reference as it stands, so that each name is looked up once in a page.
    std::unordered_map<std::string, std::string> known_;
};

}  // namespace zorvane
