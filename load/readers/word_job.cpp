#include "load/readers/word_job.h"

#include <algorithm>
#include <string>

#include "common/base/text_encoding.h"
#include "compare/document/rtf_reader.h"
#include "load/readers/beside/sheet_beside.h"
#include "load/readers/content_kind.h"
#include "load/readers/opendocument/open_package.h"
#include "load/readers/pdf/pdf_reader.h"
#include "load/readers/protected_package.h"
#include "load/readers/sheets/sheet_progress.h"
#include "load/readers/word_readers.h"

namespace zorvane {
namespace {

ReadEnd NeedOffice(const char* format, ConversionMessage& answer) {
    answer["office"] = format;
    return ReadEnd::Fault(ReadError::NeedsOffice);
}

// Text as it stands, a line a paragraph.
ReadEnd ReadPlainText(std::string_view bytes, const std::string& locale, DocumentSink& sink) {
    Replay(RichText::Plain(DecodeText(bytes, DetectEncoding(bytes, locale))), sink);
    return ReadEnd::Ok();
}

ReadEnd ReadRtfDocument(std::string_view bytes, DocumentSink& sink) {
    std::vector<BesideItem> beside;
    const RichText text = ReadRtf(bytes, beside);
    Replay(text, sink, beside);
    return ReadEnd::Ok();
}

ReadEnd ReadPdf(std::string_view bytes, const std::string& password, DocumentSink& sink,
                ReadMonitor& monitor) {
    return ReadPdfRich(bytes, {password, password}, {}, {}, sink, monitor);
}

// A cell's text with its line ends as those inside a paragraph; no other control character means
// anything.
std::string CellText(std::string_view cell) {
    std::string text;
    for (const char character : cell) {
        if (character == '\n')
            text += kLineInParagraph;
        else if (static_cast<unsigned char>(character) >= 0x20 || character == '\t')
            text += character;
    }
    return text;
}

// Every sheet that is seen, a row a paragraph.
ReadEnd ReadAllSheets(Workbook& book, DocumentSink& sink, ReadMonitor& monitor) {
    SheetProgress progress(monitor, std::max<std::size_t>(book.Sheets().size(), 1));
    for (std::size_t index = 0; index < book.Sheets().size(); ++index) {
        progress.BeginNext();
        if (book.Sheets()[index].hidden)
            continue;
        const auto row = [&sink](const std::vector<std::string_view>& cells) {
            sink.BeginParagraph({});
            for (const std::string_view cell : cells) {
                sink.Text(CellText(cell), {});
                sink.EndCell({});
            }
            sink.EndParagraph();
            return true;
        };
        if (ReadEnd end = book.ReadSheet(index, {}, row, progress); !end.ok())
            return end;
    }
    return ReadEnd::Ok();
}

ReadEnd ReadAnySheets(std::string_view bytes, const std::string& password, DocumentSink& sink,
                      ReadMonitor& monitor) {
    std::unique_ptr<Workbook> book;
    if (ReadEnd end = OpenWorkbook(bytes, password, book); !end.ok())
        return end;
    std::vector<std::size_t> shown;
    for (std::size_t index = 0; index < book->Sheets().size(); ++index) {
        if (!book->Sheets()[index].hidden)
            shown.push_back(index);
    }
    SheetProgress progress(monitor, 2);
    progress.BeginNext();
    const ReadEnd told = ReportSheetBeside(bytes, password, *book, shown, sink, progress);
    progress.BeginNext();
    return told.error == ReadError::Cancelled ? told : ReadAllSheets(*book, sink, progress);
}

// What a reading of a document needs, whatever kind it turns out to be.
struct Source {
    std::string_view bytes;
    ContentKind kind = ContentKind::Text;
    Package* package = nullptr;
    std::string password;
    std::string locale;
};

ReadEnd ReadPackage(const Source& source, DocumentSink& sink, ReadMonitor& monitor) {
    Package& package = *source.package;
    if (package.Encrypted())
        return ReadEnd::Fault(ReadError::PasswordNeeded);
    switch (source.kind) {
        case ContentKind::WordPackage:
            return ReadWordPackage(package, sink, monitor);
        case ContentKind::OpenText:
            return ReadOpenDocument(package, sink, monitor);
        case ContentKind::Epub:
            return ReadEpub(package, sink, monitor);
        case ContentKind::SlidePackage:
            return ReadSlides(package, {}, sink, monitor);
        case ContentKind::OpenSlides:
            return ReadOpenDocumentSlides(package, {}, sink, monitor);
        case ContentKind::SheetPackage:
        case ContentKind::OpenSheet:
            return ReadAnySheets(source.bytes, source.password, sink, monitor);
        default:
            return ReadEnd::Fault(ReadError::WrongFormat, "a ZIP file that holds no document");
    }
}

ReadEnd ReadByKind(const Source& source, DocumentSink& sink, ReadMonitor& monitor,
                   ConversionMessage& answer) {
    switch (source.kind) {
        case ContentKind::Rtf:
            return ReadRtfDocument(source.bytes, sink);
        case ContentKind::Text:
            return ReadPlainText(source.bytes, source.locale, sink);
        case ContentKind::Html:
            return ReadHtml(source.bytes, source.locale, sink, monitor);
        case ContentKind::Xml:
            return ReadXml(source.bytes, sink, monitor);
        case ContentKind::Markdown:
            return ReadMarkdown(
                ToUtf8(DecodeText(source.bytes, DetectEncoding(source.bytes, source.locale))), sink,
                monitor);
        case ContentKind::Message:
            return ReadMessage(source.bytes, source.locale, sink, monitor);
        case ContentKind::Pdf:
            return ReadPdf(source.bytes, source.password, sink, monitor);
        case ContentKind::BinarySheet:
            return ReadAnySheets(source.bytes, source.password, sink, monitor);
        case ContentKind::BinarySlides:
            return NeedOffice("pptx", answer);
        case ContentKind::BinaryWord:
        case ContentKind::OtherCompound:
        case ContentKind::OtherBinary:
            return NeedOffice("docx", answer);
        case ContentKind::BrokenPackage:
            return ReadEnd::Fault(ReadError::Damaged, "the package (ZIP) is cut off or broken");
        default:
            return ReadPackage(source, sink, monitor);
    }
}

// Fills `source` for a file and, when it is encrypted, for the package inside. Both packages and
// `plain` live as long as the reading.
struct OpenedSource {
    Source source;
    std::string plain;
    std::unique_ptr<Package> package;
};

ReadEnd OpenSource(std::string_view bytes, const ConversionMessage& job, OpenedSource& opened) {
    Source& source = opened.source;
    source.bytes = bytes;
    source.password = TextOf(job, "password");
    source.locale = TextOf(job, "locale");
    const std::string_view name = TextOf(job, "name");
    source.kind = KindOfContent(bytes, name, opened.package);
    const bool open_document =
        opened.package != nullptr && IsEncryptedOpenDocument(*opened.package);
    if (source.kind == ContentKind::EncryptedPackage || open_document) {
        if (ReadEnd end = OpenProtected(bytes, source.password, opened.plain); !end.ok())
            return end;
        source.bytes = opened.plain;
        source.kind = KindOfContent(opened.plain, name, opened.package);
    }
    source.package = opened.package.get();
    return ReadEnd::Ok();
}

}  // namespace

ReadEnd ReadWordDocument(std::string_view bytes, const ConversionMessage& job, DocumentSink& sink,
                         ReadMonitor& monitor, ConversionMessage& answer) {
    OpenedSource opened;
    if (ReadEnd end = OpenSource(bytes, job, opened); !end.ok())
        return end;
    return ReadByKind(opened.source, sink, monitor, answer);
}

ReadEnd ReadSlideDocument(std::string_view bytes, const ConversionMessage& job,
                          const SlideOptions& options, DocumentSink& sink, ReadMonitor& monitor,
                          ConversionMessage& answer) {
    OpenedSource opened;
    if (ReadEnd end = OpenSource(bytes, job, opened); !end.ok())
        return end;
    const Source& source = opened.source;
    if (source.package != nullptr && source.package->Encrypted())
        return ReadEnd::Fault(ReadError::PasswordNeeded);
    if (source.kind == ContentKind::SlidePackage)
        return ReadSlides(*source.package, options, sink, monitor);
    if (source.kind == ContentKind::OpenSlides)
        return ReadOpenDocumentSlides(*source.package, options, sink, monitor);
    if (source.kind == ContentKind::BinarySlides || source.kind == ContentKind::OtherCompound)
        return NeedOffice("pptx", answer);
    if (source.kind == ContentKind::BrokenPackage)
        return ReadByKind(source, sink, monitor, answer);
    return ReadEnd::Fault(ReadError::WrongFormat, "no slides in this file");
}

ReadEnd OpenSheets(std::string_view bytes, const ConversionMessage& job,
                   std::unique_ptr<Workbook>& book, ConversionMessage& answer) {
    std::unique_ptr<Package> package;
    const ContentKind kind = KindOfContent(bytes, TextOf(job, "name"), package);
    if (kind == ContentKind::BrokenPackage)
        return ReadEnd::Fault(ReadError::Damaged, "the package (ZIP) is cut off or broken");
    const bool binary_book = package && package->Has("xl/workbook.bin");
    if (binary_book || kind == ContentKind::OtherCompound)
        return NeedOffice("xlsx", answer);
    ReadEnd end = OpenWorkbook(bytes, TextOf(job, "password"), book);
    if (end.error == ReadError::NeedsOffice || end.error == ReadError::Unsupported)
        answer["office"] = "xlsx";
    return end;
}

}  // namespace zorvane
