#include "load/readers/container/decrypt.h"

#include <optional>

#include "load/readers/container/compound_file.h"
#include "load/readers/container/package_cipher.h"

namespace zorvane {
namespace {

constexpr std::string_view kInfo = "EncryptionInfo";
constexpr std::string_view kPackage = "EncryptedPackage";

// Documents that are to open for everybody and yet be encrypted (protected against changes, or
// mail attachments) carry this one, as the format's public description tells.
constexpr std::string_view kPasswordOfNobody = "VelvetSweatshop";

}  // namespace

bool IsEncryptedPackage(std::string_view bytes) {
    if (!CompoundFile::LooksLike(bytes))
        return false;
    const std::optional<CompoundFile> file = CompoundFile::Open(bytes);
    return file && file->Has(kPackage);
}

ReadEnd DecryptPackage(std::string_view bytes, std::string_view password, std::string& package) {
    const std::optional<CompoundFile> file = CompoundFile::Open(bytes);
    if (!file)
        return ReadEnd::Fault(ReadError::Damaged, "the file is damaged");
    if (!file->Has(kPackage))
        return ReadEnd::Fault(ReadError::WrongFormat, "the file holds no encrypted document");
    if (!file->Has(kInfo))
        return ReadEnd::Fault(ReadError::Unsupported,
                              "the document is protected by rights management");
    const std::optional<std::string> info = file->Read(kInfo);
    std::optional<std::string> encrypted = file->Read(kPackage);
    if (!info || !encrypted)
        return ReadEnd::Fault(ReadError::Damaged, "the file is damaged");
    ReadEnd end = DecipherPackage(*info, kPasswordOfNobody, *encrypted);
    if (end.error == ReadError::PasswordNeeded && !password.empty())
        end = DecipherPackage(*info, password, *encrypted);
    if (end.ok())
        package = std::move(*encrypted);
    return end;
}

}  // namespace zorvane
