// A client of the automation class, which also calls while a run is under way.
#include "app/automation.h"

#include <algorithm>

#include <gtest/gtest.h>

#include "common/process_state.h"
#include "tests/support/fake_viewer.h"
#include "tests/support/fakes.h"

namespace zorvane {
namespace {

using Calls = std::vector<std::pair<std::string, std::int32_t>>;

/// Lets a test call in the middle of a run.
class PumpingWindow : public SilentWindow {
  public:
    explicit PumpingWindow(std::function<void()>& on_pump) : on_pump_(on_pump) {}
    void PumpEvents() override {
        if (on_pump_)
            std::exchange(on_pump_, nullptr)();
    }
    void ShowPleaseWait(bool shown) override { waits += shown ? 1 : 0; }
    int waits = 0;

  private:
    std::function<void()>& on_pump_;
};

class AutomationTest : public ::testing::Test {
  protected:
    AutomationTest()
        : process(fakes.platform),
          frame(process, window, Viewers()),
          client(process, frame, [this](const std::string& message, std::int32_t code) {
              events.emplace_back(message, code);
          }) {
        process.settings->Write("Main", "numCFForms", "0");
        fakes.folder.Write("a.txt", "one\ntwo words\nthree\n");
        fakes.folder.Write("b.txt", "one\n2 words\nthree\nfour\n");
    }
    ViewerFactories Viewers() {
        ViewerFactories factories;
        factories.compare_files = [this](const CommandLineRequest& request) {
            auto made = std::make_unique<PumpingWindow>(during_a_run);
            last_window = made.get();
            return MakeCompareFiles(process, request, std::move(made));
        };
        return factories;
    }
    std::string Path(const std::string& name) const {
        std::string path = fakes.folder.Path(name);
        std::replace(path.begin(), path.end(), '/', '\\');
        return path;
    }
    std::string Line(const std::string& more, const std::string& modified = "b.txt") const {
        return "/M " + Path("a.txt") + " /S " + Path(modified) + " " + more;
    }
    std::int32_t Do(std::string line) { return client.DoCommandLine(line); }
    void Submit(const std::string& name, const std::string& line, const std::string& caller = {}) {
        client.Submit(
            line,
            [this, name](std::int32_t code, const std::string&) {
                replies.emplace_back(name, code);
            },
            caller);
    }

