#include "compare/document/rtf_reader.h"

#include "compare/document/rtf_reading.h"

namespace zorvane {
namespace {

std::string_view WithoutMark(std::string_view bytes) {
    if (bytes.starts_with("\xEF\xBB\xBF"))
        bytes.remove_prefix(3);
    const std::size_t first = bytes.find_first_not_of(" \t\r\n");
    return first == std::string_view::npos ? std::string_view() : bytes.substr(first);
}

}  // namespace

bool LooksLikeRtf(std::string_view bytes) {
    return WithoutMark(bytes).starts_with("{\\rtf");
}

RichText ReadRtf(std::string_view bytes) {
    return RtfReading(WithoutMark(bytes), nullptr, nullptr).Read();
}

RichText ReadRtf(std::string_view bytes, std::vector<BesideItem>& beside, RunWatcher* watcher) {
    return RtfReading(WithoutMark(bytes), &beside, watcher).Read();
}

}  // namespace zorvane
