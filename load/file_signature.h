// What the first bytes of a file tell. Every test of bytes in the program and in zorvane-convert
// asks here.
#pragma once

#include <cstddef>
#include <string_view>

namespace zorvane {

enum class Signature {
    Text,         ///< also an empty file
    Utf16Text,    ///< by its mark or its look
    Markup,       ///< text of any encoding that begins with a tag
    RichText,     ///< "{\rtf"
    Pdf,          ///< a header within the first 1024 bytes
    Package,      ///< ZIP
    Compound,     ///< an OLE compound file
    SheetStream,  ///< the records of an XLS workbook without a compound file around them
    Binary        ///< holds a NUL and is none of these
};

/// What is read of a file to tell its signature, in bytes.
inline constexpr std::size_t kSignatureReach = std::size_t{64} * 1024;

/// Of more bytes than `kSignatureReach` the rest is not looked at.
Signature SignatureOf(std::string_view bytes);
inline bool HasSignature(std::string_view bytes, Signature signature) {
    return SignatureOf(bytes) == signature;
}

}  // namespace zorvane
