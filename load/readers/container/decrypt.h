// Password-protected Office Open XML documents. Source: the public format description of
// compound-file encryption (MS-OFFCRYPTO): standard and agile encryption. Uses OpenSSL.
#pragma once

#include <string>
#include <string_view>

#include "load/readers/reader.h"

namespace zorvane {

/// True for a compound file that holds an encrypted package.
bool IsEncryptedPackage(std::string_view bytes);

/// The ZIP package inside. `PasswordNeeded` for a missing or wrong password (the password of
/// documents that are protected without one is tried first), `Unsupported` for another encryption,
/// `Damaged` for a broken file. The agile kind's integrity is checked where it is told.
ReadEnd DecryptPackage(std::string_view bytes, std::string_view password, std::string& package);

}  // namespace zorvane
