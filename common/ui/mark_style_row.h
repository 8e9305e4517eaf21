// Chooses how a kind of difference looks: a sample, four toggles, two colours.
#pragma once

#include <utility>
#include <vector>

#include <QToolButton>
#include <QWidget>

#include "common/ui/mark_colors.h"
#include "common/ui/ui_text.h"

namespace zorvane {

/// A swatch that opens the choice of a colour.
class ColorButton : public QToolButton {
    Q_OBJECT
  public:
    explicit ColorButton(const QString& name, QWidget* parent = nullptr);

    /// `shown` is what is painted; it may differ from the stored one.
    void SetColor(const QColor& shown);
    QSize sizeHint() const override { return {26, 26}; }

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    QColor color_;
};

enum class TypeFace : std::uint8_t { Bold, Italic, Underline, Strike };

/// "B", "I", "U" or "S", in its own face.
class FaceToggle : public QToolButton {
    Q_OBJECT
  public:
    FaceToggle(TypeFace face, const QString& name, QWidget* parent = nullptr);

    QSize sizeHint() const override { return {26, 26}; }

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    TypeFace face_;
};

/// What the settings hold for a mark.
struct MarkChoice {
    StoredColors colors;
    bool bold = false;
    bool italic = false;
    bool underline = false;
    bool strike = false;
    friend bool operator==(const MarkChoice& one, const MarkChoice& other) {
        return one.colors.fore == other.colors.fore && one.colors.back == other.colors.back &&
               one.bold == other.bold && one.italic == other.italic &&
               one.underline == other.underline && one.strike == other.strike;
    }
};

class MarkStyleRow : public QWidget {
    Q_OBJECT
    Q_PROPERTY(QString caption READ Words WRITE SetWords)
  public:
    /// `sample` is the name of the kind, painted as its words are.
    MarkStyleRow(LookMark kind, const QString& sample, UiText text, QWidget* parent = nullptr);

    void SetChoice(const MarkChoice& choice);
    const MarkChoice& Choice() const { return choice_; }
    /// The name of the kind in another language, and with it all names in the row.
    void SetWords(const QString& words);
    const QString& Words() const { return words_; }

  Q_SIGNALS:
    /// By the person, not by SetChoice.
    void Changed();

  private:
    class Sample;
    void AddToggle(TypeFace face, const char* what, bool MarkChoice::*field);
    void AddColor(const char* what, std::int32_t StoredColors::*field);
    void ShowChoice();
    void AskColor(const QString& title, std::int32_t StoredColors::*field);

    LookMark kind_;
    QString words_;
    UiText text_;
    MarkChoice choice_;
    std::vector<std::pair<QWidget*, const char*>> names_;  ///< in English, without the kind
    Sample* sample_;
    std::vector<std::pair<FaceToggle*, bool MarkChoice::*>> toggles_;
    std::vector<std::pair<ColorButton*, std::int32_t StoredColors::*>> colors_;
};

}  // namespace zorvane
