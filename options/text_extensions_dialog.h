// The list of extensions that the user says are text, while it is edited.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zorvane {

class clsMRU;

/// What the dialog holds and allows; nothing reaches the list before `cmdApply_Click`.
class frmAdvancedOptionsTEXT {
  public:
    explicit frmAdvancedOptionsTEXT(const clsMRU& extensions);

    std::string Text;  ///< what is typed, or chosen from the list
    const std::vector<std::string>& Entries() const { return entries_; }
    bool Changed() const { return changed_; }

    /// Trims `text` and takes its hyphens and underscores out. True when letters and digits remain
    /// that the list does not have.
    bool bIsValidExtension(std::string& text) const;
    /// The entry that `Text` is, whatever its case.
    std::optional<std::size_t> Selected() const;
    bool CanAdd() const;
    bool CanDelete() const;

    /// False when `Text` is no extension.
    bool cmdAdd_Click();
    /// False when nothing is selected, or it is the last entry, which stays.
    bool cmdDelete_Click();
    /// The list as it is at first.
    void RestoreDefaults();
    /// Does nothing where nothing changed.
    void cmdApply_Click(clsMRU& extensions) const;

  private:
    std::vector<std::string> entries_;
    bool changed_ = false;
};

}  // namespace zorvane
