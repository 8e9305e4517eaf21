#include "reports/json_report.h"

#include <fstream>
#include <nlohmann/json.hpp>

#include "tests/support/compared_pair.h"
#include "tests/support/schema_check.h"

namespace zorvane {
namespace {

using Json = nlohmann::json;

TEST(JsonReport, IsWhatTheDocumentShows) {
    constexpr const char* kOwner =
        "The owner keeps the roof, the windows and the heating in good order and tells the tenant "
        "a "
        "week ahead when work is to be done.";
    const ComparedPair pair(
        {"The flat.", "rent 2400 a month",
         "The tenant cleans the stairs every second Saturday and sweeps the yard.", kOwner, ""},
        {"The flat.", "rent 2600 a month", kOwner,
         "The tenant cleans the stairs every other Saturday and sweeps the yard.", ""},
        {.by_character = true});
    const std::string json = WriteJsonReport(pair.Model());
    std::ifstream file(ZORVANE_DOCS "/json.md");
    const std::string document((std::istreambuf_iterator<char>(file)), {});
    EXPECT_NE(document.find("```json\n" + json + "```"), std::string::npos) << json;
    EXPECT_EQ(SchemaCheck("zorvane-compare-1").Fault(Json::parse(json)), "")
        << "with a move and letters";
}

TEST(JsonReportProperty, FitsTheSchemaAndMakesTheModified) {
    const SchemaCheck schema("zorvane-compare-1");
    std::mt19937 random(21);
    for (unsigned round = 0; round < 200; ++round) {
        SCOPED_TRACE(round);
        const TextLines original = RandomParagraphs(random, random() % 30);
        const TextLines modified = EditedParagraphs(random, original);
        const ComparedPair pair(original, modified, {.by_character = round % 2 == 0});
        const std::string bytes = WriteJsonReport(pair.Model());
        EXPECT_EQ(WriteJsonReport(pair.Model()), bytes);
        const Json json = Json::parse(bytes);
        ASSERT_EQ(schema.Fault(json), "");
        TextLines made;
        std::size_t at = 0;
        for (const Json& record : json["records"]) {
            const bool addition = record["type"] == "a";
            const auto begin = record["original"]["first"].get<std::size_t>() - (addition ? 0 : 1);
            for (; at < begin; ++at)
                made.push_back(original[at]);
            at += record["original"]["text"].size();
            for (const Json& text : record["modified"]["text"])
                made.push_back(text);
            EXPECT_EQ(record["modified"]["last"], made.size());
            EXPECT_EQ(record["sections"].empty(), record["type"] != "c");
        }
        made.insert(made.end(), original.begin() + static_cast<std::ptrdiff_t>(at), original.end());
        EXPECT_EQ(made, modified);
    }
}

TEST(JsonReport, EscapesWhatJsonDoesNotTake) {
    const ComparedPair pair({"\"\\\x01\x7F\xFF\a"}, {"x"});
    ReportModel model = pair.Model();
    model.names.original = "a\\\xFF";
    const Json json = Json::parse(WriteJsonReport(model));
    EXPECT_EQ(json["records"][0]["original"]["text"][0], "\"\\\x01\x7F\uFFFD\a");
    EXPECT_EQ(json["original"]["path"], "a\\\uFFFD");
}

}  // namespace
}  // namespace zorvane
