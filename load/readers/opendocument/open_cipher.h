// Password-protected OpenDocument files. Source: OpenDocument 1.3, part 2 (packages), "Encryption".
// Uses OpenSSL, zlib and libzip.
#pragma once

#include <string>
#include <string_view>

#include "load/readers/container/package.h"

namespace zorvane {

/// The package again as a ZIP file, its parts deciphered; small pictures of the document and the
/// settings of programs are left out. `PasswordNeeded` for a missing or wrong password,
/// `Unsupported` for another encryption than AES with PBKDF2, which all offices wrote since
/// OpenDocument 1.2 until Argon2id came.
ReadEnd DecipherOpenDocument(Package& package, std::string_view password, std::string& plain);

}  // namespace zorvane
