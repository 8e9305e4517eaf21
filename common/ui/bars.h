// What frames a window's contents: toolbar, tabs that fold, splitter, status bar.
#pragma once

#include <vector>

#include <QFrame>
#include <QLabel>
#include <QSplitter>
#include <QStackedWidget>
#include <QTabBar>

#include "common/ui/buttons.h"
#include "common/ui/ui_text.h"

class QHBoxLayout;

namespace zorvane {

/// A row of controls that is one stop of the Tab key; the arrow keys, Home and End move within.
class ToolBar : public QFrame {
    Q_OBJECT
  public:
    explicit ToolBar(const QString& name, QWidget* parent = nullptr);

    void Add(QWidget* widget, int stretch = 0);
    void AddSeparator();
    void AddStretch();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    void Enrol(QWidget* widget);
    void MakeStop(QWidget* widget);
    bool Move(QWidget* from, int key);

    QHBoxLayout* layout_;
    std::vector<QWidget*> stops_;
};

/// Tabs whose current one is told by weight and a line of ink. A tab's data is the name of its
/// icon; it may have a button at its right side.
class TabStrip : public QTabBar {
    Q_OBJECT
  public:
    explicit TabStrip(QWidget* parent = nullptr);

  protected:
    QSize tabSizeHint(int index) const override;
    QSize minimumTabSizeHint(int index) const override { return tabSizeHint(index); }
    void paintEvent(QPaintEvent* event) override;

  private:
    void PaintTab(QPainter& painter, int index) const;
    void PaintTabText(QPainter& painter, int index, const QRect& place) const;
};

/// A layout for `page`, an option page, whose groups stand beside each other.
QHBoxLayout* MakeOptionColumns(QWidget* page);

/// Tabs of options that fold away as a whole; folded at first.
class OptionArea : public QFrame {
    Q_OBJECT
  public:
    explicit OptionArea(const UiText& text, QWidget* parent = nullptr);

    void AddPage(QWidget* page, const QString& title);
    void SetUnfolded(bool unfolded);
    bool IsUnfolded() const { return !isHidden(); }
    TabStrip& Tabs() { return *tabs_; }

  Q_SIGNALS:
    /// By the person's click or Esc.
    void FoldWanted();

  protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void ShowPage(int index);

    TabStrip* tabs_;
    QStackedWidget* pages_;
};

class Splitter : public QSplitter {
    Q_OBJECT
  public:
    Splitter(Qt::Orientation orientation, const QString& name, QWidget* parent = nullptr);

  protected:
    QSplitterHandle* createHandle() override;

  private:
    QString name_;
};

/// Panels with numbers from 1 on; the last stands at the right edge.
class StatusBar : public QFrame {
    Q_OBJECT
  public:
    explicit StatusBar(int panels, QWidget* parent = nullptr);

    void SetPanel(int number, const QString& text);
    QString Panel(int number) const;

  Q_SIGNALS:
    void PanelClicked(int number);

  protected:
    void paintEvent(QPaintEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

  private:
    std::vector<QLabel*> panels_;
};

}  // namespace zorvane
