#include "common/ui/widget_words.h"

#include <utility>

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QFontDatabase>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTabBar>

#include "common/form_translator.h"
#include "common/ui/dialog.h"
#include "common/ui/mnemonics.h"
#include "common/ui/qt_text.h"
#include "common/ui/shown_texts.h"
#include "common/ui/ui_text.h"

namespace zorvane {
namespace {

// A language's font is the application's, so that windows to come have it too: no widget has one
// of its own here.
class WordThing : public LabelledThing {
  public:
    using Getter = std::function<QString()>;
    using Setter = std::function<void(const QString&)>;

    WordThing(const ShownTexts& before, LabelledKind kind, Getter get, Setter set)
        : before_(before), kind_(kind), get_(std::move(get)), set_(std::move(set)) {}

    LabelledKind Kind() const override { return kind_; }
    std::optional<std::string> Text() const override { return before_.EnglishOf(FromQt(get_())); }
    void SetText(const std::string& text) override { set_(ToQt(text)); }
    bool WasTranslated() const override { return true; }

  private:
    const ShownTexts& before_;
    LabelledKind kind_;
    Getter get_;
    Setter set_;
};

bool HasCaption(const QWidget& widget) {
    return widget.property("caption").typeId() == QMetaType::QString;
}

class WidgetThing : public LabelledThing {
  public:
    WidgetThing(QWidget& widget, const ShownTexts& before) : widget_(widget), before_(before) {}

    LabelledKind Kind() const override {
        if (widget_.isWindow())
            return LabelledKind::Form;
        if (qobject_cast<QTabBar*>(&widget_) != nullptr)
            return LabelledKind::TabStrip;
        if (qobject_cast<QPushButton*>(&widget_) != nullptr)
            return LabelledKind::CommandButton;
        if (qobject_cast<QLabel*>(&widget_) != nullptr || HasCaption(widget_) ||
            qobject_cast<QAbstractButton*>(&widget_) != nullptr)
            return LabelledKind::Caption;
        return LabelledKind::Filled;
    }

    std::string Tag() const override {
        return widget_.property(kTranslateFalse).toBool() ? kTranslateFalse : "";
    }

    // Dialogs give their captions mnemonics, which nobody asked the translator for.
    std::optional<std::string> Text() const override {
        const std::optional<std::string> english = before_.EnglishOf(FromQt(Main()));
        return english.has_value() ? english : before_.EnglishOf(FromQt(WithoutMnemonic(Main())));
    }

    void SetText(const std::string& english) override {
        const QString text = ToQt(english);
        if (widget_.isWindow())
            widget_.setWindowTitle(text);
        else if (HasCaption(widget_))
            widget_.setProperty("caption", text);
        else if (auto* button = qobject_cast<QAbstractButton*>(&widget_))
            button->setText(text);
        else if (auto* label = qobject_cast<QLabel*>(&widget_))
            label->setText(text);
    }

    std::optional<std::string> ToolTip() const override {
        return before_.EnglishOf(FromQt(widget_.toolTip()));
    }
    void SetToolTip(const std::string& text) override { widget_.setToolTip(ToQt(text)); }
    bool WasTranslated() const override { return true; }

    void ForEachChild(const std::function<void(LabelledThing&)>& visit) override {
        VisitSpoken(visit);
        if (auto* tabs = qobject_cast<QTabBar*>(&widget_))
            for (int at = 0; at < tabs->count(); ++at)
                VisitWords(
                    LabelledKind::TabStripPage, [=] { return tabs->tabText(at); },
                    [=](const QString& text) { tabs->setTabText(at, text); }, visit);
        if (auto* box = qobject_cast<QComboBox*>(&widget_); box != nullptr && !box->isEditable())
            VisitItems(*box, visit);
        for (QObject* child : widget_.children()) {
            auto* inner = qobject_cast<QWidget*>(child);
            if (inner == nullptr)
                continue;
            WidgetThing thing(*inner, before_);
            visit(thing);
        }
    }

  private:
    QString Main() const {
        if (widget_.isWindow())
            return widget_.windowTitle();
        if (HasCaption(widget_))
            return widget_.property("caption").toString();
        if (const auto* button = qobject_cast<QAbstractButton*>(&widget_))
            return button->text();
        const auto* label = qobject_cast<QLabel*>(&widget_);
        return label == nullptr ? QString() : label->text();
    }

    void VisitWords(LabelledKind kind, WordThing::Getter get, WordThing::Setter set,
                    const std::function<void(LabelledThing&)>& visit) {
        WordThing thing(before_, kind, std::move(get), std::move(set));
        visit(thing);
    }

    // What a screen reader says, and what stands in an empty field.
    void VisitSpoken(const std::function<void(LabelledThing&)>& visit) {
        QWidget* widget = &widget_;
        VisitWords(
            LabelledKind::Caption, [=] { return widget->accessibleName(); },
            [=](const QString& text) { widget->setAccessibleName(text); }, visit);
        VisitWords(
            LabelledKind::Caption, [=] { return widget->accessibleDescription(); },
            [=](const QString& text) { widget->setAccessibleDescription(text); }, visit);
        if (auto* line = qobject_cast<QLineEdit*>(widget))
            VisitWords(
                LabelledKind::Caption, [=] { return line->placeholderText(); },
                [=](const QString& text) { line->setPlaceholderText(text); }, visit);
    }

    // A list of choices; one that is made when it is looked at has no items of its own.
    void VisitItems(QComboBox& box, const std::function<void(LabelledThing&)>& visit) {
        constexpr int kMostChoices = 50;
        for (int at = 0; at < box.count() && box.count() <= kMostChoices; ++at)
            VisitWords(
                LabelledKind::Caption, [&box, at] { return box.itemText(at); },
                [&box, at](const QString& text) { box.setItemText(at, text); }, visit);
    }

    QWidget& widget_;
    const ShownTexts& before_;
};

class DesktopFonts : public InstalledFonts {
  public:
    bool IsFontAvailable(const std::string& font) const override {
        return QFontDatabase::hasFamily(ToQt(font));
    }
    bool HasMSSansSerif() const override { return false; }
};

}  // namespace

void ApplyLanguageFont(const std::string& family) {
    static const QFont kDesktops = QApplication::font();
    QFont font = kDesktops;
    if (!family.empty())
        font.setFamily(ToQt(family));
    if (font != QApplication::font())
        QApplication::setFont(font);
}

void TranslateWidgets(QWidget& window, modTranslator& translator, const ShownTexts& before) {
    WidgetThing form(window, before);
    TranslateForm(translator, DesktopFonts(), form);
    // The new words have mnemonics of their own.
    for (Dialog* dialog : window.findChildren<Dialog*>())
        ShareMnemonics(*dialog);
}

}  // namespace zorvane
