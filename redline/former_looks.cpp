#include "redline/former_looks.h"

#include <set>

#include "redline/resolve.h"
#include "redline/xml_tools.h"

namespace zorvane {
namespace {

using Node = pugi::xml_node;

// Properties count whatever their order; a section and the look of an end are none of them.
std::string FormOf(const Node& properties) {
    std::multiset<std::string> parts;
    for (const Node& child : properties.children()) {
        const std::string_view name = LocalName(child);
        const bool of_end = name == "rPr" || name == "sectPr";
        if (!IsTracking(child) && !(of_end && Is(properties, "pPr")))
            parts.insert(CanonicalXml(child));
    }
    std::string form;
    for (const std::string& part : parts)
        form += part;
    return form;
}

const Atom* AtomAt(const StoryBlock& block, std::size_t place) {
    const auto atom = AtomBehind(block.atoms, place);
    return atom == block.atoms.end() ? nullptr : &*atom;
}

}  // namespace

Node FormerLooks::Of(const Node& original, const Node& modified, const char* properties,
                     const PartPair& parts) {
    Node& former = adapted_[original.hash_value()];
    if (!former) {
        const Node there = Child(original, properties);
        former = there ? store_.append_copy(there) : store_.append_child(properties);
        former.remove_child("w:sectPr");
        importer_.Adapt(former, parts);
    }
    return FormOf(former) == FormOf(Child(modified, properties)) ? Node() : former;
}

Node RunAt(const StoryBlock& block, std::size_t place) {
    const Atom* const atom = AtomAt(block, place);
    return atom == nullptr ? Node() : atom->parts.front().run;
}

std::size_t AtomEndAt(const StoryBlock& block, std::size_t place) {
    const Atom* const atom = AtomAt(block, place);
    return atom == nullptr ? block.text.size() : atom->End();
}

}  // namespace zorvane
