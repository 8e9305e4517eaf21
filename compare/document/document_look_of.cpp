#include "compare/document/document_look_of.h"

#include <algorithm>
#include <map>

#include "common/base/paragraph_break.h"
#include "compare/document/heading_places.h"

namespace zorvane {
namespace {

// The size that most of the text has, in half points.
std::int32_t BodySizeOf(const RichText& text) {
    std::map<std::int32_t, std::int64_t> lengths;
    for (const CharRun& run : text.char_runs)
        lengths[run.format.half_points] += run.length;
    std::int32_t size = 0;
    std::int64_t most = 0;
    for (const auto& [half_points, length] : lengths) {
        if (length > most) {
            size = half_points;
            most = length;
        }
    }
    return size;
}

// By how much larger the letters are than the body's, in hundredths.
std::uint8_t HeadingLevel(std::int32_t size, std::int32_t body) {
    struct Row {
        std::int32_t least;
        std::uint8_t level;
    };
    constexpr Row kRows[] = {{175, 1}, {130, 2}, {108, 3}};
    for (const Row& row : kRows) {
        if (size * 100 >= body * row.least)
            return row.level;
    }
    return 0;
}

LookAlignment AlignmentOf(const ParagraphFormat& format) {
    switch (format.alignment) {
        case Alignment::Center:
            return LookAlignment::Center;
        case Alignment::Right:
            return LookAlignment::Right;
        case Alignment::Justify:
        case Alignment::Left:
            break;
    }
    // Justified text is for paper; on a page of two columns it only tears holes.
    return LookAlignment::Left;
}

// Runs of a text, walked from its beginning on.
template <class Run>
class RunCursor {
  public:
    explicit RunCursor(const std::vector<Run>& runs) : runs_(runs) {}

    /// The run that holds a position; positions ascend.
    const Run* At(std::size_t position) {
        while (index_ < runs_.size() &&
               position >= end_ + static_cast<std::size_t>(runs_[index_].length)) {
            end_ += static_cast<std::size_t>(runs_[index_].length);
            ++index_;
        }
        return index_ < runs_.size() ? &runs_[index_] : nullptr;
    }
    std::size_t EndOfRun() const { return end_ + static_cast<std::size_t>(runs_[index_].length); }

  private:
    const std::vector<Run>& runs_;
    std::size_t index_ = 0;
    std::size_t end_ = 0;  // of the runs in front
};

class LookFinder {
  public:
    explicit LookFinder(const RichText& text)
        : text_(text),
          body_(BodySizeOf(text)),
          characters_(text.char_runs),
          formats_(text.paragraph_runs) {}

    DocumentLook Find() {
        Words();
        Paragraphs();
        return std::move(look_);
    }

  private:
    void Words() {
        std::size_t at = 0;
        WordsLook last;
        for (const CharRun& run : text_.char_runs) {
            const bool bold = run.format.bold;
            const bool italic = run.format.italic;
            if (bold != last.bold || italic != last.italic) {
                last = {static_cast<std::uint32_t>(at), bold, italic};
                look_.words.push_back(last);
            }
            at += static_cast<std::size_t>(run.length);
        }
    }

    void Paragraphs() {
        const std::u16string_view text = text_.text;
        std::size_t at = 0;
        for (std::int32_t number = 1; at <= text.size(); ++number) {
            const std::size_t found = text.find(kBreak, at);
            const std::size_t end = std::min(found, text.size());
            Paragraph(number, at, end);
            if (found == std::u16string_view::npos)
                return;
            at = end + kBreak.size();
        }
    }

    void Paragraph(std::int32_t number, std::size_t begin, std::size_t end) {
        ParagraphLook look;
        look.number = number;
        look.heading = HeadingOf(begin, end);
        if (const ParagraphRun* run = formats_.At(begin); run != nullptr) {
            constexpr std::int32_t kLevel = 500;  // twips
            constexpr std::int32_t kMostLevels = 8;
            look.alignment = AlignmentOf(run->format);
            look.hanging = run->format.first_line_indent < 0;
            look.indent = static_cast<std::uint8_t>(
                std::clamp((run->format.left_indent + kLevel / 2) / kLevel, 0, kMostLevels));
        }
        const bool plain =
            look.heading == 0 && look.indent == 0 && look.alignment == LookAlignment::Left;
        if (!plain)
            look_.paragraphs.push_back(look);
    }

    // The smallest letters decide: a large first letter makes no heading.
    std::uint8_t HeadingOf(std::size_t begin, std::size_t end) {
        if (begin == end || end - begin > kLongestHeading)
            return 0;
        std::int32_t smallest = 0;
        for (std::size_t at = begin; at < end; at = characters_.EndOfRun()) {
            const CharRun* run = characters_.At(at);
            if (run == nullptr)
                break;
            const std::int32_t size = run->format.half_points;
            smallest = smallest == 0 ? size : std::min(smallest, size);
        }
        return HeadingLevel(smallest, body_);
    }

    const RichText& text_;
    std::int32_t body_;
    RunCursor<CharRun> characters_;
    RunCursor<ParagraphRun> formats_;
    DocumentLook look_;
};

}  // namespace

DocumentLook LookOf(const RichText& text) {
    if (text.char_runs.size() <= 1 && text.paragraph_runs.size() <= 1)
        return {};
    return LookFinder(text).Find();
}

}  // namespace zorvane
