#include "redline/odt_resolve.h"

#include <algorithm>
#include <array>
#include <map>
#include <utility>
#include <vector>

#include "redline/node_kinds.h"

namespace zorvane {
namespace {

using Node = pugi::xml_node;

constexpr std::array<std::string_view, 2> kWrappers{"span", "a"};
constexpr std::array<std::string_view, 14> kOdtMarkers{
    "bookmark",           "bookmark-start", "bookmark-end", "reference-mark-start",
    "reference-mark-end", "toc-mark-start", "toc-mark-end", "alphabetical-index-mark-start",
    "soft-page-break",    "change",         "change-start", "change-end",
    "annotation",         "annotation-end"};

Node ParagraphAround(Node node) {
    for (node = node.parent(); node && !IsOdtParagraph(LocalName(node));)
        node = node.parent();
    return node;
}

// ---- what a row holds ----

struct RowContent {
    bool text = false;
    bool deletion = false;
    bool insertion = false;
};

void LookInto(const Node& node, bool in_paragraph, RowContent& content, int depth) {
    for (const Node& child : node.children()) {
        const std::string_view name = LocalName(child);
        if (IsCharacters(child))
            content.text = content.text || in_paragraph;
        else if (name == "change")
            content.deletion = true;
        else if (name == "change-start")
            content.insertion = true;
        else if (IsOdtWrapper(name) || !in_paragraph) {
            if (depth < kMaxDepth)
                LookInto(child, in_paragraph || IsOdtParagraph(name), content, depth + 1);
        } else {
            content.text = content.text || !IsOdtMarker(name);
        }
    }
}

// Lists that hold nothing any more go, too.
void RemoveBlock(Node block) {
    Node parent = block.parent();
    parent.remove_child(block);
    while (parent && !parent.first_child() && LocalName(parent).starts_with("list")) {
        const Node empty = parent;
        parent = parent.parent();
        parent.remove_child(empty);
    }
}

class OdtResolver {
  public:
    OdtResolver(const std::set<std::string>& tracked_rows, const char* trace)
        : tracked_rows_(tracked_rows), trace_(trace) {}

    std::int32_t Run(Node story, Resolution resolution) {
        Node list = Child(story, "tracked-changes");
        for (const Node& region : list.children())
            regions_[std::string(Attribute(region, "id"))] = region;
        const auto count = static_cast<std::int32_t>(regions_.size());
        if (resolution == Resolution::Accept) {
            Strip(story, 0);
        } else {
            RemoveInsertions(story, 0);
            RestoreDeletions(story);
        }
        if (list)
            story.remove_child(list);
        return count;
    }

  private:
    Node DeletionOf(const Node& change) const {
        const auto found = regions_.find(std::string(Attribute(change, "change-id")));
        return found == regions_.end() ? Node() : Child(found->second, "deletion");
    }
    bool IsInsertion(const Node& change) const {
        const auto found = regions_.find(std::string(Attribute(change, "change-id")));
        return found != regions_.end() && Child(found->second, "insertion");
    }
    bool IsTrackedRow(const Node& node) const {
        return Is(node, "table-row") &&
               tracked_rows_.contains(std::string(Attribute(node, "style-name")));
    }
    static bool HasRows(const Node& table) {
        bool found = false;
        for (const Node& child : table.children()) {
            const std::string_view name = LocalName(child);
            found = found || name == "table-row" || (name.starts_with("table-") && HasRows(child));
        }
        return found;
    }

    // ---- accepting: what is deleted stands elsewhere already ----

    void Strip(Node parent, int depth) {
        for (Node child = parent.first_child(); child && depth < kMaxDepth;) {
            const Node next = child.next_sibling();
            if (GoesOnAccept(child, depth))
                parent.remove_child(child);
            child = next;
        }
    }

    // What stays has nothing in it any more that goes.
    bool GoesOnAccept(const Node& node, int depth) {
        const std::string_view name = LocalName(node);
        if (name.starts_with("change") || (IsTrackedRow(node) && RowGoes(node)))
            return true;
        if (!IsElement(node) || name == "tracked-changes")
            return false;
        Strip(node, depth + 1);
        return name == "table" && !HasRows(node);
    }

