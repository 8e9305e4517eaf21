#include "load/trellis_port.h"

namespace zorvane {
namespace {

std::int32_t CodeOf(ReadError error) {
    switch (error) {
        case ReadError::None:
            return 0;
        case ReadError::Unsupported:
            return -8;
        case ReadError::PasswordNeeded:
            return -7;
        case ReadError::Damaged:
        case ReadError::Crashed:
        case ReadError::TooLarge:
        case ReadError::TimedOut:
            return -6;
        default:
            return -2;
    }
}

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
    detail_ = Explain(result, InputFile);
    cancelled_ = result.error == ReadError::Cancelled;
    return CodeOf(result.error);
}

std::int32_t TrellisPort::GetNumberOfPages() {
    constexpr std::int32_t kNoCatalog = -5;
    const ConversionResult result = service_.Run(Job("pdfpages"), observer_);
    if (const std::int32_t code = Take(result); code != 0)
        return code;
    return result.pages > 0 ? result.pages : kNoCatalog;
}

std::int32_t TrellisPort::ConvertPDFToFile() {
    return Take(service_.Run(Job("pdftext"), observer_));
}

std::string ReportTrellisPortError(std::int32_t lCode) {
    switch (lCode) {
        case -8:
            return "TPORT: User does not have permission to read\n\n" +
                   std::string(kChangePassword);
        case -7:
            return "TPORT: File is encrypted and password was incorrect or not supplied\n\n. " +
                   std::string(kChangePassword);
        case -6:
            return "TPORT: PDF File is damaged";
        case -5:
            return "TPORT: Couldn't read the page catalog";
        case -2:
            return "TPORT: File is invalid or could not open";
        default:
            return {};
    }
}

}  // namespace zorvane
