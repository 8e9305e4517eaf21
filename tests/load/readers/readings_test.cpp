// What the readers make of whole documents, against what was looked at: `tests/data/readings` holds
// documents and beside each, as text, all that is read of it. A change of a reader shows here in
// lines that somebody has to look at again. With ZORVANE_WRITE_TOLD=1 the texts are written anew.
#include <algorithm>
#include <filesystem>

#include <gtest/gtest.h>

#include "load/answer_file.h"
#include "load/pdf_options.h"
#include "load/readers/convert_jobs.h"
#include "load/readers/pdf/pdf_reader.h"
#include "tests/support/shown_document.h"
#include "tests/support/told_files.h"

namespace zorvane::readings_test {
namespace {

namespace fs = std::filesystem;

std::string LookOf(const CharFormat& format) {
    return "{" + std::string(format.font.view()) + " " + std::to_string(format.half_points) +
           (format.hidden ? " hidden " : " ") + MarksOf(format) + "}";
}

// For each letter the run that it is in.
template <class Run>
std::vector<const Run*> Spread(const std::vector<Run>& runs) {
    std::vector<const Run*> spread;
    for (const Run& run : runs)
        spread.insert(spread.end(), static_cast<std::size_t>(run.length), &run);
    return spread;
}

// A paragraph a line: its format, and its text with the looks of its letters where they change.
std::string ToldText(const RichText& text) {
    const auto letters = Spread(text.char_runs);
    const auto paragraphs = Spread(text.paragraph_runs);
    std::string told;
    const CharRun* look = nullptr;
    for (std::size_t at = 0; at < text.text.size();) {
        const std::size_t end = std::min(text.text.find(u'\n', at), text.text.size() - 1) + 1;
        told += ParagraphLooks({{}, {}, {*paragraphs[at]}}) + " ";
        while (at < end) {
            if (look != letters[at])
                told += LookOf((look = letters[at])->format);
            const std::size_t begin = at;
            while (at < end && letters[at] == look)
                ++at;
            told += Readable(std::u16string_view(text.text).substr(begin, at - begin));
        }
        told += "\n";
    }
    return told;
}

struct Way {
    std::string names;  ///< of the files that are read so; empty: of all
    std::string title;
    AnswerShape shape;
    ConversionMessage job;
};

std::string ToldItems(const std::vector<BesideItem>& items) {
    std::string told;
    for (const BesideItem& item : items)
        told += "beside " + std::to_string(item.paragraph) + " " +
                std::string(NameOf(item.kind).option) + " " + item.text + " " + item.digest + "\n";
    return told;
}

// What stands in a part of the answer, line for line.
std::string ToldPart(const std::string& bytes) {
    if (bytes.starts_with("{\\rtf")) {
        std::vector<BesideItem> items;
        const std::string told = ToldText(ReadRtf(bytes, items));
        return told + ToldItems(items);
    }
    std::string told = bytes;
    std::erase(told, '\r');
    std::replace(told.begin(), told.end(), '\f', '\n');
    return told + "\n";
}

// As the program asks and hears it, the two processes apart.
std::string ToldWay(std::string_view bytes, const Way& way) {
    const std::string title = "== " + way.title + "\n";
    const auto file = AnswerFile::Make(fs::temp_directory_path().string());
    JobOutput output(file.value().Descriptor());
    SilentMonitor monitor;
    const ReadEnd end = RunJob(bytes, way.job, monitor, output);
    output.answer["error"] = std::to_string(static_cast<int>(end.error));
    output.answer["detail"] = end.detail;
    const ConversionResult result = CheckedAnswer(output.answer, way.shape, file.value().Size());
    if (!result.ok())
        return title + "error " + std::to_string(static_cast<int>(result.error)) + " " +
               result.detail + result.office + "\n";
    std::string told = title;
    for (const std::string& sheet : result.sheets)
        told += "sheet " + sheet + "\n";
    for (const AnswerPart& part : result.parts)
        told += ToldPart(file.value().Read(part).value());
    if (way.shape == AnswerShape::PageCount)
        told += std::to_string(result.pages) + "\n";
    return told + ToldItems(DecodeBesideList(file.value().Read(result.beside).value()));
}

Way Rich(const char* title, const PdfRichOptions& options) {
    Way way{".pdf", title, AnswerShape::OneDocument, {{"kind", "pdfrich"}}};
    PutPdfOptions(options, way.job);
    return way;
}

std::vector<Way> AllWays() {
    constexpr auto kText = AnswerShape::OneDocument;
    constexpr auto kSheets = AnswerShape::Sheets;
    constexpr const char* kSlideNames = ".pptx.odp";
    constexpr const char* kSheetNames = ".xlsx.xlsb.ods";
    return {
        {"", "document", kText, {{"kind", "word"}}},
        {".pdf", "plain text", kText, {{"kind", "pdftext"}, {"delta", "10"}}},
        {".pdf", "second page", kText, {{"kind", "pdftext"}, {"first", "2"}, {"last", "2"}}},
        {".pdf", "pages", AnswerShape::PageCount, {{"kind", "pdfpages"}}},
        Rich("flow of several columns",
             {.lBCLDocumentType = 2, .bBCLDetectHeader = true, .bConnectHyphens = true}),
        Rich("pleading",
             {.lBCLDocumentType = 3, .bBCLAdjustFontNames = true, .bBCLExtractHyperlinks = true}),
        Rich("by blanks", {.lBCLConversionMethod = 1, .bRemoveHiddenText = false}),
        Rich("lines", {.bBCLMergeParagraph = false, .bBCLShrinkFonts = true}),
        {".rtf", "page", kText, {{"kind", "word"}, {"format", "8"}}},
        {".rtf", "plain text", kText, {{"kind", "word"}, {"format", "2"}}},
        {kSlideNames, "all", kText, {{"kind", "slides"}, {"numbers", "1"}, {"notes", "1"}}},
        {kSlideNames, "second", kText, {{"kind", "slides"}, {"first", "2"}, {"last", "2"}}},
        {kSlideNames, "notes", kText, {{"kind", "slides"}, {"notesonly", "1"}, {"format", "200"}}},
        {kSheetNames, "seen", kSheets, {{"kind", "sheets"}, {"sheets", "*"}}},
        {kSheetNames,
         "all",
         kSheets,
         {{"kind", "sheets"}, {"sheets", "1-"}, {"formulas", "1"}, {"values", "1"}}},
        {kSheetNames, "names", AnswerShape::SheetNames, {{"kind", "sheetnames"}}},
    };
}

// All that is read of a document, by each way that its kind has.
std::string Told(const fs::path& path) {
    const std::string bytes = ToldBytes(path);
    const std::string name = path.filename().string();
    std::string told;
    for (Way& way : AllWays()) {
        if (way.names.find(path.extension().string()) == std::string::npos && !way.names.empty())
            continue;
        way.job.merge(ConversionMessage{
            {"name", name}, {"locale", "windows-1252"}, {"password", "pass"}, {"user", "pass"}});
        told += ToldWay(bytes, way);
    }
    return told;
}

TEST(Readings, AreAsTheyWereLookedAt) {
    int documents = 0;
    for (const auto& entry : fs::directory_iterator(ZORVANE_TEST_DATA "/readings")) {
        const std::string name = entry.path().filename().string();
        if (!entry.is_regular_file() || name.ends_with(".told") || name == "README.md")
            continue;
        ++documents;
        ExpectTold(entry.path().string() + ".told", Told(entry.path()));
    }
    EXPECT_GT(documents, 0);
}

}  // namespace
}  // namespace zorvane::readings_test
