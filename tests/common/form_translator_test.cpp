#include "common/form_translator.h"

#include <algorithm>
#include <filesystem>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "common/process_state.h"
#include "tests/support/fakes.h"

namespace zorvane {
namespace {

using K = LabelledKind;

class FakeThing : public LabelledThing {
  public:
    FakeThing(K kind, std::optional<std::string> text, std::optional<std::string> tip = {},
              std::string tag = "")
        : kind_(kind), text_(std::move(text)), tip_(std::move(tip)), tag_(std::move(tag)) {}
    FakeThing& Add(FakeThing child) {
        children.push_back(std::make_unique<FakeThing>(std::move(child)));
        return *children.back();
    }

    K Kind() const override { return kind_; }
    std::string Tag() const override { return tag_; }
    std::optional<std::string> Text() const override { return text_; }
    void SetText(const std::string& text) override { text_ = text; }
    std::optional<std::string> ToolTip() const override { return tip_; }
    void SetToolTip(const std::string& tip) override { tip_ = tip; }
    std::optional<std::string> Font() const override { return font; }
    void SetFont(const std::string& name) override { font = name; }
    void SetCharset(int number) override { charset = number; }
    void ForEachChild(const std::function<void(LabelledThing&)>& visit) override {
        for (const auto& child : children)
            visit(*child);
    }

    std::optional<std::string> font;
    int charset = 0;
    std::vector<std::unique_ptr<FakeThing>> children;

  private:
    K kind_;
    std::optional<std::string> text_;
    std::optional<std::string> tip_;
    std::string tag_;
};

class FakeFonts : public InstalledFonts {
  public:
    bool IsFontAvailable(const std::string& font) const override {
        ++tests;
        return ("," + available + ",").find("," + font + ",") != std::string::npos;
    }
    bool HasMSSansSerif() const override { return bitmap; }
    std::string available = "Tahoma";  // parted by commas
    bool bitmap = false;
    mutable int tests = 0;
};

class FormTest : public ::testing::Test {
  protected:
    FormTest() : process(fakes.platform) {
        std::filesystem::create_directories(
            fakes.folder.Path("26/Tarnwick, Inc/Zorvane/Languages"));
        fakes.folder.Write(kFile, "\"text\",\"Wort\"\r\n\"tip\",\"Rat\"\r\n");
        process.settings->Write("Language", "Language_Code", "German");
        InitializeTranslator(process);
    }
    void Translate(LabelledThing& form) { TranslateForm(process.translator, fonts, form); }

