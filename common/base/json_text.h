// Text in JSON that programs write.
#pragma once

#include <string>
#include <string_view>

namespace zorvane {

/// `text` is UTF-8, without quotes around it: quotes, backslashes and control characters are
/// escaped, and a no-break space, so that it can be told from a blank.
void AppendJsonEscaped(std::string_view text, std::string& out);
/// In quotes; of what is no UTF-8 each ill-formed part becomes U+FFFD.
void AppendJsonString(std::string_view text, std::string& out);
/// A field with a path, `"field":"..."`. A name that is not UTF-8 cannot stand in JSON: its bytes
/// stand beside it in hexadecimal, as `"field_bytes"`.
void AppendJsonPath(std::string_view field, std::string_view path, std::string& out);

}  // namespace zorvane
