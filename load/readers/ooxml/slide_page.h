// The text of one page of a deck: of a slide, of its notes, of a layout.
#pragma once

#include <string>
#include <unordered_set>

#include "load/readers/container/package.h"
#include "load/readers/ooxml/slide_designs.h"
#include "load/readers/ooxml/slide_text.h"
#include "load/readers/sink/document_sink.h"

namespace zorvane {

/// Which shapes of a page are written.
enum class SlidePart : std::uint8_t {
    All,
    NotesBody,  ///< of a page of notes, its text alone
    OwnShapes   ///< of a layout or master, what every slide shows of it in the same words
};

struct SlidePage {
    const SlideRelations& relations;
    const SlideDesign& design;
    pugi::xml_node common_style;  ///< the deck's own defaults
    std::int32_t number = 0;      ///< as the slide shows it
    bool show_numbers = false;    ///< a line in front of each shape
};

class SlidePageWriter {
  public:
    /// `drawings` keeps which parts of drawings were written, so that each is written once.
    SlidePageWriter(Package& package, ParagraphWriter& writer, const SlidePage& page,
                    std::unordered_set<std::string>& drawings)
        : package_(package),
          page_(page),
          text_(writer, page.design.theme, page.number),
          drawings_(drawings) {}

    /// `tree` is the page's tree of shapes.
    ReadEnd Write(const pugi::xml_node& tree, SlidePart part);
    /// What the slide shows of its layout or master in words of its own.
    void WriteNumbered(const SlideDesignPart& part);

  private:
    void Shape(const pugi::xml_node& shape);
    void TextShape(const pugi::xml_node& shape);
    void Frame(const pugi::xml_node& frame);
    void Diagram(const pugi::xml_node& ids);
    bool DiagramDrawing(const pugi::xml_node& model);
    void DiagramPoints(const pugi::xml_node& model);
    void Chart(const pugi::xml_node& reference);
    void NumberLine();
    bool Open(const std::string& id, XmlPart& part);

    Package& package_;
    const SlidePage& page_;
    SlideTextWriter text_;
    std::unordered_set<std::string>& drawings_;
    ReadEnd end_;
    std::int32_t shape_number_ = 0;
    bool numbered_ = false;
};

/// Titles, names of series, categories and labelled values of a chart.
void WriteChart(const pugi::xml_node& chart_space, SlideTextWriter& text);

}  // namespace zorvane
