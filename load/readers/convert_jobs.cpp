#include "load/readers/convert_jobs.h"

#include <utility>

#include "load/csv_operations.h"
#include "load/pdf_options.h"
#include "load/readers/beside/sheet_beside.h"
#include "load/readers/pdf/pdf_reader.h"
#include "load/readers/sheets/sheet_progress.h"
#include "load/readers/sheets/workbook.h"
#include "load/readers/slides/slide_reader.h"
#include "load/readers/word_job.h"

namespace zorvane {
namespace {

std::int32_t SmallNumber(const ConversionMessage& job, const std::string& key) {
    return static_cast<std::int32_t>(NumberOf(job, key));
}

std::unique_ptr<DocumentSink> SinkFor(const ConversionMessage& job) {
    switch (NumberOf(job, "format")) {
        case 2:
        case 200:
            return MakePlainSink();
        case 8:
            return MakeHtmlSink();
        default:
            return MakeRtfSink();
    }
}

// The text, and beside it in the answer what a form without a place for it leaves out.
ReadEnd WriteDocument(DocumentSink& sink, JobOutput& output) {
    const std::vector<BesideItem> beside = sink.TakeBeside();
    ReadEnd end = output.Add(sink.Finish());
    return end.ok() ? output.AddBeside(beside) : end;
}

ReadEnd WordTo(std::string_view bytes, const ConversionMessage& job, ReadMonitor& monitor,
               JobOutput& output) {
    const auto sink = SinkFor(job);
    ReadEnd end = ReadWordDocument(bytes, job, *sink, monitor, output.answer);
    return end.ok() ? WriteDocument(*sink, output) : end;
}

PdfPasswords PasswordsOf(const ConversionMessage& job) {
    return {std::string(TextOf(job, "user")), std::string(TextOf(job, "owner"))};
}

PdfPages PagesOf(const ConversionMessage& job) {
    return {SmallNumber(job, "first"), SmallNumber(job, "last")};
}

ReadEnd PdfToText(std::string_view bytes, const ConversionMessage& job, ReadMonitor& monitor,
                  JobOutput& output) {
    std::string text;
    constexpr double kTenths = 10.0;
    ReadEnd end = ReadPdfText(bytes, PasswordsOf(job), PagesOf(job),
                              static_cast<double>(NumberOf(job, "delta")) / kTenths, text, monitor);
    if (!end.ok())
        return end;
    const auto items = MakePlainSink();
    const ReadEnd told = ReadPdfBeside(bytes, PasswordsOf(job), PagesOf(job), text, *items);
    if (end = output.Add(text); !end.ok() || !told.ok())
        return end;
    return output.AddBeside(items->TakeBeside());
}

ReadEnd PdfToRich(std::string_view bytes, const ConversionMessage& job, ReadMonitor& monitor,
                  JobOutput& output) {
    const auto options = PdfOptionsOf<PdfRichOptions>(job);
    const auto sink = MakeRtfSink();
    ReadEnd end = ReadPdfRich(bytes, PasswordsOf(job), PagesOf(job), options, *sink, monitor);
    return end.ok() ? output.Add(sink->Finish()) : end;
}

ReadEnd PdfCount(std::string_view bytes, const ConversionMessage& job, ConversionMessage& answer) {
    std::int32_t pages = 0;
    ReadEnd end = CountPdfPages(bytes, PasswordsOf(job), pages);
    answer["pages"] = std::to_string(pages);
    return end;
}

ReadEnd SlidesTo(std::string_view bytes, const ConversionMessage& job, ReadMonitor& monitor,
                 JobOutput& output) {
    SlideOptions options;
    options.first = SmallNumber(job, "first");
    options.last = SmallNumber(job, "last");
    options.show_numbers = IsSet(job, "numbers");
    options.notes = IsSet(job, "notes");
    options.notes_only = IsSet(job, "notesonly");
    const auto sink = SinkFor(job);
    ReadEnd end = ReadSlideDocument(bytes, job, options, *sink, monitor, output.answer);
    return end.ok() ? WriteDocument(*sink, output) : end;
}

std::vector<std::string> NamesOf(const Workbook& book) {
    std::vector<std::string> names;
    for (const SheetInfo& sheet : book.Sheets())
        names.push_back(sheet.name);
    return names;
}

// "*" means what is seen; a hidden sheet is read when its number or name is told.
std::vector<std::size_t> ChosenSheets(const Workbook& book, std::string_view list) {
    std::vector<std::size_t> chosen = SelectSheets(list, NamesOf(book));
    if (list.find('*') != std::string_view::npos)
        std::erase_if(chosen, [&book](std::size_t index) { return book.Sheets()[index].hidden; });
    return chosen;
}

// One more sheet than an answer may hold would be no answer.
ReadEnd CheckSheetCount(std::size_t count) {
    return count <= kMostSheets
               ? ReadEnd::Ok()
               : ReadEnd::Fault(ReadError::TooLarge,
                                "more than " + std::to_string(kMostSheets) + " sheets");
}

void TellSheet(std::size_t number, const SheetInfo& sheet, ConversionMessage& answer) {
    // What does not fit a message is no name that anybody could read.
    answer["sheet" + std::to_string(number)] = sheet.name.substr(0, kMostTextBytes + 1);
    answer["sheets"] = std::to_string(number);
}

ReadEnd SheetTo(Workbook& book, std::size_t index, const ConversionMessage& job,
                ReadMonitor& monitor, JobOutput& output) {
    const SheetOptions options{IsSet(job, "formulas"), IsSet(job, "values")};
    std::string text;
    CsvWriter writer(text);
    ReadEnd end = book.ReadSheet(
        index, options,
        [&writer](const std::vector<std::string_view>& cells) {
            for (const std::string_view cell : cells)
                writer.Field(cell);
            writer.EndRecord();
            return true;
        },
        monitor);
    return end.ok() ? output.Add(text) : end;
}

ReadEnd SheetsTo(std::string_view bytes, const ConversionMessage& job, ReadMonitor& monitor,
                 JobOutput& output) {
    std::unique_ptr<Workbook> book;
    if (ReadEnd end = OpenSheets(bytes, job, book, output.answer); !end.ok())
        return end;
    const std::vector<std::size_t> chosen = ChosenSheets(*book, TextOf(job, "sheets"));
    if (chosen.empty())
        return ReadEnd::Fault(ReadError::WrongFormat, "no sheet is called or numbered " +
                                                          std::string(TextOf(job, "sheets")));
    if (ReadEnd end = CheckSheetCount(chosen.size()); !end.ok())
        return end;
    SheetProgress progress(monitor, chosen.size() + 1);
    std::size_t count = 0;
    for (const std::size_t index : chosen) {
        progress.BeginNext();
        if (ReadEnd end = SheetTo(*book, index, job, progress, output); !end.ok())
            return end;
        TellSheet(++count, book->Sheets()[index], output.answer);
    }
    const auto items = MakePlainSink();
    progress.BeginNext();
    const ReadEnd told =
        ReportSheetBeside(bytes, TextOf(job, "password"), *book, chosen, *items, progress);
    return told.error == ReadError::Cancelled ? told : output.AddBeside(items->TakeBeside());
}

ReadEnd SheetNames(std::string_view bytes, const ConversionMessage& job, JobOutput& output) {
    std::unique_ptr<Workbook> book;
    if (ReadEnd end = OpenSheets(bytes, job, book, output.answer); !end.ok())
        return end;
    if (ReadEnd end = CheckSheetCount(book->Sheets().size()); !end.ok())
        return end;
    output.answer["sheets"] = "0";
    std::size_t count = 0;
    for (const SheetInfo& sheet : book->Sheets())
        TellSheet(++count, sheet, output.answer);
    return ReadEnd::Ok();
}

}  // namespace

ReadEnd RunJob(std::string_view bytes, const ConversionMessage& job, ReadMonitor& monitor,
               JobOutput& output) {
    const std::string_view kind = TextOf(job, "kind");
    if (kind == "word")
        return WordTo(bytes, job, monitor, output);
    if (kind == "pdftext")
        return PdfToText(bytes, job, monitor, output);
    if (kind == "pdfrich")
        return PdfToRich(bytes, job, monitor, output);
    if (kind == "pdfpages")
        return PdfCount(bytes, job, output.answer);
    if (kind == "slides")
        return SlidesTo(bytes, job, monitor, output);
    if (kind == "sheets")
        return SheetsTo(bytes, job, monitor, output);
    if (kind == "sheetnames")
        return SheetNames(bytes, job, output);
    return ReadEnd::Fault(ReadError::Unsupported, "no such request: " + std::string(kind));
}

}  // namespace zorvane
