// The panel beside the result: which kinds count, what differs beside the words, what was not
// compared.
#pragma once

#include <functional>
#include <vector>

#include <QFrame>
#include <QLabel>

#include "common/ui/check_boxes.h"
#include "common/ui/command_table.h"
#include "compare/kind_counts.h"
#include "compare/ui/beside_entries.h"

class QVBoxLayout;

namespace zorvane {

/// What a panel tells of a result. The comparison is borrowed until the next one.
struct PanelContents {
    const Comparison* comparison = nullptr;  ///< nullptr: there is none yet
    KindCounts kinds;
    bool with_formatting = true;
    QStringList not_compared;
};

class DifferencePanel : public QFrame {
  public:
    DifferencePanel(CommandSet& commands, UiText text, QWidget* parent);

    void Show(const PanelContents& contents);
    BesideEntries& Beside() { return *beside_; }
    /// Where the focus comes to.
    QWidget* FirstStop() const { return kinds_.front().on; }

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    QWidget* MakeHead(CommandSet& commands);
    QWidget* MakeKind(CommandSet& commands, const char* id, const char* words, const char* icon,
                      std::int32_t KindCounts::*count);
    void MakeBesidePart(QVBoxLayout& rows);

    struct KindRow {
        Switch* on = nullptr;
        QLabel* count = nullptr;
        QString name;
        std::int32_t KindCounts::*of = nullptr;
    };

    UiText text_;
    std::vector<KindRow> kinds_;
    BesideEntries* beside_ = nullptr;
    QLabel* beside_count_ = nullptr;
    QLabel* nothing_ = nullptr;
    QWidget* not_compared_line_;
    QLabel* not_compared_head_;
    QLabel* not_compared_;
};

/// The notes that the panel shows.
std::vector<const BesideNote*> NotesOf(const Comparison& comparison, bool with_formatting);

}  // namespace zorvane
