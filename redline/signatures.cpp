#include "redline/signatures.h"

#include "redline/xml_tools.h"

namespace zorvane {
namespace {

using Node = pugi::xml_node;

// A part with all that it leads to; `signatures` counts.
void RemovePart(WordPackage& package, const std::string& part, std::int64_t& signatures) {
    const std::vector<PartRelation> relations = package.Relations(part);
    package.Remove(part);  // before the others: one may lead back
    for (const PartRelation& relation : relations) {
        if (relation.external || !package.Has(relation.part))
            continue;
        signatures += KindOf(relation) == "signature" ? 1 : 0;
        RemovePart(package, relation.part, signatures);
    }
}

}  // namespace

std::int64_t RemoveWordSignatures(WordPackage& package) {
    std::int64_t signatures = 0;
    for (const PartRelation& relation : package.Relations("")) {
        if (!relation.type.ends_with("/digital-signature/origin"))
            continue;
        package.RemoveRelation("", relation.id);
        RemovePart(package, relation.part, signatures);
    }
    return signatures;
}

std::int64_t RemoveOdtSignatures(WordPackage& package) {
    const std::string part = "META-INF/documentsignatures.xml";
    std::int64_t signatures = 0;
    VisitElements(package.Tree(part),
                  [&signatures](const Node& node) { signatures += Is(node, "Signature") ? 1 : 0; });
    package.Remove(part);
    return signatures;
}

}  // namespace zorvane
