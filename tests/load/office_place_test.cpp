#include "load/office_place.h"

#include <filesystem>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/fake_suites.h"

namespace zorvane {
namespace {

namespace fs = std::filesystem;

struct PlaceRow {
    const char* name;
    std::vector<std::string> folders;
    std::string search_path;
    std::string soffice;  ///< empty: none is found
    bool has_library;
};

TEST(FindOffice, TakesTheFirstFolderThatHoldsOneAndThenThePath) {
    const FakeSuites suites;
    const std::string whole = suites.Path("whole/program");
    const PlaceRow rows[] = {
        {"nowhere", {}, "", "", false},
        {"no such folder", {suites.Path("none")}, "/none", "", false},
        {"a library", {suites.Path("none"), whole + "/"}, "", whole + "/soffice", true},
        {"a note is no library",
         {suites.Path("program/program"), whole},
         "",
         suites.Path("program/program/soffice"),
         false},
        {"a library for its own windows",
         {suites.Path("headless/program")},
         "",
         suites.Path("headless/program/soffice"),
         false},
        {"nor a program",
         {suites.Path("useless/program"), suites.Path("parts/program")},
         "",
         suites.Path("parts/program/soffice"),
         true},
        {"neither", {suites.Path("rest/program"), whole}, "", whole + "/soffice", true},
        {"links on the path", {}, "/none:" + suites.Path("links"), whole + "/soffice", true},
        {"a script on the path",
         {},
         suites.Path("script") + ":" + suites.Path("links"),
         suites.Path("script/soffice"),
         false},
        {"not from the current folder",
         {},
         ":.:" + fs::relative(suites.Path("script")).string(),
         "",
         false},
    };
    for (const PlaceRow& row : rows) {
        SCOPED_TRACE(row.name);
        const std::optional<OfficePlace> place = FindOfficeIn(row.folders, row.search_path);
        ASSERT_EQ(place.has_value(), !row.soffice.empty());
        if (!place)
            continue;
        EXPECT_EQ(place->soffice, row.soffice);
        EXPECT_EQ(place->program_folder, fs::path(row.soffice).parent_path());
        EXPECT_EQ(place->has_library, row.has_library);
    }
}

TEST(FindOffice, ObeysTheEnvironment) {
    const FakeSuites suites;
    const Environment path("PATH", suites.Path("links"));
    {
        const Environment office("ZORVANE_OFFICE", "none");
        EXPECT_FALSE(FindOffice());
    }
    {
        const Environment office("ZORVANE_OFFICE", suites.Path("none"));
        EXPECT_FALSE(FindOffice());
    }
    const Environment office("ZORVANE_OFFICE", suites.Path("parts/program"));
    const std::optional<OfficePlace> place = FindOffice();
    ASSERT_TRUE(place);
    EXPECT_EQ(place->program_folder, suites.Path("parts/program"));
    EXPECT_TRUE(place->has_calc);
    EXPECT_FALSE(place->has_writer);
    EXPECT_FALSE(place->has_impress);
}

}  // namespace
}  // namespace zorvane
