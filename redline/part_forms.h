// What the relationships of a package lead to, told by content: equal forms are equal pictures,
// diagrams or addresses, whatever their parts and ids are called.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "redline/word_package.h"

namespace zorvane {

/// Each part is looked at once, so that what was told must not be edited later.
class PartForms {
  public:
    /// Borrowed.
    explicit PartForms(WordPackage& package) : package_(package) {}

    /// What a relationship of `part` leads to, and all that this leads to in turn; the id itself
    /// where there is none.
    std::string Of(const std::string& part, const std::string& id);
    /// A relationship of `part` of that kind and form; empty without one.
    std::string IdOf(const std::string& part, std::string_view kind, const std::string& form);
    /// A relationship that came later, to a part that may not be whole yet.
    void Tell(const std::string& part, std::string_view kind, const std::string& form,
              const std::string& id);

  private:
    using Ids = std::map<std::string, std::string>;  // by form
    struct Look {
        std::string digest;
        std::string drawing;  // the id of the one that a diagram shows
    };
    std::string FormOf(const std::string& owner, const PartRelation& relation);
    std::string Follow(const std::string& owner, const PartRelation& at,
                       std::vector<PartRelation>& open);
    const Look& LookAt(const PartRelation& relation);
    Ids& IdsOf(const std::string& part, std::string_view kind);

    WordPackage& package_;
    std::map<std::pair<std::string, std::string>, std::string> forms_;  // by part and id
    std::map<std::pair<std::string, std::string>, Ids> ids_;            // by part and kind
    std::map<std::string, Look> looks_;                                 // by part
};

inline constexpr std::string_view kDiagram = "diagramData";
inline constexpr const char* kDrawingId = "relId";
/// Where a diagram's data names the drawing that readers show: by an id of the story it stands in,
/// not one of its own part.
pugi::xml_node DrawingName(const pugi::xml_node& data);

}  // namespace zorvane
