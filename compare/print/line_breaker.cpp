#include "compare/print/line_breaker.h"

#include <algorithm>
#include <limits>
#include <optional>
#include <unicode/ubrk.h>
#include <unicode/uchar.h>

#include "common/base/surrogates.h"
#include "compare/document/rtf_output.h"

namespace zorvane {
namespace {

constexpr std::u16string_view kControls = u"\t\a\v\f";  // tab, end of a cell, line, page
constexpr std::size_t kLinesUnasked = 500;
constexpr std::u16string_view kBlanks = u" \u3000";

bool StaysWithPrevious(UChar32 character) {
    const auto kind = u_charType(character);
    return kind == U_NON_SPACING_MARK || kind == U_ENCLOSING_MARK ||
           kind == U_COMBINING_SPACING_MARK || character == 0x200D;
}

char16_t UnitAt(std::u16string_view text, std::int32_t place) {
    return text[static_cast<std::size_t>(place)];
}

// In front of the character with its marks that `place` stands in.
std::int32_t WholeCharacter(std::u16string_view text, std::int32_t begin, std::int32_t place) {
    constexpr int kMostMarks = 32;
    const auto size = static_cast<std::int32_t>(text.size());
    for (int marks = 0; marks < kMostMarks && place > begin && place < size; ++marks) {
        const bool inside =
            IsLowSurrogate(UnitAt(text, place)) && IsHighSurrogate(UnitAt(text, place - 1));
        if (!inside && !StaysWithPrevious(UnitAt(text, place)))
            break;
        --place;
    }
    return place;
}

}  // namespace

// By the line-breaking rules of Unicode; by blanks alone should their tables not load.
struct LineBreaker::Places {
    Places() {
        UErrorCode status = U_ZERO_ERROR;
        rules = ubrk_open(UBRK_LINE, "", nullptr, 0, &status);
    }
    ~Places() { ubrk_close(rules); }
    Places(const Places&) = delete;
    Places& operator=(const Places&) = delete;

    void Set(std::u16string_view paragraph) {
        text = paragraph;
        UErrorCode status = U_ZERO_ERROR;
        if (rules != nullptr)
            ubrk_setText(rules, text.data(), static_cast<std::int32_t>(text.size()), &status);
        ready = rules != nullptr && U_SUCCESS(status);
        if (ready)
            ubrk_first(rules);
    }
    // Behind `place`, which the call before gave.
    std::int32_t Next(std::int32_t place) const {
        const auto size = static_cast<std::int32_t>(text.size());
        if (ready) {
            const std::int32_t found = ubrk_next(rules);
            return found == UBRK_DONE ? size : found;
        }
        const std::size_t blank = text.find(u' ', static_cast<std::size_t>(place));
        return blank == std::u16string_view::npos ? size : static_cast<std::int32_t>(blank) + 1;
    }

    UBreakIterator* rules = nullptr;
    std::u16string_view text;
    bool ready = false;
};

class LineBreaker::Job {
  public:
    Job(const ParagraphMeasure& measure, const ParagraphRoom& room, std::vector<PrintLine>& lines,
        const std::function<bool()>& keep_going)
        : measure_(measure),
          text_(measure.Paragraph().text),
          room_(room),
          lines_(lines),
          keep_going_(keep_going),
          line_room_(room.First()) {
        StartLine(0);
    }

    // Up to `end`, where a line may end.
    void Take(std::int32_t end) {
        while (!stopped_ && at_ < end) {
            const std::size_t control = text_.find_first_of(kControls, Size(at_));
            const auto stop = static_cast<std::int32_t>(std::min(control, Size(end)));
            if (stop > at_)
                Word(at_, stop);
            at_ = stop;
            if (at_ < end)
                Control(text_[Size(at_)]);
        }
    }
    bool Stopped() const { return stopped_; }
    void Finish() { EndLine(static_cast<std::int32_t>(text_.size()), true, false); }

  private:
    static std::size_t Size(std::int32_t place) { return static_cast<std::size_t>(place); }

    void StartLine(std::int32_t begin) {
        line_room_ = lines_.empty() ? room_.First() : room_.Later();
        pen_.emplace(*measure_.Paragraph().format, room_, line_room_);
        begin_ = begin;
        empty_ = true;
    }
    void EndLine(std::int32_t end, bool whole, bool ends_page) {
        lines_.push_back(
            {begin_, end, measure_.Height(begin_, end), lines_.empty(), whole, ends_page});
        if (lines_.size() % kLinesUnasked == 0 && !keep_going_())
            stopped_ = true;
    }

