#include "load/readers/slides/slide_reader.h"

#include <algorithm>
#include <unordered_set>
#include <vector>

#include "load/readers/beside/slide_beside.h"
#include "load/readers/ooxml/slide_designs.h"
#include "load/readers/ooxml/slide_page.h"
#include "load/readers/slides/slide_range.h"

namespace zorvane {
namespace {

ReadEnd InSlide(std::int32_t slide, ReadEnd end) {
    // A part that the deck refers to and that is not there is a broken deck.
    if (end.error == ReadError::WrongFormat)
        end.error = ReadError::Damaged;
    end.detail = "slide " + std::to_string(slide) + ": " + end.detail;
    return end;
}

// An entry has an id of its own too, without a prefix.
std::string RelationId(const pugi::xml_node& entry) {
    for (const pugi::xml_attribute& attribute : entry.attributes()) {
        if (std::string_view(attribute.name()).ends_with(":id"))
            return attribute.value();
    }
    return {};
}

// The layout and the master whose shapes a slide shows.
std::vector<const SlideDesignPart*> ShownUnder(const pugi::xml_node& slide,
                                               const SlideDesign& design) {
    std::vector<const SlideDesignPart*> parts;
    const std::string_view shows = Attribute(slide, "showMasterSp");
    if (shows == "0" || shows == "false")
        return parts;
    if (design.layout != nullptr)
        parts.push_back(design.layout);
    if (design.master != nullptr && (design.layout == nullptr || design.layout->ShowsMaster()))
        parts.push_back(design.master);
    return parts;
}

class SlideDeck {
  public:
    SlideDeck(Package& package, const SlideOptions& options, DocumentSink& sink,
              ReadMonitor& monitor)
        : package_(package),
          options_(options),
          writer_(sink),
          monitor_(monitor),
          designs_(package),
          beside_(package, sink) {}

    ReadEnd Read() {
        if (ReadEnd end = Open(); !end.ok())
            return end;
        const auto count = static_cast<std::int32_t>(slides_.size());
        const SlideRange range = RangeOf(options_, count);
        for (std::int32_t slide = range.first; slide <= range.last; ++slide) {
            if (!monitor_.Progress(slide - range.first, range.last - range.first + 1))
                return ReadEnd::Fault(ReadError::Cancelled);
            if (ReadEnd end = Slide(slide); !end.ok())
                return InSlide(slide, std::move(end));
            if (writer_.Sink().Size() > kMostSlideText)
                return ReadEnd::Fault(ReadError::TooLarge, "the slides hold too much text");
        }
        if (!options_.notes_only)
            return Backgrounds();
        return ReadEnd::Ok();
    }

  private:
    ReadEnd Open();
    ReadEnd Slide(std::int32_t slide);
    ReadEnd Notes(std::int32_t number, const SlideRelations& relations);
    ReadEnd Backgrounds();
    pugi::xml_node CommonStyle() const { return Child(presentation_.Root(), "defaultTextStyle"); }

