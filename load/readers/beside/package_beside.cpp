#include "load/readers/beside/package_beside.h"

#include <algorithm>
#include <array>
#include <utility>

namespace zorvane {
namespace {

constexpr std::size_t kMostText = std::size_t{1} << 20;
constexpr std::size_t kMostProperties = 200;

// How properties are called to a user; those of a program's own and times of saving are not told.
std::string_view PropertyName(std::string_view element) {
    constexpr std::pair<std::string_view, std::string_view> kNames[] = {
        {"title", "title"},
        {"subject", "subject"},
        {"creator", "author"},
        {"initial-creator", "author"},
        {"keywords", "keywords"},
        {"keyword", "keyword"},
        {"description", "description"},
        {"category", "category"},
        {"contentStatus", "status"},
        {"language", "language"},
        {"Company", "company"},
        {"Manager", "manager"}};
    for (const auto& [name, shown] : kNames) {
        if (name == element)
            return shown;
    }
    return {};
}

void Collect(const pugi::xml_node& node, int depth, std::string& text) {
    if (depth > kMaxDepth)
        return;
    for (const pugi::xml_node& child : node.children()) {
        if (text.size() > kMostText)
            return;
        if (child.type() == pugi::node_pcdata || child.type() == pugi::node_cdata)
            text += child.value();
        else
            Collect(child, depth + 1, text);
    }
    if ((Is(node, "p") || Is(node, "v") || Is(node, "pt")) && !text.empty())
        text += ' ';
}

void Report(DocumentSink& sink, std::string_view name, std::string_view value) {
    if (const auto item = MakeMetadata(name, value))
        sink.Beside(*item);
}

void ReportPart(Package& package, std::string_view part, DocumentSink& sink) {
    XmlPart xml;
    if (package.Has(part) && XmlPart::Read(package, part, xml).ok())
        ReportDublinCore(xml.Root(), sink);
}

}  // namespace

const std::string& PartDigests::Of(const std::string& part) {
    const auto [entry, fresh] = digests_.try_emplace(part);
    if (!fresh)
        return entry->second;
    const std::unique_ptr<PartStream> stream = package_.Stream(part);
    if (stream == nullptr) {
        entry->second = BesideDigest(part);
        return entry->second;
    }
    BesideHash hash;
    std::array<char, std::size_t{1} << 16> buffer{};
    std::size_t most = std::min(left_, most_of_part_);
    std::size_t got = 1;
    while (got > 0 && most > 0) {
        got = stream->Read(buffer.data(), std::min(buffer.size(), most));
        hash.Add({buffer.data(), got});
        most -= got;
        left_ -= got;
    }
    if (got > 0)
        hash.Add(package_.ToldChecksum(part));
    entry->second = hash.Digest();
    return entry->second;
}

std::string PartDigests::OfText(const std::string& part) {
    XmlPart xml;
    if (!XmlPart::Read(package_, part, xml).ok())
        return Of(part);
    return BesideDigest(ChartText(xml.Root()));
}

std::string_view FileOfPart(std::string_view part) {
    return part.substr(part.rfind('/') + 1);
}

std::string TextInside(const pugi::xml_node& node) {
    std::string text;
    Collect(node, 0, text);
    return text;
}

std::string ChartText(const pugi::xml_node& root) {
    return TextInside(root);
}

void ReportDamage(const Package& package, DocumentSink& sink) {
    for (const std::string& part : package.Damaged())
        sink.Beside(
            {BesideKind::DamagedPart, 0, BesideText(part + ": left out"), BesideDigest(part)});
}

void ReportDublinCore(const pugi::xml_node& parent, DocumentSink& sink) {
    std::size_t count = 0;
    for (const pugi::xml_node& node : parent.children()) {
        const std::string_view name = PropertyName(LocalName(node));
        if (!name.empty() && ++count < kMostProperties)
            Report(sink, name, TextInside(node));
    }
}

void ReportOfficeProperties(Package& package, DocumentSink& sink) {
    ReportPart(package, "docProps/core.xml", sink);
    ReportPart(package, "docProps/app.xml", sink);
    XmlPart own;
    if (!package.Has("docProps/custom.xml") ||
        !XmlPart::Read(package, "docProps/custom.xml", own).ok())
        return;
    std::size_t count = 0;
    for (const pugi::xml_node& property : own.Root().children()) {
        const std::string name(Attribute(property, "name"));
        // Names of that form are a program's own, for its next start or for labels of a company.
        const bool internal = name.starts_with('_') || name.starts_with("MSIP_");
        if (!name.empty() && !internal && ++count < kMostProperties)
            Report(sink, name, TextInside(property));
    }
}

void ReportOpenDocumentProperties(Package& package, DocumentSink& sink) {
    XmlPart meta;
    if (!package.Has("meta.xml") || !XmlPart::Read(package, "meta.xml", meta).ok())
        return;
    const pugi::xml_node properties = Child(meta.Root(), "meta");
    const bool has_author = static_cast<bool>(Child(properties, "initial-creator"));
    std::size_t count = 0;
    for (const pugi::xml_node& node : properties.children()) {
        std::string name(PropertyName(LocalName(node)));
        // Beside an author the creator is who saved the file last.
        if (has_author && Is(node, "creator"))
            continue;
        if (Is(node, "user-defined"))
            name = Attribute(node, "name");
        if (!name.empty() && ++count < kMostProperties)
            Report(sink, name, TextInside(node));
    }
}

}  // namespace zorvane
