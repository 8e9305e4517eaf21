#include "folders/ui/folder_order.h"

#include <cerrno>

#include <gtest/gtest.h>

#include "tests/support/fake_folder.h"

namespace zorvane::folder_order_test {
namespace {

TEST(FolderOrder, AFolderThatCouldNotBeReadStandsAmongTheChanged) {
    FakeEntry shut = FakeTree({});
    shut.list_fault = EACCES;
    const FakeEntry tree = FakeTree({{"open", FakeTree({})}, {"shut", shut}});
    FolderScan scan;
    scan.StartIn({std::make_unique<FakeFolder>(tree), std::make_unique<FakeFolder>(tree)},
                 {"/a", "/b"}, {}, nullptr);
    scan.Join();
    FolderOrder order(scan);
    order.Take(static_cast<std::int32_t>(scan.Count()));
    for (const bool sorted : {false, true}) {
        ASSERT_TRUE(order.Show(FolderFilter::Changed, {sorted}, [] { return false; }));
        ASSERT_EQ(order.Count(), 1) << sorted;
        EXPECT_EQ(scan.Entry(static_cast<std::size_t>(order.RecordAt(0))).Name(), "shut");
    }
}

}  // namespace
}  // namespace zorvane::folder_order_test
