#include "load/readers/container/compound_file.h"

#include <random>

#include <gtest/gtest.h>

#include "tests/support/compound_bytes.h"

namespace zorvane::compound_file_test {
namespace {

std::string Letters(std::size_t count) {
    std::string letters;
    for (std::size_t i = 0; i < count; ++i)
        letters += static_cast<char>('a' + i * i % 26);
    return letters;
}

std::string ThreeStreams() {
    CompoundWriter writer;
    writer.Add("Small", Letters(100));
    writer.Add("Large", Letters(70'000));
    writer.Add("Empty", "");
    writer.Add("Edge", Letters(4096));
    return writer.Finish();
}

TEST(CompoundFile, ReadsStreamsOfEachSize) {
    const std::string bytes = ThreeStreams();
    const auto file = CompoundFile::Open(bytes);
    ASSERT_TRUE(file);
    EXPECT_EQ(file->Names(), (std::vector<std::string>{"Small", "Large", "Empty", "Edge"}));
    EXPECT_EQ(file->Read("small"), Letters(100));
    EXPECT_EQ(file->Read("Large"), Letters(70'000));
    EXPECT_EQ(file->Read("Empty"), "");
    EXPECT_EQ(file->Read("Edge"), Letters(4096));
    EXPECT_FALSE(file->Has("Other"));
    EXPECT_EQ(file->Read("Other"), std::nullopt);
}

TEST(CompoundFile, RefusesWhatIsNone) {
    EXPECT_FALSE(CompoundFile::Open(""));
    EXPECT_FALSE(CompoundFile::Open("PK\3\4"));
    EXPECT_FALSE(CompoundFile::Open(std::string_view(ThreeStreams()).substr(0, 512)));
}

TEST(CompoundFile, EndsAtAChainThatLoops) {
    std::string bytes = ThreeStreams();
    const std::size_t table = bytes.size() - 1024;
    const std::string directory = bytes.substr(0x30, 4);
    const auto number = static_cast<std::size_t>(static_cast<unsigned char>(directory[0]));
    bytes.replace(table + 4 * number, 4, directory);
    EXPECT_FALSE(CompoundFile::Open(bytes));
}

TEST(CompoundFile, SurvivesFlippedAndMissingBytes) {
    const std::string good = ThreeStreams();
    std::mt19937 random(7);
    for (int round = 0; round < 2000; ++round) {
        std::string bad = good;
        for (int flips = 0; flips < 8; ++flips) {
            // Headers, tables and directory stand at both ends.
            const std::size_t place = random() % 3000;
            bad[random() % 2 == 0 ? place % 512 : bad.size() - 1 - place] =
                static_cast<char>(random());
        }
        bad.resize(bad.size() - random() % 600);
        if (const auto file = CompoundFile::Open(bad)) {
            for (const std::string& name : file->Names()) {
                if (const auto stream = file->Read(name)) {
                    EXPECT_LE(stream->size(), good.size());
                }
            }
        }
    }
}

}  // namespace
}  // namespace zorvane::compound_file_test
