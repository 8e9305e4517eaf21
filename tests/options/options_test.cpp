#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "options/compare_file_options.h"
#include "options/compare_files_settings.h"
#include "options/marking_styles.h"
#include "options/recent_items.h"

namespace zorvane {
namespace {

constexpr const char* kSection = "1_CompareFile";

TEST(CompareFileOptions, AFreshFileGivesTheDefaults) {
    const auto file = MakeMemoryIniProfile();
    clsCompareFileOptions options;
    EXPECT_EQ(options.sFileOriginal.Data(), "Not Initialized") << "nothing was loaded yet";
    ASSERT_TRUE(options.LoadStateFromFile(*file).ok());
    EXPECT_EQ(options.colOptions().size(), 75U);
    // All that is not false, empty or "1".
    const std::map<std::string, std::string> special = {
        {"sFileOriginal", "Uninitialized"},
        {"sFileModified", "Uninitialized"},
        {"bReloadOnRefresh", "True"},
        {"bModifyOriginalDocuments", "True"},
        {"bOptimizeFileLoading", "True"},
        {"lLoadDelay", "0"},
        {"lLineBracket", "1"},
        {"lPadLength", "20"},
        {"bViewChangeStrikeoutOriginal", "True"},
        {"bViewChangeBoldOriginal", "True"},
        {"lViewChangeBackColorOriginal", "16777215"},
        {"lViewChangeForeColorOriginal", "255"},
        {"bViewChangeUnderlineModified", "True"},
        {"bViewChangeBoldModified", "True"},
        {"lViewChangeBackColorModified", "16777215"},
        {"lViewChangeForeColorModified", "255"},
        {"bViewDeletionStrikeout", "True"},
        {"bViewDeletionBold", "True"},
        {"lViewDeletionBackColor", "16777215"},
        {"lViewDeletionForeColor", "16711680"},
        {"bViewAdditionBold", "True"},
        {"bViewAdditionUnderline", "True"},
        {"lViewAdditionBackColor", "16777215"},
        {"lViewAdditionForeColor", "32768"},
        {"bExcelQuickTextExtraction", "True"},
        {"bExcelAddNewLineBetweenSheets", "True"},
        {"bExcelAddSheetNameBetweenSheets", "True"},
        {"sExcelSheetNumberMaster", "1"},
        {"sExcelSheetNumberSource", "1"},
        {"sExcelRowsMaster", "1"},
        {"sExcelRowsSource", "1"},
        {"sExcelColsMaster", "1"},
        {"sExcelColsSource", "1"},
    };
    std::size_t found = 0;
    for (const OptionValue* option : options.colOptions()) {
        SCOPED_TRACE(option->Name());
        const auto row = special.find(option->Name());
        found += row != special.end() ? 1U : 0U;
        const std::string plain = option->Name().starts_with('b') ? "False" : "";
        EXPECT_EQ(option->ActiveData(), row == special.end() ? plain : row->second);
    }
    EXPECT_EQ(found, special.size());
}

struct BooleanRow {
    const char* text;
    bool loads_as;
};
TEST(OptionValues, AnyTextButFalseIsTrue) {
    const auto file = MakeMemoryIniProfile();
    clsCompareFileOptions options;
    for (const BooleanRow row : {BooleanRow{"FALSE", false},
                                 {"false", false},
                                 {"no", true},
                                 {"0", true},
                                 {"", true},
                                 {"TRUE", true}}) {
        SCOPED_TRACE(row.text);
        file->Write("CompareFileOptions", "bIgnoreCase", row.text);
        ASSERT_TRUE(options.LoadStateFromFile(*file).ok());
        EXPECT_EQ(options.bIgnoreCase.Data(), row.loads_as);
    }
}

TEST(OptionValues, ALongThatIsNoneFailsByName) {
    const auto file = MakeMemoryIniProfile();
    clsCompareFileOptions options;
    file->Write("CompareFileOptions", "lPadLength", "many");
    file->Write("CompareFileOptions", "bHTMLCompareSource", "TRUE");
    const Status status = options.LoadStateFromFile(*file);
    ASSERT_FALSE(status.ok());
    EXPECT_NE(status.failure().reason.find("lPadLength=many"), std::string::npos);
    EXPECT_EQ(options.lPadLength.Data(), 20);
    EXPECT_TRUE(options.bHTMLCompareSource.Data()) << "the others are loaded all the same";
}

TEST(OptionValues, SaveAndLoadIsTheIdentity) {
    const auto file = MakeMemoryIniProfile();
    clsCompareFileOptions options;
    options.sSectionName = kSection;
    ASSERT_TRUE(options.LoadStateFromFile(*file).ok());
    options.bIgnoreCase.SetData(true);
    options.lLineBracket.SetData(-7);
    options.sIgnoreRegularExpression.SetData("a@@b=c;");
    options.SaveStateToFile(*file);
    EXPECT_EQ(file->Read(kSection, "bIgnoreCase", ""), "TRUE");
    EXPECT_EQ(file->Read(kSection, "bQuickCompare", ""), "FALSE");
    clsCompareFileOptions again;
    again.sSectionName = kSection;
    ASSERT_TRUE(again.LoadStateFromFile(*file).ok());
    for (std::size_t i = 0; i < options.colOptions().size(); ++i)
        EXPECT_EQ(again.colOptions()[i]->ActiveData(), options.colOptions()[i]->ActiveData());
}

struct SetRow {
    const char* name;
    const char* text;
    bool good;
    const char* data;
};
TEST(OptionSet, SetsByName) {
    const SetRow rows[] = {
        {"bIgnoreCase", "yes", true, "True"},     {"bIgnoreCase", "0", true, "False"},
        {"bIgnoreCase", "maybe", false, ""},      {"lPadLength", "-3", true, "-3"},
        {"lPadLength", "3x", false, ""},          {"lPadLength", "99999999999", false, ""},
        {"sExcelRowsMaster", "1-5", true, "1-5"}, {"bignorecase", "yes", false, ""},
    };
    for (const SetRow& row : rows) {
        SCOPED_TRACE(std::string(row.name) + "=" + row.text);
        clsCompareFileOptions options;
        EXPECT_EQ(options.SetByName(row.name, row.text).ok(), row.good);
        for (const OptionValue* option : options.colOptions()) {
            if (!row.good || option->Name() != row.name)
                continue;
            EXPECT_EQ(option->ActiveData(), row.data);
        }
    }
}

TEST(Options, CopiesAreValues) {
    const auto file = MakeMemoryIniProfile();
    clsCompareFileOptions options;
    ASSERT_TRUE(options.LoadStateFromFile(*file).ok());
    options.sSectionName = kSection;
    clsCompareFileOptions copy = options;
    EXPECT_EQ(copy, options);
    EXPECT_EQ(copy.sSectionName, kSection);
    ASSERT_TRUE(copy.SetByName("bIgnoreCase", "yes").ok());
    EXPECT_FALSE(copy.SetByName("lPadLength", "many").ok());
    EXPECT_FALSE(options.bIgnoreCase.Data());
    EXPECT_FALSE(copy == options);
    options = copy;
    EXPECT_TRUE(options.bIgnoreCase.Data());
}

TEST(Options, AnyOptionMakesACopyAnother) {
    const auto file = MakeMemoryIniProfile();
    clsCompareFileOptions options;
    ASSERT_TRUE(options.LoadStateFromFile(*file).ok());
    for (std::size_t i = 0; i < options.colOptions().size(); ++i) {
        clsCompareFileOptions copy = options;
        OptionValue& option = *copy.colOptions()[i];
        SCOPED_TRACE(option.Name());
        const std::string other = option.ActiveData() == "True" ? "no" : "1";
        ASSERT_TRUE(option.SetFromText(option.ActiveData() == other ? "2" : other).ok());
        EXPECT_FALSE(copy == options);
        const clsCompareFileOptions again = copy;
        EXPECT_EQ(again.colOptions()[i]->ActiveData(), option.ActiveData());
    }
}

TEST(MarkingStyles, ComeFromTheirFourRows) {
    const auto file = MakeMemoryIniProfile();
    clsCompareFileOptions options;
    ASSERT_TRUE(options.LoadStateFromFile(*file).ok());
    const MarkStyle addition{32768, 0xFFFFFF, true, true, false, false};
    const MarkStyle deletion{0xFF0000, 0xFFFFFF, true, false, true, false};
    const MarkStyle modified{255, 0xFFFFFF, true, true, false, false};
    EXPECT_EQ(StyleFor(options, Mark::Addition), addition);
    EXPECT_EQ(StyleFor(options, Mark::Deletion), deletion);
    EXPECT_EQ(StyleFor(options, Mark::ChangeModified), modified);
    EXPECT_EQ(SubParagraphStyleFor(options, Mark::Deletion), deletion);
    options.bShowSubParagraphChangesSimilarly.SetData(true);
    EXPECT_EQ(SubParagraphStyleFor(options, Mark::Deletion), modified);
    EXPECT_EQ(SubParagraphStyleFor(options, Mark::ChangeOriginal),
              StyleFor(options, Mark::ChangeOriginal));
}

TEST(CompareFilesSettings, KnowsTwoScopes) {
    const auto file = MakeMemoryIniProfile();
    CompareFilesSettings settings = DefaultCompareFilesSettings("data");
    EXPECT_EQ(settings.msgReportFileDOC_MD, "data\\ZorvaneReport.DOC");
    settings.bBCLDetectHeader = true;
    settings.dFontSize = 10.5;
    settings.sFontName = "Mono";
    settings.rbReloadOnRefresh = false;
    SaveCompareFilesSettings(*file, "1_CompareFile", settings);
    CompareFilesSettings other = DefaultCompareFilesSettings("data");
    ReadCompareFilesSettings(*file, "2_CompareFile", other);
    EXPECT_TRUE(other.bBCLDetectHeader) << "shared by all viewers";
    EXPECT_EQ(other.sFontName, "Courier");
    CompareFilesSettings same = DefaultCompareFilesSettings("data");
    ReadCompareFilesSettings(*file, "1_CompareFile", same);
    EXPECT_TRUE(same.rbReloadOnRefresh) << "written, never read";
    same.rbReloadOnRefresh = false;
    EXPECT_EQ(same, settings);
}

TEST(CompareFilesSettings, ReadsAnotherLocaleAndRefusesAnUnknownType) {
    const auto file = MakeMemoryIniProfile();
    file->Write(kSection, "dFontSize", "10,5");
    file->Write(kSection, "mlReportDefaultFileType_MD", "9");
    file->Write(kSection, "lDupMaxDeltaX", "x");
    CompareFilesSettings settings = DefaultCompareFilesSettings("");
    ReadCompareFilesSettings(*file, kSection, settings);
    EXPECT_EQ(settings.dFontSize, 10.5);
    EXPECT_EQ(settings.mlReportDefaultFileType_MD, 4);
    EXPECT_EQ(settings.lDupMaxDeltaX, 0);
}

TEST(CompareFilesSettings, BringsIntoRangeWhatNoWindowCanShow) {
    struct Row {
        const char* font;
        double font_read;
        const char* ratio;
        double ratio_read;
        const char* width;
        std::int32_t width_read;
    };
    for (const Row& row :
         {Row{"1e300", 10, "0.25", 0.25, "1", 1}, Row{"-3", 10, "12345", 12345, "0", 12000},
          Row{"0.9", 10, "-1", 12345, "-7", 12000}, Row{"400", 400, "2", 12345, "9", 9}}) {
        SCOPED_TRACE(row.font);
        const auto file = MakeMemoryIniProfile();
        file->Write(kSection, "dFontSize", row.font);
        file->Write(kSection, "dRatioTopEditor", row.ratio);
        file->Write(kSection, "Width", row.width);
        CompareFilesSettings settings;
        ReadCompareFilesSettings(*file, kSection, settings);
        EXPECT_EQ(settings.dFontSize, row.font_read);
        EXPECT_EQ(settings.dRatioTopEditor, row.ratio_read);
        EXPECT_EQ(settings.Width, row.width_read);
    }
}

TEST(CompareFilesSettings, SaveAPlaceOfAWindowOfNormalSizeOnly) {
    struct Row {
        const char* name;
        std::int32_t state;
        WindowPlace place;
        const char* saved_state;
        const char* saved_left;
    };
    for (const Row& row : {Row{"normal", 0, WindowPlace::Save, "0", "33"},
                           Row{"maximised", 2, WindowPlace::Save, "2", "none"},
                           Row{"stands in for a dialog", 0, WindowPlace::Leave, "none", "none"}}) {
        SCOPED_TRACE(row.name);
        const auto file = MakeMemoryIniProfile();
        CompareFilesSettings settings;
        settings.WindowState = row.state;
        settings.Left = 33;
        SaveCompareFilesSettings(*file, kSection, settings, row.place);
        EXPECT_EQ(file->Read(kSection, "WindowState", "none"), row.saved_state);
        EXPECT_EQ(file->Read(kSection, "Left", "none"), row.saved_left);
        EXPECT_EQ(file->Read(kSection, "sFontName", "none"), "Courier");
    }
}

TEST(CompareFilesSettings, LeaveThePasswordsOfSwitchesOut) {
    const auto file = MakeMemoryIniProfile();
    CompareFilesSettings settings;
    settings.sBCLPasswordUser = "kept";
    SaveCompareFilesSettings(*file, kSection, settings);
    settings.sBCLPasswordUser = "of a switch";
    settings.keeps_pdf_passwords = false;
    SaveCompareFilesSettings(*file, kSection, settings);
    EXPECT_EQ(file->Read(kSection, "sBCLPasswordUser", "none"), "kept");
}

TEST(CompareFilesView, ComesBackWithTheSettings) {
    const auto file = MakeMemoryIniProfile();
    CompareFilesSettings settings;
    EXPECT_TRUE(settings.view.KeepParagraphsOpposite) << "on at first";
    settings.view.KeepParagraphsOpposite = false;
    settings.view.Layout = PaneLayout::Result;
    settings.view.RatioColumns = 0.3;
    settings.view.ZoomPercent = 150;
    SaveCompareFilesSettings(*file, kSection, settings);
    EXPECT_EQ(file->Read("1_CompareFileView", "KeepParagraphsOpposite", ""), "FALSE");
    EXPECT_EQ(file->Read(kSection, "ZoomPercent", "none"), "none") << "in a section of its own";
    CompareFilesSettings again;
    ReadCompareFilesSettings(*file, kSection, again);
    EXPECT_EQ(again, settings);
}

TEST(CompareFilesView, BringsBadValuesIntoRange) {
    const auto file = MakeMemoryIniProfile();
    for (const auto& [key, text] : {std::pair{"ZoomPercent", "-50"},
                                    {"LineLength", "1"},
                                    {"FoldFromParagraphs", "0"},
                                    {"PanelWidth", "1e9"},
                                    {"RatioColumns", "-4"},
                                    {"Layout", "7"},
                                    {"OptionsTab", "99999999999"}})
        file->Write("1_CompareFileView", key, text);
    CompareFilesView view;
    ReadCompareFilesView(*file, kSection, view);
    EXPECT_EQ(view.ZoomPercent, 100) << "no zoom at all";
    EXPECT_EQ(view.LineLength, 200);
    EXPECT_EQ(view.FoldFromParagraphs, 4);
    EXPECT_EQ(view.PanelWidth, 2000);
    EXPECT_EQ(view.RatioColumns, 0.1);
    EXPECT_EQ(view.Layout, PaneLayout::EditorsAndResult);
    EXPECT_EQ(view.OptionsTab, 0) << "no number of ours";
}

TEST(AdvancedActions, SetTheirSetting) {
    CompareFilesSettings settings;
    EXPECT_TRUE(ApplyAdvancedAction(3, settings));
    EXPECT_EQ(settings.lBCLDocumentType, 3);
    EXPECT_TRUE(ApplyAdvancedAction(9, settings));
    EXPECT_EQ(settings.lBCLConversionMethod, 0);
    EXPECT_TRUE(ApplyAdvancedAction(11, settings));
    EXPECT_FALSE(settings.bRemoveHiddenText);
    const CompareFilesSettings before = settings;
    EXPECT_FALSE(ApplyAdvancedAction(4, settings));
    EXPECT_EQ(settings, before);
}

class MruTest : public ::testing::Test {
  protected:
    std::unique_ptr<IniProfile> file_ = MakeMemoryIniProfile();
    clsMRU list_;
    void Setup(clsMRU& list, std::int32_t most, std::string_view initial) {
        list.Setup(most, *file_, "pre", initial);
    }
    using Items = std::vector<std::string>;
};

TEST_F(MruTest, DropsTheOldestAndMovesTheUsed) {
    Setup(list_, 3, "-1");
    EXPECT_EQ(list_.Count(), 0);
    for (const char* item : {"a", "b", "c", "", "A"})
        list_.AddUniqueItemToCollection(item);
    EXPECT_EQ(list_.Items(), (Items{"b", "c", "A"})) << "another case replaces the old spelling";
    list_.AddUniqueItemToCollection("d");
    EXPECT_EQ(list_.Items(), (Items{"c", "A", "d"}));
    EXPECT_TRUE(list_.bItemExistsInMRU("a", true));
    EXPECT_FALSE(list_.bItemExistsInMRU("a", false));
}

TEST_F(MruTest, ComesBackReversed) {
    Setup(list_, 5, "-1");
    for (const char* item : {"a", "b", "c"})
        list_.AddUniqueItemToCollection(item);
    list_.ShutDown();
    clsMRU again;
    Setup(again, 5, "x,y");
    EXPECT_EQ(again.Items(), (Items{"c", "b", "a"}));
    again.ClearAllItemsInList();
    again.ShutDown();
    EXPECT_EQ(file_->Read("pre", "pre1", ""), "MRU_DONE");
    EXPECT_EQ(file_->Read("pre", "pre2", ""), "b") << "older keys stay behind the end";
    clsMRU empty;
    Setup(empty, 5, "-1");
    EXPECT_EQ(empty.Count(), 0);
}

TEST_F(MruTest, SeedsAreWrittenOnlyAfterAChange) {
    Setup(list_, 5, "txt,log");
    EXPECT_EQ(list_.Items(), (Items{"txt", "log"}));
    list_.ShutDown();
    EXPECT_EQ(file_->Read("pre", "pre1", "none"), "none");
}

TEST_F(MruTest, HistoryOffTouchesNothing) {
    file_->Write("pre", "pre1", "kept");
    list_.bHistoryOff = true;
    Setup(list_, 5, "-1");
    EXPECT_EQ(list_.Count(), 0);
    list_.AddUniqueItemToCollection("new");
    list_.ShutDown();
    EXPECT_EQ(file_->Read("pre", "pre1", ""), "kept");
}

}  // namespace
}  // namespace zorvane
