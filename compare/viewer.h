// What the frame asks of a viewer, whatever its kind.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace zorvane {

/// In the order in which a session is restored.
enum class ViewerKind : std::int32_t { CompareFiles, CompareFolders, FindText };

/// All of it is called on the thread of the windows. A run may work on another one.
class Viewer {
  public:
    virtual ~Viewer() = default;

    virtual ViewerKind Kind() const = 0;

    // ---- settings ----
    /// Stores the name, which is also that of the settings section, and reads the section under
    /// `load`.
    virtual void Setup(const std::string& sDescription, bool load) = 0;
    virtual void ReadIniFile() = 0;
    virtual void SaveIniFile() = 0;
    /// "1_CompareFile", "2_CompareDir", "1_FindText"; empty before `Setup`.
    virtual const std::string& Description() const = 0;

    // ---- what a user sees ----
    /// The files or folders it works on, Original first, empty names included: for captions and the
    /// list of open windows.
    virtual std::vector<std::string> FileNames() const = 0;
    /// Shows it and gives it the focus.
    virtual void Activate() = 0;

    // ---- runs ----
    /// Something runs: loading, comparing, reporting. Its whole stack is gone when this is false.
    virtual bool Busy() const = 0;
    /// Asks the run to stop and comes back at once. Without a run nothing happens.
    virtual void Abort() = 0;

    // ---- the end ----
    /// Asks about what would be lost; false when the user wants to stay. Changes nothing.
    virtual bool MayClose() = 0;
    /// Closes its dialogs, saves its section and lets go of what it holds. Only when not busy;
    /// behind it comes the destructor and nothing else.
    virtual void Close() = 0;
};

}  // namespace zorvane
