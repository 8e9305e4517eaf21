// Translates what a window shows: one walk over its labelled things, whatever they are made of.
#pragma once

#include <functional>
#include <optional>
#include <string>

namespace zorvane {

class modTranslator;

/// What decides which words of a thing are translated.
enum class LabelledKind {
    Form,           ///< a window: its caption
    TabBook,        ///< a dialog's tabs, which are its children; its tool tip
    TabBookPage,    ///< its caption alone
    TabStrip,       ///< nothing but its tabs
    TabStripPage,   ///< caption and tool tip
    ToolBar,        ///< nothing but its buttons
    ToolBarButton,  ///< caption, the entries of its menu (its children), tool tip
    ButtonMenu,     ///< an entry of such a menu
    StatusBar,      ///< its panels, then its tool tip
    StatusPanel,    ///< text and tool tip
    TextBox,        ///< text and tool tip
    Menu,           ///< caption
    CommandButton,  ///< tool tip and caption, also under the tag
    Caption,        ///< a label, check box, option button or frame: caption and tool tip
    Filled,         ///< a list, grid, picture, editor or slider: its tool tip alone
    Other           ///< nothing
};

/// In its tag, protects the main text of a text box, a menu entry or a `Caption`: a path, a sample,
/// a number. Its tool tip is translated all the same.
constexpr const char* kTranslateFalse = "TranslateFalse";

/// A window or something in it, made for the walk by who knows the toolkit. A property that a thing
/// lacks is `nullopt`, and its setter is not called.
class LabelledThing {
  public:
    virtual ~LabelledThing() = default;
    virtual LabelledKind Kind() const = 0;
    virtual std::string Tag() const { return {}; }
    virtual std::optional<std::string> Text() const { return std::nullopt; }
    virtual void SetText(const std::string&) {}
    /// What it shows is no more the text that it gives: it was translated before.
    virtual bool WasTranslated() const { return false; }
    virtual std::optional<std::string> ToolTip() const { return std::nullopt; }
    virtual void SetToolTip(const std::string&) {}
    /// The font's name; `nullopt` for what has none of its own.
    virtual std::optional<std::string> Font() const { return std::nullopt; }
    virtual void SetFont(const std::string&) {}
    virtual void SetCharset(int) {}
    /// In the order in which they stand in the window. Whatever lies in a thing is its child; for
    /// tabs, toolbars and status bars those are what they consist of.
    virtual void ForEachChild(const std::function<void(LabelledThing&)>&) {}
};

/// What the walk asks about fonts, once for a form.
class InstalledFonts {
  public:
    virtual ~InstalledFonts() = default;
    virtual bool IsFontAvailable(const std::string& font) const = 0;
    virtual bool HasMSSansSerif() const = 0;  ///< the bitmap font of old systems
};

/// Each text of `form` becomes its translation, and each font the one that the language asks for.
/// Once for a window, when it is loaded and has filled its own captions.
void TranslateForm(modTranslator& translator, const InstalledFonts& fonts, LabelledThing& form);

}  // namespace zorvane
