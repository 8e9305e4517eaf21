// What tells and asks inside a window instead of before it: cards, lines above a pane, chips.
#pragma once

#include <QFrame>
#include <QLabel>
#include <QPushButton>
#include <QToolButton>

class QBoxLayout;
class QHBoxLayout;
class QVBoxLayout;

namespace zorvane {

/// A title, a few words, lines with a button each, and buttons below.
class Card : public QFrame {
    Q_OBJECT
  public:
    /// `icon` by its name; empty: none.
    Card(const QString& icon, const QString& title, const QString& text, QWidget* parent = nullptr);

    /// A line of what is told; `button` may be null. Warnings are amber.
    void AddLine(const QString& icon, const QString& text, QPushButton* button,
                 bool warning = false);
    void AddButton(QPushButton* button);

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    QVBoxLayout* lines_;
    QHBoxLayout* buttons_ = nullptr;
};

/// An amber line above a pane: something happened to its document. Told to screen readers as an
/// alert when it appears.
class MessageBar : public QFrame {
    Q_OBJECT
  public:
    explicit MessageBar(QWidget* parent = nullptr);

    /// Takes the buttons; those of the message before go.
    void ShowMessage(const QString& text, const QList<QPushButton*>& buttons);
    void HideMessage();

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    QLabel* text_;
    QHBoxLayout* layout_;
    QList<QPushButton*> buttons_;
};

/// A few amber words that mind of something and lead to it.
class Chip : public QToolButton {
    Q_OBJECT
  public:
    explicit Chip(QWidget* parent = nullptr);

    void SetWords(const QString& words, int count);
    /// Where room is short: the icon and the count alone.
    void SetShort(bool is_short);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    QString Shown() const;

    QString words_;
    int count_ = 0;
    bool short_ = false;
};

/// A line that parts, one pixel of it.
QWidget* MakeHairline(QWidget* parent = nullptr);
QLabel* MakeLabel(const QString& text, const char* look, QWidget* parent = nullptr);

}  // namespace zorvane
