// The look in force: follows the desktop from light to dark and back while windows are open.
#pragma once

#include <optional>

#include <QApplication>
#include <QList>
#include <QObject>
#include <QPointer>
#include <QWidget>

#include "common/ui/color_tokens.h"
#include "common/ui/look_style.h"

namespace zorvane {

/// One for the application, made before its first window and alive as long as it.
class Theme : public QObject {
    Q_OBJECT
  public:
    explicit Theme(QApplication& application);

    const ColorTokens& GetTokens() const { return style_->GetTokens(); }
    /// Puts the style sheet on a window or dialog, now and after each change.
    void Dress(QWidget& window);
    /// Instead of the desktop's scheme; nothing: the desktop's again.
    void Force(std::optional<ColorTokens> tokens);

  Q_SIGNALS:
    void Changed();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void Follow();
    void ShowMnemonics(bool shown);

    QApplication& application_;
    QPointer<LookStyle> style_;  // the application's
    QList<QPointer<QWidget>> windows_;
    QString sheet_;
    std::optional<ColorTokens> forced_;
};

}  // namespace zorvane
