// Signatures of packages. What signs a document does not fit its redline, and a word processor
// would take the file for one that somebody tampered with.
#pragma once

#include <cstdint>

#include "redline/word_package.h"

namespace zorvane {

/// Takes all out, with what they alone lead to; says how many there were.
std::int64_t RemoveWordSignatures(WordPackage& package);
/// The same of an OpenDocument package. What signs its macros stays: these are kept as they are.
std::int64_t RemoveOdtSignatures(WordPackage& package);

}  // namespace zorvane