    static bool RowGoes(const Node& row) {
        RowContent content;
        LookInto(row, false, content, 0);
        return content.deletion && !content.insertion && !content.text;
    }

    // ---- rejecting: first what was inserted goes ----

    void RemoveInsertions(Node parent, int depth) {
        for (Node child = parent.first_child(); child && depth < kMaxDepth;) {
            const Node next = child.next_sibling();
            Take(parent, child, depth);
            child = next;
        }
    }

    void Take(Node parent, Node child, int depth) {
        const std::string_view name = LocalName(child);
        if (name == "tracked-changes" || name == "change")
            return;
        if (name == "change-start" || name == "change-end") {
            if (IsInsertion(child))
                TakeBorder(name == "change-start");
            parent.remove_child(child);
        } else if (IsOdtParagraph(name)) {
            TakeParagraph(child, depth);
        } else if (inside_ && (IsCharacters(child) || name == "table" || paragraph_) &&
                   !IsOdtWrapper(name)) {
            parent.remove_child(child);
        } else if (IsElement(child)) {
            TakeElement(parent, child, depth);
        }
    }

    void TakeBorder(bool start) {
        inside_ = start;
        if (start)
            start_ = paragraph_;
        else if (paragraph_ != start_)
            goes_on_in_ = start_;
    }

    void TakeElement(Node parent, Node child, int depth) {
        RowContent row;
        if (IsTrackedRow(child))
            LookInto(child, false, row, 0);
        const bool wrapper = IsOdtWrapper(LocalName(child));
        const Node around = paragraph_;
        if (!wrapper)
            paragraph_ = {};
        RemoveInsertions(child, depth + 1);
        paragraph_ = around;
        const bool is_table = Is(child, "table");
        if (row.insertion && !row.deletion) {
            row = {};
            LookInto(child, false, row, 0);
            if (!row.text)
                parent.remove_child(child);
        } else if ((is_table && !HasRows(child)) || (wrapper && !child.first_child())) {
            parent.remove_child(child);
        }
    }

    void TakeParagraph(Node paragraph, int depth) {
        const bool began_inside = inside_;
        const Node around = paragraph_;
        const Node around_goes_on_in = std::exchange(goes_on_in_, Node());
        paragraph_ = paragraph;
        RemoveInsertions(paragraph, depth + 1);
        paragraph_ = around;
        if (const Node into = std::exchange(goes_on_in_, around_goes_on_in)) {
            MoveContent(paragraph, into);
            if (start_ == paragraph)
                start_ = into;
            RemoveBlock(paragraph);
        } else if (began_inside && inside_) {
            RemoveBlock(paragraph);
        }
    }

    static void MoveContent(Node from, Node to) {
        while (const Node child = from.first_child())
            to.append_move(child);
    }

    // ---- then what was deleted comes back ----

    void RestoreDeletions(Node story) {
        std::vector<Node> changes;
        Collect(story, changes, 0);
        for (const Node& change : changes) {
            const Node deletion = DeletionOf(change);
            if (deletion)
                Restore(change, deletion);
            Node parent = change.parent();
            parent.remove_child(change);
        }
    }

    static void Collect(const Node& parent, std::vector<Node>& changes, int depth) {
        for (const Node& child : parent.children()) {
            if (Is(child, "change"))
                changes.push_back(child);
            else if (IsElement(child) && !Is(child, "tracked-changes") && depth < kMaxDepth)
                Collect(child, changes, depth + 1);
        }
    }

    static std::vector<Node> BlocksOf(const Node& deletion) {
        std::vector<Node> blocks;
        for (const Node& child : deletion.children()) {
            if (IsElement(child) && !Is(child, "change-info"))
                blocks.push_back(child);
        }
        return blocks;
    }

