#include "redline/row_weaver.h"

#include <algorithm>

#include "redline/align.h"

namespace zorvane {
namespace {

using Node = pugi::xml_node;

std::vector<std::u16string> LinesOf(const std::vector<Node>& rows, const RowForm& form) {
    std::vector<std::u16string> lines;
    for (const Node& row : rows) {
        std::u16string line;
        for (const Node& cell : form.cells(row))
            line += form.text(cell) + u"\t";
        std::erase_if(line, [](char16_t unit) { return unit == u'\r' || unit == u'\n'; });
        lines.push_back(std::move(line));
    }
    return lines;
}

class Weaver {
  public:
    Weaver(const PerSide<std::vector<Node>>& rows, const Node& table, const RowForm& form,
           const RowActions& actions)
        : rows_(rows), table_(table), form_(form), actions_(actions) {}

    // What has no partner, up to these places. Rows of one cell are that cell, whatever it says.
    void WriteTo(std::size_t old_end, std::size_t new_end) {
        while (old_at_ < old_end && old_end - old_at_ == new_end - new_at_ &&
               IsOneCell(rows_.original[old_at_]) && IsOneCell(rows_.modified[new_at_]))
            MergeNext();
        for (; old_at_ < old_end; ++old_at_) {
            const bool in_front = !place_ && !rows_.modified.empty();
            const Node& beside = in_front ? rows_.modified.front() : place_;
            place_ = actions_.put_deleted(rows_.original[old_at_],
                                          beside ? beside : table_.last_child(), in_front);
        }
        for (; new_at_ < new_end; ++new_at_) {
            place_ = rows_.modified[new_at_];
            actions_.mark_inserted(place_);
        }
    }

    void Merge(std::size_t old_row, std::size_t new_row) {
        WriteTo(old_row, new_row);
        MergeNext();
    }

  private:
    bool IsOneCell(const Node& row) const { return form_.cells(row).size() == 1; }

    void MergeNext() {
        const std::vector<Node> old_cells = form_.cells(rows_.original[old_at_++]);
        place_ = rows_.modified[new_at_++];
        const std::vector<Node> new_cells = form_.cells(place_);
        for (std::size_t i = 0; i < new_cells.size(); ++i)
            actions_.merge(old_cells[i], new_cells[i]);
    }

    const PerSide<std::vector<Node>>& rows_;
    const Node& table_;
    const RowForm& form_;
    const RowActions& actions_;
    std::size_t old_at_ = 0;
    std::size_t new_at_ = 0;
    Node place_;  // behind which a row of the Original goes
};

}  // namespace

Node CopyBeside(const Node& node, Node place, bool in_front) {
    Node parent = place.parent();
    return in_front ? parent.insert_copy_before(node, place)
                    : parent.insert_copy_after(node, place);
}

std::size_t WeaveRows(const PerSide<std::vector<Node>>& rows, const Node& table,
                      const RowForm& form, const RowActions& actions, RunWatcher* watcher) {
    Weaver weaver(rows, table, form, actions);
    std::size_t twice = 0;
    for (const auto& [old_row, new_row] :
         AlignLines(LinesOf(rows.original, form), LinesOf(rows.modified, form), watcher)) {
        if (form.shape(rows.original[old_row]) == form.shape(rows.modified[new_row]))
            weaver.Merge(old_row, new_row);
        else
            ++twice;
    }
    weaver.WriteTo(rows.original.size(), rows.modified.size());
    return twice;
}

}  // namespace zorvane
