#include "load/converter.h"

#include <cctype>

#include "common/base/text_encoding.h"
#include "common/platform/files.h"
#include "compare/document/rtf_reader.h"
#include "load/file_kind.h"

namespace zorvane {
namespace {

constexpr std::string_view kMarkup = "HTM XML PHP";
// Names that promise a word processor's own format, which is never to be shown as raw bytes.
constexpr std::string_view kDocuments = "DOC DOT ODT WPD WPS MCW";

bool LooksLikeMarkup(std::string_view bytes) {
    if (bytes.starts_with("\xEF\xBB\xBF"))
        bytes.remove_prefix(3);
    bytes = Trim(bytes.substr(0, 4096));
    return bytes.size() > 1 && bytes[0] == '<' &&
           (std::isalpha(static_cast<unsigned char>(bytes[1])) != 0 || bytes[1] == '!' ||
            bytes[1] == '?');
}

bool LooksLikePackage(std::string_view bytes) {
    constexpr std::size_t kHead = std::size_t{64} * 1024;
    return bytes.starts_with("PK\x03\x04") || bytes.starts_with("%PDF") ||
           bytes.substr(0, kHead).find('\0') != std::string_view::npos;
}

// Why the bytes, which are not RTF, are no text either; empty when they are.
std::string WhyNotText(std::string_view bytes, const std::string& sFile) {
    if (LooksLikeUtf16(bytes))
        return {};
    const bool document = ExtensionContains(sFile, kDocuments);
    if (ExtensionContains(sFile, kMarkup) || (document && LooksLikeMarkup(bytes)))
        return "this version does not read HTML and XML; compare their source with the option "
               "bHTMLCompareSource";
    if (document && LooksLikePackage(bytes))
        return "this version reads RTF and text; save the document as RTF first";
    return {};
}

}  // namespace

Result<std::string> NativeWordConverter::Convert(const std::string& sFile, WordFormat format,
                                                 const WordPasswords& /*passwords*/) {
    Result<std::string> bytes = ReadWholeFile(sFile);
    if (!bytes.ok())
        return bytes;
    if (LooksLikeRtf(bytes.value())) {
        if (format == WordFormat::RichText)
            return bytes;
        return ToUtf8(ReadRtf(bytes.value()).text);
    }
    if (const std::string reason = WhyNotText(bytes.value(), sFile); !reason.empty())
        return Failure{sFile + ": " + reason};
    return ToUtf8(DecodeText(bytes.value(), DetectEncoding(bytes.value(), locale_encoding_)));
}

}  // namespace zorvane
