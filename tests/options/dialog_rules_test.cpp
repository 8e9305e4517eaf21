// What the dialogs of file types hold and allow, without their windows.
#include <gtest/gtest.h>

#include "options/pdf_controls.h"
#include "options/recent_items.h"
#include "options/text_extensions_dialog.h"

namespace zorvane {
namespace {

clsMRU ListOf(IniProfile& file, const char* items) {
    clsMRU list;
    list.Setup(15, file, "x", items);
    return list;
}

TEST(TextExtensions, AcceptsWhatIsAnExtension) {
    const auto file = MakeMemoryIniProfile();
    const frmAdvancedOptionsTEXT dialog(ListOf(*file, "txt,Log"));
    const struct {
        const char* typed;
        bool valid;
        const char* left;
    } kRows[] = {{"md", true, "md"},    {"  md ", true, "md"},
                 {"m-d_", true, "md"},  {"7z", true, "7z"},
                 {"", false, ""},       {" ", false, ""},
                 {"-_", false, ""},     {"c++", false, "c++"},
                 {"m d", false, "m d"}, {"\xC3\xA4", false, "\xC3\xA4"},
                 {"LOG", false, "LOG"}, {"t_xt", false, "txt"}};
    for (const auto& row : kRows) {
        SCOPED_TRACE(row.typed);
        std::string text = row.typed;
        EXPECT_EQ(dialog.bIsValidExtension(text), row.valid);
        EXPECT_EQ(text, row.left);
    }
}

TEST(TextExtensions, OffersWhatTheTypedTextAllows) {
    const auto file = MakeMemoryIniProfile();
    frmAdvancedOptionsTEXT dialog(ListOf(*file, "txt,log"));
    EXPECT_FALSE(dialog.CanAdd() || dialog.CanDelete()) << "nothing is typed";
    dialog.Text = "LOG";
    EXPECT_EQ(dialog.Selected(), 1u);
    EXPECT_FALSE(dialog.CanAdd());
    EXPECT_TRUE(dialog.CanDelete());
    dialog.Text = "md";
    EXPECT_TRUE(dialog.CanAdd());
    EXPECT_FALSE(dialog.CanDelete());
    for (int at = 0; dialog.Entries().size() < 15; ++at) {
        dialog.Text = "e" + std::to_string(at);
        ASSERT_TRUE(dialog.cmdAdd_Click());
    }
    dialog.Text = "md";
    EXPECT_FALSE(dialog.CanAdd()) << "the list is full";
}

TEST(TextExtensions, ReachTheListByApplyAloneAndNeverLoseTheLastOne) {
    const auto file = MakeMemoryIniProfile();
    clsMRU list = ListOf(*file, "txt,log");
    frmAdvancedOptionsTEXT dialog(list);
    dialog.cmdApply_Click(list);
    EXPECT_EQ(list.Items(), (std::vector<std::string>{"txt", "log"})) << "nothing changed";
    dialog.Text = "m-d";
    EXPECT_TRUE(dialog.cmdAdd_Click());
    dialog.Text = "TXT";
    EXPECT_TRUE(dialog.cmdDelete_Click());
    EXPECT_EQ(list.Items(), (std::vector<std::string>{"txt", "log"}));
    dialog.cmdApply_Click(list);
    EXPECT_EQ(list.Items(), (std::vector<std::string>{"log", "md"}));
    dialog.Text = "log";
    EXPECT_TRUE(dialog.cmdDelete_Click());
    dialog.Text = "md";
    EXPECT_FALSE(dialog.cmdDelete_Click());
    EXPECT_EQ(dialog.Entries().size(), 1u);
    dialog.RestoreDefaults();
    EXPECT_EQ(dialog.Entries(), (std::vector<std::string>{"txt", "log", "csv"}));
}

TEST(TextExtensions, AddsWhatIsValid) {
    const auto file = MakeMemoryIniProfile();
    clsMRU list = ListOf(*file, "txt");
    frmAdvancedOptionsTEXT dialog(list);
    dialog.Text = "a*b?";
    EXPECT_FALSE(dialog.cmdAdd_Click());
    EXPECT_FALSE(dialog.Changed());
    dialog.Text = "md";
    EXPECT_TRUE(dialog.cmdAdd_Click());
    EXPECT_TRUE(dialog.Changed());
    dialog.cmdApply_Click(list);
    EXPECT_EQ(list.Items(), (std::vector<std::string>{"txt", "md"}));
}

TEST(TextExtensions, AnEmptyListIsShownAsTheDefault) {
    const frmAdvancedOptionsTEXT dialog{clsMRU()};
    EXPECT_EQ(dialog.Entries(), (std::vector<std::string>{"txt", "log", "csv"}));
    EXPECT_FALSE(dialog.Changed());
}

TEST(PdfControls, FollowTheChoicesAboveThem) {
    const struct {
        const char* name;
        bool quick_road;
        std::int32_t method;
        bool range;
        bool tied;
        PdfControls enabled;
    } kRows[] = {
        {"robust, text flow", false, 3, false, true, {true, false, true, false, false, false}},
        {"layout kept", false, 1, false, true, {true, false, true, true, false, false}},
        {"scanned", false, 0, false, true, {true, false, false, false, false, false}},
        {"quick", true, 1, false, true, {false, true, false, false, false, false}},
        {"pages, tied", true, 3, true, true, {false, true, false, false, true, false}},
        {"pages of each", true, 3, true, false, {false, true, false, false, true, true}},
        {"tied off without pages",
         true,
         3,
         false,
         false,
         {false, true, false, false, false, false}},
    };
    for (const auto& row : kRows) {
        SCOPED_TRACE(row.name);
        CompareFilesSettings settings;
        settings.bDoQuickTextExtraction = row.quick_road;
        settings.lBCLConversionMethod = row.method;
        settings.bBCLUsingPageRange = row.range;
        settings.bBCLLockPageRange = row.tied;
        EXPECT_TRUE(PdfControlsOf(settings) == row.enabled);
        settings.lBCLPageFrom = 2;
        settings.lBCLPageTo = 5;
        settings.lBCLPageFromModified = 7;
        TiePages(settings);
        EXPECT_EQ(settings.lBCLPageFromModified, row.tied ? 2 : 7);
        EXPECT_EQ(settings.lBCLPageToModified, row.tied ? 5 : 1);
    }
}

}  // namespace
}  // namespace zorvane
