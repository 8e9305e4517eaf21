#include "load/readers/pdf/pdf_grids.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <numeric>
#include <utility>

namespace zorvane {
namespace {

constexpr std::size_t kMostLines = 12'000;
constexpr std::size_t kMostPairs = 4'000'000;
constexpr float kTouch = 2.5F;       // points
constexpr float kSameEnd = 3;        // points between the ends of lines of one extent
constexpr float kSameColumn = 4;     // points between lines that are one edge
constexpr float kShortestRule = 12;  // points; shorter ones are part of a drawing
constexpr float kOutside = 1.2F;     // of the size, from a line to the text outside of it

struct Component {
    std::vector<PdfRuleLine> across;
    std::vector<PdfRuleLine> down;
};

bool SameExtent(const PdfRuleLine& a, const PdfRuleLine& b) {
    return std::fabs(a.first - b.first) <= kSameEnd && std::fabs(a.last - b.last) <= kSameEnd;
}

/// Lines that touch, by a union of sets; lines of one direction and extent that enclose rows of
/// cells belong together as well.
class Components {
  public:
    Components(std::vector<PdfRuleLine> across, std::vector<PdfRuleLine> down,
               const std::vector<PdfSegment>& segments)
        : across_(std::move(across)),
          down_(std::move(down)),
          segments_(segments),
          parents_(across_.size() + down_.size()) {
        std::iota(parents_.begin(), parents_.end(), std::size_t{0});
    }

    std::vector<Component> Find() {
        JoinTouching();
        JoinAcross();
        JoinDown();
        std::vector<Component> components(parents_.size());
        for (std::size_t index = 0; index < across_.size(); ++index)
            components[Root(index)].across.push_back(across_[index]);
        for (std::size_t index = 0; index < down_.size(); ++index)
            components[Root(across_.size() + index)].down.push_back(down_[index]);
        std::erase_if(components, [](const Component& component) {
            return component.across.size() + component.down.size() < 2;
        });
        return components;
    }

  private:
    std::size_t Root(std::size_t index) {
        while (parents_[index] != index)
            index = parents_[index] = parents_[parents_[index]];
        return index;
    }
    void Join(std::size_t a, std::size_t b) { parents_[Root(a)] = Root(b); }

    void JoinTouching() {
        for (std::size_t a = 0; a < across_.size(); ++a) {
            const PdfRuleLine& line = across_[a];
            auto down = std::partition_point(down_.begin(), down_.end(), [&](const PdfRuleLine& d) {
                return d.at < line.first - kTouch;
            });
            for (; down != down_.end() && down->at <= line.last + kTouch; ++down) {
                if (down->first <= line.at + kTouch && down->last >= line.at - kTouch)
                    Join(a, across_.size() + static_cast<std::size_t>(down - down_.begin()));
            }
        }
    }

    // Most lines of text between them have several pieces within their extent.
    bool EncloseRows(const PdfRuleLine& above, const PdfRuleLine& below) const {
        auto segment =
            std::partition_point(segments_.begin(), segments_.end(),
                                 [&](const PdfSegment& each) { return each.baseline < above.at; });
        std::size_t rows = 0;
        std::size_t many = 0;
        std::uint32_t row = std::numeric_limits<std::uint32_t>::max();
        std::size_t pieces = 0;
        bool first_has_many = false;
        for (; segment != segments_.end() && segment->baseline < below.at + 1; ++segment) {
            if (segment->x0 < above.first - kSameEnd || segment->x1 > above.last + kSameEnd)
                continue;
            if (segment->row != row) {
                row = segment->row;
                pieces = 0;
                ++rows;
            }
            many += ++pieces == 2 ? 1U : 0U;
            first_has_many |= rows == 1 && pieces == 2;
        }
        // One cell of a row may take more lines than the others.
        constexpr std::size_t kMostLinesOfRow = 6;
        return many * 2 > rows || (first_has_many && rows <= kMostLinesOfRow);
    }

    void JoinAcross() {
        constexpr std::size_t kReach = 40;
        for (std::size_t a = 0; a < across_.size(); ++a) {
            const std::size_t end = std::min(across_.size(), a + kReach);
            for (std::size_t b = a + 1; b < end; ++b) {
                if (!SameExtent(across_[a], across_[b]))
                    continue;
                if (EncloseRows(across_[a], across_[b]))
                    Join(a, b);
                break;
            }
        }
    }

    void JoinDown() {
        constexpr std::size_t kReach = 40;
        for (std::size_t a = 0; a < down_.size(); ++a) {
            const std::size_t end = std::min(down_.size(), a + kReach);
            for (std::size_t b = a + 1; b < end; ++b) {
                if (SameExtent(down_[a], down_[b])) {
                    Join(across_.size() + a, across_.size() + b);
                    break;
                }
            }
        }
    }

