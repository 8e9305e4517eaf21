#include "load/readers/pdf/pdf_running.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <map>
#include <string>
#include <tuple>
#include <utility>

#include "common/base/ascii.h"

namespace zorvane {
namespace {

constexpr std::size_t kLinesAtAnEdge = 4;
constexpr std::size_t kLeastPages = 2;
constexpr std::size_t kShareOfPages = 3;

// A page number alone is "#" on each page; Roman ones stay apart and are few.
std::u32string Masked(const PdfLine& line) {
    std::u32string text;
    for (const PdfLetter& letter : line.letters) {
        const bool digit = IsAsciiDigit(letter.letter);
        if (digit && !text.empty() && text.back() == U'#')
            continue;
        text += digit ? U'#' : letter.letter;
    }
    return text;
}

struct Candidate {
    std::size_t line = 0;
    std::u32string text;
    long place = 0;  // in steps of a few points
    bool foot = false;
};

class Finder {
  public:
    explicit Finder(std::vector<PdfLine>& lines) : lines_(lines) {
        std::size_t start = 0;
        while (start < lines.size()) {
            std::size_t end = start;
            while (end < lines.size() && lines[end].page == lines[start].page)
                ++end;
            AddPage(start, end);
            start = end;
        }
    }

    void Mark() {
        for (const std::vector<Candidate>& edge : edges_) {
            for (const Candidate& candidate : edge) {
                // From the edge of the page inwards, without a gap.
                if (!IsRepeated(candidate))
                    break;
                lines_[candidate.line].running = true;
            }
        }
    }

  private:
    static constexpr float kStep = 4;  // points

    void AddPage(std::size_t start, std::size_t end) {
        std::vector<std::size_t> order;
        for (std::size_t line = start; line < end; ++line) {
            if (lines_[line].direction == PdfDirection::Right)
                order.push_back(line);
        }
        if (order.empty())
            return;
        ++pages_;
        std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
            return lines_[a].baseline < lines_[b].baseline;
        });
        AddEdge(order, false);
        std::reverse(order.begin(), order.end());
        AddEdge(order, true);
    }

    void AddEdge(const std::vector<std::size_t>& order, bool foot) {
        std::vector<Candidate> edge;
        for (std::size_t index = 0; index < std::min(order.size(), kLinesAtAnEdge); ++index) {
            const PdfLine& line = lines_[order[index]];
            Candidate candidate{order[index], Masked(line), std::lround(line.baseline / kStep),
                                foot};
            ++counts_[{foot, candidate.place, candidate.text}];
            edge.push_back(std::move(candidate));
        }
        edges_.push_back(std::move(edge));
    }

    // The place may lie at the border of two steps.
    bool IsRepeated(const Candidate& candidate) const {
        std::size_t count = 0;
        for (long place = candidate.place - 1; place <= candidate.place + 1; ++place) {
            const auto found = counts_.find({candidate.foot, place, candidate.text});
            count += found == counts_.end() ? 0 : found->second;
        }
        return count >= kLeastPages && count * kShareOfPages >= pages_;
    }

    std::vector<PdfLine>& lines_;
    std::vector<std::vector<Candidate>> edges_;
    std::map<std::tuple<bool, long, std::u32string>, std::size_t> counts_;
    std::size_t pages_ = 0;
};

}  // namespace

void MarkRunningLines(std::vector<PdfLine>& lines) {
    Finder(lines).Mark();
}

}  // namespace zorvane
