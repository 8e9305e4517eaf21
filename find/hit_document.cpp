#include "find/hit_document.h"

#include <algorithm>
#include <utility>

#include "common/base/text_encoding.h"
#include "common/platform/native_path.h"
#include "common/process_state.h"
#include "load/conversion_service.h"
#include "load/extracted_texts.h"
#include "load/password_wanted.h"
#include "load/silent_load.h"

namespace zorvane {
namespace {

// Of what is read as it is; a document is bounded by its reader.
constexpr std::int64_t kMostBytes = std::int64_t{64} << 20;

class StopWatcher : public RunWatcher {
  public:
    explicit StopWatcher(const std::function<bool()>& stop) : stop_(stop) {}
    bool KeepGoing() override { return !stop_(); }

  private:
    const std::function<bool()>& stop_;
};

bool IsBlank(char16_t unit) {
    return unit <= u' ' || unit == u'\u00A0';
}

// Without blanks at the ends, and one for each run of them.
std::u16string Plainly(std::u16string_view text) {
    std::u16string plain;
    for (const char16_t unit : text) {
        if (!IsBlank(unit))
            plain += unit;
        else if (!plain.empty() && plain.back() != u' ')
            plain += u' ';
    }
    while (plain.ends_with(u' '))
        plain.pop_back();
    return plain;
}

struct Line {
    std::size_t begin = 0;
    std::size_t length = 0;
};

// Breaks as a search counts them: of paragraphs, and of lines in a paragraph.
std::vector<Line> LinesOf(std::u16string_view text) {
    std::vector<Line> lines;
    std::size_t begin = 0;
    while (begin <= text.size()) {
        const std::size_t end = std::min(text.find_first_of(u"\n\x0B", begin), text.size());
        const bool crlf = end > begin && text[end - 1] == u'\r';
        lines.push_back({begin, end - begin - (crlf ? 1 : 0)});
        begin = end + 1;
    }
    return lines;
}

/// What a hit looks for among the lines of another form of its text.
class LineSearch {
  public:
    LineSearch(std::u16string_view text, std::vector<Line> lines, std::int64_t expected)
        : text_(text), lines_(std::move(lines)), expected_(expected) {}

    std::u16string_view At(std::int64_t line) const {
        const Line& one = lines_[static_cast<std::size_t>(line)];
        return text_.substr(one.begin, one.length);
    }
    std::size_t Begin(std::int64_t line) const {
        return lines_[static_cast<std::size_t>(line)].begin;
    }
    /// The nearest line that suits; -1: none does.
    template <class Suits>
    std::int64_t Nearest(const Suits& suits) const {
        const auto count = static_cast<std::int64_t>(lines_.size());
        for (std::int64_t away = 0; away < count + expected_; ++away) {
            for (const std::int64_t line : {expected_ - away, expected_ + away}) {
                if (line >= 0 && line < count && suits(At(line)))
                    return line;
            }
        }
        return -1;
    }

  private:
    std::u16string_view text_;
    std::vector<Line> lines_;
    std::int64_t expected_;
};

std::size_t PlaceOfItem(std::u16string_view line, std::u16string_view item, std::int32_t column) {
    const auto from = static_cast<std::size_t>(std::max(0, column - 1));
    const std::size_t at = from < line.size() ? line.find(item, from) : std::u16string_view::npos;
    return at == std::u16string_view::npos ? line.find(item) : at;
}

}  // namespace

std::shared_ptr<const HitDocument> LoadHitDocument(ProcessState& process, const std::string& file,
                                                   std::shared_ptr<const HitDocument> known,
                                                   const std::vector<std::string>& passwords,
                                                   const std::function<bool()>& stop) {
    const std::optional<FileStamp> state = FileStampOf(file);
    if (known && known->file == file && state && known->state == state && known->reason.empty())
        return known;
    auto document = std::make_shared<HitDocument>();
    document->file = file;
    document->state = state;
    if (!IsReadAsDocument(FileNameOf(file)) && state && state->size > kMostBytes) {
        document->reason = process.Translate("This file is too large to be shown as a whole.");
        return document;
    }
    ConversionService service(process);
    StopWatcher watcher(stop);
    const auto loads = [&](const std::string& password) {
        SilentLoad load(process, SilentLoad::Formats::Kept);
        load.UsePassword(password);
        const bool loaded = load.Load(file, service, watcher);
        if (loaded)
            document->text = load.Editor().TakeRich();
        document->reason = loaded ? std::string() : WithoutAdvice(load.Reason());
        return loaded || stop();
    };
    if (!loads(""))
        static_cast<void>(std::any_of(passwords.begin(), passwords.end(), loads));
    return document;
}

TextRange PlaceInDocument(std::u16string_view text, const ShownHit& hit, std::string_view line) {
    const std::u16string item = ToUtf16(hit.item);
    const std::u16string wanted = Plainly(ToUtf16(line));
    const LineSearch search(text, LinesOf(text), std::int64_t{hit.line} - 1);
    const auto has_item = [&](std::u16string_view one) {
        return !item.empty() && one.find(item) != std::u16string_view::npos;
    };
    std::int64_t found = search.Nearest([&](std::u16string_view one) {
        return (item.empty() || has_item(one)) && Plainly(one) == wanted;
    });
    if (found < 0)
        found = search.Nearest(has_item);
    if (found < 0)
        return {CharPos{0}, -1};
    const std::size_t at = PlaceOfItem(search.At(found), item, hit.column);
    return {CharPos{static_cast<std::int32_t>(search.Begin(found) + at)},
            static_cast<std::int32_t>(item.size())};
}

FoundInLine::FoundInLine(const FindRules& rules) {
    Result<std::unique_ptr<LineFinder>> finder = LineFinder::Make(rules);
    if (!finder.ok())
        return;
    finder_ = std::move(finder).value();
    scratch_ = std::make_shared<MatchScratch>();
}

std::vector<TextRange> FoundInLine::operator()(std::u16string_view line) {
    std::vector<TextRange> found;
    if (!finder_)
        return found;
    const std::string bytes = ToUtf8(line);
    const auto units = [&](std::size_t from, std::size_t to) {
        return static_cast<std::int32_t>(
            ToUtf16(std::string_view(bytes).substr(from, to - from)).size());
    };
    std::size_t passed = 0;
    std::int32_t at = 0;
    for (const MatchSpan& match : finder_->AllIn(bytes, *scratch_)) {
        at += units(passed, match.begin);
        const std::int32_t length = units(match.begin, match.end);
        if (length > 0)
            found.push_back({CharPos{at}, length});
        at += length;
        passed = match.end;
    }
    return found;
}

}  // namespace zorvane
