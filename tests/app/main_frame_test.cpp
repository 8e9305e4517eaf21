// The frame with viewers that only remember: how they come, are found, come back and go.
#include "app/main_frame.h"

#include <gtest/gtest.h>

#include "app/settings_location.h"
#include "common/log_message.h"
#include "common/process_state.h"
#include "tests/support/fake_viewer.h"
#include "tests/support/fakes.h"

namespace zorvane {
namespace {

using Texts = std::vector<std::string>;

/// One life of the program; several share the fakes, and so the user's files.
struct Life {
    explicit Life(FakePlatform& fakes) : process(fakes.platform) {
        LocateSettingsFile(process);
        process.messages.WaitForWindow([] {});
    }
    FakeViewer& Create(ViewerKind kind, const std::string& text = "") {
        auto& viewer = dynamic_cast<FakeViewer&>(*frame.CreateNewForm(kind));
        viewer.text = text;
        return viewer;
    }
    /// "1_CompareFile=text", the active one with a star.
    Texts Screens() const {
        Texts screens;
        for (const OpenScreen& screen : frame.OpenScreens())
            screens.push_back(screen.description + "=" + screen.files[0] +
                              (screen.active ? "*" : ""));
        return screens;
    }
    std::string Main(const char* key) const { return process.settings->Read("Main", key, "-"); }
    Texts Told() {
        frame.ShowMessages();
        return window.messages;
    }

