// What the windows that list what they found have in common: entries above, options that unfold, a
// grid, a line of status, and Esc.
#pragma once

#include <memory>
#include <span>
#include <string>

#include <QFont>
#include <QPointF>
#include <QVBoxLayout>
#include <QWidget>

#include "common/ui/bars.h"
#include "common/ui/command_table.h"
#include "common/ui/grid.h"
#include "common/ui/theme.h"
#include "compare/ui/run_announcer.h"
#include "compare/ui/viewer_page.h"

class QMenu;

namespace zorvane {

class SpecialFolders;

class RecordsPage : public QWidget, public ViewerPage {
    Q_OBJECT
  public:
    /// Borrowed.
    RecordsPage(CommandSet& commands, Theme& theme, UiText text, SpecialFolders& folders);

    // ---- what a person does ----
    void SetOptionsUnfolded(bool unfolded);
    bool OptionsUnfolded() const { return options_->IsUnfolded(); }
    /// Unfolds one of the tabs.
    void ShowOptions(int tab);
    void ChooseFont();
    void MoveFocus(bool forward) override;
    /// The commands of the row that is chosen.
    virtual QMenu* MakeMenu() = 0;
    StatusBar& Status() { return *status_; }

  protected:
    // ---- what each kind of window is asked ----
    virtual const ViewerHost& Frame() const = 0;
    virtual Grid& MainGrid() = 0;
    virtual bool Running() const = 0;
    virtual void AbortRun() = 0;
    /// Parts that F6 goes round, in their order.
    virtual std::vector<QWidget*> FocusStops() const = 0;
    /// Files and folders dropped beside the boxes.
    virtual void DropAt(QPointF place, const QStringList& paths) = 0;
    virtual void TakeFont(const std::string& family, double points) = 0;
    /// Behind a change of the look.
    virtual void ShowLook() {}

    // ---- how it is made ----
    /// The rows of the window from top to bottom; once.
    QVBoxLayout* MakeContents();
    OptionArea* MakeOptionArea();
    StatusBar* MakeStatus(int panels);
    /// Behind all parts. Keys that mean a row hold in the grid alone: boxes have their own.
    void ConnectContents(std::span<const Command> commands);
    /// What borrows the viewer goes before it.
    void ReleaseContents();
    QMenu* BeginMenu();
    std::string AskForFolder(const std::string& start);
    /// A file to write, of one kind.
    std::string AskForReport(const std::string& title, const std::string& start,
                             const QString& kind);

    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

    CommandSet& commands_;
    Theme& theme_;
    UiText text_;
    SpecialFolders& folders_;
    QWidget* contents_ = nullptr;  ///< nullptr: made not yet, or gone with its viewer
    OptionArea* options_ = nullptr;
    StatusBar* status_ = nullptr;
    std::unique_ptr<RunAnnouncer> announcer_;

  private:
    /// False: nothing runs.
    bool StopRun();
};

}  // namespace zorvane
