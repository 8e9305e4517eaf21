#include "load/readers/office/office_password.h"

#include <cstdint>
#include <optional>
#include <string>

#include "load/readers/container/compound_file.h"

namespace zorvane {
namespace {

/// Little-endian; 0 beyond the end.
std::uint32_t Number(std::string_view bytes, std::size_t at, std::size_t width) {
    std::uint32_t number = 0;
    if (at > bytes.size() || bytes.size() - at < width)
        return number;
    for (std::size_t index = width; index > 0; --index)
        number = (number << 8) | static_cast<unsigned char>(bytes[at + index - 1]);
    return number;
}

/// A bit in the flags of a word processor document's first record.
bool IsLockedDocument(std::string_view stream) {
    constexpr std::size_t kFlagsAt = 10;
    constexpr std::uint32_t kEncrypted = 0x0100;
    return (Number(stream, kFlagsAt, 2) & kEncrypted) != 0;
}

/// A workbook is a row of records (kind, length, contents); the one of the password follows the
/// first, at most after one of write protection.
bool IsLockedWorkbook(std::string_view stream) {
    constexpr int kRecordsToLookAt = 4;
    constexpr std::size_t kHead = 4;
    constexpr std::uint32_t kPassword = 0x2F;
    std::size_t at = 0;
    for (int record = 0; record < kRecordsToLookAt && at < stream.size(); ++record) {
        if (Number(stream, at, 2) == kPassword)
            return true;
        at += kHead + Number(stream, at + 2, 2);
    }
    return false;
}

/// The user's record has another mark where the slides are encrypted.
bool IsLockedShow(std::string_view stream) {
    constexpr std::size_t kMarkAt = 12;
    constexpr std::uint32_t kEncrypted = 0xF3D1C4DF;
    return Number(stream, kMarkAt, 4) == kEncrypted;
}

/// The two bytes that begin a workbook of before compound files.
bool BeginsAsWorkbook(std::string_view bytes) {
    constexpr std::uint32_t kVersions = 0x0F00;
    return bytes.size() > 4 && (Number(bytes, 0, 2) & ~kVersions) == 0x09;
}

}  // namespace

bool IsBehindPassword(std::string_view bytes) {
    if (!CompoundFile::LooksLike(bytes))
        return BeginsAsWorkbook(bytes) && IsLockedWorkbook(bytes);
    const std::optional<CompoundFile> file = CompoundFile::Open(bytes);
    if (!file)
        return false;
    if (file->Has("EncryptedPackage"))
        return true;
    if (const std::optional<std::string> stream = file->Read("WordDocument"))
        return IsLockedDocument(*stream);
    for (const char* name : {"Workbook", "Book"}) {
        if (const std::optional<std::string> stream = file->Read(name))
            return IsLockedWorkbook(*stream);
    }
    const std::optional<std::string> stream = file->Read("Current User");
    return stream && IsLockedShow(*stream);
}

}  // namespace zorvane
