#include <algorithm>
#include <vector>

#include "common/base/text_encoding.h"
#include "load/readers/container/xml_part.h"
#include "load/readers/web/html_reader.h"
#include "load/readers/word_readers.h"

namespace zorvane {
namespace {

constexpr std::int64_t kStep = 4096;

bool IsText(const pugi::xml_node& node) {
    return node.type() == pugi::node_pcdata || node.type() == pugi::node_cdata;
}

bool IsBlankText(const pugi::xml_node& node) {
    return Trim(node.value()).empty();
}

// Text of its own, apart from the white space between elements.
bool HoldsText(const pugi::xml_node& element) {
    return std::any_of(element.begin(), element.end(), [](const pugi::xml_node& child) {
        return IsText(child) && !IsBlankText(child);
    });
}

// The node behind `node` and all it holds, inside `top`.
pugi::xml_node Behind(pugi::xml_node node, const pugi::xml_node& top) {
    while (node && node != top) {
        if (const pugi::xml_node next = node.next_sibling())
            return next;
        node = node.parent();
    }
    return {};
}

// Next in the order of the document.
pugi::xml_node Next(const pugi::xml_node& node, const pugi::xml_node& top) {
    const pugi::xml_node inside = node.first_child();
    return inside ? inside : Behind(node, top);
}

class XmlWalk {
  public:
    XmlWalk(std::size_t bytes, DocumentSink& sink, ReadMonitor& monitor)
        : writer_(sink), monitor_(monitor), bytes_(static_cast<std::int64_t>(bytes)) {}

    // Without recursion, since elements may nest as deep as a file is long.
    ReadEnd Run(const pugi::xml_node& root) {
        pugi::xml_node node = root;
        while (node) {
            if (++count_ % kStep == 0 && !monitor_.Progress(PlaceOf(node), bytes_ + 1))
                return ReadEnd::Fault(ReadError::Cancelled);
            if (writer_.Sink().Size() > kMaxPartBytes)
                return ReadEnd::Fault(ReadError::TooLarge, "the document holds too much text");
            const bool paragraph = node.type() == pugi::node_element && HoldsText(node);
            if (paragraph)
                Paragraph(node);
            const bool at_root_without_children = node == root && !node.first_child();
            if (at_root_without_children)
                break;
            node = paragraph ? Behind(node, root) : Next(node, root);
        }
        return ReadEnd::Ok();
    }

  private:
    std::int64_t PlaceOf(const pugi::xml_node& node) const {
        return std::clamp<std::int64_t>(node.offset_debug(), 0, bytes_);
    }

    void Paragraph(const pugi::xml_node& element) {
        blank_waits_ = begun_ = false;
        for (pugi::xml_node node = element.first_child(); node; node = Next(node, element)) {
            if (IsText(node))
                Write(node.value());
        }
        writer_.End();
    }

    void Write(std::string_view text) {
        std::string line;
        for (const char character : text) {
            if (character == ' ' || character == '\n' || character == '\t' || character == '\r') {
                blank_waits_ = begun_;
                continue;
            }
            if (blank_waits_)
                line += ' ';
            blank_waits_ = false;
            begun_ = true;
            line += character;
        }
        writer_.Text(IsValidUtf8(line) ? line : ToUtf8(ToUtf16(line)), CharFormat());
    }

    ParagraphWriter writer_;
    ReadMonitor& monitor_;
    std::int64_t bytes_;
    std::int64_t count_ = 0;
    bool blank_waits_ = false;
    bool begun_ = false;
};

// What the declaration in front calls the encoding; empty without one.
std::string EncodingOfDeclaration(std::string_view bytes) {
    if (!bytes.starts_with("<?xml"))
        return {};
    const std::string_view declaration = bytes.substr(0, std::min(bytes.find("?>"), bytes.size()));
    const std::size_t name = declaration.find("encoding");
    if (name == std::string_view::npos)
        return {};
    const std::size_t from = declaration.find_first_of("\"'", name);
    if (from == std::string_view::npos)
        return {};
    const std::size_t end = declaration.find(declaration[from], from + 1);
    return EncodingByLabel(declaration.substr(from + 1, end - from - 1));
}

// UTF-8 without a declaration, which would speak of the encoding that the bytes had before.
std::string XmlAsUtf8(std::string_view bytes) {
    DetectedEncoding encoding = DetectEncoding(bytes, "UTF-8");
    const bool wide = encoding.name.starts_with("UTF-16") || encoding.name.starts_with("UTF-32");
    if (encoding.bom_size == 0 && !wide) {
        const std::string declared = EncodingOfDeclaration(bytes);
        encoding.name = declared.empty() ? "UTF-8" : declared;
    }
    std::string text = ToUtf8(DecodeText(bytes, encoding));
    if (text.starts_with("<?xml"))
        text.erase(0, std::min(text.find("?>"), text.size() - 2) + 2);
    return text;
}

std::string Place(const std::string& text, std::size_t offset) {
    const auto end = text.begin() + static_cast<std::ptrdiff_t>(std::min(offset, text.size()));
    return std::to_string(std::count(text.begin(), end, '\n') + 1);
}

}  // namespace

ReadEnd ReadXml(std::string_view bytes, DocumentSink& sink, ReadMonitor& monitor) {
    if (bytes.size() > kMaxPartBytes)
        return ReadEnd::Fault(ReadError::TooLarge, "the file is larger than allowed");
    const std::string text = XmlAsUtf8(bytes);
    pugi::xml_document document;
    constexpr unsigned kOptions =
        pugi::parse_cdata | pugi::parse_escapes | pugi::parse_eol | pugi::parse_ws_pcdata;
    const pugi::xml_parse_result result =
        document.load_buffer(text.data(), text.size(), kOptions, pugi::encoding_utf8);
    if (result.status == pugi::status_out_of_memory)
        return ReadEnd::Fault(ReadError::TooLarge, "the document needs more memory than allowed");
    if (!result)
        return ReadEnd::Fault(ReadError::Damaged,
                              "broken XML in line " +
                                  Place(text, static_cast<std::size_t>(result.offset)) + ": " +
                                  result.description());
    XmlWalk walk(text.size(), sink, monitor);
    return walk.Run(document.document_element());
}

}  // namespace zorvane
