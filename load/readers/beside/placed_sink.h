// A sink for what lies beside a text without paragraphs of its own: a slide, a sheet.
#pragma once

#include <string>
#include <string_view>

#include "load/readers/sink/document_sink.h"

namespace zorvane {

/// Hands every item on as one of the whole document, with a place in front: "slide 3: ...".
class PlacedSink : public DocumentSink {
  public:
    explicit PlacedSink(DocumentSink& sink) : sink_(sink) {}
    void SetPlace(std::string_view place) { place_ = place; }

    void Beside(const BesideItem& item) override {
        BesideItem placed = item;
        placed.paragraph = 0;
        if (item.paragraph != 0)
            placed.text = BesideText(
                place_ + ": " +
                (item.text.empty() ? std::string(NameOf(item.kind).singular) : item.text));
        sink_.Beside(placed);
    }
    void BeginParagraph(const ParagraphFormat& /*format*/) override {}
    void Text(std::string_view /*utf8*/, const CharFormat& /*format*/) override {}
    void ListLabel(std::string_view /*utf8*/, const CharFormat& /*format*/) override {}
    void EndParagraph() override {}
    std::size_t Size() const override { return sink_.Size(); }
    std::string Finish() override { return {}; }

  private:
    DocumentSink& sink_;
    std::string place_;
};

}  // namespace zorvane
