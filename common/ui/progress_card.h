// "Please wait": a card over the old result while a new one is made.
#pragma once

#include <QElapsedTimer>
#include <QFrame>
#include <QLabel>
#include <QTimer>

#include "common/ui/buttons.h"
#include "common/ui/ui_text.h"

namespace zorvane {

/// Lies over its parent and greys it. Appears when a run has taken 300 ms, so that a short one
/// does not flicker.
class ProgressCard : public QWidget {
    Q_OBJECT
  public:
    ProgressCard(UiText text, QWidget* parent);

    /// A run starts: what it does now, such as "Comparing the documents".
    void Begin(const QString& stage);
    /// `percent` from 0 to 100 never goes back; `words` are those of the status panel.
    void SetProgress(double percent, const QString& words);
    void SetStage(const QString& stage);
    void End();

  Q_SIGNALS:
    void AbortClicked();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    QFrame* MakeCard();
    void ShowTimeLeft();

    UiText text_;
    QLabel* stage_ = nullptr;
    QLabel* share_ = nullptr;
    QLabel* words_ = nullptr;
    QLabel* left_ = nullptr;
    QWidget* bar_ = nullptr;
    Button* abort_ = nullptr;
    QFrame* card_ = nullptr;
    QTimer delay_;
    QElapsedTimer running_;
    double percent_ = 0;
};

}  // namespace zorvane
