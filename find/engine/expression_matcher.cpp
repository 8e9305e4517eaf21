#include "find/engine/expression_matcher.h"

#include <algorithm>
#include <array>
#include <pcre2.h>
#include <re2/re2.h>

#include "common/base/text_bytes.h"

namespace zorvane {
namespace {

// Steps for one place where a match may begin. Few lines of real texts need more, and those that do
// cost little to ask anew.
constexpr std::uint32_t kMatchLimit = 1000;
// For what the steady library does not know.
constexpr std::uint32_t kPatientLimit = 20'000;
// So many places are tried between two looks at the wish to stop.
constexpr std::size_t kPatientPlaces = 64;
// The limit counts for each place, so that a long line may take its square. Such lines are rare.
constexpr std::size_t kLongLine = 1 << 16;
constexpr int kMostHardLines = 16;
// Slower than this, over at least that time, is not what the fast library is for.
constexpr double kSlowBytesPerSecond = 50e6;
constexpr double kSlowSeconds = 0.005;
constexpr std::size_t kTimedLine = 1024;
constexpr unsigned kTimedOf = 16;
using SteadyTime = std::chrono::steady_clock::time_point;
constexpr std::size_t kStackBytes = 1 << 18;
constexpr std::int64_t kSteadyMemory = 64 << 20;

struct Free {
    void operator()(pcre2_code* code) const { pcre2_code_free(code); }
    void operator()(pcre2_match_data* data) const { pcre2_match_data_free(data); }
    void operator()(pcre2_match_context* context) const { pcre2_match_context_free(context); }
    void operator()(pcre2_compile_context* context) const { pcre2_compile_context_free(context); }
    void operator()(pcre2_jit_stack* stack) const { pcre2_jit_stack_free(stack); }
};
using Code = std::unique_ptr<pcre2_code, Free>;
using Context = std::unique_ptr<pcre2_match_context, Free>;

PCRE2_SPTR Units(std::string_view text) {
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): the library's own unit type
    return reinterpret_cast<PCRE2_SPTR>(text.data() == nullptr ? "" : text.data());
}

std::string MessageOf(int error) {
    std::array<PCRE2_UCHAR, 256> message{};
    pcre2_get_error_message(error, message.data(), message.size());
    return {message.begin(), std::find(message.begin(), message.end(), PCRE2_UCHAR{0})};
}

Result<Code> Compile(const std::string& pattern, std::uint32_t options) {
    const std::unique_ptr<pcre2_compile_context, Free> context(
        pcre2_compile_context_create(nullptr));
    pcre2_set_newline(context.get(), PCRE2_NEWLINE_ANYCRLF);
    int error = 0;
    PCRE2_SIZE offset = 0;
    Code code(pcre2_compile(Units(pattern), pattern.size(),
                            options | PCRE2_UTF | PCRE2_MATCH_INVALID_UTF | PCRE2_NEVER_BACKSLASH_C,
                            &error, &offset, context.get()));
    if (!code)
        return Failure{MessageOf(error)};
    pcre2_jit_compile(code.get(), PCRE2_JIT_COMPLETE);
    return code;
}

std::unique_ptr<RE2> CompileSteadily(const std::string& pattern, bool match_case) {
    RE2::Options options;
    options.set_log_errors(false);
    options.set_case_sensitive(match_case);
    options.set_max_mem(kSteadyMemory);
    auto code = std::make_unique<RE2>(pattern, options);
    return code->ok() ? std::move(code) : nullptr;
}

}  // namespace

struct MatchScratch::State {
    // The place of the whole match alone.
    std::unique_ptr<pcre2_match_data, Free> data{pcre2_match_data_create(1, nullptr)};
    std::unique_ptr<pcre2_jit_stack, Free> stack{
        pcre2_jit_stack_create(kStackBytes / 8, kStackBytes, nullptr)};
    Context quick{pcre2_match_context_create(nullptr)};
    Context patient{pcre2_match_context_create(nullptr)};
    std::size_t bytes = 0;
    double seconds = 0;
    unsigned lines = 0;
};

MatchScratch::MatchScratch() : state_(std::make_unique<State>()) {
    pcre2_set_match_limit(state_->quick.get(), kMatchLimit);
    pcre2_set_match_limit(state_->patient.get(), kPatientLimit);
    for (const Context* context : {&state_->quick, &state_->patient})
        pcre2_jit_stack_assign(context->get(), nullptr, state_->stack.get());
}
MatchScratch::~MatchScratch() = default;
MatchScratch::MatchScratch(MatchScratch&&) noexcept = default;
MatchScratch& MatchScratch::operator=(MatchScratch&&) noexcept = default;

struct ExpressionMatcher::Compiled {
    Code line;
    Code lines;
    Code patient;  // only where there is no steady one
    std::unique_ptr<RE2> steady;
};

ExpressionMatcher::ExpressionMatcher() : compiled_(std::make_unique<Compiled>()) {}
ExpressionMatcher::~ExpressionMatcher() = default;

