// The panel beside the result: which kinds count, what differs beside the words, what was not
// compared.
#pragma once

#include <functional>
#include <vector>

#include <QFrame>
#include <QLabel>
#include <QListWidget>

#include "common/ui/check_boxes.h"
#include "common/ui/command_table.h"
#include "compare/compare_files_viewer.h"

namespace zorvane {

class DifferencePanel : public QFrame {
  public:
    DifferencePanel(CommandSet& commands, UiText text, QWidget* parent);

    /// Of the result that is shown; nullptr: none.
    void Show(const Comparison* comparison, bool with_formatting,
              const PerSide<std::string>& not_compared);

    /// The person chose a line: the paragraph of a side.
    std::function<void(Side, ParagraphNumber)> place_chosen;

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    QWidget* MakeKind(CommandSet& commands, const char* id, const char* words, const char* icon);
    void Choose(const QListWidgetItem* item);

    UiText text_;
    QListWidget* beside_;
    QLabel* nothing_;
    QLabel* not_compared_head_;
    QLabel* not_compared_;
};

/// The notes that the panel shows.
std::vector<const BesideNote*> NotesOf(const Comparison& comparison, bool with_formatting);

}  // namespace zorvane
