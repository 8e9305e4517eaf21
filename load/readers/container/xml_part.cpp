#include "load/readers/container/xml_part.h"

#include <algorithm>

#include "common/base/parse_number.h"

namespace zorvane {

ReadEnd XmlPart::Parse(std::string bytes, XmlPart& part) {
    part.bytes_ = std::move(bytes);
    part.document_ = std::make_unique<pugi::xml_document>();
    constexpr unsigned kOptions = pugi::parse_cdata | pugi::parse_escapes | pugi::parse_eol |
                                  pugi::parse_ws_pcdata | pugi::parse_wconv_attribute;
    const pugi::xml_parse_result result =
        part.document_->load_buffer_inplace(part.bytes_.data(), part.bytes_.size(), kOptions);
    if (result.status == pugi::status_out_of_memory)
        return ReadEnd::Fault(ReadError::TooLarge, "the document needs more memory than allowed");
    if (!result)
        return ReadEnd::Fault(ReadError::Damaged,
                              std::string("broken XML: ") + result.description());
    return ReadEnd::Ok();
}

ReadEnd XmlPart::Read(Package& package, std::string_view name, XmlPart& part) {
    ReadError error = ReadError::None;
    std::optional<std::string> bytes = package.Read(name, &error);
    if (!bytes)
        return ReadEnd::Fault(error, "cannot read the part " + std::string(name));
    ReadEnd end = Parse(std::move(*bytes), part);
    if (!end.ok())
        package.TellDamage(name);
    return end;
}

std::string_view LocalName(const pugi::xml_node& node) {
    const char* begin = node.name();
    const char* end = begin;
    // In one go: names are short, and each element's is asked for many times.
    for (bool prefix = true; *end != '\0'; ++end) {
        if (prefix && *end == ':') {
            begin = end + 1;
            prefix = false;
        }
    }
    return {begin, static_cast<std::size_t>(end - begin)};
}

pugi::xml_node Child(const pugi::xml_node& node, std::string_view local_name) {
    for (const pugi::xml_node& child : node.children()) {
        if (LocalName(child) == local_name)
            return child;
    }
    return {};
}

std::string_view Attribute(const pugi::xml_node& node, std::string_view local_name) {
    for (const pugi::xml_attribute& attribute : node.attributes()) {
        std::string_view name = attribute.name();
        if (const std::size_t colon = name.find(':'); colon != std::string_view::npos)
            name.remove_prefix(colon + 1);
        if (name == local_name)
            return attribute.value();
    }
    return {};
}

bool IsOneOf(std::string_view name, std::span<const std::string_view> names) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

std::int32_t NumberOf(std::string_view text, std::int32_t otherwise) {
    if (text.starts_with('+'))
        text.remove_prefix(1);
    return ReadNumber<std::int32_t>(text).value.value_or(otherwise);
}

std::unordered_map<std::string, Relationship> ReadRelationships(Package& package,
                                                                std::string_view part) {
    std::unordered_map<std::string, Relationship> relationships;
    const std::size_t slash = part.rfind('/');
    const std::string folder =
        slash == std::string_view::npos ? "" : std::string(part.substr(0, slash + 1));
    const std::string file(part.substr(slash == std::string_view::npos ? 0 : slash + 1));
    XmlPart xml;
    if (!XmlPart::Read(package, folder + "_rels/" + file + ".rels", xml).ok())
        return relationships;
    for (const pugi::xml_node& node : xml.Root().children()) {
        if (!Is(node, "Relationship"))
            continue;
        Relationship relationship;
        const std::string_view type = Attribute(node, "Type");
        relationship.type = type.substr(type.rfind('/') + 1);
        relationship.external = Attribute(node, "TargetMode") == "External";
        const std::string_view target = Attribute(node, "Target");
        relationship.target =
            relationship.external ? std::string(target) : ResolvePart(part, target);
        relationships.emplace(Attribute(node, "Id"), std::move(relationship));
    }
    return relationships;
}

}  // namespace zorvane