    ProcessState process;
    FakeFrameWindow window;
    Texts events;
    frmMainMDI frame{process, window, FakeViewers(process, events)};
};

class MainFrameTest : public ::testing::Test {
  protected:
    FakePlatform fakes;
};

TEST_F(MainFrameTest, AFreshUserGetsOneCompareFilesViewer) {
    Life session(fakes);
    session.process.gbFrameClosing = true;
    session.frame.Load();
    session.frame.Load();
    EXPECT_EQ(session.Screens(), Texts{"1_CompareFile=*"});
    EXPECT_FALSE(session.process.gbFrameClosing);
    EXPECT_EQ(session.window.State(), WindowState::Maximised);
    EXPECT_EQ(session.window.Rectangle(), FrameRectangle());
}

TEST_F(MainFrameTest, ASessionComesBack) {
    {
        Life first(fakes);
        first.Create(ViewerKind::FindText, "words");
        first.Create(ViewerKind::CompareFiles, "contract");
        FakeViewer& folders = first.Create(ViewerKind::CompareFolders, "photos");
        first.Create(ViewerKind::CompareFiles, "letter");
        first.frame.WasActivated(folders);
        first.window.SetRectangle({-12.5F, 0, 4000, 3000.25F});
        first.window.SetState(WindowState::Normal);
        first.events.clear();
        EXPECT_EQ(first.frame.CloseFrame(), CloseResult::Closed);
        EXPECT_EQ(first.events,
                  (Texts{"close 2_CompareFile", "gone 2_CompareFile", "close 1_CompareDir",
                         "gone 1_CompareDir", "close 1_CompareFile", "gone 1_CompareFile",
                         "close 1_FindText", "gone 1_FindText"}));
        EXPECT_TRUE(first.process.gbFrameClosing);
        EXPECT_TRUE(first.window.ended);
        EXPECT_EQ(first.frame.CreateNewForm(ViewerKind::FindText), nullptr) << "it is closed";
    }
    Life second(fakes);
    second.frame.Load();
    EXPECT_EQ(second.Screens(), (Texts{"1_CompareFile=contract", "2_CompareFile=letter",
                                       "1_CompareDir=photos*", "1_FindText=words"}));
    EXPECT_EQ(second.events.back(), "focus 1_CompareDir");
    EXPECT_EQ(second.window.Rectangle(), (FrameRectangle{-12.5F, 0, 4000, 3000.25F}));
    EXPECT_EQ(second.window.State(), WindowState::Normal);
}

struct CountRow {
    const char* stored;
    std::size_t restored;
    bool told = false;
};
TEST_F(MainFrameTest, CountsAreReadWithCare) {
    for (const CountRow& row : {CountRow{"0", 0},
                                {"1", 1},
                                {" 3 ", 3},
                                {"-2", 0},
                                {"many", 1},
                                {"", 1},
                                {"99999999999", 1},
                                {"12", 12},
                                {"13", 1, true},
                                {"2000000000", 1, true}}) {
        SCOPED_TRACE(row.stored);
        Life session(fakes);
        session.process.settings->Write("Main", "numCFForms", row.stored);
        session.process.settings->Write("Main", "ActiveForm", "9_Gone");
        session.frame.Load();
        EXPECT_EQ(session.frame.OpenScreens().size(), row.restored);
        EXPECT_EQ(session.Told().size(), row.told ? 1 : 0);
    }
    for (const CountRow& row :
         {CountRow{"13", 13}, {"20", 20}, {"40", 20, true}, {"999999", 20, true}}) {
        SCOPED_TRACE(row.stored);
        Life session(fakes);
        session.process.settings->Write("20_CompareFile", "dFontSize", "10");
        session.process.settings->Write("13_CompareFile", "dFontSize", "10");
        session.process.settings->Write("Main", "numCFForms", row.stored);
        session.frame.Load();
        EXPECT_EQ(session.frame.OpenScreens().size(), row.restored);
        EXPECT_EQ(session.Told().size(), row.told ? 1 : 0);
    }
}

struct PlaceRow {
    const char* key;
    const char* value;
    FrameRectangle rectangle;
    WindowState state;
};
TEST_F(MainFrameTest, ADamagedPlaceIsTheFirstOne) {
    const PlaceRow rows[] = {
        {"Left", "-300.5", {-300.5F, 1000, 6500, 6500}, WindowState::Maximised},
        {"Left", "nan", {}, WindowState::Maximised},
        {"Top", "x", {}, WindowState::Maximised},
        {"Width", "inf", {}, WindowState::Maximised},
        {"Top", "7", {1000, 7, 6500, 6500}, WindowState::Maximised},
        {"Width", "0", {}, WindowState::Maximised},
        {"Width", "800", {1000, 1000, 800, 6500}, WindowState::Maximised},
        {"Height", "nan", {}, WindowState::Maximised},
        {"Height", "1e999", {}, WindowState::Maximised},
        {"Height", "900", {1000, 1000, 6500, 900}, WindowState::Maximised},
        {"WindowState", "0", {}, WindowState::Normal},
        {"WindowState", "1", {}, WindowState::Normal},
        {"WindowState", "77", {}, WindowState::Normal},
    };
    for (const PlaceRow& row : rows) {
        SCOPED_TRACE(std::string(row.key) + "=" + row.value);
        FakePlatform own;
        own.platform.registry->Set("frmMainMDISettings", row.key, row.value);
        Life session(own);
        session.frame.Load();
        EXPECT_EQ(session.window.Rectangle(), row.rectangle);
        EXPECT_EQ(session.window.State(), row.state);
    }
}

TEST_F(MainFrameTest, NumbersByTheCountOfItsKind) {
    Life session(fakes);
    for (int i = 0; i < 3; ++i)
        session.Create(ViewerKind::CompareFolders, std::to_string(i + 1));
    session.Create(ViewerKind::FindText);
    Viewer* second = session.frame.frmGetCDNumber(2);
    EXPECT_EQ(session.frame.CloseViewer(*second), CloseResult::Closed);
    FakeViewer& again = session.Create(ViewerKind::CompareFolders, "again");
    EXPECT_EQ(again.Description(), "3_CompareDir") << "two share a section";
    EXPECT_EQ(session.frame.NumberOpenScreens(), 4);
    EXPECT_EQ(session.frame.frmGetCDNumber(3), &again) << "the last opened";
    EXPECT_EQ(session.frame.frmGetCDNumber(8)->Description(), "4_CompareDir") << "made";
    EXPECT_EQ(session.frame.frmGetFTNumber(1)->Description(), "1_FindText");
    session.frame.CloseFrame();
    EXPECT_EQ(session.Main("numCDForms"), "4");
    EXPECT_EQ(session.Main("numFTForms"), "1");
    EXPECT_EQ(session.Main("numCFForms"), "0");
    EXPECT_EQ(session.process.settings->Read("3_CompareDir", "text", ""), "3")
        << "the later save wins: the first opened goes last";
}

TEST_F(MainFrameTest, NumberOneAlsoFindsEleven) {
    Life session(fakes);
    for (int i = 0; i < 11; ++i)
        session.Create(ViewerKind::FindText);
    EXPECT_EQ(session.frame.frmGetFTNumber(1)->Description(), "11_FindText");
    EXPECT_EQ(session.frame.frmGetFTNumber(2)->Description(), "2_FindText");
}

TEST_F(MainFrameTest, AViewerThatStaysKeepsTheFrameOpen) {
    Life session(fakes);
    session.Create(ViewerKind::CompareFiles);
    FakeViewer& edited = session.Create(ViewerKind::CompareFolders);
    session.Create(ViewerKind::FindText);
    edited.answer = false;
    EXPECT_EQ(session.frame.CloseFrame(), CloseResult::Refused);
    EXPECT_EQ(session.frame.CloseViewer(edited), CloseResult::Refused);
    EXPECT_EQ(session.frame.NumberOpenScreens(), 3) << "none is gone";
    EXPECT_FALSE(session.process.gbFrameClosing);
    EXPECT_EQ(session.Main("numCFForms"), "-");
    edited.answer = true;
    EXPECT_EQ(session.frame.CloseFrame(), CloseResult::Closed);
    EXPECT_EQ(session.Main("numCDForms"), "1");
}

TEST_F(MainFrameTest, ARunIsStoppedBeforeItsViewerGoes) {
    Life session(fakes);
    FakeViewer& running = session.Create(ViewerKind::CompareFiles);
    FakeViewer& quick = session.Create(ViewerKind::CompareFolders);
    FakeViewer& left = session.Create(ViewerKind::FindText);
    running.busy = quick.busy = left.busy = true;
    quick.stops_at_once = true;
    EXPECT_EQ(session.frame.CloseViewer(left), CloseResult::Stopping);
    EXPECT_NE(session.frame.frmGetFTNumber(1), &left) << "it is as good as gone";
    EXPECT_EQ(session.frame.CloseFrame(), CloseResult::Stopping);
    EXPECT_EQ(session.frame.NumberOpenScreens(), 2) << "the quick one and the new one are gone";
    EXPECT_FALSE(session.window.ended);
    EXPECT_EQ(session.frame.FinishClosing(), CloseResult::Stopping);
    left.busy = false;
    EXPECT_EQ(session.frame.CloseFrame(), CloseResult::Stopping) << "the user is impatient";
    running.busy = false;
    EXPECT_EQ(session.frame.FinishClosing(), CloseResult::Closed);
    EXPECT_TRUE(session.window.ended);
    EXPECT_EQ(session.Main("numCFForms"), "1");
    EXPECT_EQ(session.Main("numCDForms"), "1");
    EXPECT_EQ(session.Main("numFTForms"), "1") << "the one that the user closed does not count";
}

TEST_F(MainFrameTest, AQuestionRunsTheEventsOfTheWindow) {
    Life session(fakes);
    FakeViewer& first = session.Create(ViewerKind::CompareFiles);
    FakeViewer& asking = session.Create(ViewerKind::CompareFiles);
    asking.on_question = [&] {
        EXPECT_EQ(session.frame.CloseFrame(), CloseResult::Refused) << "it is being asked";
        EXPECT_EQ(session.frame.CloseViewer(asking), CloseResult::Refused) << "likewise";
        EXPECT_EQ(session.frame.CloseViewer(first), CloseResult::Closed);
    };
    EXPECT_EQ(session.frame.CloseFrame(), CloseResult::Closed);
    EXPECT_EQ(session.Main("numCFForms"), "1");
}

TEST_F(MainFrameTest, PollingEndsWhatLeaves) {
    Life session(fakes);
    FakeViewer& running = session.Create(ViewerKind::CompareFiles);
    FakeViewer& other = session.Create(ViewerKind::CompareFiles);
    running.busy = true;
    int polls = 0;
    running.on_poll = [&] {
        ++polls;
        session.frame.Poll();  // a question of the viewer runs the events
        running.busy = false;
        EXPECT_EQ(session.frame.CloseViewer(running), CloseResult::Stopping) << "on the stack";
        EXPECT_EQ(session.frame.CloseViewer(other), CloseResult::Closed);
        LogMessage(session.process.telling, "said", "", true);
    };
    session.frame.Poll();
    EXPECT_EQ(polls, 1);
    EXPECT_EQ(session.frame.NumberOpenScreens(), 0);
    EXPECT_EQ(session.window.messages, Texts{"said"});
}

TEST_F(MainFrameTest, TheFocusGoesBackToWhereItWas) {
    Life session(fakes);
    FakeViewer& first = session.Create(ViewerKind::CompareFiles);
    FakeViewer& second = session.Create(ViewerKind::CompareFiles);
    FakeViewer& third = session.Create(ViewerKind::CompareFiles);
    EXPECT_EQ(session.frame.ActiveViewer(), &third);
    session.frame.WasActivated(first);
    session.frame.CloseViewer(first);
    EXPECT_EQ(session.frame.ActiveViewer(), &third);
    session.frame.CloseViewer(third);
    EXPECT_EQ(session.frame.ActiveViewer(), &second);
    session.frame.WasActivated(third);  // a late notice; what is gone is only compared
    EXPECT_EQ(session.frame.ActiveViewer(), &second);
    session.frame.CloseViewer(second);
    EXPECT_EQ(session.frame.ActiveViewer(), nullptr);
    session.process.settings->Write("Main", "ActiveForm", "kept");
    session.frame.CloseFrame();
    EXPECT_EQ(session.Main("ActiveForm"), "kept") << "without a viewer none is named";
}

TEST_F(MainFrameTest, TheEndOfARunKeepsTheUsersSession) {
    Life session(fakes);
    session.process.settings->Write("Main", "numCFForms", "4");
    session.process.gbCommandLineRunning = true;
    session.window.SetState(WindowState::Normal);
    session.frame.Load();
    EXPECT_EQ(session.Screens(), Texts{}) << "a run restores nothing";
    EXPECT_EQ(session.window.State(), WindowState::Minimised);
    session.Create(ViewerKind::CompareFiles, "of the run").answer = false;
    session.frame.UnloadAll();
    EXPECT_EQ(session.Screens(), Texts{}) << "nobody is asked";
    EXPECT_EQ(session.Main("numCFForms"), "4");
    EXPECT_EQ(session.process.settings->Read("1_CompareFile", "text", ""), "of the run");
    session.frame.CloseFrame();
    EXPECT_FALSE(session.window.ended) << "the run ends the process";
}

TEST_F(MainFrameTest, AKindThatIsNotThereIsTold) {
    Life session(fakes);
    session.process.settings->Write("Main", "numCDForms", "2");
    session.process.settings->Write("Main", "numCFForms", "0");
    ViewerFactories factories = FakeViewers(session.process, session.events);
    factories.compare_folders = {};
    frmMainMDI frame(session.process, session.window, std::move(factories));
    frame.Load();
    frame.ShowMessages();
    const std::string told = "Compare Folders: This program does not have this kind of viewer.";
    EXPECT_EQ(session.window.messages, Texts{told}) << "once, not for each";
    EXPECT_EQ(frame.CreateNewCompareFoldersForm(), nullptr);
    EXPECT_EQ(frame.frmGetCDNumber(1), nullptr);
    frame.ShowMessages();
    EXPECT_EQ(session.window.messages, (Texts{told, told, told}));
    frame.CloseFrame();
    EXPECT_EQ(session.Main("numCDForms"), "2") << "kept for a program that has them";
}

}  // namespace
}  // namespace zorvane
