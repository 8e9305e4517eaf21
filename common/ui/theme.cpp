#include "common/ui/theme.h"

#include <QAbstractButton>
#include <QEvent>
#include <QFontInfo>
#include <QKeyEvent>
#include <QLabel>
#include <QMenuBar>

#include "common/ui/layer_accessible.h"
#include "common/ui/style_sheet.h"

namespace zorvane {

Theme::Theme(QApplication& application) : application_(application), style_(new LookStyle) {
    // Asked before the style is set: nothing of ours may be taken for the desktop's.
    const ColorTokens tokens = ColorTokens::For(QGuiApplication::palette());
    QApplication::setStyle(style_);
    style_->SetTokens(tokens);
    sheet_ = StyleSheetOf(tokens, QFontInfo(QApplication::font()).pointSizeF());
    // Without it a style sheet would cut all below it off from the window's palette and font.
    QCoreApplication::setAttribute(Qt::AA_UseStyleSheetPropagationInWidgetStyles);
    application_.installEventFilter(this);
    InstallLayerAccessible();
}

void Theme::Dress(QWidget& window) {
    if (windows_.contains(QPointer<QWidget>(&window)))
        return;
    windows_.removeAll(QPointer<QWidget>());
    windows_.append(QPointer<QWidget>(&window));
    window.setStyleSheet(sheet_);
}

void Theme::Force(std::optional<ColorTokens> tokens) {
    forced_ = tokens;
    Follow();
}

bool Theme::eventFilter(QObject* watched, QEvent* event) {
    const bool palette_or_font = event->type() == QEvent::ApplicationPaletteChange ||
                                 event->type() == QEvent::ApplicationFontChange;
    if (palette_or_font && watched == &application_)
        Follow();
    const bool key = event->type() == QEvent::KeyPress || event->type() == QEvent::KeyRelease;
    if (key && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Alt)
        ShowMnemonics(event->type() == QEvent::KeyPress);
    // The release may go to another window.
    if (event->type() == QEvent::WindowDeactivate)
        ShowMnemonics(false);
    return QObject::eventFilter(watched, event);
}

void Theme::ShowMnemonics(bool shown) {
    if (style_ == nullptr)
        return;
    style_->SetAltHeld(shown);
    // Not all widgets: views of text have none and are costly to paint.
    if (const QWidget* window = QApplication::activeWindow()) {
        for (QMenuBar* bar : window->findChildren<QMenuBar*>())
            bar->update();
        for (QAbstractButton* button : window->findChildren<QAbstractButton*>())
            button->update();
        for (QLabel* label : window->findChildren<QLabel*>())
            label->update();
    }
}

void Theme::Follow() {
    const ColorTokens tokens = forced_ ? *forced_ : ColorTokens::For(QGuiApplication::palette());
    const QString sheet = StyleSheetOf(tokens, QFontInfo(QApplication::font()).pointSizeF());
    if (style_ == nullptr || (tokens == style_->GetTokens() && sheet == sheet_))
        return;
    sheet_ = sheet;
    style_->SetTokens(tokens);
    for (const QPointer<QWidget>& window : windows_)
        if (window != nullptr)
            window->setStyleSheet(sheet_);
    for (QWidget* widget : QApplication::allWidgets())
        widget->update();
    Q_EMIT Changed();
}

}  // namespace zorvane
