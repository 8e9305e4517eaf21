// Tables of texts and what a function makes of them.
#pragma once

#include <initializer_list>
#include <string_view>

#include <gtest/gtest.h>

namespace zorvane {

struct TextRow {
    const char* name;
    std::string_view given;
    std::string_view made;
};

/// `make` takes what a row gives. Rows are passed on as they are written, so that they may borrow.
template <class Make>
void CheckRows(const Make& make, std::initializer_list<TextRow> rows) {
    for (const TextRow& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(make(row.given), row.made);
    }
}

}  // namespace zorvane
