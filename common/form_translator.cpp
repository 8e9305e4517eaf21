#include "common/form_translator.h"

#include "common/translator.h"

namespace zorvane {
namespace {

constexpr const char* kSeparator = "-";
constexpr std::int32_t kJapanese = 1041;
constexpr int kShiftJis = 128;

enum class TextRule { Never, Always, UnlessSeparator, UnlessTagged, UnlessEither };
enum class ToolTipRule { Never, BeforeText, AfterText, AfterChildren };

struct KindRow {
    LabelledKind kind;
    TextRule text;
    ToolTipRule tool_tip;
};
// The order in which the words are asked for is the order in which a language file grows.
constexpr KindRow kKinds[] = {
    {LabelledKind::Form, TextRule::Always, ToolTipRule::Never},
    {LabelledKind::TabBook, TextRule::Never, ToolTipRule::AfterChildren},
    {LabelledKind::TabBookPage, TextRule::Always, ToolTipRule::Never},
    {LabelledKind::TabStrip, TextRule::Never, ToolTipRule::Never},
    {LabelledKind::TabStripPage, TextRule::Always, ToolTipRule::AfterText},
    {LabelledKind::ToolBar, TextRule::Never, ToolTipRule::Never},
    {LabelledKind::ToolBarButton, TextRule::UnlessSeparator, ToolTipRule::AfterChildren},
    {LabelledKind::ButtonMenu, TextRule::Always, ToolTipRule::Never},
    {LabelledKind::StatusBar, TextRule::Never, ToolTipRule::AfterChildren},
    {LabelledKind::StatusPanel, TextRule::Always, ToolTipRule::AfterText},
    {LabelledKind::TextBox, TextRule::UnlessTagged, ToolTipRule::AfterText},
    {LabelledKind::Menu, TextRule::UnlessEither, ToolTipRule::Never},
    {LabelledKind::CommandButton, TextRule::Always, ToolTipRule::BeforeText},
    {LabelledKind::Caption, TextRule::UnlessTagged, ToolTipRule::AfterText},
    {LabelledKind::Filled, TextRule::Never, ToolTipRule::AfterText},
    {LabelledKind::Other, TextRule::Never, ToolTipRule::Never},
};

const KindRow& RowOf(LabelledKind kind) {
    for (const KindRow& row : kKinds) {
        if (row.kind == kind)
            return row;
    }
    return RowOf(LabelledKind::Other);
}

bool IsTranslated(TextRule rule, const std::string& text, const std::string& tag) {
    const bool separator = text == kSeparator;
    const bool tagged = tag == kTranslateFalse;
    switch (rule) {
        case TextRule::Always:
            return true;
        case TextRule::UnlessSeparator:
            return !separator;
        case TextRule::UnlessTagged:
            return !tagged;
        case TextRule::UnlessEither:
            return !separator && !tagged;
        case TextRule::Never:
            break;
    }
    return false;
}

class FormWalk {
  public:
    FormWalk(modTranslator& translator, const InstalledFonts& fonts)
        : translator_(translator),
          japanese_(translator.gsLanguage != kEnglish && translator.glLocaleID == kJapanese) {
        if (japanese_ && fonts.IsFontAvailable("MS UI Gothic"))
            japanese_font_ = "MS UI Gothic";
        if (!fonts.IsFontAvailable("Tahoma"))
            for_tahoma_ = fonts.HasMSSansSerif()                          ? "MS Sans Serif"
                          : fonts.IsFontAvailable("Microsoft Sans Serif") ? "Microsoft Sans Serif"
                                                                          : "MS Shell Dlg";
    }

    void Visit(LabelledThing& thing) {
        const KindRow& row = RowOf(thing.Kind());
        if (row.tool_tip == ToolTipRule::BeforeText)
            TranslateToolTip(thing);
        if (const auto text = thing.Text(); text && IsTranslated(row.text, *text, thing.Tag()))
            Set(thing, *text, [&](const std::string& words) { thing.SetText(words); });
        if (row.tool_tip == ToolTipRule::AfterText)
            TranslateToolTip(thing);
        if (row.kind != LabelledKind::Form)
            ChangeFont(thing);
        thing.ForEachChild([this](LabelledThing& child) { Visit(child); });
        if (row.tool_tip == ToolTipRule::AfterChildren)
            TranslateToolTip(thing);
    }

  private:
    void TranslateToolTip(LabelledThing& thing) {
        if (const auto tool_tip = thing.ToolTip())
            Set(thing, *tool_tip, [&](const std::string& words) { thing.SetToolTip(words); });
    }

    // A text that stays is not set again: some things tell of it as of a user's edit.
    template <typename Setter>
    void Set(const LabelledThing& thing, const std::string& english, const Setter& set) {
        const std::string words = translator_.Translate(english);
        if (words != english || thing.WasTranslated())
            set(words);
    }

    void ChangeFont(LabelledThing& thing) const {
        const auto font = thing.Font();
        if (!font)
            return;
        if (!translator_.gsLanguageFont.empty())
            thing.SetFont(translator_.gsLanguageFont);
        else if (!japanese_font_.empty())
            thing.SetFont(japanese_font_);
        else if (*font == "Tahoma" && !for_tahoma_.empty())
            thing.SetFont(for_tahoma_);
        if (japanese_)
            thing.SetCharset(kShiftJis);
    }

    modTranslator& translator_;
    bool japanese_;              // a language of the user's on a Japanese system
    std::string japanese_font_;  // empty: as it is
    std::string for_tahoma_;     // empty: Tahoma is there
};

}  // namespace

void TranslateForm(modTranslator& translator, const InstalledFonts& fonts, LabelledThing& form) {
    FormWalk(translator, fonts).Visit(form);
}

}  // namespace zorvane
