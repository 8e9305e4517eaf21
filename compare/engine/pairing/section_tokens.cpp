#include "compare/engine/pairing/section_tokens.h"

#include <algorithm>
#include <xxhash.h>

#include "common/base/text_encoding.h"
#include "compare/engine/pairing/word_costs.h"

namespace zorvane {
namespace {

constexpr std::int32_t kSeparatorKeep = 200;  // a blank or break by itself proves nothing

bool HasBreakAt(std::u16string_view text, std::size_t at) {
    return at + 1 < text.size() && text[at] == u'\r' && text[at + 1] == u'\n';
}

bool IsBlankInLine(char16_t unit) {
    return PartsWords(unit) && unit != u'\r' && unit != u'\n';
}

std::int32_t BorderBehind(std::u16string_view word, std::u16string_view separator) {
    if (separator.find(u'\n') != std::u16string_view::npos)
        return kSentenceBorder;
    constexpr std::u16string_view kClosing = u"\"')]}\u00BB\u2019\u201D\u300D\u300F";
    constexpr std::u16string_view kSentence = u".!?\u2026\u3002\uFF01\uFF1F";
    constexpr std::u16string_view kClause = u",;:\u3001\uFF0C\uFF1B\uFF1A";
    const std::size_t last = word.find_last_not_of(kClosing);
    if (last == std::u16string_view::npos)
        return 0;
    if (kSentence.find(word[last]) != std::u16string_view::npos)
        return kSentenceBorder;
    return kClause.find(word[last]) != std::u16string_view::npos ? kClauseBorder : 0;
}

std::size_t BehindBlanks(std::u16string_view text, std::size_t at) {
    while (at < text.size() && IsBlankInLine(text[at]))
        ++at;
    return at;
}

std::size_t BehindBreak(std::u16string_view text, std::size_t at) {
    if (HasBreakAt(text, at))
        return at + 2;
    const bool single = at < text.size() && (text[at] == u'\r' || text[at] == u'\n');
    return single ? at + 1 : at;
}

// Blanks that follow no word are one separator.
std::size_t BehindSeparator(std::u16string_view text, std::size_t at, bool no_word) {
    if (HasBreakAt(text, at))
        return at + 2;
    if (at == text.size())
        return at;
    if (no_word && text[at] == u' ')
        return std::min(text.find_first_not_of(u' ', at), text.size());
    return at + 1;
}

}  // namespace

void TokenizedText::Cut(std::u16string_view text, const TokenSwitches& switches, StopCheck& stop) {
    text_ = text;
    tokens_.clear();
    keys_.clear();
    std::int32_t end = 0;
    while (end < static_cast<std::int32_t>(text.size()) && stop.KeepGoing()) {
        CutOne(end, switches.ignore_whitespace);
        end = tokens_.back().end;
    }
    if (switches.filter == nullptr)
        return;
    keys_.resize(tokens_.size());
    for (std::int32_t i = 0; i < Count() && stop.KeepGoing(); ++i)
        MakeKey(i, *switches.filter);
}

void TokenizedText::CutOne(std::int32_t begin, bool ignore_whitespace) {
    const auto is_end = [&](char16_t unit) {
        return EndsSection(unit) || (ignore_whitespace && PartsWords(unit));
    };
    const auto behind_blanks = [&](std::size_t at) {
        return ignore_whitespace ? BehindBlanks(text_, at) : at;
    };
    SectionToken token;
    token.begin = begin;
    std::size_t at = behind_blanks(static_cast<std::size_t>(begin));
    token.word_begin = static_cast<std::int32_t>(at);
    while (at < text_.size() && !is_end(text_[at]))
        ++at;
    token.word_end = static_cast<std::int32_t>(at);
    at = behind_blanks(at);
    if (ignore_whitespace)
        at = BehindBreak(text_, at);
    else
        at = BehindSeparator(text_, at, token.word_begin == token.word_end);
    token.end = static_cast<std::int32_t>(behind_blanks(at));
    tokens_.push_back(token);
}

void TokenizedText::MakeKey(std::int32_t index, const LineFilter& filter) {
    const SectionToken& token = tokens_[static_cast<std::size_t>(index)];
    utf8_.clear();
    AppendUtf8(text_.substr(static_cast<std::size_t>(token.word_begin),
                            static_cast<std::size_t>(token.word_end - token.word_begin)),
               utf8_);
    keys_[static_cast<std::size_t>(index)] = ToUtf16(filter.Key(utf8_, buffer_));
}

void TokenizedText::Weigh(std::int32_t begin, std::int32_t end, const StretchText* weights,
                          StopCheck& stop) {
    for (std::int32_t index = begin; index < end && stop.KeepGoing(); ++index) {
        SectionToken& token = tokens_[static_cast<std::size_t>(index)];
        const std::u16string_view key = Key(index);
        token.border = BorderBehind(key, Separator(index));
        token.hash = XXH3_64bits(key.data(), key.size() * 2);
        runs_.clear();
        CutIntoRuns(key, runs_);
        std::int32_t heaviest = 0;
        for (const WordRun& run : runs_)
            heaviest = std::max(heaviest, weights != nullptr ? weights->Weight(run) : run.factor);
        token.keep = runs_.empty() ? kSeparatorKeep : KeepOf(heaviest);
    }
}

bool TokenizedText::IsNothing(std::int32_t token) const {
    const SectionToken& own = tokens_[static_cast<std::size_t>(token)];
    return !keys_.empty() && own.word_begin < own.word_end &&
           keys_[static_cast<std::size_t>(token)].empty();
}

std::u16string_view TokenizedText::Key(std::int32_t token) const {
    const SectionToken& own = tokens_[static_cast<std::size_t>(token)];
    if (own.word_begin == own.word_end)
        return Separator(token);
    if (!keys_.empty())
        return keys_[static_cast<std::size_t>(token)];
    return text_.substr(static_cast<std::size_t>(own.word_begin),
                        static_cast<std::size_t>(own.word_end - own.word_begin));
}

std::u16string_view TokenizedText::Separator(std::int32_t token) const {
    const SectionToken& own = tokens_[static_cast<std::size_t>(token)];
    return text_.substr(static_cast<std::size_t>(own.word_end),
                        static_cast<std::size_t>(own.end - own.word_end));
}

bool SameToken(const TokenizedText& first, std::int32_t i, const TokenizedText& second,
               std::int32_t j) {
    const SectionToken& left = first.Tokens()[static_cast<std::size_t>(i)];
    const SectionToken& right = second.Tokens()[static_cast<std::size_t>(j)];
    const bool left_word = left.word_begin < left.word_end;
    const bool right_word = right.word_begin < right.word_end;
    return left_word == right_word && first.Key(i) == second.Key(j);
}

}  // namespace zorvane
