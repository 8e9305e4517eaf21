#include <deque>
#include <new>

#include "load/readers/container/xml_part.h"
#include "load/readers/ooxml/xlsx_parts.h"

namespace zorvane {
namespace {

using Token = XmlScanner::Token;

constexpr std::size_t kMostSheets = 10'000;

// A part that is read twice: what is not too large is unpacked once and kept, in pieces that go as
// they are read for the last time.
class KeptPart : public PartStream {
  public:
    explicit KeptPart(PartStream& stream) : stream_(stream) {}

    std::size_t Read(char* buffer, std::size_t size) override {
        if (rewound_)
            return ReadKept(buffer, size);
        if (TooLarge())
            return 0;
        const std::size_t got = stream_.Read(buffer, size);
        if (kept_bytes_ + got <= kMostKept)
            pieces_.emplace_back(buffer, got);
        kept_bytes_ += got;
        if (kept_bytes_ > kMostKept)
            pieces_.clear();
        return got;
    }
    ReadError Error() const override { return stream_.Error(); }

    /// More than any sheet that could be shown takes; the reading has ended.
    bool TooLarge() const { return kept_bytes_ > kMostBytes; }
    /// To the begin. False when too much was read to be kept.
    bool Rewind() {
        rewound_ = true;
        return kept_bytes_ <= kMostKept;
    }

  private:
    static constexpr std::size_t kMostKept = std::size_t{48} << 20;
    static constexpr std::size_t kMostBytes = std::size_t{1} << 30;

    std::size_t ReadKept(char* buffer, std::size_t size) {
        while (!pieces_.empty() && place_ == pieces_.front().size()) {
            pieces_.pop_front();
            place_ = 0;
        }
        if (pieces_.empty())
            return 0;
        const std::size_t got = pieces_.front().copy(buffer, size, place_);
        place_ += got;
        return got;
    }

    PartStream& stream_;
    std::deque<std::string> pieces_;
    std::size_t place_ = 0;
    std::size_t kept_bytes_ = 0;
    bool rewound_ = false;
};

class XlsxWorkbook : public Workbook {
  public:
    explicit XlsxWorkbook(std::unique_ptr<Package> package) : package_(std::move(package)) {}

    ReadEnd Open() {
        const auto root = ReadRelationships(*package_, "");
        std::string part = "xl/workbook.xml";
        for (const auto& [id, relationship] : root) {
            if (relationship.type == "officeDocument" && !relationship.external)
                part = relationship.target;
        }
        if (part.ends_with(".bin"))
            return ReadEnd::Fault(ReadError::NeedsOffice, "a binary workbook (XLSB)");
        relationships_ = ReadRelationships(*package_, part);
        return ReadBook(part);
    }

    const std::vector<SheetInfo>& Sheets() const override { return sheets_; }

    ReadEnd ReadSheet(std::size_t index, const SheetOptions& options, const RowSink& rows,
                      ReadMonitor& monitor) override try {
        if (index >= parts_.size())
            return ReadEnd::Fault(ReadError::WrongFormat, "no such sheet");
        if (ReadEnd end = ReadShared(); !end.ok())
            return end;
        const std::string& part = parts_[index];
        if (part.empty())  // a chart, which has no cells
            return ReadEnd::Ok();
        const std::unique_ptr<PartStream> stream = package_->Stream(part);
        if (stream == nullptr)
            return ReadEnd::Fault(ReadError::Damaged, "the sheet " + part + " is missing");
        MergedCells merges;
        KeptPart kept(*stream);
        ReadXlsxMerges(kept, merges);
        if (kept.TooLarge())
            return ReadEnd::Fault(ReadError::TooLarge, "the sheet is too large");
        if (kept.Error() == ReadError::Damaged)
            return ReadEnd::Fault(ReadError::Damaged, "the sheet " + part + " is broken");
        if (kept.Rewind())
            return ReadXlsxSheet(kept, merges, book_, options, rows, monitor);
        const std::unique_ptr<PartStream> again = package_->Stream(part);
        if (again == nullptr)
            return ReadEnd::Fault(ReadError::Damaged, "the sheet " + part + " is missing");
        return ReadXlsxSheet(*again, merges, book_, options, rows, monitor);
    } catch (const std::bad_alloc&) {
        return ReadEnd::Fault(ReadError::TooLarge, "the workbook needs more memory than allowed");
    }

  private:
    ReadEnd ReadBook(const std::string& part) {
        const std::unique_ptr<PartStream> stream = package_->Stream(part);
        if (stream == nullptr)
            return ReadEnd::Fault(ReadError::WrongFormat, "no workbook inside");
        XmlScanner scanner(*stream);
        ReadEnd end = scanner.ForAllTokens([&](Token token) {
            if (token != Token::Start)
                return;
            if (scanner.Name() == "workbookPr") {
                const std::string_view date = scanner.Attribute("date1904");
                book_.date_1904 = date == "1" || date == "true" || date == "on";
            } else if (scanner.Name() == "sheet" && sheets_.size() < kMostSheets) {
                AddSheet(scanner);
            }
        });
        if (end.ok() && sheets_.empty())
            return ReadEnd::Fault(ReadError::Damaged, "the workbook has no sheets");
        return end;
    }

    void AddSheet(const XmlScanner& scanner) {
        SheetInfo sheet;
        AppendDecoded(scanner.Attribute("name"), sheet.name);
        const std::string_view state = scanner.Attribute("state");
        sheet.hidden = state == "hidden" || state == "veryHidden";
        sheets_.push_back(std::move(sheet));
        const auto found = relationships_.find(std::string(scanner.Attribute("id")));
        const bool cells = found != relationships_.end() && !found->second.external &&
                           found->second.type != "chartsheet";
        parts_.push_back(cells ? found->second.target : "");
    }

    // Styles and texts are read for the first sheet, not for the list of names.
    ReadEnd ReadShared() {
        if (!shared_)
            shared_ = ReadStylesAndTexts();
        return *shared_;
    }

    ReadEnd ReadStylesAndTexts() {
        for (const auto& [id, relationship] : relationships_) {
            const bool styles = relationship.type == "styles";
            if (relationship.external || (!styles && relationship.type != "sharedStrings"))
                continue;
            const std::unique_ptr<PartStream> stream = package_->Stream(relationship.target);
            if (stream == nullptr)
                continue;
            ReadEnd end = styles ? ReadXlsxStyles(*stream, book_.styles)
                                 : ReadXlsxTexts(*stream, book_.texts);
            if (!end.ok())
                return end;
        }
        return ReadEnd::Ok();
    }

    std::unique_ptr<Package> package_;
    std::unordered_map<std::string, Relationship> relationships_;
    std::vector<SheetInfo> sheets_;
    std::vector<std::string> parts_;
    XlsxBook book_;
    std::optional<ReadEnd> shared_;
};

}  // namespace

std::unique_ptr<Workbook> OpenXlsx(std::unique_ptr<Package> package, ReadEnd& end) {
    auto workbook = std::make_unique<XlsxWorkbook>(std::move(package));
    end = workbook->Open();
    if (!end.ok())
        return nullptr;
    return workbook;
}

}  // namespace zorvane
