#include "load/readers/binary_sheets/xls_workbook.h"

#include <map>
#include <new>
#include <unordered_map>

#include "load/file_signature.h"
#include "load/readers/binary_sheets/xls_records.h"
#include "load/readers/container/compound_file.h"

namespace zorvane {
namespace {

using namespace xls;  // NOLINT(google-build-using-namespace): this file is a part of it

constexpr std::size_t kMostSheets = 10'000;
constexpr std::size_t kMostNames = 65'536;
constexpr std::size_t kMostStyles = 65'536;
constexpr std::uint16_t kBiff5 = 0x0500;
constexpr std::uint16_t kBiff8 = 0x0600;

class XlsWorkbook : public Workbook {
  public:
    explicit XlsWorkbook(std::string stream) : stream_(std::move(stream)) {
        book_.stream = stream_;
    }

    ReadEnd Open(std::string_view password) {
        Record record;
        if (!ReadRecord(stream_, 0, record) || record.id != kBof)
            return ReadEnd::Fault(ReadError::Unsupported, "a workbook of an old version");
        const std::uint16_t version = Bytes(record.data).U16();
        if (version != kBiff5 && version != kBiff8)
            return ReadEnd::Fault(ReadError::Unsupported, "a workbook of an old version");
        book_.biff8 = version == kBiff8;
        for (std::size_t at = record.end; ReadRecord(stream_, at, record); at = record.end) {
            if (record.id == kEof)
                break;
            if (record.id == kFilePass)
                return ReadEnd::Fault(
                    password.empty() ? ReadError::PasswordNeeded : ReadError::Unsupported,
                    "an encrypted workbook of an old version");
            if (ReadEnd end = Take(record); !end.ok())
                return end;
        }
        MakeStyles();
        if (sheets_.empty())
            return ReadEnd::Fault(ReadError::Damaged, "the workbook has no sheets");
        return ReadEnd::Ok();
    }

    const std::vector<SheetInfo>& Sheets() const override { return sheets_; }

    ReadEnd ReadSheet(std::size_t index, const SheetOptions& options, const RowSink& rows,
                      ReadMonitor& monitor) override try {
        if (index >= offsets_.size())
            return ReadEnd::Fault(ReadError::WrongFormat, "no such sheet");
        Record record;
        if (!ReadRecord(stream_, offsets_[index], record) || record.id != kBof)
            return ReadEnd::Fault(ReadError::Damaged, "a sheet is missing");
        if (!cells_[index])  // a chart, a module
            return ReadEnd::Ok();
        return ReadXlsSheet(book_, offsets_[index], options, rows, monitor);
    } catch (const std::bad_alloc&) {
        return ReadEnd::Fault(ReadError::TooLarge, "the workbook needs more memory than allowed");
    }

  private:
    ReadEnd Take(const Record& record) {
        Bytes bytes(record.data);
        switch (record.id) {
            case kCodePage:
                book_.code_page = CodePage{bytes.U16()};
                break;
            case kDateMode:
                book_.shared.date_1904 = bytes.U16() == 1;
                break;
            case kFormat:
                TakeFormat(bytes);
                break;
            case kXf:
                bytes.U16();
                if (styles_.size() < kMostStyles)
                    styles_.push_back(bytes.U16());
                break;
            case kBoundSheet:
                TakeSheet(bytes);
                break;
            case kSupBook:
                TakeSupBook(bytes);
                break;
            case kExternSheet:
                TakeReferences(bytes);
                break;
            case kName:
                TakeName(bytes);
                break;
            case kSst:
                return ReadTexts(book_, record, book_.shared.texts);
            default:
                break;
        }
        return ReadEnd::Ok();
    }

    void TakeFormat(Bytes& bytes) {
        const std::uint16_t id = bytes.U16();
        const std::size_t count = book_.biff8 ? bytes.U16() : bytes.U8();
        std::string code;
        AppendText(bytes, count, book_, code);
        codes_[id] = std::move(code);
    }

