#include "redline/resolve.h"

#include <algorithm>
#include <array>
#include <vector>

#include "redline/node_kinds.h"

namespace zorvane {
namespace {

using Node = pugi::xml_node;

// Former properties, which come back when changes are rejected.
constexpr std::array<std::string_view, 8> kFormer{"rPrChange",     "pPrChange",    "tblPrChange",
                                                  "trPrChange",    "tcPrChange",   "sectPrChange",
                                                  "tblGridChange", "tblPrExChange"};
// Places without content.
constexpr std::array<std::string_view, 13> kEmpty{
    "moveFromRangeStart",        "moveFromRangeEnd",
    "moveToRangeStart",          "moveToRangeEnd",
    "numberingChange",           "customXmlInsRangeStart",
    "customXmlInsRangeEnd",      "customXmlDelRangeStart",
    "customXmlDelRangeEnd",      "customXmlMoveFromRangeStart",
    "customXmlMoveFromRangeEnd", "customXmlMoveToRangeStart",
    "customXmlMoveToRangeEnd"};

template <std::size_t N>
bool In(const std::array<std::string_view, N>& names, std::string_view name) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

// Empty, or with the colon.
std::string_view PrefixOf(const Node& node) {
    const std::string_view whole = node.name();
    return whole.substr(0, whole.size() - LocalName(node).size());
}

bool IsDeletion(std::string_view name) {
    return name == "del" || name == "moveFrom" || name == "cellDel";
}
bool IsInsertion(std::string_view name) {
    return name == "ins" || name == "moveTo" || name == "cellIns";
}

bool HasRows(const Node& table) {
    return std::any_of(table.begin(), table.end(), [](const Node& node) {
        const std::string_view name = LocalName(node);
        return name == "tr" || name == "sdt" || name == "customXml" || name == "AlternateContent";
    });
}

class Resolver {
  public:
    Resolver(Resolution resolution, const char* trace) : resolution_(resolution), trace_(trace) {}

    Resolved Run(const Node& root) {
        prefix_ = PrefixOf(root);
        Walk(root, 0);
        return found_;
    }

  private:
    bool Goes(std::string_view name) const {
        return resolution_ == Resolution::Accept ? IsDeletion(name) : IsInsertion(name);
    }

    void Walk(Node node, int depth) {
        if (depth > kMaxDepth)
            return;
        for (Node child = node.first_child(); child;) {
            const Node next = child.next_sibling();
            child = Take(node, child, depth) ? next : Node(after_);
        }
        JoinParagraphs(node);
    }

    // False when something else stands in the child's place now, which begins at `after_`.
    bool Take(Node parent, Node child, int depth) {
        // Drawings have elements that are called as changes are: those of a path move, too.
        const std::string_view name =
            PrefixOf(child) == prefix_ ? LocalName(child) : std::string_view();
        const bool in_properties = LocalName(parent) == "rPr" || LocalName(parent) == "trPr" ||
                                   LocalName(parent) == "tcPr";
        if (In(kEmpty, name)) {
            parent.remove_child(child);
        } else if (In(kFormer, name)) {
            TakeFormer(parent, child);
        } else if (name == "tr" || name == "tc") {
            TakeRowOrCell(parent, child, depth);
        } else if (!in_properties && (IsDeletion(name) || IsInsertion(name))) {
            ++found_.changes;
            return TakeContent(parent, child);
        } else {
            const bool had_rows = name == "tbl" && HasRows(child);
            Walk(child, depth + 1);
            if (had_rows && !HasRows(child))
                parent.remove_child(child);
        }
        return true;
    }

    // Content that was inserted, deleted or moved: gone, or in its parent's hands.
    bool TakeContent(Node parent, Node child) {
        const std::string_view name = LocalName(child);
        if (Goes(name)) {
            parent.remove_child(child);
            return true;
        }
        Node first;
        const bool was_deleted = IsDeletion(name);
        for (Node inner = child.first_child(); inner;) {
            const Node next = inner.next_sibling();
            const Node moved = parent.insert_move_before(inner, child);
            if (IsElement(moved))
                Restore(moved, was_deleted, 0);
            first = first ? first : moved;
            inner = next;
        }
        after_ = first ? first : child.next_sibling();
        parent.remove_child(child);
        return false;
    }

    // What comes back from a deletion is text again.
    void Restore(Node node, bool was_deleted, int depth) {
        const std::string_view name = LocalName(node);
        const std::string_view whole = node.name();
        const std::string prefix(whole.substr(0, whole.size() - name.size()));
        if (name == "delText")
            node.set_name((prefix + "t").c_str());
        else if (name == "delInstrText")
            node.set_name((prefix + "instrText").c_str());
        else if (name == "r" && trace_ != nullptr && was_deleted)
            node.append_attribute(trace_) = "deleted";
        for (const Node& child : node.children()) {
            if (depth < kMaxDepth && IsElement(child))
                Restore(child, was_deleted, depth + 1);
        }
    }

