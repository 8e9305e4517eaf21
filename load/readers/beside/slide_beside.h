// What the slides of a PresentationML deck hold beside their text.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "load/readers/beside/package_beside.h"
#include "load/readers/beside/placed_sink.h"

namespace zorvane {

/// Items are those of the whole document, with "slide 3: " in front: what stands on a slide has no
/// place among its words.
class SlideBeside {
  public:
    SlideBeside(Package& package, DocumentSink& sink)
        : digests_(package), sink_(sink), placed_(sink) {}

    /// In front of a slide's words. `part` is its name; `with_notes`: they are words, too.
    void Begin(std::int32_t number, const std::string& part, const pugi::xml_node& slide,
               bool with_notes);
    /// Behind them.
    void End();
    /// What a layout or master shows on slides, told once.
    void Behind(const pugi::xml_node& content,
                const std::unordered_map<std::string, Relationship>& relations);

  private:
    using Relationships = std::unordered_map<std::string, Relationship>;
    void Walk(const pugi::xml_node& node, int depth);
    void Element(const pugi::xml_node& node, std::string_view name);
    void Shape(const pugi::xml_node& shape);
    void Part(BesideKind kind, std::string_view relation, std::string_view name);
    void Comments(const std::string& part);
    void Notes(const std::string& part);

    PartDigests digests_;
    DocumentSink& sink_;
    PlacedSink placed_;
    Relationships relations_;
    std::string slide_digest_;
    std::string name_;  ///< of the shape around
    std::size_t size_ = 0;
    std::size_t drawn_ = 0;  ///< pictures and shapes of the slide
    bool has_properties_ = false;
};

inline constexpr std::string_view kBehindSlides = "behind the slides";

/// Those of a page of an OpenDocument deck, by the same rule.
void ReportOpenSlide(class OdtBeside& beside, PlacedSink& placed, const pugi::xml_node& page,
                     std::int32_t number, bool with_notes);

}  // namespace zorvane
