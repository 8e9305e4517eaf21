// Finds a command by typing some of its letters.
#pragma once

#include <vector>

#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPointer>
#include <QStringList>

#include "common/ui/command_table.h"
#include "common/ui/fuzzy_match.h"

namespace zorvane {

class PaletteModel;

/// Lies over a window, which it greys, until a command is run or Esc is pressed.
class CommandPalette : public QWidget {
    Q_OBJECT
  public:
    CommandPalette(CommandSet& commands, UiText text, QWidget& window);

    /// Opens with an empty line, the last used commands first. Dialogs that stand beside the
    /// window are out of sight meanwhile.
    void Open();
    void Close();
    /// Ids, the last one first; kept from one session to the next by whoever owns this.
    void SetLastUsed(const QStringList& ids) { last_used_ = ids; }
    const QStringList& LastUsed() const { return last_used_; }

    QLineEdit& Line() { return *line_; }
    QListView& List() { return *list_; }

  Q_SIGNALS:
    void Closed();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

  private:
    void MakePanel();
    void Filter(const QString& pattern);
    void Lay();
    bool OnKey(int key);
    void RunCurrent();
    void PutDialogsAside();
    void TakeDialogsBack();

    CommandSet& commands_;
    UiText text_;
    PaletteModel* model_;
    QWidget* panel_;
    QLineEdit* line_;
    QListView* list_;
    QLabel* count_;
    QStringList last_used_;
    QPointer<QWidget> had_focus_;
    QPointer<QWidget> front_;               ///< the window in front before
    std::vector<QPointer<QDialog>> aside_;  ///< out of sight meanwhile
};

/// Which entries fit `pattern`, in the order in which they are listed: those that can be run, by
/// how well they fit and how lately they were used; behind them those that can not.
struct PaletteHit {
    std::size_t entry = 0;
    FuzzyMatch match;
};
std::vector<PaletteHit> PaletteHits(const std::vector<CommandEntry>& entries,
                                    const QString& pattern, const QStringList& last_used);

}  // namespace zorvane
