#include "load/converter_process.h"

#include <fcntl.h>
#include <filesystem>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <thread>
#include <unistd.h>

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

// The most entries that a message may have, and one more.
std::string Entries(std::size_t count) {
    std::string bytes;
    for (std::size_t i = 0; i < count; ++i)
        bytes += "k" + std::to_string(i) + "=1:v\n";
    return bytes + "\n";
}

std::string Entry(std::size_t key, std::size_t value) {
    return std::string(key, 'k') + "=" + std::to_string(value) + ":" + std::string(value, 'v') +
           "\n\n";
}

TEST(ConversionMessage, NonsenseIsToldForGood) {
    struct Row {
        const char* name;
        std::string bytes;
        bool whole;
    };
    std::string eight;
    for (char key = 'a'; key < 'i'; ++key)
        eight += std::string(1, key) + "=131072:" + std::string(kLongestMessageValue, 'v') + "\n";
    const Row rows[] = {
        {"a length that is no number", "a=x:1\n\n", false},
        {"a length beyond numbers", "a=99999999999999999999:1\n", false},
        {"a length that is too short", "a=1:12\n\n", false},
        {"a negative length", "a=-1:\n\n", false},
        {"no key", "=1:a\n\n", false},
        {"a key with a blank", "a b=1:a\n\n", false},
        {"a key twice", "a=1:b\na=1:b\n\n", false},
        {"the longest key", Entry(kLongestMessageKey, 1), true},
        {"a longer key", Entry(kLongestMessageKey + 1, 1), false},
        {"the longest value", Entry(1, kLongestMessageValue), true},
        {"a longer value", Entry(1, kLongestMessageValue + 1), false},
        {"the most entries", Entries(kMostMessageEntries), true},
        {"an entry more", Entries(kMostMessageEntries + 1), false},
        {"more bytes than a message has", eight + "\n", false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        MessageReader reader;
        std::optional<ConversionMessage> read;
        for (std::size_t at = 0; at < row.bytes.size() && !read; at += 5000) {
            reader.Feed(std::string_view(row.bytes).substr(at, 5000));
            read = reader.Next();
        }
        EXPECT_EQ(read.has_value(), row.whole);
        EXPECT_EQ(reader.Broken(), !row.whole);
        reader.Feed("a=1:b\n\n");
        EXPECT_EQ(reader.Next().has_value(), row.whole);
    }
}

TEST(ConversionMessage, ANumberIsWhole) {
    const ConversionMessage message{{"a", "12"}, {"b", "12x"}, {"c", "99999999999999999999"}};
    EXPECT_EQ(NumberOf(message, "a"), 12);
    EXPECT_EQ(NumberOf(message, "b"), 0);
    EXPECT_EQ(NumberOf(message, "c"), 0);
    EXPECT_EQ(NumberOf(message, "none"), 0);
}

// Stands in for zorvane-convert: a script that misbehaves. Its standard input is the socket, which
// a shell writes to as well.
class ConverterProcessTest : public testing::Test {
  protected:
    ConversionAnswer Run(std::string_view script, const ConversionPatience& patience = {5s},
                         const ConversionObserver& observer = {}) {
        const std::string program = folder_.Write("convert", "#!/bin/sh\n" + std::string(script));
        std::filesystem::permissions(program, std::filesystem::perms::owner_all);
        ConverterProcess process;
        EXPECT_TRUE(process.Start(program, {}));
        process.Send({{"kind", "x"}});
        return process.Wait(patience, observer);
    }

    TempFolder folder_;
};

TEST_F(ConverterProcessTest, TellsEachWayOfEnding) {
    EXPECT_EQ(Run("exit 3").end, ConversionEnd::Crashed);
    EXPECT_EQ(Run("kill -SEGV $$").end, ConversionEnd::Crashed);
    EXPECT_EQ(Run("echo nonsense=x: >&0; exec sleep 60").end, ConversionEnd::Crashed);
    EXPECT_EQ(Run("exec sleep 60", {100ms}).end, ConversionEnd::TimedOut);
    const ConversionAnswer answer = Run("printf 'error=1:4\\n\\n' >&0; exec sleep 60");
    EXPECT_EQ(answer.end, ConversionEnd::Answered);
    EXPECT_EQ(NumberOf(answer.values, "error"), 4);
    ConverterProcess process;
    EXPECT_FALSE(process.Start(folder_.Path("none"), {}));
    EXPECT_EQ(process.Wait({1s}, {}).end, ConversionEnd::NotStarted);
}

// From nothing to the whole; anything else is nonsense.
TEST_F(ConverterProcessTest, ProgressHasBounds) {
    struct Row {
        const char* entry;
        ConversionEnd end;
    };
    for (const Row& row :
         {Row{"1:0", ConversionEnd::Answered}, Row{"2:-1", ConversionEnd::Crashed},
          Row{"7:1000000", ConversionEnd::Answered}, Row{"7:1000001", ConversionEnd::Crashed}}) {
        SCOPED_TRACE(row.entry);
        const std::string script = "printf 'progress=" + std::string(row.entry) +
                                   "\\n\\nerror=1:0\\n\\n' >&0; exec sleep 60";
        EXPECT_EQ(Run(script).end, row.end);
    }
}

TEST_F(ConverterProcessTest, WithoutDescriptorsNothingIsStarted) {
    rlimit usual{};
    ASSERT_EQ(getrlimit(RLIMIT_NOFILE, &usual), 0);
    const rlimit none{3, usual.rlim_max};
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &none), 0);
    ConverterProcess process;
    EXPECT_FALSE(process.Start("/bin/true", {}));
    EXPECT_FALSE(process.Running());
    EXPECT_EQ(setrlimit(RLIMIT_NOFILE, &usual), 0);
}

