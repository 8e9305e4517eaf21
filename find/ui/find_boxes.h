// The entries of a Find window: what, where, in which files, and how.
#pragma once

#include <array>
#include <functional>

#include <QFrame>

#include "common/ui/check_boxes.h"
#include "common/ui/command_table.h"
#include "common/ui/file_box.h"
#include "common/ui/flow_box.h"
#include "find/find_window.h"

class QHBoxLayout;
class QLabel;

namespace zorvane {

class Button;

/// One of the five boxes, in the order in which they stand.
struct FindSwitch {
    const char* words;
    const char* command;  ///< that turns it over
    bool FindEntries::*value;
};
inline constexpr std::size_t kFindSwitches = 5;
const std::array<FindSwitch, kFindSwitches>& FindSwitches();

class FindBoxes : public QFrame {
    Q_OBJECT
  public:
    FindBoxes(CommandSet& commands, UiText text, QWidget* parent);

    FindEntries Entries() const;
    void SetEntries(const FindEntries& entries);
    void SetHistories(const FindHistories& histories);
    /// Abort stands where Find stood.
    void SetRunning(bool running);
    void ShowWords();

    FileBox& SearchFor() { return *search_for_; }
    FileBox& Folder() { return *folder_; }
    FileBox& Types() { return *types_; }
    QAbstractButton& Switch(std::size_t number) { return *switches_[number]; }

    std::function<void()> run_wanted;
    std::function<void()> switches_changed;
    std::function<void(const QStringList& paths)> dropped;

  protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    FileBox* MakeBox(const QString& name, const char* icon);
    QHBoxLayout* MakeFirstLine(CommandSet& commands);
    QHBoxLayout* MakeSecondLine(CommandSet& commands);
    QHBoxLayout* MakeThirdLine(CommandSet& commands);
    void MakeSwitches(CommandSet& commands);
    QLabel* MakeCaption(const QString& words);
    void FitCaptions();

    UiText text_;
    FileBox* search_for_ = nullptr;
    FileBox* folder_ = nullptr;
    FileBox* types_ = nullptr;
    std::array<WrappingCheckBox*, kFindSwitches> switches_{};
    FlowBox* switch_box_ = nullptr;
    // In front of each line; the last one is empty.
    QLabel* what_words_ = nullptr;
    QLabel* where_words_ = nullptr;
    QWidget* below_words_ = nullptr;
    QLabel* types_words_ = nullptr;
    QWidget* key_ = nullptr;
    Button* run_ = nullptr;
    Button* abort_ = nullptr;
    bool setting_ = false;  ///< by the program, not by a person
};

}  // namespace zorvane