    // The first paragraph goes on behind what stands in front of the mark, the last one gets what
    // stands behind it.
    void Restore(Node change, const Node& deletion) {
        const std::vector<Node> blocks = BlocksOf(deletion);
        const Node paragraph = ParagraphAround(change);
        if (blocks.empty() || !paragraph)
            return;
        LiftToParagraph(change);
        const bool melts = IsOdtParagraph(LocalName(blocks.front()));
        if (melts)
            RestoreLetters(change, blocks.front());
        if (blocks.size() == 1 && melts)
            return;
        const bool empty_in_front = !melts && !change.previous_sibling();
        Node end = LastParagraph(RestoreBlocks(paragraph, blocks, melts ? 1 : 0));
        if (!end)
            return;  // behind a table the paragraph itself goes on
        while (const Node behind = change.next_sibling())
            end.append_move(behind);
        if (empty_in_front) {
            end.prepend_move(change);
            RemoveBlock(paragraph);
        }
    }

    void RestoreLetters(Node change, const Node& from) {
        Node parent = change.parent();
        for (const Node& child : from.children()) {
            if (trace_ == nullptr) {
                parent.insert_copy_before(child, change);
                continue;
            }
            Node holder = parent.insert_child_before("text:span", change);
            holder.append_attribute(trace_) = "deleted";
            holder.append_copy(child);
        }
    }

    Node RestoreBlocks(Node place, const std::vector<Node>& blocks, std::size_t first) {
        for (std::size_t i = first; i < blocks.size(); ++i) {
            place = place.parent().insert_copy_after(blocks[i], place);
            if (trace_ != nullptr)
                Trace(place, 0);
        }
        return place;
    }

    // Its letters, too; what goes on in it later does not come from a deletion.
    void Trace(Node node, int depth) {
        if (!IsOdtParagraph(LocalName(node))) {
            for (const Node& child : node.children()) {
                if (IsElement(child) && depth < kMaxDepth)
                    Trace(child, depth + 1);
            }
            return;
        }
        node.append_attribute(trace_) = "deleted";
        const std::vector<Node> children(node.begin(), node.end());
        Node holder = node.prepend_child("text:span");
        holder.append_attribute(trace_) = "deleted";
        for (const Node& child : children)
            holder.append_move(child);
    }

    static Node LastParagraph(Node block) {
        while (block && !IsOdtParagraph(LocalName(block)))
            block = LocalName(block).starts_with("list") ? block.last_child() : Node();
        return block;
    }

    const std::set<std::string>& tracked_rows_;
    const char* trace_;
    std::map<std::string, Node> regions_;
    bool inside_ = false;
    Node paragraph_;  // at work
    Node start_;      // the one in which what is inserted began
    Node goes_on_in_;
};

}  // namespace

std::set<std::string> TrackedRowStyles(const Node& automatic_styles) {
    std::set<std::string> names;
    for (const Node& style : automatic_styles.children()) {
        if (Attribute(Child(style, "table-row-properties"), "text-changes-only") == "false")
            names.emplace(Attribute(style, "name"));
    }
    return names;
}

std::int32_t ResolveOdt(Node story, Resolution resolution,
                        const std::set<std::string>& tracked_rows, const char* trace) {
    return OdtResolver(tracked_rows, trace).Run(story, resolution);
}

bool IsOdtWrapper(std::string_view local_name) {
    return std::find(kWrappers.begin(), kWrappers.end(), local_name) != kWrappers.end();
}

bool IsOdtMarker(std::string_view local_name) {
    return std::find(kOdtMarkers.begin(), kOdtMarkers.end(), local_name) != kOdtMarkers.end() ||
           local_name.ends_with("-mark-end");
}

void LiftToParagraph(Node place) {
    while (!IsOdtParagraph(LocalName(place.parent()))) {
        const Node wrapper = place.parent();
        Node above = wrapper.parent();
        if (!above)
            return;
        Node tail = above.insert_child_after(wrapper.name(), wrapper);
        for (const pugi::xml_attribute& attribute : wrapper.attributes())
            tail.append_copy(attribute);
        while (const Node behind = place.next_sibling())
            tail.append_move(behind);
        above.insert_move_after(place, wrapper);
        if (!tail.first_child())
            above.remove_child(tail);
        if (!wrapper.first_child())
            above.remove_child(wrapper);
    }
}

}  // namespace zorvane
