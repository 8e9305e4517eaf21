#include "load/converter_process.h"

#include <filesystem>
#include <thread>

#include <gtest/gtest.h>

#include "tests/support/temp_folder.h"

namespace zorvane {
namespace {

using namespace std::literals;

TEST(ConversionMessage, ComesBackWholeFromAnyPieces) {
    const ConversionMessage message{{"a", "x\n\ny=1:2"}, {"b", ""}, {"c", "\0\xFF"s}};
    const std::string bytes = EncodeMessage(message) + EncodeMessage({{"d", "2"}});
    for (std::size_t piece = 1; piece < bytes.size(); ++piece) {
        SCOPED_TRACE(piece);
        MessageReader reader;
        std::vector<ConversionMessage> read;
        for (std::size_t at = 0; at < bytes.size(); at += piece) {
            reader.Feed(std::string_view(bytes).substr(at, piece));
            while (auto next = reader.Next())
                read.push_back(*next);
        }
        ASSERT_EQ(read.size(), 2u);
        EXPECT_EQ(read[0], message);
        EXPECT_EQ(NumberOf(read[1], "d"), 2);
    }
}

TEST(ConversionMessage, NonsenseIsToldForGood) {
    for (const std::string_view bytes :
         {"a=x:1\n\n"sv, "a=99999999999999999999:1\n"sv, "a=1:12\n\n"sv, "a=-1:\n\n"sv}) {
        SCOPED_TRACE(bytes);
        MessageReader reader;
        reader.Feed(bytes);
        EXPECT_FALSE(reader.Next().has_value());
        EXPECT_TRUE(reader.Broken());
    }
}

// Stands in for zorvane-convert: a script that misbehaves. Its standard input is the socket, which
// a shell writes to as well.
class ConverterProcessTest : public testing::Test {
  protected:
    ConversionAnswer Run(std::string_view script, std::chrono::milliseconds stall = 5s,
                         const ConversionObserver& observer = {}) {
        const std::string program = folder_.Write("convert", "#!/bin/sh\n" + std::string(script));
        std::filesystem::permissions(program, std::filesystem::perms::owner_all);
        ConverterProcess process;
        EXPECT_TRUE(process.Start(program, {}));
        process.Send({{"kind", "x"}});
        return process.Wait(stall, observer);
    }

    TempFolder folder_;
};

TEST_F(ConverterProcessTest, TellsEachWayOfEnding) {
    EXPECT_EQ(Run("exit 3").end, ConversionEnd::Crashed);
    EXPECT_EQ(Run("kill -SEGV $$").end, ConversionEnd::Crashed);
    EXPECT_EQ(Run("echo nonsense=x: >&0; exec sleep 60").end, ConversionEnd::Crashed);
    EXPECT_EQ(Run("exec sleep 60", 100ms).end, ConversionEnd::TimedOut);
    const ConversionAnswer answer = Run("printf 'error=1:4\\n\\n' >&0; exec sleep 60");
    EXPECT_EQ(answer.end, ConversionEnd::Answered);
    EXPECT_EQ(NumberOf(answer.values, "error"), 4);
    ConverterProcess process;
    EXPECT_FALSE(process.Start(folder_.Path("none"), {}));
    EXPECT_EQ(process.Wait(1s, {}).end, ConversionEnd::NotStarted);
}

TEST_F(ConverterProcessTest, ProgressIsTold) {
    std::int32_t highest = -1;
    const ConversionAnswer answer =
        Run("for i in 1 2 3; do printf \"progress=1:$i\\n\\n\" >&0; done;"
            "sleep 0.2; printf 'error=1:0\\n\\n' >&0; exec sleep 60",
            30s, [&highest](std::int32_t percent) {
                highest = std::max(highest, percent);
                return true;
            });
    EXPECT_EQ(answer.end, ConversionEnd::Answered);
    EXPECT_EQ(highest, 3);
}

TEST_F(ConverterProcessTest, ACancelEndsAChildThatDoesNotListen) {
    const std::string mark = folder_.Path("mark");
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_EQ(
        Run("sleep 60 & echo $! >" + mark + "; wait", 60s, [](std::int32_t) { return false; }).end,
        ConversionEnd::Cancelled);
    EXPECT_LT(std::chrono::steady_clock::now() - begin, 10s);
}

}  // namespace
}  // namespace zorvane
