#include "compare/document/rtf_writer.h"

#include <algorithm>
#include <string_view>

#include "compare/document/rtf_body.h"

namespace zorvane {

// Both lists of runs are walked together; a piece ends where either does.
std::string WriteRtf(const RichText& text, RunWatcher* watcher) {
    constexpr std::int32_t kUnitsAtOnce = 1 << 16;
    RtfBody body;
    StopCheck going(watcher);
    body.Reserve(text.text.size() + text.text.size() / 4 + 4096);
    std::size_t paragraph = 0;
    std::int32_t paragraph_end = 0;
    std::int32_t at = 0;
    for (const CharRun& run : text.char_runs) {
        const std::int32_t end = at + run.length;
        bool format_written = false;
        while (at < end) {
            if (at >= paragraph_end && paragraph < text.paragraph_runs.size()) {
                paragraph_end += text.paragraph_runs[paragraph].length;
                body.ParagraphStart(text.paragraph_runs[paragraph++].format);
            }
            if (!format_written)
                body.Chars(run.format);
            format_written = true;
            const std::int32_t most = std::min(end, at + kUnitsAtOnce);
            const std::int32_t stop = paragraph_end > at ? std::min(most, paragraph_end) : most;
            if (!going.KeepGoing(stop - at))
                return body.Finish();
            body.Units(std::u16string_view(text.text).substr(static_cast<std::size_t>(at),
                                                             static_cast<std::size_t>(stop - at)));
            at = stop;
        }
    }
    return body.Finish();
}

}  // namespace zorvane