    void Control(char16_t control) {
        ++at_;
        if (control == kRtfLine || control == u'\f') {
            EndLine(at_ - 1, true, control == u'\f');
            StartLine(at_);
            return;
        }
        const bool fits = pen_->NextStop() <= line_room_.end;
        if (!fits && !empty_) {
            EndLine(at_ - 1, false, false);
            StartLine(at_ - 1);
        }
        if (fits || pen_->NextStop() <= line_room_.end)
            pen_->Tab();
        empty_ = false;
    }

    double EndWith(double width, double to_point) const {
        LinePen pen = *pen_;
        pen.Add(width, to_point);
        return pen.End();
    }
    // Of a number that hangs by its decimal point.
    double ToPoint(std::int32_t begin, std::int32_t end) const {
        if (!pen_->WantsPoint())
            return -1;
        const std::size_t point = text_.substr(0, Size(end)).find_first_of(u".,", Size(begin));
        return point == std::u16string_view::npos
                   ? -1
                   : measure_.Width(begin, static_cast<std::int32_t>(point));
    }

    void Word(std::int32_t begin, std::int32_t end) {
        const std::size_t last = text_.substr(0, Size(end)).find_last_not_of(kBlanks);
        const std::int32_t ink_end = last == std::u16string_view::npos
                                         ? begin
                                         : std::max(begin, static_cast<std::int32_t>(last) + 1);
        double ink = InkWidth(begin, ink_end);
        if (!empty_ && EndWith(ink, ToPoint(begin, ink_end)) > line_room_.end) {
            EndLine(begin, false, false);
            StartLine(begin);
        }
        while (!stopped_ && EndWith(ink, ToPoint(begin, ink_end)) > line_room_.end) {
            const std::int32_t cut = FittingEnd(begin, ink_end);
            if (cut >= ink_end)
                break;
            EndLine(cut, false, false);
            StartLine(cut);
            begin = cut;
            ink = InkWidth(begin, ink_end);
        }
        pen_->Add(ink_end < end ? measure_.Width(begin, end) : ink, ToPoint(begin, ink_end));
        empty_ = false;
    }

    // Of a word that no line can hold only that is known, since each of its lines asks again.
    double InkWidth(std::int32_t begin, std::int32_t end) const {
        constexpr std::int32_t kMostOnALine = 4096;
        return end - begin > kMostOnALine ? std::numeric_limits<double>::infinity()
                                          : measure_.Width(begin, end);
    }

    // How much of a word that is longer than a line fits: at least one character.
    std::int32_t FittingEnd(std::int32_t begin, std::int32_t end) const {
        const double room = line_room_.end - pen_->End();
        const auto fits = [&](std::int32_t stop) { return measure_.Width(begin, stop) <= room; };
        std::int32_t good = begin;
        std::int32_t bad = std::min(begin + 64, end);
        while (bad < end && fits(bad)) {
            good = bad;
            bad = std::min(begin + 2 * (bad - begin), end);
        }
        while (bad - good > 1) {
            const std::int32_t middle = good + (bad - good) / 2;
            (fits(middle) ? good : bad) = middle;
        }
        good = WholeCharacter(text_, begin, good);
        if (good > begin)
            return good;
        std::int32_t one = begin + 1;
        while (one < end && WholeCharacter(text_, begin, one) < one)
            ++one;
        return one;
    }

    const ParagraphMeasure& measure_;
    std::u16string_view text_;
    const ParagraphRoom& room_;
    std::vector<PrintLine>& lines_;
    const std::function<bool()>& keep_going_;
    bool stopped_ = false;
    LineRoom line_room_;
    std::optional<LinePen> pen_;
    std::int32_t begin_ = 0;
    std::int32_t at_ = 0;
    bool empty_ = true;
};

LineBreaker::LineBreaker() : places_(std::make_unique<Places>()) {}
LineBreaker::~LineBreaker() = default;

bool LineBreaker::Break(const ParagraphMeasure& measure, const ParagraphRoom& room,
                        std::vector<PrintLine>& lines, const std::function<bool()>& keep_going) {
    lines.clear();
    const std::u16string_view text = measure.Paragraph().text;
    const auto size = static_cast<std::int32_t>(text.size());
    Job job(measure, room, lines, keep_going);
    places_->Set(text);
    for (std::int32_t place = 0; place < size;) {
        place = places_->Next(place);
        job.Take(place);
        if (job.Stopped())
            return false;
    }
    job.Finish();
    return true;
}

}  // namespace zorvane
