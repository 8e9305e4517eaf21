#include "load/readers/pdf/pdf_document.h"

#include <Error.h>
#include <ErrorCodes.h>
#include <GlobalParams.h>
#include <Page.h>
#include <Stream.h>
#include <algorithm>
#include <exception>
#include <new>
#include <optional>
#include <set>
#include <utility>

#include "load/readers/pdf/pdf_reader.h"
#include "load/readers/sandbox/open_tables.h"

namespace zorvane {
namespace {

// The library tells its faults to one function of the whole process.
struct PageFaults {
    std::int32_t drawn = 0;  // the page that is drawn now
    std::set<std::int32_t> pages;
};

PageFaults& Faults() {
    static PageFaults faults;
    return faults;
}

void TakeMessage(ErrorCategory category, Goffset /*position*/, const char* /*message*/) {
    if (Faults().drawn > 0 && (category == errSyntaxError || category == errIO))
        Faults().pages.insert(Faults().drawn);
}

// Where the library's tables of characters are; told to it, so that both mean the same.
constexpr const char* kDataFolder = "/usr/share/poppler";

void PrepareLibrary() {
    if (globalParams)
        return;
    setErrorCallback(TakeMessage);
    globalParams = std::make_unique<GlobalParams>(kDataFolder);
    globalParams->setTextEncoding("UTF-8");
}

std::optional<GooString> Password(const std::string& password) {
    if (password.empty())
        return std::nullopt;
    // The format looks at no more bytes of a password than 127.
    return GooString(password.data(), std::min<std::size_t>(password.size(), 256));
}

std::unique_ptr<PDFDoc> TryToOpen(std::string_view bytes, const std::string& owner,
                                  const std::string& user) {
    auto stream = std::make_unique<MemStream>(bytes.data(), 0, static_cast<Goffset>(bytes.size()),
                                              Object(objNull));
    return std::make_unique<PDFDoc>(stream.release(), Password(owner), Password(user));
}

ReadEnd EndOfOpening(int code) {
    switch (code) {
        case errNone:
            return ReadEnd::Ok();
        case errEncrypted:
            return ReadEnd::Fault(ReadError::PasswordNeeded,
                                  "the file is encrypted, and the password is missing or wrong");
        case errBadCatalog:
            return ReadEnd::Fault(ReadError::Damaged, "the page catalog could not be read");
        case errOpenFile:
        case errFileIO:
            return ReadEnd::Fault(ReadError::CannotOpen);
        default:
            return ReadEnd::Fault(ReadError::Damaged, "the PDF file is damaged");
    }
}

std::unique_ptr<PDFDoc> TryBoth(std::string_view bytes, const PdfPasswords& passwords) {
    std::unique_ptr<PDFDoc> document = TryToOpen(bytes, passwords.owner, passwords.user);
    // Either password opens the document, in whichever of the two fields it was typed.
    if (document->getErrorCode() == errEncrypted && passwords.owner != passwords.user)
        document = TryToOpen(bytes, passwords.user, passwords.owner);
    return document;
}

enum class Encryption : std::uint8_t {
    Read,          // by poppler, or there is none
    StreamsOnly,   // the strings are plain, which poppler takes for no encryption at all
    StringsOnly,   // the text is readable as it is
    NotSupported,  // not by a password, or by an unknown method
};

Encryption EncryptionOf(PDFDoc& document) {
    XRef* const table = document.getXRef();
    if (table == nullptr || !table->getTrailerDict()->isDict() || document.isEncrypted())
        return Encryption::Read;
    const Object encryption = table->getTrailerDict()->dictLookup("Encrypt");
    if (!encryption.isDict())
        return Encryption::Read;
    if (!encryption.dictLookup("Filter").isName("Standard"))
        return Encryption::NotSupported;
    if (document.getErrorCode() == errEncrypted)
        return Encryption::Read;
    const Object streams = encryption.dictLookup("StmF");
    const Object strings = encryption.dictLookup("StrF");
    if (!streams.isName() || streams.isName("Identity"))
        return Encryption::StringsOnly;
    return !strings.isName() || strings.isName("Identity") ? Encryption::StreamsOnly
                                                           : Encryption::NotSupported;
}

// Lets the strings be read as the streams are. What a page shows lies in streams; a string that
// is spoilt by this is an address or a title, and is not shown.
std::unique_ptr<std::string> WithOneFilter(std::string_view bytes) {
    constexpr std::string_view kPlain = "/StrF /Identity";
    constexpr std::string_view kLikeStreams = "/StrF/StdCF    ";
    static_assert(kPlain.size() == kLikeStreams.size());
    const std::size_t at = bytes.rfind(kPlain);
    if (at == std::string_view::npos)
        return nullptr;
    auto changed = std::make_unique<std::string>(bytes);
    changed->replace(at, kPlain.size(), kLikeStreams);
    return changed;
}

PdfFile Opened(std::string_view bytes, const PdfPasswords& passwords, ReadEnd& end) {
    PdfFile file;
    file.document = TryBoth(bytes, passwords);
    Encryption encryption = EncryptionOf(*file.document);
    if (encryption == Encryption::StreamsOnly) {
        file.changed_bytes = WithOneFilter(bytes);
        if (file.changed_bytes) {
            file.document = TryBoth(*file.changed_bytes, passwords);
            encryption = EncryptionOf(*file.document);
        }
    }
    end = EndOfOpening(file.document->getErrorCode());
    if (encryption == Encryption::NotSupported || encryption == Encryption::StreamsOnly)
        end = ReadEnd::Fault(ReadError::Unsupported, "the encryption of the file is not supported");
    else if (end.ok() && (!file.document->isOk() || file.document->getNumPages() <= 0))
        end = ReadEnd::Fault(ReadError::Damaged, "the PDF file has no pages");
    return end.ok() ? std::move(file) : PdfFile{};
}

ReadEnd EndOfException() {
    try {
        throw;
    } catch (const std::bad_alloc&) {
        return ReadEnd::Fault(ReadError::TooLarge, "the PDF file needs too much memory");
    } catch (...) {
        return ReadEnd::Fault(ReadError::Damaged, "the PDF file is damaged");
    }
}

bool AskClock(void* clock) {
    return static_cast<const PdfPageClock*>(clock)->IsOver();
}

// When the time of the processor for the pages is over.
std::clock_t LastTick(PDFDoc& document) {
    constexpr double kMegabyte = 1e6;
    const double size = static_cast<double>(document.getBaseStream()->getLength());
    const double seconds = kDocumentSeconds + kDocumentSecondsPerMegabyte * size / kMegabyte;
    return std::clock() + static_cast<std::clock_t>(seconds * CLOCKS_PER_SEC);
}

ReadEnd Walk(PDFDoc& document, const PdfWalk& walk, ReadMonitor& monitor,
             const PageDone& page_done) {
    constexpr double kResolution = 72.0;
    const PdfPages pages = PagesWithin(walk.pages, document.getNumPages());
    const std::int32_t total = pages.last - pages.first + 1;
    const std::clock_t last = LastTick(document);
    for (std::int32_t page = pages.first; page <= pages.last; ++page) {
        if (!monitor.Progress(page - pages.first, total))
            return ReadEnd::Fault(ReadError::Cancelled);
        walk.clock.Start();
        Faults().pages.erase(page);
        Faults().drawn = page;
        document.displayPage(&walk.device, page, kResolution, kResolution, 0,
                             walk.box == PageBox::Media, false, false, AskClock, &walk.clock);
        Faults().drawn = 0;
        if (!page_done(page) || walk.clock.IsOver())
            return ReadEnd::Fault(ReadError::TooLarge, "a page holds too much");
        if (std::clock() > last)
            return ReadEnd::Fault(ReadError::TooLarge, "the pages hold too much");
    }
    return monitor.Progress(total, total) ? ReadEnd::Ok() : ReadEnd::Fault(ReadError::Cancelled);
}

}  // namespace

ReadEnd PreparePdf(OpenTables& tables) {
    PrepareLibrary();
    for (const char* folder : {"/cMap", "/cidToUnicode", "/unicodeMap"})
        tables.AddAllBelow(std::string(kDataFolder) + folder);
    return ReadEnd::Ok();
}

PdfFile OpenPdf(std::string_view bytes, const PdfPasswords& passwords, ReadEnd& end) {
    if (!LooksLikePdf(bytes)) {
        end = ReadEnd::Fault(ReadError::WrongFormat, "the file is not a PDF file");
        return {};
    }
    try {
        PrepareLibrary();
        // NOLINTNEXTLINE(clang-analyzer-cplusplus.NewDeleteLeaks): the document owns its stream
        return Opened(bytes, passwords, end);
    } catch (...) {
        end = EndOfException();
    }
    return {};
}

PdfFile OpenPdfForText(std::string_view bytes, const PdfPasswords& passwords, ReadEnd& end) {
    PdfFile file = OpenPdf(bytes, passwords, end);
    if (!file.document || file.document->okToCopy())
        return file;
    end = ReadEnd::Fault(ReadError::Unsupported,
                         "the file does not permit its text to be copied without the owner's "
                         "password");
    return {};
}

ReadEnd WalkPages(PDFDoc& document, const PdfWalk& walk, ReadMonitor& monitor,
                  const PageDone& page_done) {
    try {
        return Walk(document, walk, monitor, page_done);
    } catch (const PdfPageTimeIsOver&) {
        return ReadEnd::Fault(ReadError::TooLarge, "a page holds too much");
    } catch (...) {
        return EndOfException();
    }
}

bool WasReadInPart(std::int32_t page) {
    return Faults().pages.contains(page);
}

PdfPages PagesWithin(const PdfPages& pages, std::int32_t count) {
    if (pages.first == 0 && pages.last == 0)
        return {1, count};
    PdfPages within{std::min(pages.first, pages.last), std::max(pages.first, pages.last)};
    if (within.first < 1 || within.first > count)
        within.first = 1;
    if (within.last < 1 || within.last > count)
        within.last = count;
    return within;
}

ReadEnd CountPdfPages(std::string_view bytes, const PdfPasswords& passwords, std::int32_t& pages) {
    ReadEnd end;
    const PdfFile file = OpenPdf(bytes, passwords, end);
    pages = file.document ? file.document->getNumPages() : 0;
    return end;
}

}  // namespace zorvane