    void TakeSheet(Bytes& bytes) {
        if (sheets_.size() >= kMostSheets)
            return;
        const std::uint32_t offset = bytes.U32();
        const std::uint8_t state = bytes.U8();
        const std::uint8_t type = bytes.U8();
        SheetInfo sheet;
        sheet.hidden = (state & 3) != 0;
        AppendText(bytes, bytes.U8(), book_, sheet.name);
        constexpr std::uint8_t kModule = 6;
        book_.sheet_names.push_back(sheet.name);
        if (type == kModule)  // program text, which no tab shows
            return;
        sheets_.push_back(std::move(sheet));
        offsets_.push_back(offset);
        cells_.push_back(type <= 1);
    }

    void TakeSupBook(Bytes& bytes) {
        bytes.U16();
        constexpr std::uint16_t kOwn = 0x0401;
        own_books_.push_back(bytes.U16() == kOwn);
    }

    void TakeReferences(Bytes& bytes) {
        if (!book_.biff8)
            return;
        for (std::uint16_t count = bytes.U16(); count > 0 && !bytes.Failed(); --count) {
            const std::uint16_t book = bytes.U16();
            Book::SheetReference reference;
            reference.first = static_cast<std::int16_t>(bytes.U16());
            reference.last = static_cast<std::int16_t>(bytes.U16());
            if (book >= own_books_.size() || !own_books_[book])
                reference = {};
            book_.references.push_back(reference);
        }
    }

    void TakeName(Bytes& bytes) {
        if (book_.names.size() >= kMostNames)
            return;
        const std::uint16_t flags = bytes.U16();
        bytes.U8();
        const std::size_t count = bytes.U8();
        bytes.View(10);
        std::string name;
        constexpr std::uint16_t kBuiltIn = 0x20;
        if ((flags & kBuiltIn) == 0)
            AppendText(bytes, count, book_, name);
        book_.names.push_back(std::move(name));
    }

    void MakeStyles() {
        SheetStyles& styles = book_.shared.styles;
        std::map<std::uint16_t, std::uint32_t> known;
        styles.formats.clear();
        for (const std::uint16_t id : styles_) {
            const auto [place, fresh] = known.try_emplace(id, 0);
            if (fresh) {
                place->second = static_cast<std::uint32_t>(styles.formats.size());
                const auto own = codes_.find(id);
                // The code of the short date depends on the machine that wrote it; 14 alone tells.
                const bool built_in = id == 14 || id == 22 || own == codes_.end();
                styles.formats.emplace_back(built_in ? NumberFormat::BuiltIn(id)
                                                     : std::string_view(own->second));
            }
            styles.by_style.push_back(place->second);
        }
        if (styles.formats.empty())
            styles.formats.emplace_back("General");
    }

    std::string stream_;
    Book book_;
    std::vector<SheetInfo> sheets_;
    std::vector<std::uint32_t> offsets_;
    std::vector<bool> cells_;
    std::vector<bool> own_books_;
    std::vector<std::uint16_t> styles_;
    std::unordered_map<std::uint16_t, std::string> codes_;
};

}  // namespace

bool LooksLikeXls(std::string_view bytes) {
    if (HasSignature(bytes, Signature::SheetStream))
        return true;
    const auto file = CompoundFile::Open(bytes);
    return file && (file->Has("Workbook") || file->Has("Book"));
}

std::unique_ptr<Workbook> OpenXls(std::string_view bytes, std::string_view password, ReadEnd& end) {
    std::string stream;
    if (HasSignature(bytes, Signature::SheetStream)) {
        stream = bytes;
    } else {
        const auto file = CompoundFile::Open(bytes);
        auto found = file ? file->Read("Workbook") : std::nullopt;
        if (!found && file)
            found = file->Read("Book");
        if (!found) {
            end = ReadEnd::Fault(ReadError::Damaged, "the workbook's stream is broken");
            return nullptr;
        }
        stream = std::move(*found);
    }
    auto workbook = std::make_unique<XlsWorkbook>(std::move(stream));
    end = workbook->Open(password);
    if (!end.ok())
        return nullptr;
    return workbook;
}

}  // namespace zorvane
