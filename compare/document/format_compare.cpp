#include "compare/document/format_compare.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string>

#include "common/base/number.h"
#include "common/base/text_encoding.h"

namespace zorvane {
namespace {

constexpr std::size_t kMostWordPairs = 1'000'000;  // of one changed paragraph
constexpr std::size_t kLongestExcerpt = 40;        // code units
constexpr Color kBlack{0};
constexpr Color kWhite{0xFFFFFF};

struct Range {
    std::size_t begin = 0;
    std::size_t end = 0;
};

bool ShowsNothing(char16_t unit) {
    return unit <= 0x20 || unit == 0xA0;
}

// The paragraphs of a text without their breaks, and what stands at each position.
class Document {
  public:
    explicit Document(const RichText& text) : text_(text) {
        std::size_t begin = 0;
        while (begin <= text.text.size()) {
            const std::size_t end = std::min(text.text.find(u'\r', begin), text.text.size());
            paragraphs_.push_back({begin, end});
            begin = end + 2;
        }
        std::size_t at = 0;
        for (const CharRun& run : text.char_runs)
            run_ends_.push_back(at += static_cast<std::size_t>(run.length));
        at = 0;
        for (const ParagraphRun& run : text.paragraph_runs)
            paragraph_ends_.push_back(at += static_cast<std::size_t>(run.length));
    }

    std::optional<Range> Paragraph(std::int32_t number) const {
        if (number < 1 || number > std::ssize(paragraphs_))
            return std::nullopt;
        return paragraphs_[static_cast<std::size_t>(number - 1)];
    }
    std::u16string_view Text(const Range& range) const {
        return std::u16string_view(text_.text).substr(range.begin, range.end - range.begin);
    }
    /// The run that holds a position; nothing behind the last one.
    const CharRun* RunAt(std::size_t position, std::size_t& end) const {
        const auto found = std::upper_bound(run_ends_.begin(), run_ends_.end(), position);
        if (found == run_ends_.end())
            return nullptr;
        end = *found;
        return &text_.char_runs[static_cast<std::size_t>(found - run_ends_.begin())];
    }
    const ParagraphFormat* FormatAt(std::size_t position) const {
        const auto found =
            std::upper_bound(paragraph_ends_.begin(), paragraph_ends_.end(), position);
        return found == paragraph_ends_.end()
                   ? nullptr
                   : &text_
                          .paragraph_runs[static_cast<std::size_t>(found - paragraph_ends_.begin())]
                          .format;
    }

  private:
    const RichText& text_;
    std::vector<Range> paragraphs_;
    std::vector<std::size_t> run_ends_;
    std::vector<std::size_t> paragraph_ends_;
};

std::string ColorName(const std::optional<Color>& color, Color automatic) {
    constexpr std::string_view kDigits = "0123456789abcdef";
    std::string name = "#";
    for (const int shift : {4, 0, 12, 8, 20, 16})
        name += kDigits[static_cast<std::size_t>((color.value_or(automatic).value >> shift) & 0xF)];
    return name;
}

// The properties that two looks differ in, in words; each once.
class Differences {
  public:
    explicit Differences(FormatDepth depth) : depth_(depth) {}

    bool Empty() const { return old_words_.empty(); }
    const std::string& OldWords() const { return old_words_; }
    const std::string& NewWords() const { return new_words_; }

    /// True when the looks differ, whether their words were there before or not.
    bool Chars(const CharFormat& old_look, const CharFormat& new_look) {
        differ_ = false;
        Flag(old_look.bold, new_look.bold, "bold");
        Flag(old_look.italic, new_look.italic, "italic");
        Flag(old_look.underline != Underline::None, new_look.underline != Underline::None,
             "underlined");
        Flag(old_look.strikeout, new_look.strikeout, "struck through");
        Words(BaselineName(old_look.baseline), BaselineName(new_look.baseline));
        if (depth_ == FormatDepth::Full)
            FullChars(old_look, new_look);
        return differ_;
    }

    void Paragraph(const ParagraphFormat& old_look, const ParagraphFormat& new_look) {
        constexpr std::array<std::string_view, 4> kNames = {"left aligned", "centred",
                                                            "right aligned", "justified"};
        Words(std::string(kNames[static_cast<std::size_t>(old_look.alignment)]),
              std::string(kNames[static_cast<std::size_t>(new_look.alignment)]));
        if (depth_ != FormatDepth::Full)
            return;
        Words(Indent(old_look.left_indent), Indent(new_look.left_indent));
        Flag(old_look.right_to_left, new_look.right_to_left, "right to left");
    }

