// Whether a binary office document is behind a password, told from its own marks. For the road to
// an office suite that cannot say so.
#pragma once

#include <string_view>

namespace zorvane {

/// False for anything that is no such document. Sources: the public format descriptions MS-DOC,
/// MS-XLS, MS-PPT and MS-OFFCRYPTO.
bool IsBehindPassword(std::string_view bytes);

}  // namespace zorvane
