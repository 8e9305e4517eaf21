#include "compare/print/print_text.h"

#include <algorithm>

namespace zorvane {
namespace {

const CharFormat kDefaultChars;
const ParagraphFormat kDefaultParagraph;

template <class Run>
std::size_t LengthOf(const Run& run) {
    return static_cast<std::size_t>(run.length);
}

}  // namespace

PrintParagraph PrintParagraph::Part(std::int32_t begin, std::int32_t end) const {
    PrintParagraph part;
    part.text = text.substr(static_cast<std::size_t>(begin), static_cast<std::size_t>(end - begin));
    part.format = format;
    part.end_format = end_format;
    for (const PrintSpan& span : spans) {
        if (span.end > begin && span.begin < end)
            part.spans.push_back({std::max(span.begin, begin) - begin,
                                  std::min(span.end, end) - begin, span.format});
        if (span.begin <= begin && span.end >= begin)
            part.end_format = span.format;
    }
    return part;
}

const CharFormat* PrintReader::CharsAt(std::size_t place) {
    const std::vector<CharRun>& runs = text_.char_runs;
    while (char_run_ < runs.size() && char_begin_ + LengthOf(runs[char_run_]) <= place)
        char_begin_ += LengthOf(runs[char_run_++]);
    return char_run_ < runs.size() ? &runs[char_run_].format : &kDefaultChars;
}

const ParagraphFormat* PrintReader::ParagraphAt(std::size_t place) {
    const std::vector<ParagraphRun>& runs = text_.paragraph_runs;
    while (paragraph_run_ < runs.size() &&
           paragraph_begin_ + LengthOf(runs[paragraph_run_]) <= place)
        paragraph_begin_ += LengthOf(runs[paragraph_run_++]);
    return paragraph_run_ < runs.size() ? &runs[paragraph_run_].format : &kDefaultParagraph;
}

bool PrintReader::Next(PrintParagraph& paragraph) {
    const std::u16string_view text = text_.text;
    if (place_ >= text.size())
        return false;
    const std::size_t end = std::min(text.find(u'\r', place_), text.size());
    paragraph.text = text.substr(place_, end - place_);
    paragraph.format = ParagraphAt(place_);
    paragraph.spans.clear();
    for (std::size_t at = place_; at < end;) {
        const CharFormat* format = CharsAt(at);
        const std::size_t run_end = char_run_ < text_.char_runs.size()
                                        ? char_begin_ + LengthOf(text_.char_runs[char_run_])
                                        : end;
        const std::size_t stop = std::min(end, run_end);
        paragraph.spans.push_back({static_cast<std::int32_t>(at - place_),
                                   static_cast<std::int32_t>(stop - place_), format});
        at = stop;
    }
    paragraph.end_format = CharsAt(std::min(end, text.size() - 1));
    place_ = std::min(end + 2, text.size());
    return true;
}

}  // namespace zorvane
