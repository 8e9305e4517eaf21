// Packages written from packages: what is packed already stays so.
#include "redline/zip_writer.h"

#include <gtest/gtest.h>

#include "load/readers/container/package.h"

namespace zorvane::zip_writer_test {
namespace {

TEST(ZipWriter, TakesPackedBytesOverWhereNameAndContentAreThoseOfTheOtherPackage) {
    const std::string picture = std::string(400, 'x') + "y";
    const std::string packed = WriteZip({{"mimetype", picture}, {"a.xml", "<a/>"}}).value_or("");
    const std::string other(picture.rbegin(), picture.rend());  // of one size
    struct Row {
        ZipEntry entry;
        bool taken_over;
    };
    for (const Row& row : {Row{{"mimetype", picture}, true}, Row{{"mimetype", other}, false},
                           Row{{"mimetype", std::string_view(picture).substr(1)}, false},
                           Row{{"b.png", picture}, false}}) {
        const std::string written = WriteZip({{"first", "1"}, row.entry}, packed).value_or("");
        const std::unique_ptr<Package> package = Package::Open(written);
        ASSERT_TRUE(package);
        EXPECT_EQ(package->Read(row.entry.name).value_or(""), row.entry.content);
        EXPECT_EQ(written.find(row.entry.content) != std::string::npos, row.taken_over)
            << row.entry.name;  // it was not packed there
    }
    EXPECT_EQ(WriteZip({{"first", "1"}}, "no package"), WriteZip({{"first", "1"}}));
}

}  // namespace
}  // namespace zorvane::zip_writer_test
