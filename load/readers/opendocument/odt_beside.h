// What an OpenDocument text holds beside its words.
#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

#include "load/readers/beside/package_beside.h"
#include "load/readers/opendocument/open_styles.h"
#include "load/readers/sink/document_sink.h"

namespace zorvane {

class OdtBeside {
  public:
    OdtBeside(Package& package, DocumentSink& sink) : digests_(package), sink_(sink) {}

    /// The list of tracked changes of a text that comes next (`tracked-changes`).
    void TakeChanges(const pugi::xml_node& changes);
    /// A paragraph that is about to be written, without the paragraphs of boxes inside: they come
    /// for themselves. `chars` are those of its text.
    void Paragraph(const pugi::xml_node& paragraph, const OpenStyles& styles,
                   const OpenChars& chars);
    /// A frame or drawing outside of a paragraph.
    void Shape(const pugi::xml_node& shape, int depth = 0);
    /// All that a slide holds, in one go.
    void Page(const pugi::xml_node& page, int depth = 0);
    /// One thing on it, with what it holds.
    void PagePart(const pugi::xml_node& part, int depth = 0);
    /// A section, table or row that is not shown.
    void Hidden(const pugi::xml_node& node, std::string_view what);

  private:
    void Walk(const pugi::xml_node& node, const OpenChars& chars, int depth);
    void Element(const pugi::xml_node& node, const OpenChars& chars, int depth);
    bool Special(const pugi::xml_node& node, std::string_view name);
    void Frame(const pugi::xml_node& frame);
    bool Object(const pugi::xml_node& frame, const std::string& name);
    void Part(BesideKind kind, std::string_view address, const std::string& name);
    void Drawing(const pugi::xml_node& shape, std::string_view name);
    void Comment(const pugi::xml_node& annotation);
    void Change(std::string_view id);
    void Send(const BesideItem& item) { sink_.Beside(item); }

    PartDigests digests_;
    DocumentSink& sink_;
    const OpenStyles* styles_ = nullptr;
    std::unordered_map<std::string, std::string> changes_;  ///< by id
    std::unordered_set<std::size_t> told_;                  ///< frames, by the place of their nodes
    std::string hidden_;                                    ///< of the paragraph at work
};

}  // namespace zorvane
