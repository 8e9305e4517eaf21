#include "load/readers/web/html_parser.h"

#include <algorithm>

#include "common/base/ascii.h"
#include "load/readers/web/html_tags.h"

namespace zorvane {
namespace {

constexpr std::size_t kMostAttributes = 256;

bool EndsTagName(char character) {
    return IsHtmlBlank(character) || character == '/' || character == '>';
}

}  // namespace

bool EqualsLower(std::string_view text, std::string_view lower) {
    if (text.size() != lower.size())
        return false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (AsciiLower(text[i]) != lower[i])
            return false;
    }
    return true;
}

const std::string_view* HtmlElement::Find(std::string_view lower) const {
    if (attributes == nullptr)
        return nullptr;
    for (const HtmlAttribute& attribute : *attributes) {
        if (EqualsLower(attribute.name, lower))
            return &attribute.value;
    }
    return nullptr;
}

bool HtmlParser::Run() {
    constexpr std::size_t kStep = std::size_t{1} << 17;
    std::size_t next = kStep;
    while (at_ < page_.size()) {
        const std::size_t mark = std::min(page_.find('<', at_), page_.size());
        TextRun(mark);
        if (at_ < page_.size())
            Markup();
        if (at_ < next || at_ >= page_.size())
            continue;
        if (!handler_.Proceed(at_, page_.size()))
            return false;
        next = at_ + kStep;
    }
    while (!open_.empty())
        PopTo(open_.size() - 1, false);
    return true;
}

void HtmlParser::TextRun(std::size_t end) {
    if (end == at_)
        return;
    const std::string_view text = page_.substr(at_, end - at_);
    at_ = end;
    if ((!body_begun_ || pending_formats_.size() > pending_base_) &&
        text.find_first_not_of(kHtmlBlanks) != std::string_view::npos) {
        body_begun_ = true;
        Reopen();
    }
    if (text.find('&') == std::string_view::npos) {
        handler_.Text(text);
        return;
    }
    decoded_.clear();
    references_.Decode(text, decoded_);
    handler_.Text(decoded_);
}

void HtmlParser::Markup() {
    const char next = at_ + 1 < page_.size() ? page_[at_ + 1] : '\0';
    if (IsAsciiLetter(next)) {
        StartTag();
    } else if (next == '/' && at_ + 2 < page_.size() && IsAsciiLetter(page_[at_ + 2])) {
        EndTag();
    } else if (next == '!' || next == '?' || next == '/') {
        Declaration();
    } else {
        handler_.Text("<");
        ++at_;
    }
}

// Comments, DOCTYPE, processing instructions and what looks like them.
void HtmlParser::Declaration() {
    const std::string_view rest = page_.substr(at_);
    if (rest.starts_with("<!--")) {
        const bool at_once = rest.substr(4).starts_with(">") || rest.substr(4).starts_with("->");
        const std::size_t end = at_once ? rest.find('>') : rest.find("-->", 4);
        const std::size_t length = at_once ? 1 : 3;
        at_ = end == std::string_view::npos ? page_.size() : at_ + end + length;
        return;
    }
    if (rest.starts_with("<![CDATA[") && (syntax_ == HtmlSyntax::Xhtml || InForeign())) {
        CharacterData();
        return;
    }
    const std::size_t end = rest.find('>');
    at_ = end == std::string_view::npos ? page_.size() : at_ + end + 1;
}

void HtmlParser::CharacterData() {
    constexpr std::size_t kStart = 9;
    const std::size_t from = at_ + kStart;
    const std::size_t end = page_.find("]]>", from);
    handler_.Text(page_.substr(from, end == std::string_view::npos ? end : end - from));
    at_ = end == std::string_view::npos ? page_.size() : end + 3;
}

void HtmlParser::SkipBlanks() {
    while (at_ < page_.size() && IsHtmlBlank(page_[at_]))
        ++at_;
}