    static constexpr const char* kFile = "26/Tarnwick, Inc/Zorvane/Languages/German-Zorvane.txt";
    FakePlatform fakes;
    ProcessState process;
    FakeFonts fonts;
};

struct KindCase {
    const char* name;
    K kind;
    const char* tag;
    bool text, tip;
};
TEST_F(FormTest, TranslatesWhatAThingOfItsKindShows) {
    const KindCase rows[] = {
        {"form", K::Form, "", true, false},
        {"form with tag", K::Form, kTranslateFalse, true, false},
        {"tab book", K::TabBook, "", false, true},
        {"its page", K::TabBookPage, "", true, false},
        {"tab strip", K::TabStrip, "", false, false},
        {"its page", K::TabStripPage, "", true, true},
        {"tool bar", K::ToolBar, "", false, false},
        {"its button", K::ToolBarButton, "", true, true},
        {"its menu", K::ButtonMenu, "", true, false},
        {"status bar", K::StatusBar, "", false, true},
        {"its panel", K::StatusPanel, "", true, true},
        {"text box", K::TextBox, "", true, true},
        {"protected text box", K::TextBox, kTranslateFalse, false, true},
        {"menu", K::Menu, "", true, false},
        {"protected menu", K::Menu, kTranslateFalse, false, false},
        {"button", K::CommandButton, "", true, true},
        {"button with the tag", K::CommandButton, kTranslateFalse, true, true},
        {"label", K::Caption, "", true, true},
        {"protected label", K::Caption, kTranslateFalse, false, true},
        {"label with another tag", K::Caption, "translatefalse", true, true},
        {"list", K::Filled, "", false, true},
        {"timer", K::Other, "", false, false},
    };
    for (const KindCase& row : rows) {
        SCOPED_TRACE(row.name);
        FakeThing thing(row.kind, "text", "tip", row.tag);
        Translate(thing);
        EXPECT_EQ(thing.Text(), row.text ? "Wort" : "text");
        EXPECT_EQ(thing.ToolTip(), row.tip ? "Rat" : "tip");
    }
}

TEST_F(FormTest, AsksForWordsInTheOrderOfTheWindow) {
    FakeThing form(K::Form, "Compare");
    FakeThing& menu = form.Add({K::Menu, "File"});
    menu.Add({K::Menu, "Open"});
    menu.Add({K::Menu, "-"});
    FakeThing& bar = form.Add({K::ToolBar, std::nullopt, "never"});
    FakeThing& button = bar.Add({K::ToolBarButton, "Go", "Goes"});
    button.Add({K::ButtonMenu, "Go far"});
    bar.Add({K::ToolBarButton, "-", ""});
    form.Add({K::CommandButton, "Done", "Ends it"});
    FakeThing& box = form.Add({K::Other, "never"});
    box.Add({K::Caption, "Inside", "Deep"});
    FakeThing& book = form.Add({K::TabBook, std::nullopt, "Book"});
    book.Add({K::TabBookPage, "Page"});
    const std::string before = fakes.folder.Read(kFile);
    Translate(form);
    Translate(form);
    std::string grown = fakes.folder.Read(kFile).substr(before.size());
    std::replace(grown.begin(), grown.end(), '\r', ' ');
    EXPECT_EQ(grown,
              "\"Compare\" \n\"File\" \n\"Open\" \n\"Go\" \n\"Go far\" \n\"Goes\" \n\"Ends it\" "
              "\n\"Done\" \n\"Inside\" \n\"Deep\" \n\"Page\" \n\"Book\" \n");
}

struct FontRow {
    const char* name;
    const char* language;
    std::int32_t locale;
    const char* language_font;
    const char* available;
    bool bitmap;
    const char* font;
    const char* becomes;
    int charset;
};
TEST_F(FormTest, FixesFonts) {
    const FontRow rows[] = {
        {"as it is", "German", 1031, "", "Tahoma", false, "Tahoma", "Tahoma", 0},
        {"the language's", "German", 1031, "Serif", "Tahoma", false, "Arial", "Serif", 0},
        {"the same in Japan", "Japanese", 1041, "Serif", "MS UI Gothic", false, "Arial", "Serif",
         128},
        {"Japanese", "Japanese", 1041, "", "MS UI Gothic", false, "Arial", "MS UI Gothic", 128},
        {"Japanese without its font", "Japanese", 1041, "", "", false, "Arial", "Arial", 128},
        {"English in Japan", "English", 1041, "", "MS UI Gothic,Tahoma", false, "Tahoma", "Tahoma",
         0},
        {"Japanese elsewhere", "Japanese", 1033, "", "MS UI Gothic", false, "Arial", "Arial", 0},
        {"no Tahoma, bitmap", "English", 1033, "", "Microsoft Sans Serif", true, "Tahoma",
         "MS Sans Serif", 0},
        {"no Tahoma", "English", 1033, "", "Microsoft Sans Serif", false, "Tahoma",
         "Microsoft Sans Serif", 0},
        {"no Tahoma, nothing", "English", 1033, "", "", false, "Tahoma", "MS Shell Dlg", 0},
        {"another font", "English", 1033, "", "", false, "Arial", "Arial", 0},
    };
    for (const FontRow& row : rows) {
        SCOPED_TRACE(row.name);
        process.translator.gsLanguage = row.language;
        process.translator.gsLanguageFont = row.language_font;
        process.translator.glLocaleID = row.locale;
        fonts.available = row.available;
        fonts.bitmap = row.bitmap;
        FakeThing form(K::Form, "text");
        form.font = "Tahoma";
        FakeThing& label = form.Add({K::Caption, "text"});
        label.font = row.font;
        FakeThing& timer = form.Add({K::Other, std::nullopt});
        Translate(form);
        EXPECT_EQ(label.font, row.becomes);
        EXPECT_EQ(label.charset, row.charset);
        EXPECT_EQ(form.font, "Tahoma") << "of controls only";
        EXPECT_EQ(timer.font, std::nullopt);
    }
}

TEST_F(FormTest, TestsFontsOnceForAForm) {
    FakeThing form(K::Form, "text");
    for (int i = 0; i < 50; ++i)
        form.Add({K::Caption, "text"}).font = "Tahoma";
    Translate(form);
    EXPECT_LE(fonts.tests, 3);
}

}  // namespace
}  // namespace zorvane
