#include "load/readers/web/html_beside.h"

#include <algorithm>
#include <array>
#include <pugixml.hpp>

#include "common/base/text_encoding.h"
#include "load/readers/beside/formula_text.h"
#include "load/readers/beside/package_beside.h"
#include "load/readers/mail/mime.h"

namespace zorvane {
namespace {

constexpr std::size_t kFarthest = std::size_t{1} << 20;  // of one drawing or formula
constexpr std::size_t kMostHidden = std::size_t{1} << 20;

// The element's content, as it stands, up to its end tag.
std::string_view ContentUpTo(std::string_view rest, std::string_view end_tag, std::size_t& left) {
    rest = rest.substr(0, std::min(kFarthest, left));
    const std::string_view content = rest.substr(0, rest.find(end_tag));
    left -= std::min(left, content.size());
    return content;
}

bool IsData(std::string_view address) {
    return address.starts_with("data:");
}

// What a "data:" address holds.
std::string DataOf(std::string_view address) {
    const std::size_t comma = std::min(address.find(','), address.size());
    const bool base64 = address.substr(0, comma).ends_with(";base64");
    const std::string_view data = address.substr(std::min(comma + 1, address.size()));
    return base64 ? DecodeBody(data, "base64") : DecodePercent(data);
}

std::string_view FileOf(std::string_view address) {
    return FileOfPart(address.substr(0, address.find_first_of("?#")));
}

}  // namespace

std::string HtmlBeside::Value(const HtmlElement& element, std::string_view name) {
    std::string value;
    if (const std::string_view* raw = element.Find(name))
        references_.DecodeValue(Trim(*raw), value);
    return value;
}

void HtmlBeside::Open(const HtmlElement& element, bool hidden) {
    if (!hidden)
        EndHidden();
    if (element.tag == GUMBO_TAG_META || (element.tag == GUMBO_TAG_TITLE && !element.foreign))
        Meta(element);
    else if (!hidden || element.tag == GUMBO_TAG_IFRAME || element.tag == GUMBO_TAG_VIDEO ||
             element.tag == GUMBO_TAG_AUDIO || element.tag == GUMBO_TAG_SOURCE)
        Special(element);
}

void HtmlBeside::Special(const HtmlElement& element) {
    switch (element.tag) {
        case GUMBO_TAG_A:
        case GUMBO_TAG_AREA:
            return Link(element);
        case GUMBO_TAG_IMG:
            return Picture(element, "src");
        case GUMBO_TAG_SVG: {
            const std::string_view drawing = ContentUpTo(element.rest, "</svg", look_ahead_left_);
            return sink_.Beside(MakeBeside(BesideKind::Drawing, "drawing", drawing));
        }
        case GUMBO_TAG_MATH:
            return Formula(element);
        case GUMBO_TAG_OBJECT:
            return Embedded(element, "data");
        case GUMBO_TAG_IFRAME:
        case GUMBO_TAG_EMBED:
        case GUMBO_TAG_VIDEO:
        case GUMBO_TAG_AUDIO:
        case GUMBO_TAG_SOURCE:
            return Embedded(element, "src");
        default:
            return;
    }
}

void HtmlBeside::Link(const HtmlElement& element) {
    if (const std::string target = Value(element, "href"); !target.empty())
        sink_.Beside(MakeBeside(BesideKind::Link, target));
}

void HtmlBeside::Picture(const HtmlElement& element, std::string_view address) {
    const std::string source = Value(element, address);
    if (source.empty())
        return;
    std::string name = Value(element, "alt");
    if (name.empty())
        name = IsData(source) ? std::string("picture") : std::string(FileOf(source));
    std::string digest;
    if (IsData(source))
        digest = BesideDigest(DataOf(source));
    else if (digest_of_)
        digest = digest_of_(source);
    sink_.Beside({BesideKind::Picture, kBesideHere, BesideText(name),
                  digest.empty() ? BesideDigest(source) : digest});
}

void HtmlBeside::Embedded(const HtmlElement& element, std::string_view address) {
    const std::string source = Value(element, address);
    if (source.empty())
        return;
    const std::string digest =
        digest_of_ && !IsData(source) ? digest_of_(source) : BesideDigest(source);
    sink_.Beside({BesideKind::Object, kBesideHere,
                  BesideText(IsData(source) ? "object" : std::string_view(source)),
                  digest.empty() ? BesideDigest(source) : digest});
}

void HtmlBeside::Meta(const HtmlElement& element) {
    constexpr std::array<std::string_view, 4> kNames = {"author", "description", "keywords",
                                                        "subject"};
    if (element.tag == GUMBO_TAG_TITLE) {
        std::string title;
        references_.Decode(ContentUpTo(element.rest, "</", look_ahead_left_), title);
        if (const auto item = MakeMetadata("title", title))
            sink_.Beside(*item);
        return;
    }
    const std::string name = ToLower(Value(element, "name"));
    if (std::find(kNames.begin(), kNames.end(), name) == kNames.end())
        return;
    if (const auto item = MakeMetadata(name, Value(element, "content")))
        sink_.Beside(*item);
}

void HtmlBeside::Formula(const HtmlElement& element) {
    std::string xml;
    references_.Decode(ContentUpTo(element.rest, "</math", look_ahead_left_), xml);
    xml = "<math>" + xml + "</math>";
    pugi::xml_document formula;
    const bool read = static_cast<bool>(formula.load_buffer(xml.data(), xml.size()));
    const std::string text = read ? FormulaStructure(formula.document_element()) : "formula";
    sink_.Beside(read ? MakeBeside(BesideKind::Formula, text)
                      : MakeBeside(BesideKind::Formula, text, xml));
}

void HtmlBeside::Hidden(std::string_view utf8) {
    if (hidden_.size() < kMostHidden)
        hidden_ += utf8.substr(0, kMostHidden);
}

void HtmlBeside::EndHidden() {
    if (!Trim(hidden_).empty())
        sink_.Beside(MakeBeside(BesideKind::HiddenText, Trim(hidden_)));
    hidden_.clear();
}

}  // namespace zorvane
