// The codes by which the faces of the converters tell why a document could not be read: one table
// from a reading error to the code of each face.
#pragma once

#include <cstdint>

#include "load/conversion_error.h"

namespace zorvane {

/// Of `TrellisPage::OpenWordSaveAs`.
enum class WordResult : std::int32_t {
    Ok = 0,
    SourceInvalid = -2,
    NotInstalled = -3,  ///< nothing here reads the format
    PathEmpty = -8,
    Protected = -9,
    Other = -10  ///< `ErrorString` tells
};

/// Of `EasyConverter`.
enum class EasyError : std::uint32_t {
    None = 0,
    BadPageRange = 0xFFFFFFFC,  ///< -4
    Conversion = 0x8004FFFF,
    NoLibrary = 0x80050000,
    NoPermission = 0x80050001,
    CannotCreateOutput = 0x80050002,
    CannotOpenInput = 0x80050003,
    Internal = 0x80050006,
    OutOfMemory = 0x80050007,
    TimedOut = 0x80050008,
    Stopped = 0x8005000E
};

/// Of `TrellisPort`; what stands in for a number of pages is below 0.
enum class PortError : std::int32_t {
    None = 0,
    CannotOpen = -2,
    NoPages = -5,  ///< told by a count of none, by no reading error
    Damaged = -6,
    PasswordNeeded = -7,
    NoPermission = -8
};

/// A reading error as the faces tell it. `TrellisGrid`, `GridBridge` and `TrellisSlide` tell the
/// number of the reading error itself.
struct ContractCodes {
    ReadError error;
    WordResult page;
    EasyError easy;
    PortError port;
};
const ContractCodes& CodesOf(ReadError error);

}  // namespace zorvane
