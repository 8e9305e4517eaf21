// Any two texts, their names and a title: every report is what its format asks for, whatever they
// hold. A page has no element or attribute that the text put there, JSON leads from the one text to
// the other, a row of the comma-delimited report has its cells, a terminal gets no controls.
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <gumbo.h>
#include <nlohmann/json.hpp>
#include <set>
#include <string>
#include <string_view>

#include "common/base/text_encoding.h"
#include "compare/engine/compare_texts.h"
#include "compare/engine/report_model.h"
#include "reports/json_report.h"
#include "reports/terminal_report.h"

namespace {

using namespace zorvane;

void Require(bool holds) {
    if (!holds)
        std::abort();
}

// ---- the page ----

// What our pages are made of.
const std::set<GumboTag> kOurTags = {
    GUMBO_TAG_A,       GUMBO_TAG_B,     GUMBO_TAG_BODY,   GUMBO_TAG_BR,     GUMBO_TAG_DEL,
    GUMBO_TAG_DETAILS, GUMBO_TAG_DIV,   GUMBO_TAG_EM,     GUMBO_TAG_FOOTER, GUMBO_TAG_H1,
    GUMBO_TAG_H2,      GUMBO_TAG_HEAD,  GUMBO_TAG_HEADER, GUMBO_TAG_HTML,   GUMBO_TAG_I,
    GUMBO_TAG_INS,     GUMBO_TAG_LI,    GUMBO_TAG_MAIN,   GUMBO_TAG_META,   GUMBO_TAG_NAV,
    GUMBO_TAG_OL,      GUMBO_TAG_P,     GUMBO_TAG_Q,      GUMBO_TAG_SCRIPT, GUMBO_TAG_SECTION,
    GUMBO_TAG_SMALL,   GUMBO_TAG_SPAN,  GUMBO_TAG_STRONG, GUMBO_TAG_STYLE,  GUMBO_TAG_SUMMARY,
    GUMBO_TAG_TABLE,   GUMBO_TAG_TBODY, GUMBO_TAG_TD,     GUMBO_TAG_TH,     GUMBO_TAG_THEAD,
    GUMBO_TAG_TITLE,   GUMBO_TAG_TR,    GUMBO_TAG_UL};

void CheckElement(const GumboNode& node) {
    if (node.type != GUMBO_NODE_ELEMENT && node.type != GUMBO_NODE_TEMPLATE)
        return;
    const GumboElement& element = node.v.element;
    Require(kOurTags.contains(element.tag));
    for (unsigned i = 0; i < element.attributes.length; ++i) {
        const auto& attribute = *static_cast<const GumboAttribute*>(element.attributes.data[i]);
        Require(!std::string_view(attribute.name).starts_with("on"));
    }
    for (unsigned i = 0; i < element.children.length; ++i)
        CheckElement(*static_cast<const GumboNode*>(element.children.data[i]));
}

void CheckPage(const std::string& page) {
    Require(IsValidUtf8(page));
    GumboOptions options = kGumboDefaultOptions;
    options.max_errors = 1;
    GumboOutput* parsed = gumbo_parse_with_options(&options, page.data(), page.size());
    Require(parsed->errors.length == 0);
    CheckElement(*parsed->root);
    gumbo_destroy_output(&kGumboDefaultOptions, parsed);
}

// ---- JSON ----

using Json = nlohmann::json;

std::vector<std::string> ParagraphsOf(const Comparison& comparison, Side side) {
    std::vector<std::string> paragraphs;
    for (std::int32_t number = 1; number <= comparison.Paragraphs(side); ++number)
        paragraphs.push_back(comparison.Paragraph(side, number));
    return paragraphs;
}

// Equal paragraphs are copied from the Original; they are so to the letter where nothing is
// ignored.
void CheckReplay(const Json& report, const Comparison& comparison) {
    const std::vector<std::string> original = ParagraphsOf(comparison, Side::Original);
    std::vector<std::string> made;
    std::size_t next = 0;
    for (const Json& record : report["records"]) {
        const bool added = record["type"] == "a";
        const auto first = record["original"]["first"].get<std::size_t>();
        const std::size_t from = added ? first : first - 1;
        Require(from >= next && from <= original.size());
        made.insert(made.end(), original.begin() + static_cast<std::ptrdiff_t>(next),
                    original.begin() + static_cast<std::ptrdiff_t>(from));
        next = from + record["original"]["text"].size();
        for (const Json& text : record["modified"]["text"])
            made.push_back(text.get<std::string>());
    }
    Require(next <= original.size());
    made.insert(made.end(), original.begin() + static_cast<std::ptrdiff_t>(next), original.end());
    Require(made == ParagraphsOf(comparison, Side::Modified));
}

// ---- comma-delimited ----

void CheckRows(std::string_view rows) {
    constexpr int kCells = 9;
    Require(IsValidUtf8(rows));
    int cells = 1;
    bool quoted = false;
    for (std::size_t at = 0; at < rows.size(); ++at) {
        if (rows[at] == '"')
            quoted = !quoted;
        else if (!quoted && rows[at] == ',')
            ++cells;
        else if (!quoted && rows[at] == '\r') {
            Require(cells == kCells && rows.substr(at, 2) == "\r\n");
            cells = 1;
        }
    }
    Require(!quoted && cells == 1);
}

// ---- terminal ----

void CheckTerminal(const std::string& text) {
    Require(IsValidUtf8(text));
    Require(std::none_of(text.begin(), text.end(), [](char byte) {
        const auto sign = static_cast<unsigned char>(byte);
        return (sign < 0x20 && sign != '\n' && sign != '\t') || sign == 0x7F;
    }));
}

void CheckReports(const ReportModel& model, bool replay) {
    CheckPage(WriteHtmlReport(model, 1));
    CheckPage(WriteHtmlReport(model, 2));
    const Json json = Json::parse(WriteJsonReport(model));
    if (replay)
        CheckReplay(json, model.comparison);
    CheckRows(WriteCsvReport(model));
    CheckTerminal(WriteTerminalReport(model, {}));
    CheckTerminal(WriteStat(model));
    Require(IsValidUtf8(WriteTextReport(model)));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 3)
        return 0;
    const std::string_view bytes(reinterpret_cast<const char*>(data) + 3, size - 3);  // NOLINT
    const std::size_t cut = bytes.size() * data[1] / 256;
    const std::string name = ToUtf8(ToUtf16(bytes.substr(0, data[2] % 32)));
    const PerSide<std::string> texts{ToUtf8(ToUtf16(bytes.substr(0, cut))),
                                     ToUtf8(ToUtf16(bytes.substr(cut)))};
    CompareOptions options;
    options.by_character = (data[0] & 1) != 0;
    options.ignore_case = (data[0] & 2) != 0;
    const Result<Comparison> compared = CompareLineFiles(
        {std::string_view(texts.original), std::string_view(texts.modified)}, options, nullptr);
    if (!compared.ok())
        return 0;
    CheckReports({.comparison = compared.value(),
                  .title = name,
                  .names = {name, "modified"},
                  .high_detail = (data[0] & 4) != 0},
                 !options.ignore_case);
    return 0;
}
