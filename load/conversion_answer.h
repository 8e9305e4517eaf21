// What a conversion came to. The child that answers may have been taken over by the document that
// it reads, so that nothing it says is believed: everything is looked up or bounded.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "load/conversion_error.h"
#include "load/conversion_message.h"

namespace zorvane {

/// A stretch of the answer file.
struct AnswerPart {
    std::uint64_t offset = 0;
    std::uint64_t length = 0;
    friend bool operator==(const AnswerPart&, const AnswerPart&) = default;
};

/// Much more than the longest list of what lies beside a text.
inline constexpr std::uint64_t kMostBesideBytes = std::uint64_t{16} << 20;

/// What a request is to bring.
enum class AnswerShape {
    OneDocument,      ///< one part
    DocumentAndNote,  ///< two parts: a document, and what is to be told of it
    Sheets,           ///< one part and one name for each sheet, at least one
    SheetNames,       ///< names alone
    PageCount         ///< a number alone
};

struct ConversionResult {
    ReadError error = ReadError::None;
    std::string detail;  ///< the reader's own words, in one line; may be empty
    std::vector<AnswerPart> parts;
    AnswerPart beside;  ///< what lies beside the text, by `EncodeBesideList`; may be empty
    std::vector<std::string> sheets;  ///< names, for a user
    std::int32_t pages = 0;
    std::string office;  ///< after `NeedsOffice`: the format that it is to be converted to
    /// The files that the parts went to, the target first.
    std::vector<std::string> files;

    bool ok() const { return error == ReadError::None; }
};

/// One that only tells how it ended.
ConversionResult FailedConversion(ReadError error, std::string detail = {});

/// The answer, or `Crashed` for one that no reader of ours gives. `answer_size`: bytes in the
/// answer file, which every part must lie in.
ConversionResult CheckedAnswer(const ConversionMessage& answer, AnswerShape shape,
                               std::uint64_t answer_size);

/// `text` as it may be shown: at most `kMostTextBytes` of UTF-8, control characters and what turns
/// the direction of writing as visible marks, in one line.
std::string VisibleText(std::string_view text);

}  // namespace zorvane
