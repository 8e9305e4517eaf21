// Rows of the Original and the Modified in one table, whatever the format.
#pragma once

#include <cstddef>
#include <functional>
#include <pugixml.hpp>
#include <string>
#include <vector>

#include "common/base/run_watcher.h"
#include "common/base/side.h"

namespace zorvane {

/// How a format tells its rows.
struct RowForm {
    std::function<std::vector<pugi::xml_node>(const pugi::xml_node& row)> cells;
    std::function<std::u16string(const pugi::xml_node& cell)> text;
    /// Cells of two rows can be merged one by one when their shapes are the same.
    std::function<std::string(const pugi::xml_node& row)> shape;
};

/// What is done with them.
struct RowActions {
    /// Copies a row of the Original behind `place`, or in front of it, and gives the copy.
    std::function<pugi::xml_node(const pugi::xml_node& row, pugi::xml_node place, bool in_front)>
        put_deleted;
    std::function<void(pugi::xml_node row)> mark_inserted;
    /// Two cells that correspond.
    std::function<void(const pugi::xml_node& original, const pugi::xml_node& modified)> merge;
};

/// A copy of the element beside `place`, in the same parent.
pugi::xml_node CopyBeside(const pugi::xml_node& node, pugi::xml_node place, bool in_front);

/// Gives how many rows correspond by their text and differ in shape, so that both are written.
/// `table` is the Modified's; a table without rows takes the Original's behind its last element.
std::size_t WeaveRows(const PerSide<std::vector<pugi::xml_node>>& rows, const pugi::xml_node& table,
                      const RowForm& form, const RowActions& actions, RunWatcher* watcher);

}  // namespace zorvane
