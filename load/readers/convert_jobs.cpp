#include "load/readers/convert_jobs.h"

#include <filesystem>
#include <utility>

#include "common/platform/files.h"
#include "common/platform/mapped_file.h"
#include "common/platform/native_path.h"
#include "load/csv_operations.h"
#include "load/readers/beside/sheet_beside.h"
#include "load/readers/pdf/pdf_reader.h"
#include "load/readers/sheets/workbook.h"
#include "load/readers/slides/slide_reader.h"
#include "load/readers/word_job.h"

namespace zorvane {
namespace {

std::int32_t SmallNumber(const ConversionMessage& job, const std::string& key) {
    return static_cast<std::int32_t>(NumberOf(job, key));
}

ReadEnd WriteTarget(const std::string& target, std::string_view bytes) {
    const Status written = WriteWholeFile(target, bytes);
    if (written.ok())
        return ReadEnd::Ok();
    std::error_code ignored;
    std::filesystem::remove(NativePath(target), ignored);
    return ReadEnd::Fault(ReadError::CannotWrite, written.failure().reason);
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
ReadEnd WriteDocument(const ConversionMessage& job, DocumentSink& sink, ConversionMessage& answer) {
    const std::vector<BesideItem> beside = sink.TakeBeside();
    if (!beside.empty())
        answer["beside"] = EncodeBesideList(beside);
    return WriteTarget(std::string(TextOf(job, "target")), sink.Finish());
}

ReadEnd WordTo(std::string_view bytes, const ConversionMessage& job, ReadMonitor& monitor,
               ConversionMessage& answer) {
    const auto sink = SinkFor(job);
    ReadEnd end = ReadWordDocument(bytes, job, *sink, monitor, answer);
    return end.ok() ? WriteDocument(job, *sink, answer) : end;
}

PdfPasswords PasswordsOf(const ConversionMessage& job) {
    return {std::string(TextOf(job, "user")), std::string(TextOf(job, "owner"))};
}

PdfPages PagesOf(const ConversionMessage& job) {
    return {SmallNumber(job, "first"), SmallNumber(job, "last")};
}

ReadEnd PdfToText(std::string_view bytes, const ConversionMessage& job, ReadMonitor& monitor,
                  ConversionMessage& answer) {
    std::string text;
    constexpr double kTenths = 10.0;
    ReadEnd end = ReadPdfText(bytes, PasswordsOf(job), PagesOf(job),
                              static_cast<double>(NumberOf(job, "delta")) / kTenths, text, monitor);
    if (!end.ok())
        return end;
    const auto items = MakePlainSink();
    end = ReadPdfBeside(bytes, PasswordsOf(job), PagesOf(job), text, *items);
    if (end.ok())
        answer["beside"] = EncodeBesideList(items->TakeBeside());
    return WriteTarget(std::string(TextOf(job, "target")), text);
}

ReadEnd PdfToRich(std::string_view bytes, const ConversionMessage& job, ReadMonitor& monitor) {
    PdfRichOptions options;
    options.lBCLConversionMethod = SmallNumber(job, "lBCLConversionMethod");
    options.lBCLDocumentType = SmallNumber(job, "lBCLDocumentType");
    options.bBCLMergeParagraph = IsSet(job, "bBCLMergeParagraph");
    options.bBCLShrinkFonts = IsSet(job, "bBCLShrinkFonts");
    options.bBCLAdjustFontNames = IsSet(job, "bBCLAdjustFontNames");
    options.bBCLExtractHyperlinks = IsSet(job, "bBCLExtractHyperlinks");
    options.bBCLDetectHeader = IsSet(job, "bBCLDetectHeader");
    options.bRemoveHiddenText = IsSet(job, "bRemoveHiddenText");
    options.bConnectHyphens = IsSet(job, "bConnectHyphens");
    const auto sink = MakeRtfSink();
    ReadEnd end = ReadPdfRich(bytes, PasswordsOf(job), PagesOf(job), options, *sink, monitor);
    return end.ok() ? WriteTarget(std::string(TextOf(job, "target")), sink->Finish()) : end;
}

ReadEnd PdfCount(std::string_view bytes, const ConversionMessage& job, ConversionMessage& answer) {
    std::int32_t pages = 0;
    ReadEnd end = CountPdfPages(bytes, PasswordsOf(job), pages);
    answer["pages"] = std::to_string(pages);
    return end;
}

ReadEnd SlidesTo(std::string_view bytes, const ConversionMessage& job, ReadMonitor& monitor,
                 ConversionMessage& answer) {
    SlideOptions options;
    options.first = SmallNumber(job, "first");
    options.last = SmallNumber(job, "last");
    options.show_numbers = IsSet(job, "numbers");
    options.notes = IsSet(job, "notes");
    options.notes_only = IsSet(job, "notesonly");
    const auto sink = SinkFor(job);
    ReadEnd end = ReadSlideDocument(bytes, job, options, *sink, monitor, answer);
    return end.ok() ? WriteDocument(job, *sink, answer) : end;
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

ReadEnd SheetTo(Workbook& book, std::size_t index, const ConversionMessage& job,
                const std::string& target, ReadMonitor& monitor) {
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
    return end.ok() ? WriteTarget(target, text) : end;
}

ReadEnd SheetsTo(std::string_view bytes, const ConversionMessage& job, ReadMonitor& monitor,
                 ConversionMessage& answer) {
    std::unique_ptr<Workbook> book;
    if (ReadEnd end = OpenSheets(bytes, job, book, answer); !end.ok())
        return end;
    const std::string target(TextOf(job, "target"));
    const std::vector<std::size_t> chosen = ChosenSheets(*book, TextOf(job, "sheets"));
    if (chosen.empty())
        return ReadEnd::Fault(ReadError::WrongFormat, "no sheet is called or numbered " +
                                                          std::string(TextOf(job, "sheets")));
    std::size_t count = 0;
    for (const std::size_t index : chosen) {
        const std::string number = std::to_string(++count);
        const std::string file = count == 1 ? target : target + "_" + number;
        if (ReadEnd end = SheetTo(*book, index, job, file, monitor); !end.ok())
            return end;
        answer["file" + number] = file;
        answer["sheet" + number] = book->Sheets()[index].name;
    }
    const auto items = MakePlainSink();
    if (ReadEnd end =
            ReportSheetBeside(bytes, TextOf(job, "password"), *book, chosen, *items, monitor);
        end.error == ReadError::Cancelled)
        return end;
    answer["beside"] = EncodeBesideList(items->TakeBeside());
    answer["files"] = std::to_string(count);
    return ReadEnd::Ok();
}

ReadEnd SheetNames(std::string_view bytes, const ConversionMessage& job,
                   ConversionMessage& answer) {
    std::unique_ptr<Workbook> book;
    if (ReadEnd end = OpenSheets(bytes, job, book, answer); !end.ok())
        return end;
    std::size_t count = 0;
    for (const SheetInfo& sheet : book->Sheets())
        answer["sheet" + std::to_string(++count)] = sheet.name;
    answer["sheets"] = std::to_string(count);
    return ReadEnd::Ok();
}

}  // namespace

ReadEnd RunJob(const ConversionMessage& job, ReadMonitor& monitor, ConversionMessage& answer) {
    const Result<MappedFile> file = MappedFile::Open(std::string(TextOf(job, "source")));
    if (!file.ok())
        return ReadEnd::Fault(ReadError::CannotOpen, file.failure().reason);
    const std::string_view bytes = file.value().Bytes();
    const std::string_view kind = TextOf(job, "kind");
    if (kind == "word")
        return WordTo(bytes, job, monitor, answer);
    if (kind == "pdftext")
        return PdfToText(bytes, job, monitor, answer);
    if (kind == "pdfrich")
        return PdfToRich(bytes, job, monitor);
    if (kind == "pdfpages")
        return PdfCount(bytes, job, answer);
    if (kind == "slides")
        return SlidesTo(bytes, job, monitor, answer);
    if (kind == "sheets")
        return SheetsTo(bytes, job, monitor, answer);
    if (kind == "sheetnames")
        return SheetNames(bytes, job, answer);
    return ReadEnd::Fault(ReadError::Unsupported, "no such request: " + std::string(kind));
}

}  // namespace zorvane
