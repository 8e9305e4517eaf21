#include "load/readers/pdf/pdf_line_builder.h"

#include <algorithm>
#include <limits>
#include <map>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>

#include "load/readers/pdf/pdf_labels.h"
#include "load/readers/pdf/pdf_order.h"

namespace zorvane {
namespace {

// Shares of the font size.
constexpr float kSmall = 0.85F;
constexpr float kRaised = 0.15F;
constexpr float kLowered = 0.06F;
constexpr float kUnderlineHighest = 0.01F;
constexpr float kUnderlineLowest = 0.24F;
constexpr float kStrikeHighest = 0.5F;
constexpr float kStrikeLowest = 0.15F;

float Height(const PdfBox& box) {
    return (box.y0 + box.y1) / 2;
}

float MiddleX(const PdfWord& word) {
    return (word.x0 + word.x1) / 2;
}

bool Overlap(const PdfCharacter& a, const PdfCharacter& b) {
    if (!IsAccent(a.letter) && !IsAccent(b.letter))
        return false;
    const float common = std::min(a.x1, b.x1) - std::max(a.x0, b.x0);
    return common > 0.4F * std::min(a.x1 - a.x0, b.x1 - b.x0) ||
           (b.letter >= 0x300 && b.letter <= 0x36F);
}

// No line is broken before these, be there a blank or not.
bool StaysWithWordBefore(char32_t letter) {
    return std::u32string_view(U":;!?/,.)]}\u00BB").find(letter) != std::u32string_view::npos;
}

// The width of most letters, and the left edge of all.
std::pair<float, float> CellAndMargin(const PdfPage& page) {
    float margin = std::numeric_limits<float>::max();
    std::vector<float> widths;
    for (const PdfCharacter& character : page.characters) {
        if (character.direction != PdfDirection::Right || character.hidden != PdfHidden::No ||
            IsPdfBlank(character.letter))
            continue;
        margin = std::min(margin, character.x0);
        widths.push_back(character.x1 - character.x0);
    }
    if (widths.empty())
        return {1.0F, 0.0F};
    const auto middle = widths.begin() + static_cast<std::ptrdiff_t>(widths.size() / 2);
    std::nth_element(widths.begin(), middle, widths.end());
    return {std::max(*middle, 0.5F), margin};
}

}  // namespace

PdfRules::PdfRules(const PdfPage& page) : rules_(page.rules) {
    std::sort(rules_.begin(), rules_.end(),
              [](const PdfBox& a, const PdfBox& b) { return Height(a) < Height(b); });
}

bool PdfRules::Cover(const PdfWord& word, const PdfSegment& segment, float high, float low) const {
    const float from = word.baseline + high * word.size;
    const float to = word.baseline + low * word.size;
    auto rule = std::lower_bound(rules_.begin(), rules_.end(), from,
                                 [](const PdfBox& box, float y) { return Height(box) < y; });
    constexpr int kMostLooked = 200;
    const float slack = 0.4F * word.size;
    for (int looked = 0; rule != rules_.end() && Height(*rule) <= to && looked < kMostLooked;
         ++rule, ++looked) {
        const float common = std::min(rule->x1, word.x1) - std::max(rule->x0, word.x0);
        if (common > 0.7F * (word.x1 - word.x0) && rule->x0 >= segment.x0 - slack &&
            rule->x1 <= segment.x1 + slack)
            return true;
    }
    return false;
}

PdfLinkMap::PdfLinkMap(const PdfPage& page) {
    for (const PdfLink& link : page.links) {
        links_.push_back(&link);
        tallest_ = std::max(tallest_, link.box.y1 - link.box.y0);
    }
    std::stable_sort(links_.begin(), links_.end(),
                     [](const PdfLink* a, const PdfLink* b) { return a->box.y0 < b->box.y0; });
}

const PdfLink* PdfLinkMap::At(const PdfWord& word) const {
    const float y = word.baseline - 0.3F * word.size;
    auto link = std::lower_bound(links_.begin(), links_.end(), y - tallest_,
                                 [](const PdfLink* a, float top) { return a->box.y0 < top; });
    constexpr int kMostLooked = 500;
    for (int looked = 0; link != links_.end() && (*link)->box.y0 <= y && looked < kMostLooked;
         ++link, ++looked) {
        const PdfBox& box = (*link)->box;
        if (box.y1 >= y && box.x0 <= MiddleX(word) && box.x1 >= MiddleX(word))
            return *link;
    }
    return nullptr;
}

PdfLineBuilder::PdfLineBuilder(const PdfPage& page, const PdfLineOptions& options)
    : page_(page), options_(options), rules_(page), links_(page) {
    if (options.by_layout)
        std::tie(cell_, margin_) = CellAndMargin(page);
}

PdfLine PdfLineBuilder::Build(const std::vector<const PdfSegment*>& segments, PdfLine* before,
                              bool stretched) {
    line_ = {};
    stretched_ = stretched;
    blanks_ = 0;
    blank_count_ = 0;
    left_ = nullptr;
    last_ = nullptr;
    const PdfSegment& first = *segments.front();
    line_.x0 = first.x0;
    line_.x1 = segments.back()->x1;
    line_.baseline = first.baseline;
    line_.size = first.size;
    for (const PdfSegment* const segment : segments) {
        for (const PdfWord& word : segment->words) {
            if (options_.links)
                FollowLink(word, left_ == nullptr && before != nullptr ? *before : line_);
            AddWord(*segment, word);
        }
    }
    MeasureStart(segments);
    SettleStyle();
    constexpr float kUsualBlank = 0.25F;  // of the size
    line_.blank =
        blank_count_ > 0 ? blanks_ / static_cast<float>(blank_count_) : kUsualBlank * line_.size;
    return std::move(line_);
}

void PdfLineBuilder::CloseLink(PdfLine& line) {
    if (link_ == nullptr)
        return;
    PdfLetter letter = line.letters.empty() ? PdfLetter{} : line.letters.back();
    letter.underline = false;
    letter.baseline = Baseline::Normal;
    for (const char character : " <" + link_->address + ">") {
        letter.letter = static_cast<unsigned char>(character);
        line.letters.push_back(letter);
    }
    link_ = nullptr;
}

void PdfLineBuilder::FollowLink(const PdfWord& word, PdfLine& line) {
    const PdfLink* const link = links_.At(word);
    // A link over two lines has two places with one address.
    if (link_ != nullptr && (link == nullptr || link->address != link_->address))
        CloseLink(line);
    link_ = link;
}

void PdfLineBuilder::AddWord(const PdfSegment& segment, const PdfWord& word) {
    if (options_.by_layout)
        PadTo(word);
    else if (left_ != nullptr)
        AddGap(word);
    PdfLetter letter;
    letter.size = word.size;
    if (word.size <= kSmall * segment.size) {
        const float rise = segment.baseline - word.baseline;
        if (rise >= kRaised * segment.size)
            letter.baseline = Baseline::Superscript;
        else if (-rise >= kLowered * segment.size)
            letter.baseline = Baseline::Subscript;
    }
    if (letter.baseline != Baseline::Normal)
        letter.size = segment.size;
    letter.underline = rules_.Cover(word, segment, kUnderlineHighest, kUnderlineLowest);
    letter.strikeout = rules_.Cover(word, segment, -kStrikeHighest, -kStrikeLowest);
    for (std::uint32_t index = 0; index < word.count; ++index)
        AddCharacter(page_.characters[word.first + index], letter);
    left_ = &word;
}

void PdfLineBuilder::AddGap(const PdfWord& word) {
    PdfGap gap = GapBetween(*left_, word);
    if (gap == PdfGap::None)
        return;
    if (stretched_)
        gap = PdfGap::Blank;
    if (gap == PdfGap::Blank && !stretched_) {
        blanks_ += word.x0 - left_->x1;
        ++blank_count_;
    }
    // A blank under which the line goes on is underlined with its neighbours.
    PdfLetter blank = line_.letters.empty() ? PdfLetter{} : line_.letters.back();
    blank.letter = gap == PdfGap::Wide ? U'\t' : U' ';
    blank.baseline = Baseline::Normal;
    last_ = nullptr;
    line_.wide_gaps += gap == PdfGap::Wide ? 1 : 0;
    line_.letters.push_back(blank);
}

// As many blanks as lead to the word's place; words of a text that runs on stay one blank apart.
void PdfLineBuilder::PadTo(const PdfWord& word) {
    last_ = nullptr;
    const PdfGap gap = left_ == nullptr ? PdfGap::Wide : GapBetween(*left_, word);
    if (gap == PdfGap::None)
        return;
    constexpr float kMostColumns = 500;
    const float column = std::clamp((word.x0 - margin_) / cell_, 0.0F, kMostColumns);
    const auto wanted = static_cast<std::size_t>(column);
    // Blanks before the first word look like it.
    PdfLetter blank = line_.letters.empty()
                          ? PdfLetter{U' ', page_.characters[word.first].style, word.size}
                          : line_.letters.back();
    blank.letter = U' ';
    blank.baseline = Baseline::Normal;
    std::size_t count = left_ == nullptr ? 0 : 1;
    if (gap == PdfGap::Wide && wanted > line_.letters.size() + count)
        count = wanted - line_.letters.size();
    line_.letters.insert(line_.letters.end(), count, blank);
}

void PdfLineBuilder::AddCharacter(const PdfCharacter& character, PdfLetter letter) {
    letter.letter = character.letter;
    letter.style = character.style;
    if (last_ != nullptr && !line_.letters.empty() && Overlap(*last_, character)) {
        char32_t& before = line_.letters.back().letter;
        char32_t composed = Composed(before, character.letter);
        if (composed == 0)
            composed = Composed(character.letter, before);
        if (composed != 0) {
            before = composed;
            return;
        }
    }
    last_ = &character;
    line_.letters.push_back(letter);
}

// The first word's width, and whether it is a label.
void PdfLineBuilder::MeasureStart(const std::vector<const PdfSegment*>& segments) {
    line_.text_x0 = line_.x0;
    std::u32string start;
    constexpr std::size_t kEnough = 16;
    for (const PdfLetter& letter : line_.letters) {
        if (start.size() == kEnough)
            break;
        start += letter.letter;
    }
    const PdfWord* last = nullptr;
    for (const PdfSegment* const segment : segments) {
        for (const PdfWord& word : segment->words) {
            if (last != nullptr && GapBetween(*last, word) != PdfGap::None &&
                !StaysWithWordBefore(page_.characters[word.first].letter)) {
                MeasureLabel(start, *last, word);
                return;
            }
            line_.first_word = std::max(line_.first_word, word.x1 - line_.x0);
            last = &word;
        }
    }
}

// What may be a label; whether it is one is told when all lines are known.
void PdfLineBuilder::MeasureLabel(const std::u32string& start, const PdfWord& label,
                                  const PdfWord& text) {
    line_.label = LabelLength(start);
    if (line_.label == 0)
        return;
    line_.label_is_wide = GapBetween(label, text) == PdfGap::Wide;
    line_.label_gap = (text.x0 - label.x1) / std::max(line_.size, 0.1F);
    line_.text_x0 = text.x0;
}

void PdfLineBuilder::SettleStyle() {
    std::map<std::pair<float, std::uint32_t>, std::size_t> counts;
    std::size_t most = 0;
    line_.smallest = line_.size;
    line_.largest = 0;
    for (const PdfLetter& letter : line_.letters) {
        line_.smallest = std::min(line_.smallest, letter.size);
        line_.largest = std::max(line_.largest, letter.size);
        const std::size_t count = ++counts[{letter.size, letter.style}];
        if (count > most) {
            most = count;
            line_.size = letter.size;
            line_.style = letter.style;
        }
    }
}

}  // namespace zorvane