Result<std::unique_ptr<ExpressionMatcher>> ExpressionMatcher::Make(const ReadExpression& expression,
                                                                   bool match_case) {
    std::unique_ptr<ExpressionMatcher> matcher(new ExpressionMatcher);
    Compiled& compiled = *matcher->compiled_;
    compiled.steady = CompileSteadily(expression.re2, match_case);
    const std::uint32_t folding = match_case ? 0U : PCRE2_CASELESS;
    struct Wanted {
        Code& code;
        std::uint32_t options;
    };
    std::vector<Wanted> all{{compiled.line, folding | PCRE2_DOLLAR_ENDONLY},
                            {compiled.lines, folding | PCRE2_MULTILINE}};
    if (!compiled.steady) {
        all.push_back({compiled.patient, folding | PCRE2_DOLLAR_ENDONLY | PCRE2_USE_OFFSET_LIMIT});
    }
    for (const Wanted& wanted : all) {
        Result<Code> code = Compile(expression.pcre, wanted.options);
        if (!code.ok())
            return code.failure();
        wanted.code = std::move(code).value();
    }
    return matcher;
}

namespace {

// More groups than places is a success too, with 0.
MatchEnd EndOf(int result, pcre2_match_data* data, MatchSpan& match) {
    if (result == PCRE2_ERROR_NOMATCH)
        return MatchEnd::None;
    if (result < 0)
        return MatchEnd::Unsure;
    const PCRE2_SIZE* found = pcre2_get_ovector_pointer(data);
    match = {std::min(found[0], found[1]), found[1]};
    return MatchEnd::Found;
}

}  // namespace

void ExpressionMatcher::Note(MatchScratch& scratch, std::size_t bytes,
                             std::chrono::steady_clock::duration time) const {
    MatchScratch::State& state = *scratch.state_;
    state.bytes += bytes;
    state.seconds += std::chrono::duration<double>(time).count();
    if (state.seconds < kSlowSeconds)
        return;
    if (static_cast<double>(state.bytes) < kSlowBytesPerSecond * state.seconds)
        BeSteady();
    state.bytes = 0;
    state.seconds = 0;
}

void ExpressionMatcher::BeSteady() const {
    if (compiled_->steady)
        steady_.store(true, std::memory_order_relaxed);
}

MatchEnd ExpressionMatcher::InLines(std::string_view lines, std::size_t from, MatchScratch& scratch,
                                    MatchSpan& match) const {
    if (Steady())
        return MatchEnd::Unsure;
    const auto before = std::chrono::steady_clock::now();
    MatchScratch::State& state = *scratch.state_;
    const int result = pcre2_match(compiled_->lines.get(), Units(lines), lines.size(), from, 0,
                                   state.data.get(), state.quick.get());
    const MatchEnd end = EndOf(result, state.data.get(), match);
    const std::size_t looked_at = (end == MatchEnd::Found ? match.end : lines.size()) - from;
    Note(scratch, looked_at, std::chrono::steady_clock::now() - before);
    return end;
}

MatchEnd ExpressionMatcher::InLine(std::string_view line, std::size_t from, MatchScratch& scratch,
                                   MatchSpan& match) const {
    const bool steady = compiled_->steady != nullptr;
    if (steady && (Steady() || line.size() > kLongLine))
        return InLineSteadily(line, from, match);
    MatchScratch::State& state = *scratch.state_;
    if (steady || line.size() <= kLongLine) {
        // A look at the clock takes as long as a short line; long ones count all.
        const bool timed = line.size() >= kTimedLine || ++state.lines % kTimedOf == 0;
        const auto before = timed ? std::chrono::steady_clock::now() : SteadyTime();
        const int result = pcre2_match(compiled_->line.get(), Units(line), line.size(), from, 0,
                                       state.data.get(), state.quick.get());
        const MatchEnd end = EndOf(result, state.data.get(), match);
        if (timed)
            Note(scratch, line.size() - from, std::chrono::steady_clock::now() - before);
        if (end != MatchEnd::Unsure)
            return end;
    }
    if (!steady)
        return InLinePatiently(line, from, scratch, match);
    if (hard_lines_.fetch_add(1, std::memory_order_relaxed) + 1 >= kMostHardLines)
        BeSteady();
    return InLineSteadily(line, from, match);
}

MatchEnd ExpressionMatcher::InLineSteadily(std::string_view line, std::size_t from,
                                           MatchSpan& match) const {
    const char* const begin = line.data() == nullptr ? "" : line.data();
    re2::StringPiece found;
    if (!compiled_->steady->Match({begin, line.size()}, from, line.size(), RE2::UNANCHORED, &found,
                                  1))
        return MatchEnd::None;
    match.begin = static_cast<std::size_t>(found.data() - begin);
    match.end = match.begin + found.size();
    return MatchEnd::Found;
}

// Some starting places at a time, so that each call is short.
MatchEnd ExpressionMatcher::InLinePatiently(std::string_view line, std::size_t from,
                                            MatchScratch& scratch, MatchSpan& match) const {
    MatchScratch::State& state = *scratch.state_;
    for (std::size_t at = from; at <= line.size(); at += kPatientPlaces) {
        pcre2_set_offset_limit(state.patient.get(), at + kPatientPlaces - 1);
        // Inside a character no match begins; the library would refuse to look there.
        while (at > from && at < line.size() && IsContinuation(line[at]))
            ++at;
        const int result = pcre2_match(compiled_->patient.get(), Units(line), line.size(), at, 0,
                                       state.data.get(), state.patient.get());
        const MatchEnd end = EndOf(result, state.data.get(), match);
        if (end != MatchEnd::None)
            return end == MatchEnd::Unsure ? MatchEnd::Failed : end;
    }
    return MatchEnd::None;
}

}  // namespace zorvane
