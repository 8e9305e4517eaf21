#include "find/engine/line_finder.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "common/base/text_bytes.h"
#include "find/engine/word_edges.h"

namespace zorvane {
namespace {

// The time of one call is bounded by this and the limit of steps; larger ones are no faster.
constexpr std::size_t kSlice = 1 << 14;

std::size_t LineBegin(std::string_view text, std::size_t from, std::size_t at) {
    const void* found = at == from ? nullptr : memrchr(text.data() + from, '\n', at - from);
    return found == nullptr
               ? from
               : static_cast<std::size_t>(static_cast<const char*>(found) - text.data()) + 1;
}

// Behind the line's LF, or the end of the text.
std::size_t NextLine(std::string_view text, std::size_t at) {
    const std::size_t found = text.find('\n', at);
    return found == std::string_view::npos ? text.size() : found + 1;
}

std::size_t WithoutBreak(std::string_view text, std::size_t begin, std::size_t end) {
    if (end > begin && text[end - 1] == '\n')
        --end;
    return end > begin && text[end - 1] == '\r' ? end - 1 : end;
}

std::size_t NextCharacter(std::string_view line, std::size_t at) {
    ++at;
    while (at < line.size() && IsContinuation(line[at]))
        ++at;
    return at;
}

bool HasLoneReturn(std::string_view text) {
    for (std::size_t at = text.find('\r'); at != std::string_view::npos;
         at = text.find('\r', at + 1)) {
        if (at + 1 == text.size() || text[at + 1] != '\n')
            return true;
    }
    return false;
}

// The long s and the sign for kelvin, which are an "s" and a "k" where case is the same.
bool HoldsOddLetter(std::string_view text) {
    static const ByteFinder long_s("\xC5\xBF", LetterCase::Matters);
    static const ByteFinder kelvin("\xE2\x84\xAA", LetterCase::Matters);
    const char* const begin = text.data();
    const char* const end = begin + text.size();
    return !IsAsciiText(text) &&
           (long_s.Find(begin, end) != nullptr || kelvin.Find(begin, end) != nullptr);
}

// Of a literal text that no byte search can find: each letter quoted.
ReadExpression QuotedLiteral(const std::string& text) {
    ReadExpression quoted;
    for (const char character : text) {
        const auto byte = static_cast<unsigned char>(character);
        if (byte > ' ' && byte < 0x7F && std::isalnum(byte) == 0)
            quoted.pcre += '\\';
        quoted.pcre += character;
    }
    quoted.re2 = quoted.pcre;
    return quoted;
}

}  // namespace

struct LineFinder::Looking {
    std::string_view text;
    MatchScratch& scratch;
    const std::function<bool(const LineHit&)>& take;
    const std::function<bool()>& stop;
    bool failed = false;  // has been told
    std::size_t asked = 0;

