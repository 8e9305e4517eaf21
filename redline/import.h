// Brings over from the Original what its deleted content needs in the Modified's package: styles,
// lists, links, pictures and other parts.
#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <string>

#include "common/base/side.h"
#include "redline/part_forms.h"
#include "redline/word_package.h"

namespace zorvane {

/// A part of the Original and the one of the Modified that takes its content.
struct PartPair {
    std::string original;
    std::string modified;
    friend auto operator<=>(const PartPair&, const PartPair&) = default;
};

/// What could not come along.
struct LeftBehind {
    std::int32_t markers = 0;   ///< bookmarks and their like
    std::int32_t sections = 0;  ///< section breaks
    std::int32_t controls = 0;  ///< content controls around deleted text
};

class Importer {
  public:
    /// `drawings`: ids of the Modified's, which no other gets.
    Importer(WordPackage& original, WordPackage& modified, std::set<std::string> drawings)
        : original_(original),
          modified_(modified),
          forms_{PartForms(original), PartForms(modified)},
          drawings_(std::move(drawings)) {}

    /// `copy`, which stands in `parts.modified` already, was taken from `parts.original`. Its
    /// styles, lists, relationships and ids become the Modified's; what only the Original knows
    /// (its bookmarks, comments) goes.
    void Adapt(pugi::xml_node copy, const PartPair& parts);
    /// The id in the Modified's package; `kind` is "paragraph", "character" or "table".
    std::string StyleFor(const std::string& id);
    std::string NumberingFor(const std::string& id);
    /// Two paragraphs are one, so that their lists are, too, where these are of one form: what is
    /// deleted from the list goes on counting in the Modified's, whatever id that has.
    void PairLists(const pugi::xml_node& original, const pugi::xml_node& modified);
    std::string RelationFor(const std::string& id, const PartPair& parts);
    /// What relationships lead to.
    PartForms& Forms(Side side) { return forms_[side]; }
    const LeftBehind& Left() const { return left_; }
    LeftBehind& Left() { return left_; }

  private:
    void AdaptElement(pugi::xml_node element, const PartPair& parts);
    std::string FreshDrawingId();
    std::string CopyPart(const std::string& part);
    void ImportStyle(const pugi::xml_node& style, const std::string& id);
    pugi::xml_node Lists(Side side);
    ChildIndex& ListsById(Side side);
    ChildIndex& AbstractLists(Side side);
    pugi::xml_node AbstractOf(Side side, const pugi::xml_node& list);
    std::string FormOfList(Side side, std::string_view id);
    void Name(const std::string& list, const std::string& name);
    std::string AddList(const pugi::xml_node& list, pugi::xml_node lists);

    WordPackage& original_;
    WordPackage& modified_;
    PerSide<PartForms> forms_;
    std::map<std::string, std::string> styles_;
    std::map<std::string, std::string> lists_;
    std::set<std::string> list_names_;  // those that `lists_` gives
    std::set<std::pair<std::string, std::string>> lists_compared_;
    std::map<std::pair<PartPair, std::string>, std::string> relations_;
    std::map<std::string, std::string> parts_;
    std::set<std::string> drawings_;
    std::int32_t last_drawing_ = 900'000;  // far from what programs count up from one
    LeftBehind left_;
};

/// Declares in `target` the prefixes that `source` declares, and lets readers that do not know
/// them pass them over. False when one stands for two things.
bool UnitePrefixes(const pugi::xml_node& source, pugi::xml_node target);

}  // namespace zorvane
