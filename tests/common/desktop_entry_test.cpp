// How a program of the desktop is started, by its entry.
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "common/platform/desktop_shell.h"

namespace zorvane {
namespace {

struct EntryCase {
    const char* exec;
    std::vector<std::string> words;  // none: it cannot be read
};
TEST(DesktopEntry, TakesTheFileWhereItSaysSo) {
    const EntryCase rows[] = {
        {"edit %f", {"edit", "/f x"}},
        {"edit", {"edit", "/f x"}},
        {"edit %i --file=%u -w", {"edit", "--file=/f x", "-w"}},
        {"\"my editor\" \"a\\\"b\" %F", {"my editor", "a\"b", "/f x"}},
        {"edit 100%% %f %f", {"edit", "100%", "/f x"}},
        {"edit \"\" %f", {"edit", "", "/f x"}},
        {"edit \"open %f", {}},
        {"", {}},
    };
    for (const EntryCase& row : rows) {
        SCOPED_TRACE(row.exec);
        EXPECT_EQ(CommandOfEntry(row.exec, "/f x").value_or(std::vector<std::string>{}), row.words);
    }
}

}  // namespace
}  // namespace zorvane
