#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "options/compare_folder_options.h"
#include "options/compare_folders_settings.h"
#include "options/find_settings.h"

namespace zorvane {
namespace {

using Texts = std::vector<std::string>;

TEST(CompareFolderOptions, AFreshFileGivesTheDefaults) {
    const auto file = MakeMemoryIniProfile();
    clsCompareFolderOptions options("data");
    ASSERT_TRUE(options.LoadStateFromFile(*file).ok());
    const std::pair<const char*, const char*> rows[] = {
        {"sFolderOriginal", "C:\\"},          {"sFolderModified", "C:\\"},
        {"sReportFolder", "data\\Reports\\"}, {"sExtension", "*.*"},
        {"bBeepWhenDone", "False"},           {"bStreamFindings", "True"},
        {"bContentCompare", "True"},          {"bContentCompareText", "False"},
        {"bShowOnlyInMaster", "True"},        {"bShowOnlyInSource", "True"},
        {"bShowSameInBothPlaces", "True"},    {"bShowDifferentInBothPlaces", "True"},
        {"bIgnoreDateDifferences", "False"},  {"bDoSubDirectories", "True"},
        {"bShowDateOnlyDifferent", "True"},   {"bCreateReport", "False"},
    };
    ASSERT_EQ(options.colOptions().size(), std::size(rows));
    for (std::size_t i = 0; i < std::size(rows); ++i) {
        EXPECT_EQ(options.colOptions()[i]->Name(), rows[i].first);
        EXPECT_EQ(options.colOptions()[i]->ActiveData(), rows[i].second) << rows[i].first;
    }
    clsCompareFolderOptions copy = options;
    EXPECT_EQ(copy, options);
    copy.sReportFolder.SetData("else");
    EXPECT_FALSE(copy == options);
    ASSERT_TRUE(copy.LoadStateFromFile(*file).ok());
    EXPECT_EQ(copy.sReportFolder.Data(), "data\\Reports\\") << "the default comes along";
}

struct ControlsRow {
    const char* name;
    bool contents, different, text, report;
    FolderOptionControls controls;
};
TEST(CompareFolderOptions, EnableWhatDependsOnThem) {
    const ControlsRow rows[] = {
        {"nothing", false, false, false, false, {}},
        {"bytes alone", true, false, false, false, {.frameFileContent = true}},
        {"text without the different ones", false, false, true, true, {}},
        {"no text", false, true, false, true, {.cbCompareFileTextualContents = true}},
        {"text", false, true, true, false, {false, true, true, true, true, false, false, false}},
        {"all", true, true, true, true, {true, true, true, true, true, true, true, true}},
    };
    for (const ControlsRow& row : rows) {
        SCOPED_TRACE(row.name);
        clsCompareFolderOptions options("");
        options.bContentCompare.SetData(row.contents);
        options.bShowDifferentInBothPlaces.SetData(row.different);
        options.bContentCompareText.SetData(row.text);
        options.bCreateReport.SetData(row.report);
        EXPECT_TRUE(ControlsOf(options) == row.controls);
    }
}

TEST(CompareFolderOptions, WhatDependsOnABoxGoesWithIt) {
    for (const auto untick : {SetShowDifferentInBothPlaces, SetContentCompareText}) {
        clsCompareFolderOptions options("");
        SetShowDifferentInBothPlaces(options, true);
        SetContentCompareText(options, true);
        options.bCreateReport.SetData(true);
        untick(options, false);
        untick(options, true);
        EXPECT_FALSE(options.bCreateReport.Data());
        EXPECT_EQ(options.bContentCompareText.Data(), untick == SetContentCompareText);
    }
}

TEST(CompareFoldersSettings, ComeBackUnlessThePlaceIsSomebodyElses) {
    const auto file = MakeMemoryIniProfile();
    CompareFoldersSettings settings = DefaultCompareFoldersSettings("data", false);
    EXPECT_EQ(settings.txtDefaultReportCSV, "data\\Reports\\ZorvaneReport.CSV");
    EXPECT_EQ(DefaultCompareFoldersSettings("", true).FontName, "MS UI Gothic");
    settings.Left = 17;
    settings.Height = 18;
    settings.mlCol5Width_CD = 19;
    settings.ShowLegend = false;
    settings.FontSize = 9.5;
    SaveCompareFoldersSettings(*file, "1_CompareDir", settings);
    CompareFoldersSettings again = DefaultCompareFoldersSettings("data", false);
    ReadCompareFoldersSettings(*file, "1_CompareDir", ReadPlace::No, again);
    EXPECT_EQ(std::exchange(again.Left, 17), 0);
    EXPECT_EQ(again, settings);
}

TEST(FindSettings, ComeBack) {
    const auto file = MakeMemoryIniProfile();
    FindSettings settings = DefaultFindSettings("data");
    EXPECT_EQ(settings.txtDefaultReportCSV, "data\\Reports\\FindTextReport.CSV");
    settings.dDividerSecondaryRatio = 0.25;
    settings.fgFilesColWidth[4] = 1;
    settings.fgErrorMessagesColWidth[1] = 2;
    settings.cbBeepWhenDone = true;
    SaveFindSettings(*file, "1_FindText", settings);
    EXPECT_EQ(file->Read("1_FindText", "fgFiles.ColWidth(4)", ""), "1");
    EXPECT_EQ(file->Read("1_FindText", "FontSize", ""), "8");
    FindSettings again = DefaultFindSettings("data");
    ReadFindSettings(*file, "1_FindText", again);
    EXPECT_EQ(again, settings);
}

TEST(FindSettings, ReadOddRatios) {
    const std::pair<const char*, double> rows[] = {{"0,4", 0.4},  {"12345", 0.85}, {"half", 0.85},
                                                   {"nan", 0.85}, {"1", 0.85},     {"-0.5", 0.85},
                                                   {"0", 0.85}};
    for (const auto& [text, ratio] : rows) {
        const auto file = MakeMemoryIniProfile();
        file->Write("1_FindText", "dDividerPrimaryRatioLast", text);
        FindSettings settings;
        ReadFindSettings(*file, "1_FindText", settings);
        EXPECT_EQ(settings.dDividerPrimaryRatioLast, ratio) << text;
    }
}

TEST(FontSize, IsTheUsualOneWhereNoWindowCanShowIt) {
    for (const char* text : {"-3", "0", "1e300", "inf"}) {
        SCOPED_TRACE(text);
        const auto file = MakeMemoryIniProfile();
        file->Write("V", "FontSize", text);
        FindSettings find;
        ReadFindSettings(*file, "V", find);
        EXPECT_EQ(find.FontSize, 8);
        CompareFoldersSettings folders;
        ReadCompareFoldersSettings(*file, "V", ReadPlace::Yes, folders);
        EXPECT_EQ(folders.FontSize, 10);
    }
}

TEST(FindHistory, KeepsTheLastTwentyInOrder) {
    const auto file = MakeMemoryIniProfile();
    Texts items;
    for (int i = 1; i <= 25; ++i)
        AddUniqueItemToCollection(items, "word " + std::to_string(i));
    AddUniqueItemToCollection(items, "");
    AddUniqueItemToCollection(items, "WORD 24");
    EXPECT_EQ(items.size(), 25U);
    WriteCollectionToIniFile(*file, kSearchForHistory, items);
    EXPECT_EQ(file->Read("SearchFor", "SearchFor20", ""), "WORD 24");
    Texts again;
    ReadIniFileIntoCollection(*file, kSearchForHistory, again);
    EXPECT_EQ(again, Texts(items.end() - 20, items.end()));
}

TEST(FindHistory, LeavesKeysBelowAShorterList) {
    const auto file = MakeMemoryIniProfile();
    WriteCollectionToIniFile(*file, kFileExtHistory, {"a", "b", "c"});
    WriteCollectionToIniFile(*file, kFileExtHistory, {"C", "+-!#"});
    Texts again;
    ReadIniFileIntoCollection(*file, kFileExtHistory, again);
    EXPECT_EQ(again, (Texts{"a", "C"})) << "a stays below, the sign of a missing key is lost";
}

}  // namespace
}  // namespace zorvane
