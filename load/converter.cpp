#include "load/converter.h"

#include "common/base/text_encoding.h"
#include "common/platform/files.h"
#include "compare/document/rtf_reader.h"
#include "compare/document/rtf_writer.h"
#include "load/file_kind.h"

namespace zorvane {
namespace {

bool IsPlainText(std::string_view bytes, const std::string& sFile) {
    return LooksLikeUtf16(bytes) ||
           !ExtensionContains(sFile, "DOC DOT ODT WPD WPS MCW PDF HTM XML PHP");
}

}  // namespace

Status NativeWordConverter::Convert(const std::string& sFile, const std::string& sTarget,
                                    WordFormat format, const WordPasswords& /*passwords*/) {
    const Result<std::string> bytes = ReadWholeFile(sFile);
    if (!bytes.ok())
        return bytes.failure();
    RichText text;
    if (LooksLikeRtf(bytes.value()))
        text = ReadRtf(bytes.value());
    else if (IsPlainText(bytes.value(), sFile))
        text = RichText::Plain(
            DecodeText(bytes.value(), DetectEncoding(bytes.value(), locale_encoding_)));
    else
        return Failure{sFile +
                       ": this version reads text and RTF; save the document as RTF first, "
                       "or compare the source of HTML with bHTMLCompareSource"};
    return WriteWholeFile(sTarget,
                          format == WordFormat::PlainText ? ToUtf8(text.text) : WriteRtf(text));
}

}  // namespace zorvane
