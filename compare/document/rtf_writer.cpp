#include "compare/document/rtf_writer.h"

#include <algorithm>
#include <string_view>

#include "compare/document/rtf_body.h"

namespace zorvane {

namespace {

// Goes on from paragraph to paragraph with the places of a text.
class ParagraphStarts {
  public:
    explicit ParagraphStarts(const RichText& text) : runs_(text.paragraph_runs) {}

    // `at` is where the next units stand: behind the paragraph's end the next one begins.
    void Reach(std::int32_t at, RtfBody& body) {
        if (at < end_ || next_ == runs_.size())
            return;
        end_ += runs_[next_].length;
        body.ParagraphStart(runs_[next_++].format);
    }
    // The most that is written in one piece from `at`.
    std::int32_t StopBefore(std::int32_t at, std::int32_t most) const {
        return end_ > at ? std::min(most, end_) : most;
    }

  private:
    const std::vector<ParagraphRun>& runs_;
    std::size_t next_ = 0;
    std::int32_t end_ = 0;
};

}  // namespace

// Both lists of runs are walked together; a piece ends where either does.
std::string WriteRtf(const RichText& text, RunWatcher* watcher) {
    constexpr std::int32_t kUnitsAtOnce = 1 << 16;
    RtfBody body;
    StopCheck going(watcher);
    body.Reserve(text.text.size() + text.text.size() / 4 + 4096);
    ParagraphStarts paragraphs(text);
    std::int32_t at = 0;
    for (const CharRun& run : text.char_runs) {
        const std::int32_t end = at + run.length;
        bool format_written = false;
        while (at < end) {
            paragraphs.Reach(at, body);
            if (!format_written)
                body.Chars(run.format);
            format_written = true;
            const std::int32_t stop = paragraphs.StopBefore(at, std::min(end, at + kUnitsAtOnce));
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