  private:
    void FullChars(const CharFormat& old_look, const CharFormat& new_look) {
        if (old_look.underline != Underline::None && new_look.underline != Underline::None &&
            old_look.underline != new_look.underline)
            Words("underline " + std::to_string(static_cast<int>(old_look.underline)),
                  "underline " + std::to_string(static_cast<int>(new_look.underline)));
        Words("colour " + ColorName(old_look.fore_color, kBlack),
              "colour " + ColorName(new_look.fore_color, kBlack));
        Words("background " + ColorName(old_look.back_color, kWhite),
              "background " + ColorName(new_look.back_color, kWhite));
        Words(Size(old_look.half_points), Size(new_look.half_points));
        Words(std::string(old_look.font.view()), std::string(new_look.font.view()));
    }
    static std::string BaselineName(Baseline baseline) {
        if (baseline == Baseline::Normal)
            return "on the line";
        return baseline == Baseline::Superscript ? "superscript" : "subscript";
    }
    static std::string Size(std::int32_t half_points) {
        return std::to_string(half_points / 2) + (half_points % 2 == 0 ? " pt" : ".5 pt");
    }
    static std::string Indent(std::int32_t twips) {
        return "indent " + std::to_string(twips / kTwipsPerPoint) + " pt";
    }
    void Flag(bool old_value, bool new_value, std::string_view name) {
        const std::string yes(name);
        Words(old_value ? yes : "not " + yes, new_value ? yes : "not " + yes);
    }
    void Words(const std::string& old_words, const std::string& new_words) {
        if (old_words == new_words)
            return;
        differ_ = true;
        const std::string pair = old_words + "\n" + new_words;
        if (std::find(told_.begin(), told_.end(), pair) != told_.end())
            return;
        told_.push_back(pair);
        old_words_ += (old_words_.empty() ? "" : ", ") + old_words;
        new_words_ += (new_words_.empty() ? "" : ", ") + new_words;
    }

    FormatDepth depth_;
    bool differ_ = false;
    std::vector<std::string> told_;
    std::string old_words_;
    std::string new_words_;
};

std::vector<Range> WordsOf(std::u16string_view text) {
    std::vector<Range> words;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t begin = at;
        while (at < text.size() && !ShowsNothing(text[at]))
            ++at;
        if (at > begin)
            words.push_back({begin, at});
        else
            ++at;
    }
    return words;
}

// Pairs of equal stretches of two texts, as offsets into them.
struct Stretch {
    std::size_t old_begin = 0;
    std::size_t new_begin = 0;
    std::size_t length = 0;
};

class WordPairs {
  public:
    WordPairs(std::u16string_view old_text, std::u16string_view new_text)
        : old_text_(old_text),
          new_text_(new_text),
          old_words_(WordsOf(old_text)),
          new_words_(WordsOf(new_text)) {}

    std::vector<Stretch> Find() {
        if (old_text_ == new_text_)
            return {{0, 0, old_text_.size()}};
        std::size_t old_end = old_words_.size();
        std::size_t new_end = new_words_.size();
        std::size_t begin = 0;
        while (begin < std::min(old_end, new_end) && Same(begin, begin)) {
            Take(begin, begin);
            ++begin;
        }
        while (old_end > begin && new_end > begin && Same(old_end - 1, new_end - 1))
            Take(--old_end, --new_end);
        if ((old_end - begin) * (new_end - begin) <= kMostWordPairs)
            Middle(begin, old_end, new_end);
        std::sort(pairs_.begin(), pairs_.end(), [](const Stretch& left, const Stretch& right) {
            return left.new_begin < right.new_begin;
        });
        return std::move(pairs_);
    }

  private:
    std::u16string_view Old(std::size_t word) const {
        const Range& range = old_words_[word];
        return old_text_.substr(range.begin, range.end - range.begin);
    }
    std::u16string_view New(std::size_t word) const {
        const Range& range = new_words_[word];
        return new_text_.substr(range.begin, range.end - range.begin);
    }
    bool Same(std::size_t old_word, std::size_t new_word) const {
        return Old(old_word) == New(new_word);
    }
    void Take(std::size_t old_word, std::size_t new_word) {
        const Range& range = old_words_[old_word];
        pairs_.push_back({range.begin, new_words_[new_word].begin, range.end - range.begin});
    }
    void Middle(std::size_t begin, std::size_t old_end, std::size_t new_end) {
        const std::size_t width = new_end - begin + 1;
        std::vector<std::uint32_t> length((old_end - begin + 1) * width);
        const auto cell = [&](std::size_t i, std::size_t j) -> std::uint32_t& {
            return length[(i - begin) * width + (j - begin)];
        };
        for (std::size_t i = old_end; i-- > begin;) {
            for (std::size_t j = new_end; j-- > begin;)
                cell(i, j) =
                    Same(i, j) ? cell(i + 1, j + 1) + 1 : std::max(cell(i + 1, j), cell(i, j + 1));
        }
        for (std::size_t i = begin, j = begin; i < old_end && j < new_end;) {
            if (Same(i, j))
                Take(i++, j++);
            else if (cell(i + 1, j) >= cell(i, j + 1))
                ++i;
            else
                ++j;
        }
    }

