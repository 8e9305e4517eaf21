#include "load/trellis_port.h"

namespace zorvane {
namespace {

constexpr std::string_view kChangePassword =
    "Change password in the 'Compare Options' tab, then 'PDF' tab item.";

}  // namespace

ConversionMessage TrellisPort::Job(const char* kind) const {
    constexpr double kTenths = 10.0;
    return {{"kind", kind},
            {"source", InputFile},
            {"target", OutputFile},
            {"user", PasswordUser},
            {"owner", PasswordOwner},
            {"first", std::to_string(FirstPage)},
            {"last", std::to_string(LastPage)},
            {"delta", std::to_string(static_cast<std::int64_t>(tsSetDupMaxDeltaX * kTenths))}};
}

std::int32_t TrellisPort::Take(const ConversionResult& result) {
    detail_ = service_.Explain(result, InputFile);
    cancelled_ = result.error == ReadError::Cancelled;
    return static_cast<std::int32_t>(CodesOf(result.error).port);
}

std::int32_t TrellisPort::GetNumberOfPages() {
    const ConversionResult result = service_.Run(Job("pdfpages"), observer_);
    if (const std::int32_t code = Take(result); code != 0)
        return code;
    return result.pages > 0 ? result.pages : static_cast<std::int32_t>(PortError::NoPages);
}

std::int32_t TrellisPort::ConvertPDFToFile() {
    return Take(service_.Run(Job("pdftext"), observer_));
}

std::string ReportTrellisPortError(std::int32_t lCode) {
    switch (static_cast<PortError>(lCode)) {
        case PortError::NoPermission:
            return "TPORT: User does not have permission to read\n\n" +
                   std::string(kChangePassword);
        case PortError::PasswordNeeded:
            return "TPORT: File is encrypted and password was incorrect or not supplied\n\n. " +
                   std::string(kChangePassword);
        case PortError::Damaged:
            return "TPORT: PDF File is damaged";
        case PortError::NoPages:
            return "TPORT: Couldn't read the page catalog";
        case PortError::CannotOpen:
            return "TPORT: File is invalid or could not open";
        default:
            return {};
    }
}

}  // namespace zorvane
