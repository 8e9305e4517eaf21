// Edits that were not saved when the program lost its display: written beside the settings, and
// told of at the next start.
#pragma once

#include <string>
#include <vector>

#include "compare/compare_files_viewer.h"

namespace zorvane {

class RescuedEdits {
  public:
    /// The folder of the settings.
    explicit RescuedEdits(const std::string& folder) : folder_(folder + "/rescued") {}

    const std::string& Folder() const { return folder_; }
    /// Writes the edited texts of a viewer that have not been saved, as rich text. Nobody can be
    /// told of a failure.
    void Keep(frmCompareFiles& viewer) const;
    /// The names of what nobody was told of yet; once.
    std::vector<std::string> TakeUntold() const;

  private:
    std::string folder_;
};

}  // namespace zorvane