TEST_F(ConverterProcessTest, ProgressIsTold) {
    std::int32_t highest = -1;
    const ConversionAnswer answer =
        Run("for i in 1 2 3; do printf \"progress=6:${i}00000\\n\\n\" >&0; done;"
            "sleep 0.2; printf 'error=1:0\\n\\n' >&0; exec sleep 60",
            {30s}, [&highest](std::int32_t percent) {
                highest = std::max(highest, percent);
                return true;
            });
    EXPECT_EQ(answer.end, ConversionEnd::Answered);
    EXPECT_EQ(highest, 30);
}

// Progress gives more time, but only where it is one, and never for ever.
TEST_F(ConverterProcessTest, OnlyProgressThatRisesGivesMoreTime) {
    constexpr std::string_view kRising =
        "for i in 1 2 3 4; do sleep 0.3; printf \"progress=1:$i\\n\\n\" >&0; done; "
        "printf 'error=1:0\\n\\n' >&0; exec sleep 60";
    EXPECT_EQ(Run(kRising, {700ms}).end, ConversionEnd::Answered);
    EXPECT_EQ(Run(kRising, {700ms, 900ms}).end, ConversionEnd::TimedOut) << "too long in all";
    for (const char* progress : {"7", "$((9 - i))"}) {
        SCOPED_TRACE(progress);
        const std::string script =
            "for i in 1 2 3 4 5 6 7 8; do printf \"progress=1:" + std::string(progress) +
            "\\n\\n\" >&0; sleep 0.3; done; "
            "printf 'error=1:0\\n\\n' >&0; exec sleep 60";
        EXPECT_EQ(Run(script, {700ms}).end, ConversionEnd::TimedOut);
    }
}

TEST_F(ConverterProcessTest, AChildInheritsNothing) {
    const std::string secret = folder_.Write("secret", "secret");
    const int inherited = open(secret.c_str(), O_RDONLY);  // and not closed by itself
    ASSERT_GE(inherited, 0);
    setenv("ZORVANE_TEST_SECRET", "told", 1);
    const std::string seen = folder_.Path("seen");
    Run("tr '\\0' '\\n' </proc/$$/environ >" + seen + "; ls -l /proc/$$/fd >>" + seen +
        "; printf 'error=1:0\\n\\n' >&0");
    EXPECT_EQ(folder_.Read("seen").find("told"), std::string::npos) << folder_.Read("seen");
    EXPECT_EQ(folder_.Read("seen").find("/secret"), std::string::npos) << folder_.Read("seen");
    EXPECT_NE(folder_.Read("seen").find("socket"), std::string::npos) << "it has its socket";
    unsetenv("ZORVANE_TEST_SECRET");
    close(inherited);
}

TEST_F(ConverterProcessTest, NobodyLooksIntoTheProgramWhileAChildLives) {
    const std::string program = folder_.Write("convert", "#!/bin/sh\nexec sleep 60\n");
    std::filesystem::permissions(program, std::filesystem::perms::owner_all);
    ASSERT_EQ(prctl(PR_GET_DUMPABLE), 1);
    ConverterProcess first;
    ConverterProcess second;
    ASSERT_TRUE(first.Start(program, {}));
    ASSERT_TRUE(second.Start(program, {}));
    first.Kill();
    EXPECT_EQ(prctl(PR_GET_DUMPABLE), 0) << "the second lives";
    second.Kill();
    EXPECT_EQ(prctl(PR_GET_DUMPABLE), 1);
    EXPECT_FALSE(second.Start(folder_.Path("none"), {}));
    EXPECT_EQ(prctl(PR_GET_DUMPABLE), 1);
}

TEST_F(ConverterProcessTest, ACancelEndsAChildThatDoesNotListen) {
    const std::string mark = folder_.Path("mark");
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_EQ(
        Run("sleep 60 & echo $! >" + mark + "; wait", {60s}, [](std::int32_t) { return false; })
            .end,
        ConversionEnd::Cancelled);
    EXPECT_LT(std::chrono::steady_clock::now() - begin, 10s);
}

}  // namespace
}  // namespace zorvane
