// Carries out a script of what a user would do, and tells where something is not as it says.
#pragma once

#include <functional>
#include <iosfwd>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "common/base/result.h"
#include "tools/viewer_driver/script_line.h"
#include "tools/viewer_driver/session.h"
#include "tools/viewer_driver/viewer_report.h"

namespace zorvane {

using Words = std::vector<std::string>;

class Driver {
  public:
    /// `folder` holds the settings and all files that a script names without a full path; `here` is
    /// what $here stands for, $folder the folder, $back the same with backslashes.
    Driver(std::string folder, std::string here, std::ostream& out);
    ~Driver();
    Driver(const Driver&) = delete;
    Driver& operator=(const Driver&) = delete;

    /// One line; a failure says what is not so.
    Status Do(const std::string& line);

  private:
    struct Command {
        const char* name;
        std::size_t least;  ///< words
        Status (Driver::*run)(const Words& words);
    };
    static const Command kCommands[];
    Status Carried(const Command& command, const Words& words);

    std::string Filled(std::string text) const;
    std::string Path(const std::string& name) const;
    Result<frmCompareFiles*> Viewer() const;
    Result<RichDocument*> EditorOf(const std::string& name) const;

    // commands_checks.cpp
    Status State(const Words& words);
    Status Expect(const Words& words);
    Status Remember(const Words& words);
    Status Same(const Words& words);
    Status Changed(const Words& words);
    Status Echo(const Words& words);
    Status Value(const std::string& key, std::string& value);

    // commands_files.cpp
    Status Write(const Words& words);
    Status WriteLong(const Words& words);
    Status Remove(const Words& words);
    Status Exists(const Words& words);
    Status Holds(const Words& words);
    Status Save(const Words& words);
    Status Print(const Words& words);
    Status CheckFiles(const Words& words);

    // commands_runs.cpp
    Status Open(const Words& words);
    Status Refresh(const Words& words);
    Status Compare(const Words& words);
    Status Wait(const Words& words);
    Status PollTimes(const Words& words);
    Status WaitFor(const Words& words);
    Status Stop(const Words& words);
    Status StopAfter(const Words& words);
    Status View(const Words& words);
    Status Filter(const Words& words);
    Status Report(const Words& words);
    Status Option(const Words& words);
    Status Setting(const Words& words);
    Status StopRandomly(const Words& words);

    // commands_edits.cpp
    Status Next(const Words& words);
    Status Previous(const Words& words);
    Status First(const Words& words);
    Status Last(const Words& words);
    Status GoTo(const Words& words);
    Status Pick(const Words& words);
    Status Select(const Words& words);
    Status Type(const Words& words);
    Status Delete(const Words& words);
    Status Undo(const Words& words);
    Status Redo(const Words& words);
    Status Caret(const Words& words);
    Status Find(const Words& words);
    Status FindNext(const Words& words);
    Status Replace(const Words& words);
    Status ReplaceAll(const Words& words);
    Status CompareSelected(const Words& words);
    Status Line(const Words& words);

    // commands_frame.cpp
    Status New(const Words& words);
    Status ViewerNumber(const Words& words);
    Status Close(const Words& words);
    Status CloseFrame(const Words& words);
    Status Restore(const Words& words);
    Status Automate(const Words& words);
    Status Release(const Words& words);
    Status Answer(const Words& words);
    Status AskBeforeClose(const Words& words);
    Status During(const Words& words);
    Status Language(const Words& words);
    void Act(const std::string& act);

    std::string folder_;
    std::string here_;
    std::ostream& out_;
    Platform platform_;
    Answers answers_;
    std::unique_ptr<DriverSession> session_;
    StateValues remembered_;
    std::string editor_ = "original";  ///< the last one that a command named
    std::string during_;               ///< done at the next yield of a run on this thread
    std::optional<Failure> inside_;    ///< of a command that was done inside another one
    StateValues own_;                  ///< of the last command: codes, times
};

}  // namespace zorvane
