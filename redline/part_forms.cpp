#include "redline/part_forms.h"

#include <set>

#include "compare/document/beside.h"
#include "redline/xml_tools.h"

namespace zorvane {

pugi::xml_node DrawingName(const pugi::xml_node& data) {
    pugi::xml_node found;
    VisitElements(data, [&found](const pugi::xml_node& node) {
        if (Is(node, "dataModelExt"))
            found = node;
    });
    return found;
}

const PartForms::Look& PartForms::LookAt(const PartRelation& relation) {
    const auto [place, is_new] = looks_.try_emplace(relation.part);
    Look& look = place->second;
    if (is_new && KindOf(relation) != kDiagram) {
        look.digest = BesideDigest(package_.Bytes(relation.part));
    } else if (is_new) {
        const pugi::xml_node data = package_.Tree(relation.part);
        look.drawing = Attribute(DrawingName(data), kDrawingId);
        look.digest = BesideDigest(CanonicalXml(
            data, [](const pugi::xml_node&, const pugi::xml_attribute& attribute, std::string&) {
                return std::string_view(attribute.name()) != kDrawingId;
            }));
    }
    return look;
}

// Of one part; what it leads to is open then, and the drawing that a diagram names in its owner.
std::string PartForms::Follow(const std::string& owner, const PartRelation& at,
                              std::vector<PartRelation>& open) {
    for (PartRelation& inner : package_.Relations(at.part))
        open.push_back(std::move(inner));
    const Look& look = LookAt(at);
    if (!look.drawing.empty()) {
        if (const PartRelation* const shown = package_.Relation(owner, look.drawing))
            open.push_back(*shown);
    }
    return std::string(KindOf(at)) + ":" + look.digest;
}

std::string PartForms::FormOf(const std::string& owner, const PartRelation& relation) {
    std::vector<PartRelation> open{relation};
    std::set<std::string> seen;
    std::multiset<std::string> forms;
    while (!open.empty()) {
        const PartRelation at = std::move(open.back());
        open.pop_back();
        const bool is_new = !at.external && seen.insert(at.part).second;
        forms.insert(is_new ? Follow(owner, at, open)
                            : std::string(KindOf(at)) + ">" + (at.external ? at.target : ""));
    }
    std::string form;
    for (const std::string& one : forms)
        form += one + "|";
    return form;
}

std::string PartForms::Of(const std::string& part, const std::string& id) {
    const std::pair key(part, id);
    if (const auto found = forms_.find(key); found != forms_.end())
        return found->second;
    if (const PartRelation* const relation = package_.Relation(part, id))
        return forms_[key] = FormOf(part, *relation);
    return id;
}

PartForms::Ids& PartForms::IdsOf(const std::string& part, std::string_view kind) {
    const auto [place, is_new] = ids_.try_emplace({part, std::string(kind)});
    if (is_new) {
        for (const PartRelation& relation : package_.Relations(part)) {
            if (KindOf(relation) == kind)
                place->second.emplace(Of(part, relation.id), relation.id);
        }
    }
    return place->second;
}

std::string PartForms::IdOf(const std::string& part, std::string_view kind,
                            const std::string& form) {
    const Ids& ids = IdsOf(part, kind);
    const auto found = ids.find(form);
    return found == ids.end() ? std::string() : found->second;
}

void PartForms::Tell(const std::string& part, std::string_view kind, const std::string& form,
                     const std::string& id) {
    IdsOf(part, kind).emplace(form, id);
}

}  // namespace zorvane