// Leaves `at_` behind the tag. A tag that the page's end cuts off is no tag.
void HtmlParser::ReadTag(std::size_t name_at, Tag& tag) {
    at_ = name_at;
    while (at_ < page_.size() && !EndsTagName(page_[at_]))
        ++at_;
    tag.element.name = page_.substr(name_at, at_ - name_at);
    tag.element.tag =
        gumbo_tagn_enum(tag.element.name.data(), static_cast<unsigned>(tag.element.name.size()));
    attributes_.clear();
    while (ReadAttribute()) {
    }
    tag.self_closing = at_ > 0 && at_ < page_.size() && page_[at_ - 1] == '/';
    at_ = std::min(at_ + 1, page_.size());
    tag.element.attributes = &attributes_;
    tag.element.rest = page_.substr(at_);
}

// False at the end of the tag.
bool HtmlParser::ReadAttribute() {
    while (at_ < page_.size() && (IsHtmlBlank(page_[at_]) || page_[at_] == '/'))
        ++at_;
    if (at_ >= page_.size() || page_[at_] == '>')
        return false;
    const std::size_t from = at_++;  // a "=" in front belongs to the name
    while (at_ < page_.size() && !EndsTagName(page_[at_]) && page_[at_] != '=')
        ++at_;
    HtmlAttribute attribute{page_.substr(from, at_ - from), {}};
    SkipBlanks();
    if (at_ < page_.size() && page_[at_] == '=') {
        ++at_;
        SkipBlanks();
        attribute.value = ReadValue();
    }
    if (attributes_.size() < kMostAttributes)
        attributes_.push_back(attribute);
    return true;
}

std::string_view HtmlParser::ReadValue() {
    if (at_ >= page_.size())
        return {};
    const char quote = page_[at_];
    if (quote == '"' || quote == '\'') {
        const std::size_t from = at_ + 1;
        const std::size_t end = std::min(page_.find(quote, from), page_.size());
        at_ = std::min(end + 1, page_.size());
        return page_.substr(std::min(from, page_.size()), end - std::min(from, page_.size()));
    }
    const std::size_t from = at_;
    while (at_ < page_.size() && !IsHtmlBlank(page_[at_]) && page_[at_] != '>')
        ++at_;
    return page_.substr(from, at_ - from);
}

void HtmlParser::StartTag() {
    Tag tag;
    tag.place = at_;
    const bool foreign = InForeign();
    ReadTag(at_ + 1, tag);
    const GumboTag name = tag.element.tag;
    if (!AdmitStart(tag))
        return;
    Push(tag);
    const bool may_be_empty =
        syntax_ == HtmlSyntax::Xhtml || foreign || name == GUMBO_TAG_SVG || name == GUMBO_TAG_MATH;
    if (IsVoidTag(name) || (tag.self_closing && may_be_empty)) {
        PopEmpty();
        return;
    }
    if (name == GUMBO_TAG_PRE || name == GUMBO_TAG_LISTING || name == GUMBO_TAG_TEXTAREA) {
        // A line break right behind the tag is not shown.
        const std::string_view rest = page_.substr(at_);
        at_ += rest.starts_with("\r\n") ? 2U : rest.starts_with('\n') ? 1U : 0U;
    }
    if (IsRawTag(name) && !foreign)
        RawContent(tag.element);
}

void HtmlParser::RawContent(const HtmlElement& element) {
    std::size_t end = at_;
    while (true) {
        end = page_.find("</", end);
        if (end == std::string_view::npos || element.tag == GUMBO_TAG_PLAINTEXT) {
            end = page_.size();
            break;
        }
        const std::size_t behind = end + 2 + element.name.size();
        const bool same =
            gumbo_tagn_enum(page_.data() + std::min(end + 2, page_.size()),
                            static_cast<unsigned>(std::min(element.name.size(),
                                                           page_.size() - end - 2))) == element.tag;
        if (same && (behind >= page_.size() || EndsTagName(page_[behind])))
            break;
        end += 2;
    }
    const std::string_view content = page_.substr(at_, end - at_);
    if (element.tag == GUMBO_TAG_STYLE) {
        handler_.Style(content);
    } else if (element.tag == GUMBO_TAG_TEXTAREA) {
        TextRun(end);
    } else if (element.tag == GUMBO_TAG_XMP || element.tag == GUMBO_TAG_PLAINTEXT) {
        handler_.Text(content);
    }
    at_ = end;
}

void HtmlParser::EndTag() {
    Tag tag;
    tag.place = at_;
    ReadTag(at_ + 2, tag);
    EndElement(tag.element);
}

}  // namespace zorvane
