// The text bodies and tables of slides as paragraphs. Source: ECMA-376 part 1, 21.1.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "load/readers/ooxml/slide_styles.h"
#include "load/readers/sink/document_sink.h"

namespace zorvane {

/// Numbers of one text body: each level counts for itself.
class SlideNumbering {
  public:
    /// The label of the next paragraph; empty for one without. Call once for each paragraph that
    /// holds text; `level` from 0.
    std::string Next(const SlideBullet& bullet, std::int32_t level);

  private:
    struct Counter {
        std::string scheme;
        std::int32_t start = 0;
        std::int32_t count = 0;
    };
    std::array<Counter, kSlideLevels> counters_;
};

/// "iv.", "(b)", "3)" for the number and a scheme such as "romanLcPeriod".
std::string SlideNumberText(std::string_view scheme, std::int32_t number);

/// In place of a slide's number: a background, whose fields have nothing to show yet.
inline constexpr std::int32_t kNoSlideNumber = -1;

class SlideTextWriter {
  public:
    SlideTextWriter(ParagraphWriter& writer, const SlideTheme& theme, std::int32_t slide_number)
        : writer_(writer), theme_(theme), slide_number_(slide_number) {}

    /// True when something in the body would be seen.
    bool HasText(const pugi::xml_node& body) const;
    /// Each paragraph of the body, empty ones between too. `base` lies under the chain.
    void Body(const pugi::xml_node& body, const SlideStyleChain& chain,
              const SlideLevelStyle& base);
    /// A row a paragraph.
    void Table(const pugi::xml_node& table, const SlideStyleChain& chain,
               const SlideLevelStyle& base);
    /// One paragraph of plain text.
    void Line(std::string_view text);

  private:
    void Paragraph(const pugi::xml_node& paragraph, const SlideLevelStyle& style);
    void Cell(const pugi::xml_node& cell, const SlideStyleChain& chain,
              const SlideLevelStyle& base);
    void Runs(const pugi::xml_node& paragraph, const SlideRunStyle& style, int depth);
    void Run(const pugi::xml_node& run, const SlideRunStyle& style);
    void Put(std::string_view text, const SlideRunStyle& style);

    ParagraphWriter& writer_;
    const SlideTheme& theme_;
    std::int32_t slide_number_;
    std::string scratch_;  // kept from text to text
};

}  // namespace zorvane
