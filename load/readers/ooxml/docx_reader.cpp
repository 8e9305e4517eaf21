#include <algorithm>
#include <iterator>

#include "common/base/text_encoding.h"
#include "load/readers/ooxml/docx_walker.h"

namespace zorvane {
namespace {

using Node = pugi::xml_node;

void PlainText(const Node& node, std::string& text, int depth) {
    for (const Node& child : node.children()) {
        if (Is(child, "t"))
            text += child.text().get();
        else if (depth < kMaxDepth)
            PlainText(child, text, depth + 1);
    }
}

void CollectSections(const Node& node, std::vector<Node>& sections, int depth) {
    for (const Node& child : node.children()) {
        if (Is(child, "sectPr"))
            sections.push_back(child);
        else if (depth < 3 && (Is(child, "body") || Is(child, "p") || Is(child, "pPr")))
            CollectSections(child, sections, depth + 1);
    }
}

}  // namespace

bool IsOn(const Node& property) {
    const std::string_view value = Attribute(property, "val");
    return property && value != "0" && value != "false" && value != "off";
}

ReadEnd DocxWalker::Read() {
    const std::string main = MainPart();
    parts_ = ReadRelationships(package_, main);
    styles_.Read(package_, parts_);
    beside_.Begin(main);
    ReadParts();
    if (!end_.ok())
        return end_;
    XmlPart document;
    if (ReadEnd end = XmlPart::Read(package_, main, document); !end.ok())
        return end;
    const Node body = Child(document.Root(), "body");
    if (!body)
        return ReadEnd::Fault(ReadError::WrongFormat, "no document text in the package");
    total_ = std::distance(body.children().begin(), body.children().end());
    Blocks(body, 0);
    EndOpenParagraph(0);
    HeadersAndFooters(document.Root());
    return end_;
}

void DocxWalker::ReadParts() {
    std::string numbering = "word/numbering.xml";
    for (const auto& [id, part] : parts_) {
        if ((part.type == "numbering" || part.type == "styles") && !package_.Has(part.target))
            package_.TellDamage(part.target);
        if (part.type == "numbering")
            numbering = part.target;
        if (part.type == "settings")
            ReadSettings(part.target);
        if (part.type == "footnotes")
            ReadNotes(part.target, footnotes_part_, footnotes_);
        if (part.type == "endnotes")
            ReadNotes(part.target, endnotes_part_, endnotes_);
    }
    numbering_.Read(package_, numbering);
}

std::string DocxWalker::MainPart() {
    for (const auto& [id, part] : ReadRelationships(package_, "")) {
        if (part.type == "officeDocument")
            return part.target;
    }
    return "word/document.xml";
}

// False without such a part, which the document names and so should have. One that holds text and
// cannot be read ends the reading: what is missing would pass for unchanged.
bool DocxWalker::ReadPart(const std::string& name, XmlPart& part) {
    ReadEnd end = XmlPart::Read(package_, name, part);
    const bool read = end.ok();
    if (end.error == ReadError::WrongFormat)
        package_.TellDamage(name);
    else if (!read && end_.ok())
        end_ = std::move(end);
    return read;
}

void DocxWalker::ReadNotes(const std::string& name, XmlPart& part, Notes& notes) {
    if (!ReadPart(name, part))
        return;
    for (const Node& note : part.Root().children()) {
        const std::string_view type = Attribute(note, "type");
        if (type.empty() || type == "normal")
            notes.emplace(Attribute(note, "id"), note);
    }
}

void DocxWalker::ReadSettings(const std::string& name) {
    XmlPart part;
    if (XmlPart::Read(package_, name, part).ok())
        even_pages_differ_ = IsOn(Child(part.Root(), "evenAndOddHeaders"));
}

// Each part once, and a text that says what another said once as well.
void DocxWalker::HeadersAndFooters(const Node& document) {
    std::vector<Node> sections;
    CollectSections(document, sections, 0);
    std::set<std::string> seen;
    for (const std::string_view kind : {"headerReference", "footerReference"}) {
        for (const Node& section : sections) {
            for (const Node& reference : section.children()) {
                if (Is(reference, kind) && Shown(reference, section))
                    HeaderPart(std::string(Attribute(reference, "id")), seen);
            }
        }
    }
}

// A first page's or even pages' header is there only when the document says that they differ.
bool DocxWalker::Shown(const Node& reference, const Node& section) const {
    const std::string_view type = Attribute(reference, "type");
    if (type == "first")
        return IsOn(Child(section, "titlePg"));
    return type != "even" || even_pages_differ_;
}

void DocxWalker::HeaderPart(const std::string& relationship, std::set<std::string>& seen) {
    const auto found = parts_.find(relationship);
    XmlPart part;
    if (found == parts_.end() || !seen.insert("part " + found->second.target).second ||
        !ReadPart(found->second.target, part))
        return;
    std::string text;
    PlainText(part.Root(), text, 0);
    if (Trim(text).empty() || !seen.insert("text " + text).second)
        return;
    beside_.UseMarginPart(found->second.target);
    Blocks(part.Root(), 0);
    EndOpenParagraph(0);
}

ReadEnd ReadWordPackage(Package& package, DocumentSink& sink, ReadMonitor& monitor) {
    ReadEnd end = DocxWalker(package, sink, monitor).Read();
    ReportDamage(package, sink);
    return end;
}

}  // namespace zorvane
