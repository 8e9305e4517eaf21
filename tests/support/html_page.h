// Reads a page that is well formed as XML into a tree.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace zorvane {

/// An element, or a text without a name.
struct HtmlNode {
    std::string name;
    std::string attributes;
    std::string text;  ///< entities resolved
    std::vector<HtmlNode> children;

    bool Has(std::string_view attribute) const {
        return attributes.find(attribute) != std::string::npos;
    }
    /// All text inside, but for that of elements named `without`.
    std::string Text(std::string_view without = "-") const {
        std::string all = text;
        for (const HtmlNode& child : children)
            all += child.name == without ? "" : child.Text(without);
        return all;
    }
    /// Calls `visit` for each element inside, outer ones first.
    template <class Visit>
    void ForEach(const Visit& visit) const {
        for (const HtmlNode& child : children) {
            visit(child);
            child.ForEach(visit);
        }
    }
};

class PageTreeParser {
  public:
    explicit PageTreeParser(std::string_view page) : rest_(page) {}

    /// The first fault is in `Fault`.
    HtmlNode Run() {
        constexpr std::string_view kType = "<!DOCTYPE html>\n";
        if (!rest_.starts_with(kType))
            fault_ = "no document type";
        rest_.remove_prefix(std::min(kType.size(), rest_.size()));
        HtmlNode page;
        Children(page);
        if (!rest_.empty())
            Fail("a stray end tag");
        return page;
    }
    const std::string& Fault() const { return fault_; }

  private:
    void Fail(const std::string& what) {
        if (fault_.empty())
            fault_ = what + " at: " + std::string(rest_.substr(0, 60));
        rest_ = {};
    }

    void Children(HtmlNode& node) {
        while (!rest_.empty() && !rest_.starts_with("</")) {
            if (rest_.front() == '<')
                Element(node.children.emplace_back());
            else
                Text(node.children.emplace_back());
        }
    }

    void Element(HtmlNode& node) {
        const std::size_t end = rest_.find('>');
        if (end == std::string_view::npos)
            return Fail("an open tag");
        std::string_view tag = rest_.substr(1, end - 1);
        const bool empty = tag.ends_with('/');
        tag.remove_suffix(empty ? 1 : 0);
        node.name = tag.substr(0, tag.find(' '));
        node.attributes = tag.substr(node.name.size());
        rest_.remove_prefix(end + 1);
        if (empty)
            return;
        Children(node);
        const std::string close = "</" + node.name + ">";
        if (!rest_.starts_with(close))
            return Fail("no " + close);
        rest_.remove_prefix(close.size());
    }

    void Text(HtmlNode& node) {
        const std::string_view raw = rest_.substr(0, rest_.find('<'));
        for (std::size_t at = 0; at < raw.size(); ++at) {
            if (static_cast<unsigned char>(raw[at]) < 0x20 && raw[at] != '\n' && raw[at] != '\t')
                return Fail("a control character");
            if (raw[at] != '&') {
                node.text += raw[at];
                continue;
            }
            const std::string_view entity = raw.substr(at, raw.find(';', at) - at + 1);
            if (!Entity(entity, node.text))
                return Fail("a bad entity " + std::string(entity));
            at += entity.size() - 1;
        }
        rest_.remove_prefix(raw.size());
    }

    static bool Entity(std::string_view entity, std::string& out) {
        struct Row {
            std::string_view entity;
            std::string_view text;
        };
        constexpr Row kRows[] = {{"&amp;", "&"},    {"&lt;", "<"},       {"&gt;", ">"},
                                 {"&quot;", "\""},  {"&#8722;", "-"},    {"&#8594;", "to"},
                                 {"&#8593;", "up"}, {"&#8595;", "down"}, {"&#8230;", "..."}};
        for (const Row& row : kRows) {
            if (row.entity == entity) {
                out += row.text;
                return true;
            }
        }
        return false;
    }

    std::string_view rest_;
    std::string fault_;
};

}  // namespace zorvane