    std::vector<PdfRuleLine> across_;
    std::vector<PdfRuleLine> down_;
    const std::vector<PdfSegment>& segments_;
    std::vector<std::size_t> parents_;
};

// Different places, each once.
std::vector<float> Edges(std::vector<float> places) {
    std::sort(places.begin(), places.end());
    std::vector<float> edges;
    for (const float place : places) {
        if (edges.empty() || place - edges.back() > kSameColumn)
            edges.push_back(place);
    }
    return edges;
}

PdfBox BoxOf(const Component& component) {
    constexpr float kFar = std::numeric_limits<float>::max();
    PdfBox box{kFar, kFar, -kFar, -kFar};
    for (const PdfRuleLine& line : component.across) {
        box = {std::min(box.x0, line.first), std::min(box.y0, line.at), std::max(box.x1, line.last),
               std::max(box.y1, line.at)};
    }
    for (const PdfRuleLine& line : component.down) {
        box = {std::min(box.x0, line.at), std::min(box.y0, line.first), std::max(box.x1, line.at),
               std::max(box.y1, line.last)};
    }
    return box;
}

bool IsWithin(const PdfSegment& segment, const PdfBox& box) {
    const float middle_x = (segment.x0 + segment.x1) / 2;
    const float middle_y = segment.baseline - 0.3F * segment.size;
    return middle_x >= box.x0 && middle_x <= box.x1 && middle_y >= box.y0 && middle_y <= box.y1;
}

// Text of the outer columns may stand outside of the outer lines, where only inner ones are drawn.
void Widen(PdfBox& box, const std::vector<PdfSegment>& segments) {
    float left = box.x0;
    float right = box.x1;
    float left_end = std::numeric_limits<float>::lowest();
    float right_end = std::numeric_limits<float>::max();
    float size = 0;
    for (const PdfSegment& segment : segments) {
        const float y = segment.baseline - 0.3F * segment.size;
        if (y < box.y0 || y > box.y1)
            continue;
        size = std::max(size, segment.size);
        if (segment.x1 <= box.x0 + 1) {
            left = std::min(left, segment.x0);
            left_end = std::max(left_end, segment.x1);
        } else if (segment.x0 >= box.x1 - 1) {
            right = std::max(right, segment.x1);
            right_end = std::min(right_end, segment.x0);
        }
    }
    if (box.x0 - left_end <= kOutside * size)
        box.x0 = left - 1;
    if (right_end - box.x1 <= kOutside * size)
        box.x1 = right + 1;
}

// A row of cells whose left edges are those of the rows beside it.
bool Continues(const std::vector<PdfSegment>& segments, std::size_t first, std::size_t end,
               const std::vector<float>& edges) {
    constexpr float kSameEdge = 3;
    if (end - first < 2)
        return false;
    return std::all_of(segments.begin() + static_cast<std::ptrdiff_t>(first),
                       segments.begin() + static_cast<std::ptrdiff_t>(end),
                       [&](const PdfSegment& segment) {
                           return std::any_of(edges.begin(), edges.end(), [&](float edge) {
                               return std::fabs(edge - segment.x0) <= kSameEdge;
                           });
                       });
}

// Rows below the last line, where none closes the table.
void Lengthen(PdfBox& box, const std::vector<PdfSegment>& segments) {
    constexpr float kFarthest = 3;  // of the size
    std::vector<float> edges;
    for (const PdfSegment& segment : segments) {
        if (IsWithin(segment, box))
            edges.push_back(segment.x0);
    }
    float last = box.y1;
    for (std::size_t index = 0; index < segments.size();) {
        std::size_t end = index;
        while (end < segments.size() && segments[end].row == segments[index].row)
            ++end;
        const PdfSegment& segment = segments[index];
        if (segment.baseline - 0.3F * segment.size > last) {
            if (segment.baseline - last > kFarthest * segment.size ||
                !Continues(segments, index, end, edges))
                break;
            last = segment.baseline;
        }
        index = end;
    }
    box.y1 = last;
}

// One without two columns is a frame, or a line between columns.
bool IsTable(const Component& component, const std::vector<float>& columns) {
    if (component.down.empty())
        return component.across.size() >= 2;
    if (columns.size() < 3)
        return false;
    if (component.across.empty())
        return component.down.size() >= 2;
    return component.down.size() >= 3 || component.across.size() >= 3 ||
           (component.down.size() == 2 && SameExtent(component.down[0], component.down[1]));
}

// Text that runs over the lines belongs to a drawing.
bool IsCrossed(const PdfGrid& grid) {
    constexpr float kInside = 3;
    constexpr std::size_t kShare = 4;
    std::size_t crossed = 0;
    for (const PdfSegment& segment : grid.segments) {
        crossed +=
            std::any_of(grid.columns.begin(), grid.columns.end(),
                        [&](float edge) {
                            return edge > segment.x0 + kInside && edge < segment.x1 - kInside;
                        })
                ? 1U
                : 0U;
    }
    return crossed * kShare > grid.segments.size();
}

class Taker {
  public:
    Taker(const PdfPage& page, std::vector<PdfSegment>& segments)
        : page_(page), segments_(segments), owners_(segments.size(), kNoPdfTable) {}