    std::u16string_view old_text_;
    std::u16string_view new_text_;
    std::vector<Range> old_words_;
    std::vector<Range> new_words_;
    std::vector<Stretch> pairs_;
};

class ParagraphCompare {
  public:
    ParagraphCompare(const Document& original, const Document& modified, FormatDepth depth)
        : original_(original), modified_(modified), found_(depth) {}

    std::optional<BesideDifference> Run(std::int32_t old_number, std::int32_t new_number) {
        const std::optional<Range> old_range = original_.Paragraph(old_number);
        const std::optional<Range> new_range = modified_.Paragraph(new_number);
        if (!old_range || !new_range)
            return std::nullopt;
        const std::u16string_view old_text = original_.Text(*old_range);
        const std::u16string_view new_text = modified_.Text(*new_range);
        // An empty line has no looks.
        const auto is_empty = [](std::u16string_view text) {
            return std::all_of(text.begin(), text.end(), ShowsNothing);
        };
        if (is_empty(old_text) || is_empty(new_text))
            return std::nullopt;
        for (const Stretch& stretch : WordPairs(old_text, new_text).Find())
            Compare(old_range->begin + stretch.old_begin, new_range->begin + stretch.new_begin,
                    stretch.length);
        const ParagraphFormat* const old_format = original_.FormatAt(old_range->begin);
        const ParagraphFormat* const new_format = modified_.FormatAt(new_range->begin);
        if (old_format != nullptr && new_format != nullptr)
            found_.Paragraph(*old_format, *new_format);
        if (found_.Empty())
            return std::nullopt;
        std::string words = ToUtf8(excerpt_);
        words = words.empty() ? "" : "\u201C" + words + "\u201D ";
        return BesideDifference{BesideKind::Formatting,
                                BesideChange::Changed,
                                {ParagraphNumber{old_number}, ParagraphNumber{new_number}},
                                BesideText(words + found_.OldWords()),
                                BesideText(words + found_.NewWords())};
    }

  private:
    void Compare(std::size_t old_at, std::size_t new_at, std::size_t length) {
        const std::size_t stop = new_at + length;
        while (new_at < stop) {
            std::size_t old_end = 0;
            std::size_t new_end = 0;
            const CharRun* const old_run = original_.RunAt(old_at, old_end);
            const CharRun* const new_run = modified_.RunAt(new_at, new_end);
            if (old_run == nullptr || new_run == nullptr)
                return;
            const std::size_t step = std::min({stop - new_at, old_end - old_at, new_end - new_at});
            CompareRun(*old_run, *new_run, new_at, step);
            old_at += step;
            new_at += step;
        }
    }

    void CompareRun(const CharRun& old_run, const CharRun& new_run, std::size_t at,
                    std::size_t length) {
        if (old_run.format == new_run.format)
            return;
        const std::u16string_view text = modified_.Text({at, at + length});
        const bool seen = std::any_of(text.begin(), text.end(),
                                      [](char16_t unit) { return !ShowsNothing(unit); });
        if (!seen || !found_.Chars(old_run.format, new_run.format))
            return;
        if (at != excerpt_end_ && !excerpt_.empty())
            excerpt_ += u' ';
        if (excerpt_.size() < kLongestExcerpt)
            excerpt_ += text.substr(0, kLongestExcerpt - excerpt_.size());
        excerpt_end_ = at + length;
    }

    const Document& original_;
    const Document& modified_;
    Differences found_;
    std::u16string excerpt_;
    std::size_t excerpt_end_ = 0;
};

}  // namespace

std::vector<BesideDifference> CompareFormatting(const RichText& original, const RichText& modified,
                                                const ParagraphPartners& partners,
                                                FormatDepth depth, RunWatcher* watcher) {
    constexpr std::int64_t kBetweenStops = 512;  // paragraphs
    std::vector<BesideDifference> differences;
    if (depth == FormatDepth::None)
        return differences;
    const Document old_side(original);
    const Document new_side(modified);
    StopCheck stop(watcher, kBetweenStops);
    for (std::size_t i = 0; i < partners.size() && stop.KeepGoing(); ++i) {
        ParagraphCompare compare(old_side, new_side, depth);
        if (auto found = compare.Run(static_cast<std::int32_t>(i) + 1, partners[i]))
            differences.push_back(std::move(*found));
    }
    return differences;
}

}  // namespace zorvane
