// White space of an OpenDocument text in the form in which it counts.
#include <algorithm>

#include "redline/node_kinds.h"
#include "redline/odt_resolve.h"

namespace zorvane {
namespace {

using Node = pugi::xml_node;

class TextFormer {
  public:
    void Blocks(Node parent, int depth) {
        for (const Node& child : parent.children()) {
            if (!IsElement(child) || depth > kMaxDepth)
                continue;
            if (IsOdtParagraph(LocalName(child))) {
                after_blank_ = true;
                Inline(child, depth + 1);
            } else {
                Blocks(child, depth + 1);
            }
        }
    }

  private:
    void Inline(Node parent, int depth) {
        for (Node child = parent.first_child(); child && depth < kMaxDepth;) {
            const Node next = child.next_sibling();
            if (IsCharacters(child))
                Collapse(parent, child);
            else if (IsElement(child))
                Element(parent, child, depth);
            child = next;
        }
    }

    void Element(Node parent, Node child, int depth) {
        const std::string_view name = LocalName(child);
        if (IsOdtWrapper(name))
            return Inline(child, depth + 1);
        if (IsOdtMarker(name))
            return;
        if (name == "s")
            SingleBlanks(parent, child);
        else
            Blocks(child, depth + 1);
        after_blank_ = false;
    }

    void Collapse(Node parent, Node text) {
        std::string kept;
        for (const char byte : std::string_view(text.value())) {
            const bool blank = byte == ' ' || byte == '\t' || byte == '\n' || byte == '\r';
            if (!blank || !after_blank_)
                kept += blank ? ' ' : byte;
            after_blank_ = blank;
        }
        if (kept == text.value())
            return;  // as most are; a copy of all text is large
        if (!kept.empty())
            parent.insert_child_before(pugi::node_pcdata, text).set_value(kept.c_str());
        parent.remove_child(text);
    }

    static void SingleBlanks(Node parent, Node blanks) {
        constexpr std::int32_t kMost = 10'000;
        const std::int32_t count = NumberOf(Attribute(blanks, "c"), 1);
        while (blanks.first_attribute())
            blanks.remove_attribute(blanks.first_attribute());
        for (std::int32_t i = 1; i < std::min(count, kMost); ++i)
            parent.insert_copy_after(blanks, blanks);
        if (count == 0)
            parent.remove_child(blanks);
    }

    bool after_blank_ = true;
};

}  // namespace

void FormText(Node story) {
    TextFormer().Blocks(story, 0);
}

}  // namespace zorvane
