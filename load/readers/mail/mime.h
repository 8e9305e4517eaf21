// The parts of an e-mail message: headers, encodings, and what is inside what. Sources: RFC 5322,
// RFC 2045 to 2047 and RFC 2231.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace zorvane {

/// A message or a part of one. The views are borrowed from the message.
struct MimeEntity {
    std::vector<std::pair<std::string_view, std::string>> fields;  ///< unfolded, not decoded
    std::string_view body;

    /// The first field of that name in lower case; empty without one.
    std::string_view Field(std::string_view lower) const;
};

/// A field such as "text/plain; charset=utf-8": what stands in front, in lower case, and the
/// parameters.
struct MimeValue {
    std::string value;
    std::vector<std::pair<std::string, std::string>> parameters;

    std::string_view Parameter(std::string_view lower) const;
};

MimeEntity ReadEntity(std::string_view bytes);
MimeValue ReadMimeValue(std::string_view field);
/// The parts between the lines of a boundary. `whole` becomes false when the last line is missing
/// or there are more parts than are read.
std::vector<std::string_view> SplitParts(std::string_view body, std::string_view boundary,
                                         bool* whole = nullptr);
/// Bytes of a body, by the name of its transfer encoding.
std::string DecodeBody(std::string_view body, std::string_view encoding);
/// The bytes of a text with "%20" and the like.
std::string DecodePercent(std::string_view text);
/// UTF-8 of text in `charset`; an empty or unknown one is guessed.
std::string DecodeCharset(std::string_view bytes, std::string_view charset,
                          std::string_view locale_encoding);
/// UTF-8 of a field with encoded words ("=?utf-8?B?...?=").
std::string DecodeField(std::string_view field, std::string_view locale_encoding);

}  // namespace zorvane
