// Buttons: with words, with an icon alone, and the groups of which one is pressed in.
#pragma once

#include <cstdint>

#include <QButtonGroup>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QToolButton>

#include "common/ui/color_tokens.h"

class QStyleOptionButton;

namespace zorvane {

enum class ButtonLook : std::uint8_t {
    Plain,
    Primary,  ///< filled; one in a window at most
    Flat      ///< in bars: no edge until the pointer comes
};

class Button : public QPushButton {
    Q_OBJECT
    Q_PROPERTY(QString caption READ Caption WRITE SetCaption)
  public:
    explicit Button(const QString& text, ButtonLook look = ButtonLook::Plain,
                    const QString& icon = QString(), QWidget* parent = nullptr);

    /// A dot at the corner: what is shown is older than what is set.
    void SetDot(bool shown);
    /// Hides the words where room is short; the icon and the tool tip tell them.
    void SetCaptionShown(bool shown);
    /// Other words from now on.
    void SetCaption(const QString& caption);
    const QString& Caption() const { return caption_; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    QFont Face() const;
    Token InkToken() const;
    void PaintContents(QPainter& painter, const QStyleOptionButton& option);

    ButtonLook look_;
    QString caption_;
    QString icon_;
    bool dot_ = false;
};

/// An icon without words: name and key are its tool tip, its name and description are told.
class IconButton : public QToolButton {
    Q_OBJECT
  public:
    IconButton(const QString& icon, const QString& name, const QString& keys,
               const QString& description, QWidget* parent = nullptr);

  protected:
    bool event(QEvent* event) override;

  private:
    QString keys_;
};

/// A key as it stands on the keyboard, beside the button that it presses.
QLabel* MakeKeyLabel(const QString& keys, QWidget* parent = nullptr);

/// Buttons in one frame, of which one is pressed in: a choice among what is shown. To a screen
/// reader they are radio buttons, "Changes, 8".
class SegmentedGroup : public QWidget {
    Q_OBJECT
  public:
    /// `name` is told for the group and not shown.
    explicit SegmentedGroup(const QString& name, QWidget* parent = nullptr);

    /// Text or icon or both; without a text, `name` is told instead.
    void Add(int id, const QString& text, const QString& icon, const QString& name);
    /// The number beside the text; negative: none. A segment with nothing to show can be disabled.
    void SetCount(int id, int count);
    void SetSegmentEnabled(int id, bool enabled);
    void SetCurrent(int id);
    int Current() const { return group_.checkedId(); }
    QAbstractButton* Segment(int id) const { return group_.button(id); }

  Q_SIGNALS:
    /// By the person, not by SetCurrent.
    void Chosen(int id);

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    QButtonGroup group_;
    bool setting_ = false;  ///< by the program, not by a person
};

}  // namespace zorvane
