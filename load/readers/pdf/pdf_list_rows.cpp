#include "load/readers/pdf/pdf_list_rows.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <string>

#include "load/readers/pdf/pdf_labels.h"

namespace zorvane {
namespace {

constexpr float kHeadPitch = 2.5F;  // of the size; the head of a column stands so near
constexpr std::size_t kReach = 40;  // labels looked at on each side

struct Item {
    std::size_t line = 0;
    std::vector<PdfLabel> readings;
    float label_x0 = 0;
    float text_x0 = 0;
};

class Marker {
  public:
    Marker(const std::vector<PdfCharacter>& characters, std::vector<PdfTableLine>& lines)
        : characters_(characters), lines_(lines) {}

    void Mark() {
        for (std::size_t line = 0; line < lines_.size(); ++line)
            AddItem(line);
        for (std::size_t index = 0; index < items_.size(); ++index)
            lines_[items_[index].line].is_list_item = IsOfList(index);
        DropHeadedColumns();
    }

  private:
    // A label alone before the gap, and one text behind it.
    void AddItem(std::size_t line) {
        const PdfSegmentLine& segments = lines_[line].segments;
        if (segments.size() != 2 || segments.front()->words.size() > 1)
            return;
        const PdfWord& word = segments.front()->words.front();
        std::u32string text;
        for (std::uint32_t index = 0; index < word.count; ++index)
            text += characters_[word.first + index].letter;
        std::vector<PdfLabel> readings = LabelsOf(text);
        if (!readings.empty())
            items_.push_back({line, std::move(readings), segments[0]->x0, segments[1]->x0});
    }

    bool IsOfList(std::size_t index) const {
        const Item& item = items_[index];
        if (item.readings.front().kind == PdfLabelKind::Bullet)
            return true;
        const std::size_t first = index > kReach ? index - kReach : 0;
        const std::size_t end = std::min(items_.size(), index + kReach + 1);
        for (std::size_t other = first; other < end; ++other) {
            if (other != index && std::fabs(items_[other].text_x0 - item.text_x0) <= kListEdge &&
                (other < index ? AnyFollows(items_[other], item) : AnyFollows(item, items_[other])))
                return true;
        }
        return false;
    }

    static bool AnyFollows(const Item& item, const Item& next) {
        return std::any_of(item.readings.begin(), item.readings.end(), [&](const PdfLabel& a) {
            return std::any_of(next.readings.begin(), next.readings.end(),
                               [&](const PdfLabel& b) { return Follows(a, b); });
        });
    }

    // The head of a table stands over its numbers; with it all lines up to the next that is none.
    void DropHeadedColumns() {
        for (const Item& item : items_) {
            if (item.line == 0 || !lines_[item.line].is_list_item)
                continue;
            const PdfTableLine& above = lines_[item.line - 1];
            if (!above.is_list_item && IsHeadOf(above, item)) {
                for (std::size_t line = item.line;
                     line < lines_.size() && lines_[line].is_list_item; ++line)
                    lines_[line].is_list_item = false;
            }
        }
    }

    bool IsHeadOf(const PdfTableLine& above, const Item& item) const {
        const PdfSegment& label = *lines_[item.line].segments.front();
        return above.segments.size() > 1 &&
               label.baseline - above.segments.front()->baseline < kHeadPitch * label.size &&
               above.segments[0]->x0 <= item.label_x0 + kListEdge &&
               above.segments[0]->x1 >= item.label_x0 - kListEdge &&
               std::fabs(above.segments[1]->x0 - item.text_x0) <= kListEdge;
    }

    const std::vector<PdfCharacter>& characters_;
    std::vector<PdfTableLine>& lines_;
    std::vector<Item> items_;
};

}  // namespace

void MarkListItems(const std::vector<PdfCharacter>& characters, std::vector<PdfTableLine>& lines) {
    Marker(characters, lines).Mark();
}

}  // namespace zorvane
