#include "load/readers/workbook.h"

#include <new>

#include "load/readers/compound_file.h"
#include "load/readers/xlsx_parts.h"

namespace zorvane {
namespace {

ReadEnd OpenPackage(std::string_view bytes, std::unique_ptr<Workbook>& workbook) {
    std::unique_ptr<Package> package = Package::Open(bytes);
    if (package == nullptr)
        return ReadEnd::Fault(ReadError::Damaged, "the package is broken");
    if (package->Encrypted())
        return ReadEnd::Fault(ReadError::Unsupported, "an encrypted ZIP file");
    ReadEnd end;
    workbook = OpenXlsx(std::move(package), end);
    return end;
}

ReadEnd OpenBytes(std::string_view bytes, std::string_view /*password*/,
                  std::unique_ptr<Workbook>& workbook) {
    if (bytes.starts_with("PK"))
        return OpenPackage(bytes, workbook);
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
