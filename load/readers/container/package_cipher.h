// The two encryptions of Office Open XML packages, on the two streams that hold them. Source: the
// public format description MS-OFFCRYPTO (2.3.4).
#pragma once

#include <string>
#include <string_view>

#include "load/readers/reader.h"

namespace zorvane {

/// `info` is the stream "EncryptionInfo", `encrypted` the stream "EncryptedPackage"; the package is
/// deciphered in its place. One password, in UTF-8. `PasswordNeeded` leaves `encrypted` as it is.
ReadEnd DecipherPackage(std::string_view info, std::string_view password, std::string& encrypted);

}  // namespace zorvane
