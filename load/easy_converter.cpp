#include "load/easy_converter.h"

#include "load/pdf_options.h"

namespace zorvane {
namespace {

struct TextRow {
    std::uint32_t code;
    std::string_view text;
};
constexpr TextRow kTexts[] = {
    {0xFFFFFFFC, "Invalid page range numbers."},
    {0x8004FFFF, "Conversion error. Could be a file sharing violation."},
    {0x80050000,
     "Unable to load conversion library. Program installed incorrectly, please reinstall."},
    {0x80050001,
     "No open permission - User’s and/or owner’s password(s) required.\n\n Change password in the "
     "'Compare Options' tab, then 'PDF' tab item."},
    {0x80050002, "Unable to create output file"},
    {0x80050003, "Cannot open input file. Check file type, permissions etc."},
    {0x80050004, "Invalid input or output file names"},
    {0x80050005, "Unable to create temporary file"},
    {0x80050006, "Internal error"},
    {0x80050007, "Out of memory"},
    {0x80050008, "Conversion timed out"},
    {0x8005000D, "Invalid setup"},
    {0x8005000E, "User stopped process"},
};

}  // namespace

ConversionMessage EasyConverter::Job(const char* kind, const std::string& sFile,
                                     const std::string& sPassword) const {
    ConversionMessage job{
        {"kind", kind}, {"source", sFile}, {"user", sPassword}, {"owner", sPassword}};
    PutPdfOptions(settings_, job);
    return job;
}

EasyError EasyConverter::Take(const ConversionResult& result, const std::string& sFile) {
    detail_ = service_.Explain(result, sFile);
    return CodesOf(result.error).easy;
}

EasyError EasyConverter::CountPages(const std::string& sFile, const std::string& sPassword,
                                    std::int32_t& pages) {
    const ConversionResult result = service_.Run(Job("pdfpages", sFile, sPassword), observer_);
    pages = result.pages;
    return Take(result, sFile);
}

ConversionMessage EasyConverter::RichJob(const std::string& sFile, const std::string& sTarget,
                                         const std::string& sPassword, std::int32_t first,
                                         std::int32_t last) const {
    ConversionMessage job = Job("pdfrich", sFile, sPassword);
    job["target"] = sTarget;
    job["first"] = std::to_string(first);
    job["last"] = std::to_string(last);
    return job;
}

void EasyConverter::Expect(const std::string& sFile, const std::string& sPassword) {
    service_.Expect(RichJob(sFile, {}, sPassword, 0, 0));
}

EasyError EasyConverter::Convert(const std::string& sFile, const std::string& sTarget,
                                 const std::string& sPassword, std::int32_t first,
                                 std::int32_t last) {
    return Take(service_.Run(RichJob(sFile, sTarget, sPassword, first, last), observer_), sFile);
}

std::string ReportBCLError(EasyError error) {
    const auto code = static_cast<std::uint32_t>(error);
    constexpr std::int32_t kFirstWithoutText = -3;
    if (static_cast<std::int32_t>(code) >= kFirstWithoutText)
        return code == 0 ? "Successfully Converted." : "Unknown error.";
    for (const TextRow& row : kTexts) {
        if (row.code == code)
            return std::string(row.text);
    }
    return "Unknown error.";
}

}  // namespace zorvane
