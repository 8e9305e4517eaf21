#include <algorithm>

#include "common/base/text_encoding.h"
#include "load/readers/web/css_style.h"

namespace zorvane {
namespace {

constexpr std::size_t kMostRules = 5000;
constexpr std::size_t kMostOfASelector = 32;  // of equal selectors; more changes nothing sensible
constexpr std::size_t kMostClasses = 32;
constexpr int kMostBlocks = 4;

std::string WithoutComments(std::string_view css) {
    std::string text;
    text.reserve(css.size());
    while (!css.empty()) {
        const std::size_t start = std::min(css.find("/*"), css.size());
        text += css.substr(0, start);
        const std::size_t end = css.find("*/", start);
        css = end == std::string_view::npos ? std::string_view() : css.substr(end + 2);
    }
    return text;
}

// The place of the bracket that closes the one at `open`.
std::size_t ClosingBrace(std::string_view css, std::size_t open) {
    int depth = 0;
    for (std::size_t at = open; at < css.size(); ++at) {
        if (css[at] == '{')
            ++depth;
        else if (css[at] == '}' && --depth == 0)
            return at;
    }
    return css.size();
}

bool IsForScreen(std::string_view rule) {
    const std::string lower = ToLower(rule.substr(0, 256));
    if (lower.starts_with("@supports") || lower.starts_with("@layer"))
        return true;
    return lower.starts_with("@media") && lower.find("print") == std::string::npos &&
           lower.find("width") == std::string::npos && lower.find("prefers") == std::string::npos;
}

// Lower-case tag, class and id as one key; empty for a selector that is not simple.
std::string KeyOf(std::string_view selector) {
    selector = Trim(selector);
    if (selector == ":root")
        return "html";
    const bool link = selector.ends_with(kLinkClass);
    if (link)
        selector.remove_suffix(kLinkClass.size());
    const std::size_t mark = selector.find_first_of(".#");
    const std::string_view rest =
        mark == std::string_view::npos ? std::string_view() : selector.substr(mark + 1);
    if (selector.size() > 200 ||
        selector.find_first_of(" \t\r\n>+~:[]()\\") != std::string_view::npos ||
        rest.find_first_of(".#") != std::string_view::npos)
        return {};
    const std::string key = ToLower(selector.substr(0, mark));
    const std::string part = mark != std::string_view::npos ? std::string(selector.substr(mark))
                             : link                         ? "." + std::string(kLinkClass)
                                                            : "";
    return (key == "*" && !part.empty() ? "" : key) + part;
}

}  // namespace

void CssSheet::Add(std::string_view css) {
    const std::string text = WithoutComments(css);
    AddBlock(text, 0);
}

void CssSheet::AddBlock(std::string_view css, int depth) {
    while (rules_.size() < kMostRules) {
        const std::size_t start = css.find_first_not_of(" \t\r\n\f;}<!->");
        if (start == std::string_view::npos)
            return;
        css.remove_prefix(start);
        const std::size_t open = css.find_first_of("{;");
        if (open == std::string_view::npos)
            return;
        if (css[open] == ';') {  // "@import url;"
            css.remove_prefix(open);
            continue;
        }
        const std::size_t end = ClosingBrace(css, open);
        const std::string_view inner = css.substr(open + 1, end - open - 1);
        if (!css.starts_with('@'))
            AddRule(css.substr(0, open), inner);
        else if (IsForScreen(css.substr(0, open)) && depth < kMostBlocks)
            AddBlock(inner, depth + 1);
        css.remove_prefix(std::min(end + 1, css.size()));
    }
}

void CssSheet::AddRule(std::string_view selectors, std::string_view declarations) {
    CssStyle style;
    ParseDeclarations(declarations, style);
    const std::size_t place = rules_.size();
    rules_.push_back(style);
    while (!selectors.empty()) {
        const std::size_t comma = std::min(selectors.find(','), selectors.size());
        const std::string key = KeyOf(selectors.substr(0, comma));
        selectors.remove_prefix(std::min(comma + 1, selectors.size()));
        if (key.empty())
            continue;
        Places& places = by_selector_[key];
        if (places.size() < kMostOfASelector)
            places.push_back(place);
    }
}

void CssSheet::Collect(const std::string& key, Places& places) const {
    if (const auto found = by_selector_.find(key); found != by_selector_.end())
        places.insert(places.end(), found->second.begin(), found->second.end());
}

CssSheet::Places CssSheet::Find(std::string_view tag, std::string_view classes,
                                std::string_view id) const {
    Places places;
    const std::string name(tag);
    // Within one strength, later rules win.
    const auto order = [&places](std::size_t from) {
        std::sort(places.begin() + static_cast<std::ptrdiff_t>(from), places.end());
        return places.size();
    };
    Collect("*", places);
    Collect(name, places);
    std::size_t level = places.size();
    Places of_tag;
    std::size_t count = 0;
    while (!classes.empty() && count < kMostClasses) {
        const std::size_t length = std::min(classes.find_first_of(" \t\r\n\f"), classes.size());
        if (length > 0) {
            const std::string key = "." + std::string(classes.substr(0, length));
            Collect(key, places);
            Collect(name + key, of_tag);
            ++count;
        }
        classes.remove_prefix(std::min(length + 1, classes.size()));
    }
    level = order(level);
    places.insert(places.end(), of_tag.begin(), of_tag.end());
    order(level);
    if (!id.empty()) {
        Collect("#" + std::string(id), places);
        Collect(name + "#" + std::string(id), places);
    }
    return places;
}

}  // namespace zorvane