    FakePlatform fakes;
    ProcessState process;
    FakeFrameWindow window;
    std::function<void()> during_a_run;
    PumpingWindow* last_window = nullptr;
    frmMainMDI frame;
    Calls events;
    Calls replies;
    clsZorvane client;
};

TEST_F(AutomationTest, AnswersByCodeAndEvent) {
    EXPECT_TRUE(process.gbAutomationHosted);
    EXPECT_EQ(Do(Line("/X")), 0);
    EXPECT_EQ(client.NumDifferencesFound(), 2);
    EXPECT_EQ(Do(""), -2);
    EXPECT_EQ(Do("/M only /L " + Path("log")), -3);
    EXPECT_EQ(events, (Calls{{"Command line is empty", -2},
                             {"Missing required command line argument(s)", -3}}));
    EXPECT_TRUE(
        fakes.folder.Read("log").ends_with("Missing required command line argument(s)\r\n"));
    EXPECT_EQ(client.NumDifferencesFound(), 2) << "a refused line has no result";
    EXPECT_EQ(Do(Line("/X /M " + Path("b.txt"))), 0);
    EXPECT_EQ(client.NumDifferencesFound(), 0);
}

TEST_F(AutomationTest, ARunThatExitsLeavesNoViewer) {
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(Do(Line("/X")), 0);
    EXPECT_EQ(frame.NumberOpenScreens(), 0);
    EXPECT_EQ(window.State(), WindowState::Minimised);
    EXPECT_EQ(last_window == nullptr, false);
    EXPECT_FALSE(window.ended) << "the process stays for the client";
    EXPECT_EQ(Do(Line("/WS 0")), 0);
    EXPECT_EQ(frame.NumberOpenScreens(), 1);
    EXPECT_EQ(window.State(), WindowState::Normal);
    EXPECT_FALSE(process.gbCommandLineRunning);
}

TEST_F(AutomationTest, ATitleBelongsToTheRunAlone) {
    EXPECT_EQ(Do(Line("/7 Terms & Co /T " + Path("r.htm"))), 0);
    EXPECT_NE(fakes.folder.Read("r.htm").find("Terms &amp; Co"), std::string::npos);
    frmCompareFiles& viewer = *frame.frmGetCFNumber(1);
    std::string file = Path("by-hand.htm");
    viewer.Settings().msgReportTitleHTM_MD = "By hand";
    viewer.Settings().mlReportDefaultFileType_MD = 1;
    EXPECT_EQ(viewer.CreateReportGUI(Launch::No, file), ReportResult::Ok);
    EXPECT_NE(fakes.folder.Read("by-hand.htm").find("By hand"), std::string::npos);
    EXPECT_EQ(fakes.folder.Read("by-hand.htm").find("Terms"), std::string::npos);
}

TEST_F(AutomationTest, LinesThatComeDuringARunWait) {
    fakes.folder.Write("same.txt", "one\ntwo words\nthree\n");
    Do(Line("/X", "same.txt"));
    during_a_run = [&] {
        EXPECT_EQ(Do(Line("/X")), -4) << "it cannot wait for the call that it interrupts";
        EXPECT_EQ(client.NumDifferencesFound(), 0) << "of the last run that ended";
        Submit("second", Line("/X /L " + Path("second.log"), "same.txt"));
        Submit("third", "/M only");
        EXPECT_EQ(replies, Calls{}) << "they wait";
    };
    Submit("first", Line("/X /L " + Path("first.log")));
    EXPECT_EQ(replies, (Calls{{"first", 0}, {"second", 0}, {"third", -3}}));
    EXPECT_EQ(events.front(), std::pair(std::string("Another compare is in progress"), -4));
    EXPECT_EQ(client.NumDifferencesFound(), 0) << "of the second";
    const std::string first = fakes.folder.Read("first.log");
    EXPECT_NE(first.find("There were 2 Differences."), std::string::npos) << first;
    EXPECT_EQ(first.find("There were 0"), std::string::npos) << "each run has its own log";
    EXPECT_NE(fakes.folder.Read("second.log").find("There were 0 Differences."), std::string::npos);
}

TEST_F(AutomationTest, ADirectCallServesWhatCameInMeanwhile) {
    during_a_run = [&] { Submit("later", Line("/X")); };
    EXPECT_EQ(Do(Line("/X")), 0);
    EXPECT_EQ(replies, (Calls{{"later", 0}}));
}

TEST_F(AutomationTest, AFloodIsRefused) {
    during_a_run = [&] {
        for (int i = 0; i < 1001; ++i)
            Submit(std::to_string(i), "");
    };
    Do(Line("/X"));
    ASSERT_EQ(replies.size(), 1001U);
    EXPECT_EQ(replies.front(), std::pair(std::string("1000"), -4));
    EXPECT_EQ(replies.back(), std::pair(std::string("999"), -2));
}

TEST_F(AutomationTest, WithTheClientTheProcessEnds) {
    process.settings->Write("Main", "numCFForms", "3");
    Do(Line("/X"));
    Do(Line(""));
    client.Release();
    EXPECT_TRUE(window.ended);
    EXPECT_EQ(frame.NumberOpenScreens(), 0);
    EXPECT_EQ(process.settings->Read("Main", "numCFForms", ""), "3") << "the user's session";
    EXPECT_EQ(Do(Line("/X")), -4) << "too late";
}

TEST_F(AutomationTest, AClientThatGoesStopsItsRun) {
    during_a_run = [&] {
        Submit("never", Line("/X"));
        client.Release();
        EXPECT_FALSE(window.ended) << "the run's stack still stands";
    };
    Do(Line("/X /V /L " + Path("log")));
    EXPECT_TRUE(window.ended);
    EXPECT_EQ(replies, Calls{});
}

TEST_F(AutomationTest, WithoutADisplayNoViewerStays) {
    client.KeepNoViewers();
    EXPECT_EQ(Do(Line("/WS 0")), 0);
    EXPECT_EQ(frame.NumberOpenScreens(), 0);
    EXPECT_EQ(client.NumDifferencesFound(), 2);
}

TEST_F(AutomationTest, OneOfTwoCallersGoes) {
    during_a_run = [&] {
        Submit("never", Line("/X"), "first");
        Submit("other", Line("/X"), "second");
        client.Forget("first");
        EXPECT_FALSE(window.ended);
    };
    Submit("stopped", Line("/X /L " + Path("log")), "first");
    EXPECT_EQ(fakes.folder.Read("log").find("There were 2"), std::string::npos)
        << "nobody waits for it any more";
    EXPECT_EQ(replies.back(), std::pair(std::string("other"), 0));
    EXPECT_EQ(replies.size(), 2U);
    EXPECT_EQ(client.NumDifferencesFound(), 2) << "of the second caller";
}

TEST_F(AutomationTest, ACallerThatGoesLeavesTheRunOfAnother) {
    during_a_run = [&] { client.Forget("second"); };
    Submit("first", Line("/X /L " + Path("log")), "first");
    EXPECT_NE(fakes.folder.Read("log").find("There were 2"), std::string::npos);
}

TEST_F(AutomationTest, SilenceIsThatOfTheRun) {
    std::string seen;
    during_a_run = [&] {
        frmCompareFiles& running = *frame.frmGetCFNumber(1);
        seen = running.Telling().manner.bSilent ? "silent" : "open";
    };
    Do(Line("/X"));
    EXPECT_EQ(seen, "silent");
    during_a_run = [&] {
        seen = frame.frmGetCFNumber(1)->Telling().manner.bSilent ? "silent" : "open";
    };
    Do(Line(""));
    EXPECT_EQ(seen, "open");
}

TEST_F(AutomationTest, AViewerSurvivesAnotherSettingsFile) {
    const std::string first = process.gsSettingsFile;
    Do(Line(""));
    const std::string other = Path("other.ini");
    fakes.folder.Write("other.ini", "[1_CompareFile]\nbIgnoreCase=TRUE\n");
    Do(Line("/+ " + other));
    EXPECT_EQ(process.gsSettingsFile, other);
    EXPECT_EQ(frame.CloseFrame(), CloseResult::Closed);
    const auto old_file = OpenIniProfile(first);
    const auto new_file = OpenIniProfile(other);
    EXPECT_NE(old_file->Read("1_CompareFilemruOriginal", "1_CompareFilemruOriginal1", "-"), "-")
        << "a list goes to the file that it came from";
    EXPECT_EQ(new_file->Read("1_CompareFile", "sFileOriginal", ""), Path("a.txt"));
    EXPECT_EQ(new_file->Read("Main", "numCFForms", ""), "2");
}

}  // namespace
}  // namespace zorvane
