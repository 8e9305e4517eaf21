// Messages on their way: to log files from several threads, and to a window one after the other.
#include "common/run_telling.h"

#include <algorithm>
#include <atomic>
#include <sstream>
#include <thread>

#include <gtest/gtest.h>

#include "common/log_message.h"
#include "tests/support/fakes.h"

namespace zorvane {
namespace {

using Texts = std::vector<std::string>;

/// A lock of processes: two threads of one process inside it at once are a fault.
class WatchedMutexes : public NamedMutexes {
  public:
    Result<int> Lock(std::string_view name) override {
        EXPECT_EQ(name, "Halvern_Global_Mutex");
        if (inside_.fetch_add(1) != 0)
            shared = true;
        std::this_thread::yield();
        return 1;
    }
    void Unlock(int) override { inside_.fetch_sub(1); }
    std::atomic<bool> shared = false;

  private:
    std::atomic<int> inside_ = 0;
};

class RunTellingTest : public ::testing::Test {
  protected:
    void OpenWindow() {
        process.messages.WaitForWindow([this] { ++wakes; });
    }
    /// What a window would show now.
    Texts Shown() {
        Texts shown;
        process.messages.ShowWaiting([&](const std::string& text) { shown.push_back(text); });
        return shown;
    }

    FakePlatform fakes;
    ProcessState process{fakes.platform};
    int wakes = 0;
};

TEST_F(RunTellingTest, ThreadsShareALogLineByLine) {
    auto mutexes = std::make_unique<WatchedMutexes>();
    WatchedMutexes& watched = *mutexes;
    fakes.platform.mutexes = std::move(mutexes);
    constexpr int kLines = 300;
    const auto tell = [this](char letter) {
        RunTelling telling(process.messages);
        telling.manner.sLogFile = fakes.folder.Path("log");
        for (int i = 0; i < kLines; ++i)
            LogMessage(telling, std::string(200, letter) + std::to_string(i));
    };
    std::thread other(tell, 'a');
    tell('b');
    other.join();
    EXPECT_FALSE(watched.shared);
    std::istringstream log(fakes.folder.Read("log"));
    int next[2] = {0, 0};
    for (std::string line; std::getline(log, line);) {
        int& number = next[line[0] == 'a' ? 0 : 1];
        EXPECT_EQ(line, std::string(200, line[0]) + std::to_string(number++) + "\r");
    }
    EXPECT_EQ(next[0], kLines);
    EXPECT_EQ(next[1], kLines);
}

TEST_F(RunTellingTest, OneTellingServesTwoThreads) {
    OpenWindow();
    RunTelling telling(process.messages);
    telling.manner.bShowMessages = true;
    telling.BeginRun();
    std::thread other([&] {
        for (int i = 0; i < 500; ++i)
            LogMessage(telling, "x");
    });
    for (int i = 0; i < 500; ++i) {
        MessageHold hold(telling);
        hold.Release();
        LogMessage(telling, "y");
    }
    other.join();
    telling.EndRun();
    const Texts shown = Shown();
    EXPECT_EQ(std::count(shown.begin(), shown.end(), "y"), 500);
    EXPECT_EQ(std::count(shown.begin(), shown.end(), "x"), 500);
}

TEST_F(RunTellingTest, WithoutAWindowABoxIsPrintedAtOnce) {
    RunTelling telling(process.messages);
    telling.manner.bShowMessages = true;
    const TellingRun run(telling);
    testing::internal::CaptureStderr();
    LogMessage(telling, "said");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "zorvane: said\n");
}

TEST_F(RunTellingTest, NoBoxOpensInsideARun) {
    OpenWindow();
    RunTelling running(process.messages);
    RunTelling other(process.messages);
    running.manner.bShowMessages = other.manner.bShowMessages = true;
    running.manner.sLogFile = fakes.folder.Path("log");
    running.BeginRun();
    LogMessage(running, "one");
    LogMessage(other, "of another viewer");
    running.BeginRun();
    LogMessage(running, "two");
    running.EndRun();
    EXPECT_EQ(Shown(), Texts{"of another viewer"});
    EXPECT_EQ(fakes.folder.Read("log"), "one\r\ntwo\r\n") << "a log does not wait";
    running.EndRun();
    EXPECT_EQ(Shown(), (Texts{"one", "two"}));
    EXPECT_EQ(wakes, 3);
    EXPECT_EQ(Shown(), Texts{});
}

TEST_F(RunTellingTest, BoxesStandOneAfterTheOther) {
    OpenWindow();
    for (const char* text : {"a", "b"})
        LogMessage(process.telling, text, "", true);
    Texts shown;
    process.messages.ShowWaiting([&](const std::string& text) {
        shown.push_back("open " + text);
        if (text == "a")
            LogMessage(process.telling, "c", "", true);
        process.messages.ShowWaiting([&](const std::string&) { shown.emplace_back("on top"); });
        shown.push_back("closed " + text);
    });
    EXPECT_EQ(shown, (Texts{"open a", "closed a", "open b", "closed b", "open c", "closed c"}));
}

TEST_F(RunTellingTest, AStopIsNoError) {
    RunTelling telling(process.messages);
    telling.manner.sLogFile = fakes.folder.Path("log");
    telling.Stop();
    LogMessage(telling, "no run was there to stop");
    telling.BeginRun();
    LogMessage(telling, "before");
    telling.Stop();
    LogMessage(telling, "the conversion was cancelled");
    LogMessage(process.telling, "of another", telling.manner.sLogFile, false);
    telling.EndRun();
    LogMessage(telling, "after");
    EXPECT_EQ(fakes.folder.Read("log"),
              "no run was there to stop\r\nbefore\r\nof another\r\nafter\r\n");
}

}  // namespace
}  // namespace zorvane
