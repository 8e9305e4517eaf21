// Passwords that a person gave for protected documents: options as long as the window is open, and
// never stored.
#pragma once

#include <string>
#include <vector>

#include "compare/compare_files_viewer.h"
#include "load/file_type_options.h"

namespace zorvane {

class AskedPasswords {
  public:
    /// Whether files of this type have a password among their options.
    static bool Takes(FileTypeOptions type);
    /// The options of the side's next load have it.
    void Give(frmCompareFiles& viewer, Side side, FileTypeOptions type,
              const std::string& password);
    /// Whether one was given for the side's file before.
    bool WasGiven(frmCompareFiles& viewer, Side side) const;
    /// The options are what they were, but for those that were changed since.
    void TakeBack(frmCompareFiles& viewer);

  private:
    struct Kept {
        FileTypeOptions type;
        Side side;
        std::string before;
        std::string given;
    };

    std::vector<Kept> kept_;
    PerSide<std::string> given_for_;
};

}  // namespace zorvane
