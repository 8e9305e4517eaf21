// What the readers make of whole documents, against what was looked at: `tests/data/readings` holds
// documents and beside each, as text, all that is read of it. A change of a reader shows here in
// lines that somebody has to look at again. With ZORVANE_WRITE_TOLD=1 the texts are written anew.
#include <algorithm>
#include <filesystem>

#include <gtest/gtest.h>

#include "load/readers/content_kind.h"
#include "load/readers/pdf/pdf_reader.h"
#include "load/readers/word_job.h"
#include "tests/support/shown_document.h"
#include "tests/support/shown_workbook.h"
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

template <class Read>
std::string ToldReading(const std::string& title, Read&& read) {
    std::string told = "== " + title + "\n";
    const auto sink = MakeRtfSink();
    SilentMonitor monitor;
    const ReadEnd end = read(*sink, monitor);
    if (!end.ok())
        return told + "error " + std::to_string(static_cast<int>(end.error)) + "\n";
    std::vector<BesideItem> items;
    told += ToldText(ReadRtf(sink->Finish(), items));
    for (const BesideItem& item : items)
        told += "beside " + std::to_string(item.paragraph) + " " +
                std::string(NameOf(item.kind).option) + " " + item.text + " " + item.digest + "\n";
    return told;
}

// What is made of it where no rich text is wanted.
std::string ToldForms(std::string_view bytes, const ConversionMessage& job) {
    std::string told;
    for (const auto& make : {MakeHtmlSink, MakePlainSink}) {
        const auto sink = make();
        SilentMonitor monitor;
        ConversionMessage answer;
        EXPECT_TRUE(ReadWordDocument(bytes, job, *sink, monitor, answer).ok());
        for (const BesideItem& item : sink->TakeBeside())
            told += "beside line " + std::to_string(item.paragraph) + " " + item.text + "\n";
        told += "== without rich text\n" + sink->Finish();
    }
    return told;
}

std::string ToldPdf(std::string_view bytes) {
    std::string told;
    SilentMonitor monitor;
    std::string text;
    static_cast<void>(ReadPdfText(bytes, {}, {}, 1, text, monitor));
    std::replace(text.begin(), text.end(), '\f', '\n');
    told += "== plain text\n" + text + "\n";
    struct Way {
        const char* title;
        PdfRichOptions options;
    };
    Way ways[] = {
        {"flow of several columns", {}}, {"pleading", {}}, {"by blanks", {}}, {"lines", {}}};
    ways[0].options.lBCLDocumentType = 2;
    ways[0].options.bBCLDetectHeader = true;
    ways[0].options.bConnectHyphens = true;
    ways[1].options.lBCLDocumentType = 3;
    ways[1].options.bBCLExtractHyperlinks = true;
    ways[1].options.bBCLAdjustFontNames = true;
    ways[2].options.lBCLConversionMethod = 1;
    ways[2].options.bRemoveHiddenText = false;
    ways[3].options.bBCLMergeParagraph = false;
    ways[3].options.bBCLShrinkFonts = true;
    for (const Way& way : ways)
        told += ToldReading(way.title, [&](DocumentSink& sink, ReadMonitor& watcher) {
            return ReadPdfRich(bytes, {}, {}, way.options, sink, watcher);
        });
    return told;
}

std::string ToldSlides(std::string_view bytes, const ConversionMessage& job) {
    SlideOptions with_all;
    with_all.show_numbers = with_all.notes = true;
    return ToldReading("numbers and notes", [&](DocumentSink& sink, ReadMonitor& monitor) {
        ConversionMessage answer;
        return ReadSlideDocument(bytes, job, with_all, sink, monitor, answer);
    });
}

std::string ToldSheets(std::string_view bytes, const ConversionMessage& job) {
    std::unique_ptr<Workbook> book;
    ConversionMessage answer;
    if (!OpenSheets(bytes, job, book, answer).ok())
        return "for an office suite: " + answer["office"] + "\n";
    std::string told;
    for (std::size_t index = 0; index < book->Sheets().size(); ++index)
        told += "== " + book->Sheets()[index].name + "\n" +
                ShownSheet(*book, index, {.formulas = true, .values_too = true});
    return told;
}

// All that is read of a document, by each road that its kind has.
std::string Told(const fs::path& path) {
    const std::string bytes = ToldBytes(path);
    const ConversionMessage job{
        {"name", path.filename().string()}, {"locale", "windows-1252"}, {"password", "pass"}};
    std::string told = ToldReading("document", [&](DocumentSink& sink, ReadMonitor& monitor) {
        ConversionMessage answer;
        return ReadWordDocument(bytes, job, sink, monitor, answer);
    });
    std::unique_ptr<Package> package;
    switch (KindOfContent(bytes, path.filename().string(), package)) {
        case ContentKind::Pdf:
            return told + ToldPdf(bytes);
        case ContentKind::Rtf:
            return told + ToldForms(bytes, job);
        case ContentKind::SlidePackage:
        case ContentKind::OpenSlides:
            return told + ToldSlides(bytes, job);
        case ContentKind::SheetPackage:
        case ContentKind::OpenSheet:
        case ContentKind::BinarySheet:
            return told + ToldSheets(bytes, job);
        default:
            return told;
    }
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