    // Bytes that were looked at since the last question are counted, so that the question is cheap.
    bool Stopped(std::size_t bytes) {
        asked += bytes + 1;
        if (asked < kSlice)
            return false;
        asked = 0;
        return stop();
    }
};

Result<std::unique_ptr<LineFinder>> LineFinder::Make(const FindRules& rules) {
    if (rules.text.empty())
        return Failure{"There is nothing to find"};
    auto finder = std::make_unique<LineFinder>();
    const bool literal = rules.syntax == FindSyntax::Literal;
    if (literal && rules.text.find_first_of("\r\n") != std::string::npos)
        return Failure{"A line end cannot be found: lines are looked through one by one"};
    finder->word_ = rules.word;
    const LetterCase letter_case = rules.match_case ? LetterCase::Matters : LetterCase::AsciiFolds;
    finder->suits_bytes_ = literal && IsAsciiText(rules.text);
    if (literal && (rules.match_case || IsAsciiText(rules.text))) {
        finder->bytes_ = std::make_unique<ByteFinder>(rules.text, letter_case);
        if (Status made = finder->LookBeyondAscii(rules); !made.ok())
            return made.failure();
        return finder;
    }
    Result<ReadExpression> read =
        literal ? QuotedLiteral(rules.text)
                : PrepareExpression(rules.text, rules.syntax, rules.match_case);
    if (!read.ok())
        return read.failure();
    if (Status made = finder->MakeMatcher(read.value(), rules.match_case); !made.ok())
        return made.failure();
    // One byte is in nearly every line; to ask of each such line alone would be slower.
    if (read.value().required.size() > 1)
        finder->bytes_ = std::make_unique<ByteFinder>(read.value().required, letter_case);
    return finder;
}

// "k" and "s" have capitals that are no ASCII.
Status LineFinder::LookBeyondAscii(const FindRules& rules) {
    if (rules.match_case || rules.text.find_first_of("kKsS") == std::string::npos)
        return Status::Ok();
    beyond_ascii_ = std::make_unique<LineFinder>();
    beyond_ascii_->word_ = rules.word;
    return beyond_ascii_->MakeMatcher(QuotedLiteral(rules.text), false);
}

Status LineFinder::MakeMatcher(const ReadExpression& read, bool match_case) {
    Result<std::unique_ptr<ExpressionMatcher>> matcher = ExpressionMatcher::Make(read, match_case);
    if (!matcher.ok())
        return matcher.failure();
    matcher_ = std::move(matcher).value();
    within_line_ = read.within_line;
    return Status::Ok();
}

void LineFinder::Find(std::string_view lines, MatchScratch& scratch,
                      const std::function<bool(const LineHit&)>& take,
                      const std::function<bool()>& stop) const {
    if (beyond_ascii_ && HoldsOddLetter(lines)) {
        beyond_ascii_->Find(lines, scratch, take, stop);
        return;
    }
    Looking looking{lines, scratch, take, stop};
    if (!matcher_)
        FindLiteral(looking);
    else if (bytes_)
        FindByRequired(looking);
    else
        FindInSlices(looking);
}

void LineFinder::FindLiteral(Looking& looking) const {
    const std::string_view text = looking.text;
    const char* const end = text.data() + text.size();
    std::size_t begin = 0;  // of the line that is not looked through yet
    for (const char* hit = bytes_->Find(text.data(), end); hit != nullptr;) {
        const auto at = static_cast<std::size_t>(hit - text.data());
        const std::size_t line_begin = LineBegin(text, begin, at);
        const std::size_t next = NextLine(text, at);
        const std::size_t line_end = WithoutBreak(text, line_begin, next);
        const std::size_t size = bytes_->size();
        const MatchSpan in_line{at - line_begin, at - line_begin + size};
        if (!StandsAsWord(text.substr(line_begin, line_end - line_begin), in_line, word_)) {
            hit = bytes_->Find(hit + 1, end);
            continue;
        }
        if (!looking.take({line_begin, line_end, {at, at + size}, false}) ||
            looking.Stopped(next - begin))
            return;
        begin = next;
        hit = bytes_->Find(text.data() + next, end);
    }
}

// The lines that hold what each match holds.
void LineFinder::FindByRequired(Looking& looking) const {
    const std::string_view text = looking.text;
    const char* const end = text.data() + text.size();
    std::size_t begin = 0;
    while (const char* hit = bytes_->Find(text.data() + begin, end)) {
        const auto at = static_cast<std::size_t>(hit - text.data());
        const std::size_t line_begin = LineBegin(text, begin, at);
        const std::size_t next = NextLine(text, at);
        if (!TakeLine(looking, line_begin, next))
            return;
        begin = next;
    }
}

void LineFinder::FindInSlices(Looking& looking) const {
    const std::string_view text = looking.text;
    for (std::size_t begin = 0; begin < text.size();) {
        std::size_t end = text.size();
        if (end - begin > kSlice) {
            const std::size_t whole = LineBegin(text, begin, begin + kSlice);
            end = whole > begin ? whole : NextLine(text, begin + kSlice);
        }
        const std::string_view slice = text.substr(begin, end - begin);
        const bool together =
            within_line_ && slice.size() <= kSlice && !matcher_->Steady() && !HasLoneReturn(slice);
        const bool goes_on =
            together ? FindInSlice(looking, slice, begin) : FindLineByLine(looking, slice, begin);
        if (!goes_on || looking.stop())
            return;
        begin = end;
    }
}

bool LineFinder::FindInSlice(Looking& looking, std::string_view slice, std::size_t offset) const {
    std::size_t at = 0;
    while (at < slice.size()) {
        MatchSpan match;
        const MatchEnd end = matcher_->InLines(slice, at, looking.scratch, match);
        if (end == MatchEnd::None)
            return true;
        if (end == MatchEnd::Unsure)
            return FindLineByLine(looking, slice.substr(at), offset + at);
        // An empty match behind the last line end is in no line.
        if (match.begin >= slice.size() && slice.ends_with('\n'))
            return true;
        const std::size_t line_begin = LineBegin(slice, at, match.begin);
        const std::size_t next = NextLine(slice, match.begin);
        const std::size_t line_end = WithoutBreak(slice, line_begin, next);
        const std::string_view line = slice.substr(line_begin, line_end - line_begin);
        const MatchSpan in_line{match.begin - line_begin, match.end - line_begin};
        if (StandsAsWord(line, in_line, word_)) {
            const LineHit hit{offset + line_begin,
                              offset + line_end,
                              {offset + match.begin, offset + match.end},
                              false};
            if (!looking.take(hit))
                return false;
        } else if (!TakeLine(looking, offset + line_begin, offset + next)) {
            return false;
        }
        at = next;
    }
    return true;
}

bool LineFinder::FindLineByLine(Looking& looking, std::string_view slice,
                                std::size_t offset) const {
    for (std::size_t at = 0; at < slice.size();) {
        const std::size_t next = NextLine(slice, at);
        if (!TakeLine(looking, offset + at, offset + next))
            return false;
        at = next;
    }
    return true;
}

// Asks of one line alone. False when nobody wants more.
bool LineFinder::TakeLine(Looking& looking, std::size_t begin, std::size_t end) const {
    const std::size_t line_end = WithoutBreak(looking.text, begin, end);
    MatchSpan match;
    const MatchEnd found =
        FirstIn(looking.text.substr(begin, line_end - begin), 0, looking.scratch, match);
    if (found == MatchEnd::Failed && !looking.failed) {
        looking.failed = true;
        if (!looking.take({begin, line_end, {begin, begin}, true}))
            return false;
    }
    if (found == MatchEnd::Found &&
        !looking.take({begin, line_end, {begin + match.begin, begin + match.end}, false}))
        return false;
    return !looking.Stopped(end - begin);
}

MatchEnd LineFinder::FirstIn(std::string_view line, std::size_t from, MatchScratch& scratch,
                             MatchSpan& match) const {
    while (from <= line.size()) {
        MatchEnd end = MatchEnd::None;
        if (matcher_) {
            end = matcher_->InLine(line, from, scratch, match);
        } else if (const char* hit = bytes_->Find(line.data() + from, line.data() + line.size())) {
            match.begin = static_cast<std::size_t>(hit - line.data());
            match.end = match.begin + bytes_->size();
            end = MatchEnd::Found;
        }
        if (end != MatchEnd::Found || StandsAsWord(line, match, word_))
            return end;
        // What begins inside the same word is no better.
        from = NextCharacter(line, match.begin);
        while (from < line.size() && !StandsAsWord(line.substr(0, from), {from, from}, word_))
            from = NextCharacter(line, from);
    }
    return MatchEnd::None;
}

std::vector<MatchSpan> LineFinder::AllIn(std::string_view line, MatchScratch& scratch) const {
    if (beyond_ascii_ && HoldsOddLetter(line))
        return beyond_ascii_->AllIn(line, scratch);
    std::vector<MatchSpan> all;
    MatchSpan match;
    std::size_t from = 0;
    while (from <= line.size() && FirstIn(line, from, scratch, match) == MatchEnd::Found) {
        if (match.end > match.begin)
            all.push_back(match);
        from = std::max(match.end, NextCharacter(line, match.begin));
    }
    return all;
}

}  // namespace zorvane
