#include "load/conversion_answer.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

#include "common/base/parse_number.h"
#include "common/base/text_bytes.h"
#include "common/base/text_encoding.h"

namespace zorvane {
namespace {

// The modern formats that a reader may ask an office suite for.
constexpr std::array<std::string_view, 3> kOfficeFormats{"docx", "xlsx", "pptx"};

constexpr std::int64_t kMostPages = 10'000'000;

// Errors that only the waiting side tells are none that a child may give.
std::optional<ReadError> ErrorOf(const ConversionMessage& answer) {
    const auto number = ParseNumber<std::int32_t>(TextOf(answer, "error"));
    if (!number || *number < 0 || *number > static_cast<std::int32_t>(ReadError::NotTracked))
        return std::nullopt;
    const auto error = static_cast<ReadError>(*number);
    if (error == ReadError::Crashed || error == ReadError::TimedOut)
        return std::nullopt;
    return error;
}

// "offset length"
std::optional<AnswerPart> PartOf(std::string_view text, std::uint64_t answer_size) {
    const std::size_t blank = text.find(' ');
    if (blank == std::string_view::npos)
        return std::nullopt;
    const auto offset = ParseNumber<std::uint64_t>(text.substr(0, blank));
    const auto length = ParseNumber<std::uint64_t>(text.substr(blank + 1));
    if (!offset || !length || *offset > answer_size || *length > answer_size - *offset)
        return std::nullopt;
    return AnswerPart{*offset, *length};
}

// The list of what lies beside the text, behind the last part where there is one.
bool TakeBeside(const ConversionMessage& answer, std::uint64_t end, std::uint64_t answer_size,
                ConversionResult& result) {
    if (answer.find("beside") == answer.end())
        return true;
    const auto part = PartOf(TextOf(answer, "beside"), answer_size);
    if (!part || part->offset < end || part->length > kMostBesideBytes)
        return false;
    result.beside = *part;
    return true;
}

bool TakeParts(const ConversionMessage& answer, std::size_t count, std::uint64_t answer_size,
               ConversionResult& result) {
    std::uint64_t end = 0;
    for (std::size_t i = 1; i <= count; ++i) {
        const auto part = PartOf(TextOf(answer, "part" + std::to_string(i)), answer_size);
        // One behind the other: else one stretch could be asked for thousands of times.
        if (!part || part->offset < end)
            return false;
        end = part->offset + part->length;
        result.parts.push_back(*part);
    }
    return TakeBeside(answer, end, answer_size, result);
}

bool TakeSheets(const ConversionMessage& answer, std::size_t& count, ConversionResult& result) {
    const auto told = ParseNumber<std::size_t>(TextOf(answer, "sheets"));
    if (!told || *told > kMostSheets)
        return false;
    count = *told;
    for (std::size_t i = 1; i <= count; ++i) {
        const auto name = answer.find("sheet" + std::to_string(i));
        if (name == answer.end())
            return false;
        result.sheets.push_back(VisibleText(name->second));
    }
    return true;
}

bool TakePages(const ConversionMessage& answer, ConversionResult& result) {
    const auto pages = ParseNumber<std::int64_t>(TextOf(answer, "pages"));
    if (!pages || *pages < 0 || *pages > kMostPages)
        return false;
    result.pages = static_cast<std::int32_t>(*pages);
    return true;
}

bool TakeShape(const ConversionMessage& answer, AnswerShape shape, std::uint64_t answer_size,
               ConversionResult& result) {
    std::size_t count = 1;
    switch (shape) {
        case AnswerShape::OneDocument:
            return TakeParts(answer, count, answer_size, result);
        case AnswerShape::DocumentAndNote:
            ++count;
            return TakeParts(answer, count, answer_size, result);
        case AnswerShape::Sheets:
            return TakeSheets(answer, count, result) && count > 0 &&
                   TakeParts(answer, count, answer_size, result);
        case AnswerShape::SheetNames:
            return TakeSheets(answer, count, result);
        case AnswerShape::PageCount:
            return TakePages(answer, result);
    }
    return false;
}

bool TakeOffice(const ConversionMessage& answer, ConversionResult& result) {
    const std::string_view format = TextOf(answer, "office");
    if (format.empty())
        return true;
    const auto* const known = std::find(kOfficeFormats.begin(), kOfficeFormats.end(), format);
    if (known == kOfficeFormats.end())
        return false;
    result.office = *known;
    return true;
}

// Marks that turn, embed or isolate a direction of writing, and those that break a line.
bool IsHidden(char16_t unit) {
    return unit < 0x20 || (unit >= 0x7F && unit < 0xA0) || unit == 0x61C ||
           (unit >= 0x200B && unit <= 0x200F) || (unit >= 0x2028 && unit <= 0x202E) ||
           (unit >= 0x2060 && unit <= 0x206F) || unit == 0xFEFF;
}

char16_t MarkOf(char16_t unit) {
    constexpr char16_t kControlPictures = 0x2400;
    constexpr char16_t kDelete = 0x7F;
    constexpr char16_t kDeletePicture = 0x2421;
    if (unit == kDelete)
        return kDeletePicture;
    return unit < 0x20 ? static_cast<char16_t>(kControlPictures + unit) : u'\uFFFD';
}

}  // namespace

ConversionResult FailedConversion(ReadError error, std::string detail) {
    ConversionResult result;
    result.error = error;
    result.detail = std::move(detail);
    return result;
}

std::string VisibleText(std::string_view text) {
    const bool cut = text.size() > kMostTextBytes;
    text = text.substr(0, kMostTextBytes);
    // The last character of a cut text may be half of one.
    while (cut && !text.empty() && IsContinuation(text.back()))
        text.remove_suffix(1);
    if (cut && !text.empty() && static_cast<unsigned char>(text.back()) >= 0xC0)
        text.remove_suffix(1);
    std::u16string shown = ToUtf16(text);
    for (char16_t& unit : shown) {
        if (IsHidden(unit))
            unit = MarkOf(unit);
    }
    return ToUtf8(shown) + (cut ? "..." : "");
}

ConversionResult CheckedAnswer(const ConversionMessage& answer, AnswerShape shape,
                               std::uint64_t answer_size) {
    ConversionResult nonsense = FailedConversion(ReadError::Crashed, "its answer makes no sense");
    const std::optional<ReadError> error = ErrorOf(answer);
    if (!error)
        return nonsense;
    ConversionResult result = FailedConversion(*error, VisibleText(TextOf(answer, "detail")));
    const bool good =
        result.ok() ? TakeShape(answer, shape, answer_size, result) : TakeOffice(answer, result);
    return good ? result : nonsense;
}

}  // namespace zorvane
