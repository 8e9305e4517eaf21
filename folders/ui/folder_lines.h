// The lines around the grid of folders: errors above it, what its marks mean below.
#pragma once

#include <string>
#include <vector>

#include <QFrame>
#include <QLabel>

#include "common/ui/buttons.h"
#include "common/ui/ui_text.h"

class QListView;
class QStringListModel;

namespace zorvane {

/// How many errors there are and what the last one was; unfolds to all of them. Not there without
/// errors.
class ErrorLine : public QFrame {
    Q_OBJECT
  public:
    ErrorLine(const UiText& text, QWidget* parent);

    /// The first is their heading.
    void ShowErrors(const std::vector<std::string>& errors);
    void SetUnfolded(bool unfolded);
    bool IsUnfolded() const { return unfolded_; }
    int Count() const { return count_; }

  protected:
    void paintEvent(QPaintEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    void ShowLast();

    QLabel* head_;
    QLabel* last_words_;
    IconButton* unfold_;
    QListView* list_;
    QStringListModel* model_;
    QString last_;
    int count_ = 0;
    bool unfolded_ = false;
};

class FolderLegend : public QFrame {
    Q_OBJECT
  public:
    FolderLegend(const UiText& text, QWidget* parent);

  Q_SIGNALS:
    void HideWanted();

  protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    struct Mark {
        QString icon;
        QString words;
        Token ink;
    };
    QString greater_;
    std::vector<Mark> marks_;
    QWidget* close_;
};

}  // namespace zorvane