    void TakeFormer(Node parent, Node change) {
        ++found_.changes;
        if (resolution_ == Resolution::Accept) {
            parent.remove_child(change);
            return;
        }
        const Node former = change.first_child();
        // The mark of a paragraph, its run properties and its section are none of `pPr`'s former.
        for (Node child = parent.first_child(); child;) {
            const Node next = child.next_sibling();
            const std::string_view name = LocalName(child);
            if (child != change && name != "sectPr" && !(Is(parent, "pPr") && name == "rPr") &&
                !(IsDeletion(name) || IsInsertion(name)) && !In(kFormer, name))
                parent.remove_child(child);
            child = next;
        }
        Node behind;
        for (const Node& child : former.children())
            behind = behind ? parent.insert_copy_after(child, behind) : parent.prepend_copy(child);
        parent.remove_child(change);
    }

    void TakeRowOrCell(Node parent, Node child, int depth) {
        Node properties = Child(child, Is(child, "tr") ? "trPr" : "tcPr");
        bool goes = false;
        for (Node mark = properties.first_child(); mark;) {
            const Node next = mark.next_sibling();
            const std::string_view name = LocalName(mark);
            if (IsDeletion(name) || IsInsertion(name)) {
                ++found_.changes;
                goes = goes || Goes(name);
                if (trace_ != nullptr && IsDeletion(name))
                    child.append_attribute(trace_) = "deleted";
                properties.remove_child(mark);
            }
            mark = next;
        }
        if (goes)
            parent.remove_child(child);
        else
            Walk(child, depth + 1);
    }

    // ---- paragraphs ----

    static void CollectBlocks(const Node& parent, std::vector<Node>& blocks) {
        for (const Node& child : parent.children()) {
            const std::string_view name = LocalName(child);
            if (name == "p" || name == "tbl")
                blocks.push_back(child);
            else if (name == "sdt" || name == "sdtContent" || name == "customXml")
                CollectBlocks(child, blocks);
        }
    }

    static bool HoldsBlocks(std::string_view name) {
        return name == "body" || name == "tc" || name == "hdr" || name == "ftr" ||
               name == "footnote" || name == "endnote" || name == "txbxContent" ||
               name == "comment";
    }

    // Takes the mark of a paragraph off; true when the paragraph's end goes.
    bool TakeMark(Node paragraph) {
        Node look = Child(Child(paragraph, "pPr"), "rPr");
        bool goes = false;
        for (Node mark = look.first_child(); mark;) {
            const Node next = mark.next_sibling();
            const std::string_view name = LocalName(mark);
            if (IsDeletion(name) || IsInsertion(name)) {
                ++found_.changes;
                goes = goes || Goes(name);
                if (trace_ != nullptr && IsDeletion(name) && !goes)
                    paragraph.append_attribute(trace_) = "deleted";
                look.remove_child(mark);
            }
            mark = next;
        }
        return goes;
    }

    // A paragraph without an end goes on in the next one, whose properties stay.
    void JoinParagraphs(const Node& container) {
        if (!HoldsBlocks(LocalName(container)))
            return;
        std::vector<Node> blocks;
        CollectBlocks(container, blocks);
        for (std::size_t i = 0; i < blocks.size(); ++i) {
            if (!Is(blocks[i], "p") || !TakeMark(blocks[i]))
                continue;
            if (i + 1 < blocks.size() && Is(blocks[i + 1], "p"))
                Join(blocks[i], blocks[i + 1]);
            else
                ++found_.without_partner;  // the paragraph stays, as readers of such files have it
        }
    }

    static void Join(Node first, Node second) {
        Node place = Child(second, "pPr");
        for (Node child = first.first_child(); child;) {
            const Node next = child.next_sibling();
            if (!Is(child, "pPr"))
                place = place ? second.insert_move_after(child, place) : second.prepend_move(child);
            child = next;
        }
        Node parent = first.parent();
        parent.remove_child(first);
        while (parent && !parent.first_child() && Is(parent, "sdtContent")) {
            const Node control = parent.parent();
            Node above = control.parent();
            above.remove_child(control);
            parent = above;
        }
    }

    Resolution resolution_;
    const char* trace_;
    std::string prefix_;  // of the format's own elements
    Resolved found_;
    Node after_;
};

}  // namespace

Resolved Resolve(Node root, Resolution resolution, const char* trace) {
    return Resolver(resolution, trace).Run(root);
}

bool IsTracking(const Node& node) {
    const std::string_view name = LocalName(node);
    const bool tracks =
        IsDeletion(name) || IsInsertion(name) || In(kFormer, name) || In(kEmpty, name);
    return tracks && PrefixOf(node) == PrefixOf(node.root().first_child());
}

}  // namespace zorvane