    Package& package_;
    const SlideOptions& options_;
    ParagraphWriter writer_;
    ReadMonitor& monitor_;
    SlideDesigns designs_;
    XmlPart presentation_;
    std::vector<std::string> slides_;
    std::int32_t first_number_ = 1;
    // In the order of their first use, so that the text of backgrounds keeps its order.
    std::vector<std::pair<const SlideDesignPart*, const SlideDesign*>> backgrounds_;
    std::unordered_set<const SlideDesignPart*> used_;
    std::unordered_set<std::string> drawings_;
    SlideBeside beside_;
};

ReadEnd SlideDeck::Open() {
    const std::string name = RelatedPart(ReadRelationships(package_, ""), "officeDocument");
    if (name.empty())
        return ReadEnd::Fault(ReadError::WrongFormat, "the file holds no slides");
    if (ReadEnd end = XmlPart::Read(package_, name, presentation_); !end.ok())
        return end;
    if (!Is(presentation_.Root(), "presentation"))
        return ReadEnd::Fault(ReadError::WrongFormat, "the file holds no slides");
    first_number_ = std::max(NumberOf(Attribute(presentation_.Root(), "firstSlideNum"), 1), 0);
    const SlideRelations relations = ReadRelationships(package_, name);
    std::unordered_set<std::string> seen;
    for (const pugi::xml_node& entry : Child(presentation_.Root(), "sldIdLst").children()) {
        if (!Is(entry, "sldId"))
            continue;
        const auto relation = relations.find(RelationId(entry));
        if (relation == relations.end() || relation->second.external)
            return ReadEnd::Fault(ReadError::Damaged, "a slide is missing");
        // A deck holds each slide once; more are a way to make a small file large.
        if (seen.insert(relation->second.target).second)
            slides_.push_back(relation->second.target);
    }
    return ReadEnd::Ok();
}

ReadEnd SlideDeck::Slide(std::int32_t slide) {
    const std::string& name = slides_[static_cast<std::size_t>(slide - 1)];
    XmlPart part;
    if (ReadEnd end = XmlPart::Read(package_, name, part); !end.ok())
        return end;
    const SlideRelations relations = ReadRelationships(package_, name);
    const SlideDesign& design = designs_.Of(relations);
    const SlidePage page{relations, design, CommonStyle(),
                         static_cast<std::int32_t>(std::min<std::int64_t>(
                             std::int64_t{first_number_} + slide - 1, INT32_MAX)),
                         options_.show_numbers};
    SlidePageWriter writer(package_, writer_, page, drawings_);
    if (options_.show_numbers)
        SlideTextWriter(writer_, design.theme, kNoSlideNumber)
            .Line("Slide " + std::to_string(slide));
    beside_.Begin(slide, name, part.Root(), options_.notes || options_.notes_only);
    if (!options_.notes_only) {
        ReadEnd end = writer.Write(Child(Child(part.Root(), "cSld"), "spTree"), SlidePart::All);
        if (!end.ok())
            return end;
        for (const SlideDesignPart* background : ShownUnder(part.Root(), design)) {
            writer.WriteNumbered(*background);
            if (used_.insert(background).second)
                backgrounds_.emplace_back(background, &design);
        }
    }
    beside_.End();
    return options_.notes || options_.notes_only ? Notes(page.number, relations) : ReadEnd::Ok();
}

ReadEnd SlideDeck::Notes(std::int32_t number, const SlideRelations& relations) {
    const std::string name = RelatedPart(relations, "notesSlide");
    if (name.empty())
        return ReadEnd::Ok();
    XmlPart part;
    if (ReadEnd end = XmlPart::Read(package_, name, part); !end.ok())
        return end;
    const SlideRelations own = ReadRelationships(package_, name);
    const SlideDesign& design = designs_.Of(own);
    const SlidePage page{own, design, CommonStyle(), number, false};
    if (options_.show_numbers && !options_.notes_only)
        SlideTextWriter(writer_, design.theme, kNoSlideNumber).Line("Notes:");
    SlidePageWriter writer(package_, writer_, page, drawings_);
    return writer.Write(Child(Child(part.Root(), "cSld"), "spTree"), SlidePart::NotesBody);
}

// What a layout or master puts on every slide is written once, behind the slides, as the headers of
// a text document are.
ReadEnd SlideDeck::Backgrounds() {
    for (const auto& [part, design] : backgrounds_) {
        const SlidePage page{part->relations, *design, CommonStyle(), kNoSlideNumber, false};
        SlidePageWriter writer(package_, writer_, page, drawings_);
        if (ReadEnd end = writer.Write(part->Shapes(), SlidePart::OwnShapes); !end.ok())
            return end;
        beside_.Behind(part->Content(), part->relations);
    }
    return ReadEnd::Ok();
}

}  // namespace

SlideRange RangeOf(const SlideOptions& options, std::int32_t count) {
    if (options.first <= 0 && options.last <= 0)
        return {1, count};
    SlideRange range{options.first, options.last};
    if (range.first > range.last)
        std::swap(range.first, range.last);
    return {std::max(range.first, 1), std::min(range.last, count)};
}

ReadEnd ReadSlides(Package& package, const SlideOptions& options, DocumentSink& sink,
                   ReadMonitor& monitor) {
    ReadEnd end = SlideDeck(package, options, sink, monitor).Read();
    ReportDamage(package, sink);
    return end;
}

}  // namespace zorvane
