// The terminal behind the standard streams, and the pager in front of it.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "common/base/result.h"

namespace zorvane {

enum class Stream : std::int32_t { Output = 1, Error = 2 };

bool IsTerminal(Stream stream);

/// A variable of the environment; nothing when it is not set.
std::optional<std::string> Environment(const char* name);

/// True when colours fit: standard output is a terminal, NO_COLOR is not set to a text, TERM is not
/// "dumb".
bool ColorsFit();

/// Writes all bytes.
Status WriteStream(Stream stream, std::string_view bytes);

/// Asks for one line on the terminal of this process, whatever the standard streams are, without
/// showing what is typed. Fails without a terminal.
Result<std::string> AskSecret(std::string_view prompt);

/// Shows `text` through $ZORVANE_PAGER, $PAGER or less, in this order; "" and "cat" mean no pager.
/// LESS is set to "FRX" when it is not set, so that a short text stays on the screen. Falls back to
/// standard output.
Status ShowPaged(std::string_view text);

}  // namespace zorvane
