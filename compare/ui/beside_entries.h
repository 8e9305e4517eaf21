// The list of what differs beside the words: one line for each kind of change, with its places.
#pragma once

#include <functional>
#include <vector>

#include <QListWidget>

#include "common/base/number.h"
#include "common/base/side.h"
#include "common/ui/ui_text.h"
#include "compare/engine/comparison.h"

namespace zorvane {

/// All differences of one kind and change, in the order of their places.
struct BesideEntry {
    std::string kind;
    std::string what;
    std::string change;
    std::vector<const BesideNote*> notes;
};
/// In the order in which each kind comes first; the notes are the comparison's.
std::vector<BesideEntry> EntriesOf(const std::vector<const BesideNote*>& notes);

class BesideEntries : public QListWidget {
  public:
    BesideEntries(UiText text, QWidget* parent);

    void SetEntries(std::vector<BesideEntry> entries);

    /// The person chose an entry: its first place, with each further click the next one.
    std::function<void(Side, ParagraphNumber)> place_chosen;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return {0, 0}; }

  protected:
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void Choose(int row);
    QString PlacesOf(const BesideEntry& entry) const;
    QString TipOf(const BesideEntry& entry) const;

    UiText text_;
    std::vector<BesideEntry> entries_;
    int last_row_ = -1;
    std::size_t next_place_ = 0;
};

}  // namespace zorvane
