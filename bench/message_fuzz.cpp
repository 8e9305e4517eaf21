// Any bytes as what a converter says, in pieces of any size: reading ends, a message keeps to its
// bounds and reads the same when it is written again, and what is believed of an answer lies within
// the answer file.
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "common/base/text_encoding.h"
#include "load/conversion_answer.h"

namespace {

using namespace zorvane;

void Require(bool holds) {
    if (!holds)
        std::abort();
}

void CheckText(const std::string& text) {
    constexpr std::size_t kLongestShown = kMostTextBytes * 3 + 3;  // each byte shown as a mark
    Require(text.size() <= kLongestShown && IsValidUtf8(text));
    Require(std::none_of(text.begin(), text.end(),
                         [](char byte) { return static_cast<unsigned char>(byte) < 0x20; }));
}

void CheckAnswer(const ConversionMessage& message, std::uint64_t size) {
    for (const AnswerShape shape : {AnswerShape::OneDocument, AnswerShape::Sheets,
                                    AnswerShape::SheetNames, AnswerShape::PageCount}) {
        const ConversionResult result = CheckedAnswer(message, shape, size);
        CheckText(result.detail);
        std::uint64_t end = 0;
        for (const AnswerPart& part : result.parts) {
            Require(part.offset >= end && part.length <= size - part.offset);
            end = part.offset + part.length;
        }
        Require(end <= size && result.pages >= 0 && result.sheets.size() <= kMostSheets);
        std::for_each(result.sheets.begin(), result.sheets.end(), CheckText);
    }
}

void CheckMessage(const ConversionMessage& message) {
    Require(message.size() <= kMostMessageEntries);
    const std::string bytes = EncodeMessage(message);
    Require(bytes.size() <= kMostMessageBytes + 1);
    MessageReader again;
    again.Feed(bytes);
    Require(again.Next() == message);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 2)
        return 0;
    const std::size_t piece = std::size_t{data[0]} + 1;
    const std::uint64_t answer_size = data[1];
    std::string_view bytes(reinterpret_cast<const char*>(data) + 2, size - 2);  // NOLINT
    MessageReader reader;
    while (!bytes.empty()) {
        reader.Feed(bytes.substr(0, piece));
        bytes.remove_prefix(std::min(piece, bytes.size()));
        while (const std::optional<ConversionMessage> message = reader.Next()) {
            CheckMessage(*message);
            CheckAnswer(*message, answer_size);
        }
    }
    return 0;
}
