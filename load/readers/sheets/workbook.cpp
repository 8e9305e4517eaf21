#include "load/readers/sheets/workbook.h"

#include <new>

#include "load/file_signature.h"
#include "load/readers/binary_sheets/xls_workbook.h"
#include "load/readers/ooxml/xlsx_parts.h"
#include "load/readers/opendocument/ods_workbook.h"
#include "load/readers/protected_package.h"

namespace zorvane {
namespace {

ReadEnd OpenPackage(std::string_view bytes, std::unique_ptr<Workbook>& workbook) {
    std::unique_ptr<Package> package = Package::Open(bytes);
    if (package == nullptr)
        return ReadEnd::Fault(ReadError::Damaged, "the package is broken");
    if (package->Encrypted())
        return ReadEnd::Fault(ReadError::Unsupported, "an encrypted ZIP file");
    ReadEnd end;
    if (IsOpenDocumentSheets(*package))
        workbook = OpenOds(*package, end);
    else
        workbook = OpenXlsx(std::move(package), end);
    return end;
}

// A package that was decrypted is the book's own.
class DecryptedWorkbook : public Workbook {
  public:
    explicit DecryptedWorkbook(std::string bytes) : bytes_(std::move(bytes)) {}
    ReadEnd Open() { return OpenPackage(bytes_, workbook_); }
    const std::vector<SheetInfo>& Sheets() const override { return workbook_->Sheets(); }
    ReadEnd ReadSheet(std::size_t index, const SheetOptions& options, const RowSink& rows,
                      ReadMonitor& monitor) override {
        return workbook_->ReadSheet(index, options, rows, monitor);
    }

  private:
    std::string bytes_;
    std::unique_ptr<Workbook> workbook_;
};

ReadEnd OpenDecrypted(std::string package, std::unique_ptr<Workbook>& workbook) {
    auto decrypted = std::make_unique<DecryptedWorkbook>(std::move(package));
    ReadEnd end = decrypted->Open();
    if (end.ok())
        workbook = std::move(decrypted);
    return end;
}

bool LooksLikeFlatOds(std::string_view bytes) {
    const std::string_view begin = bytes.substr(0, 8192);
    return begin.find("<office:document") != std::string_view::npos &&
           begin.find("opendocument.spreadsheet") != std::string_view::npos;
}

ReadEnd OpenBytes(std::string_view bytes, std::string_view password,
                  std::unique_ptr<Workbook>& workbook) {
    std::string plain;
    ReadEnd end = OpenProtected(bytes, password, plain);
    if (!end.ok())
        return end;
    if (!plain.empty())
        return OpenDecrypted(std::move(plain), workbook);
    if (HasSignature(bytes, Signature::Package))
        return OpenPackage(bytes, workbook);
    if (LooksLikeXls(bytes)) {
        workbook = OpenXls(bytes, password, end);
        return end;
    }
    if (LooksLikeFlatOds(bytes)) {
        workbook = OpenFlatOds(bytes, end);
        return end;
    }
    return ReadEnd::Fault(ReadError::WrongFormat, "no workbook");
}

}  // namespace

ReadEnd OpenWorkbook(std::string_view bytes, std::string_view password,
                     std::unique_ptr<Workbook>& workbook) try {
    return OpenBytes(bytes, password, workbook);
} catch (const std::bad_alloc&) {
    return ReadEnd::Fault(ReadError::TooLarge, "the workbook needs more memory than allowed");
}

}  // namespace zorvane
