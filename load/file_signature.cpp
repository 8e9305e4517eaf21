#include "load/file_signature.h"

#include <string>

#include "common/base/ascii.h"
#include "common/base/text_encoding.h"
#include "compare/document/rtf_reader.h"

namespace zorvane {
namespace {

using namespace std::string_view_literals;

struct Magic {
    std::string_view bytes;
    Signature signature;
};
constexpr Magic kMagic[] = {
    {"PK\x03\x04", Signature::Package},
    {"PK\x05\x06", Signature::Package},  // without an entry
    {"PK\x07\x08", Signature::Package},  // one of several volumes
    {"\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1", Signature::Compound},
};

// A record of the kind BOF, whose length is below 256.
bool IsSheetStream(std::string_view bytes) {
    return bytes.starts_with("\x09\x08"sv) && bytes.size() >= 8 && bytes[3] == 0;
}

// Readers of PDF accept its header within as many bytes.
bool HasPdfHeader(std::string_view bytes) {
    constexpr std::size_t kPdfReach = 1024;
    return bytes.substr(0, kPdfReach).find("%PDF-") != std::string_view::npos;
}

// White space and a byte-order mark may stand in front.
bool BeginsWithTag(std::string_view text) {
    constexpr std::size_t kTagReach = 4096;
    if (text.starts_with("\xEF\xBB\xBF"))
        text.remove_prefix(3);
    text = Trim(text.substr(0, kTagReach));
    if (text.size() < 2 || text[0] != '<')
        return false;
    const char next = text[1];
    return IsAsciiLetter(next) || next == '!' || next == '?' || next == '%';
}

Signature Utf16Signature(std::string_view bytes) {
    constexpr std::size_t kTagReach = 8192;
    const std::string_view head = bytes.substr(0, kTagReach);
    const std::string text = ToUtf8(DecodeText(head, DetectEncoding(head, "UTF-16LE")));
    return BeginsWithTag(text) ? Signature::Markup : Signature::Utf16Text;
}

}  // namespace

Signature SignatureOf(std::string_view bytes) {
    bytes = bytes.substr(0, kSignatureReach);
    for (const Magic& magic : kMagic) {
        if (bytes.starts_with(magic.bytes))
            return magic.signature;
    }
    if (LooksLikeRtf(bytes))
        return Signature::RichText;
    if (HasPdfHeader(bytes))
        return Signature::Pdf;
    if (IsSheetStream(bytes))
        return Signature::SheetStream;
    if (LooksLikeUtf16(bytes))
        return Utf16Signature(bytes);
    if (BeginsWithTag(bytes))
        return Signature::Markup;
    return bytes.find('\0') == std::string_view::npos ? Signature::Text : Signature::Binary;
}

}  // namespace zorvane
