// Brings over what content of the Original needs in the Modified's OpenDocument package: styles,
// lists, fonts, pictures and objects.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <utility>

#include "common/base/side.h"
#include "redline/word_package.h"

namespace zorvane {

class OdtImporter {
  public:
    OdtImporter(WordPackage& original, WordPackage& modified)
        : original_(original), modified_(modified) {}

    /// Gives the copy, which came from that part of the Original and stands in the same part of the
    /// Modified, names that mean there what they meant in the Original.
    void Adapt(pugi::xml_node copy, const std::string& part);
    /// The same of one element without what it holds.
    void AdaptElement(pugi::xml_node element, const std::string& part);
    /// The name of a row style like the one given whose rows go away with their text.
    std::string TrackedRowStyle(const std::string& like, const std::string& part);
    /// What an address leads to: bytes by their hash, or the address.
    std::string FormOf(Side side, const std::string& address);

  private:
    using Node = pugi::xml_node;
    using StyleKey = std::pair<std::string, std::string>;  // family and name

    std::string MappedStyle(const StyleKey& key, const std::string& part);
    std::string ImportStyle(const StyleKey& key, const Node& style, const std::string& part,
                            bool automatic);
    std::string FreshStyle(const StyleKey& key, const std::string& part);
    void ImportFont(const std::string& name, const std::string& part);
    std::string MappedAddress(const std::string& address);
    void AddToManifest(const std::string& from, const std::string& to);

    WordPackage& original_;
    WordPackage& modified_;
    PerSide<std::map<std::string, std::string>> forms_;  // of parts, which nobody edits
    std::map<std::pair<std::string, StyleKey>, std::string> styles_;
    std::map<std::string, std::string> addresses_;
    std::map<std::string, std::string> row_styles_;
};

/// The list of automatic styles of a part; made where there is none.
pugi::xml_node AutomaticStyles(pugi::xml_node root);

}  // namespace zorvane