    std::vector<PdfGrid> Take() {
        std::vector<PdfRuleLine> across = HorizontalLines(page_.rules);
        std::vector<PdfRuleLine> down = VerticalLines(page_.uprights);
        const auto is_short = [](const PdfRuleLine& line) {
            return line.last - line.first < kShortestRule;
        };
        std::erase_if(across, is_short);
        std::erase_if(down, [](const PdfRuleLine& line) { return line.last - line.first < 6; });
        if (across.size() + down.size() < 2 || across.size() + down.size() > kMostLines ||
            across.size() * down.size() > kMostPairs)
            return {};
        std::vector<Component> components =
            Components(std::move(across), std::move(down), segments_).Find();
        // A table within the cell of another is part of that.
        std::stable_sort(components.begin(), components.end(),
                         [](const Component& a, const Component& b) {
                             const PdfBox x = BoxOf(a);
                             const PdfBox y = BoxOf(b);
                             return (x.x1 - x.x0) * (x.y1 - x.y0) > (y.x1 - y.x0) * (y.y1 - y.y0);
                         });
        constexpr std::size_t kMostGrids = 500;
        for (const Component& component : components) {
            if (grids_.size() < kMostGrids)
                AddGrid(component);
        }
        if (!grids_.empty())
            Replace();
        return std::move(grids_);
    }

  private:
    void AddGrid(const Component& component) {
        PdfGrid grid;
        grid.box = BoxOf(component);
        if (component.across.empty())
            Widen(grid.box, segments_);
        if (component.down.empty())
            Lengthen(grid.box, segments_);
        if (!component.down.empty()) {
            std::vector<float> places{grid.box.x0, grid.box.x1};
            for (const PdfRuleLine& line : component.down)
                places.push_back(line.at);
            grid.columns = Edges(std::move(places));
        }
        if (!IsTable(component, grid.columns))
            return;
        grid.across = component.across;
        std::vector<std::size_t> owned;
        for (std::size_t index = 0; index < segments_.size(); ++index) {
            if (owners_[index] == kNoPdfTable && IsWithin(segments_[index], grid.box)) {
                owned.push_back(index);
                grid.segments.push_back(segments_[index]);
            }
        }
        if (owned.size() < 2 || IsCrossed(grid) || !HasRows(grid))
            return;
        for (const std::size_t index : owned)
            owners_[index] = static_cast<std::uint32_t>(grids_.size());
        grids_.push_back(std::move(grid));
    }

    // Lines in one direction alone may be anything, unless they enclose rows of several cells.
    static bool HasRows(const PdfGrid& grid) {
        if (!grid.columns.empty() && !grid.across.empty())
            return true;
        std::size_t rows = 0;
        std::size_t many = 0;
        for (std::size_t index = 0; index < grid.segments.size(); ++index) {
            const bool same = index > 0 && grid.segments[index].row == grid.segments[index - 1].row;
            rows += same ? 0U : 1U;
            const bool second =
                same && (index < 2 || grid.segments[index - 2].row != grid.segments[index].row);
            many += second ? 1U : 0U;
        }
        return many >= 2 || (many == 1 && grid.across.size() > 2);
    }

    void Replace() {
        std::vector<PdfSegment> kept;
        std::vector<bool> placed(grids_.size(), false);
        for (std::size_t index = 0; index < segments_.size(); ++index) {
            const std::uint32_t owner = owners_[index];
            if (owner == kNoPdfTable)
                kept.push_back(segments_[index]);
            else if (!placed[owner]) {
                placed[owner] = true;
                kept.push_back(StandIn(owner));
            }
        }
        std::stable_sort(kept.begin(), kept.end(), [](const PdfSegment& a, const PdfSegment& b) {
            return a.row != b.row ? a.row < b.row : a.x0 < b.x0;
        });
        segments_ = std::move(kept);
    }

    PdfSegment StandIn(std::uint32_t owner) const {
        const PdfGrid& grid = grids_[owner];
        PdfSegment whole = grid.segments.front();
        whole.table = owner;
        whole.x0 = grid.box.x0;
        whole.x1 = grid.box.x1;
        float bottom = whole.baseline;
        whole.words.resize(1);
        for (const PdfSegment& segment : grid.segments) {
            bottom = std::max(bottom, segment.baseline);
            whole.x0 = std::min(whole.x0, segment.x0);
            whole.x1 = std::max(whole.x1, segment.x1);
            for (const PdfWord& word : segment.words) {
                if (word.number < whole.words.front().number)
                    whole.words.front() = word;
            }
        }
        whole.height = bottom - whole.baseline;
        return whole;
    }

    const PdfPage& page_;
    std::vector<PdfSegment>& segments_;
    std::vector<std::uint32_t> owners_;
    std::vector<PdfGrid> grids_;
};

}  // namespace

std::vector<PdfGrid> TakeGrids(const PdfPage& page, std::vector<PdfSegment>& segments) {
    if (page.rules.size() + page.uprights.size() < 2 || segments.empty())
        return {};
    return Taker(page, segments).Take();
}

}  // namespace zorvane
