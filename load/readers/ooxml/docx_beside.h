// What a WordprocessingML document holds beside its text.
#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "load/readers/beside/package_beside.h"
#include "load/readers/ooxml/docx_styles.h"
#include "load/readers/sink/document_sink.h"

namespace zorvane {

class DocxBeside {
  public:
    DocxBeside(Package& package, const DocxStyles& styles, DocumentSink& sink)
        : digests_(package), styles_(styles), sink_(sink) {}

    /// The part of the document's text, before the first paragraph; reports its properties.
    void Begin(const std::string& main_part);
    /// The header or footer whose paragraphs come next.
    void UseMarginPart(const std::string& part) { margin_part_ = part; }
    /// A paragraph that is about to be written, without the paragraphs inside of it: they come for
    /// themselves. `look` is that of its text.
    void Paragraph(const pugi::xml_node& paragraph, const RunLook& look);
    /// A row of a table that is not shown.
    void HiddenRow(const pugi::xml_node& row);

  private:
    using Relationships = std::unordered_map<std::string, Relationship>;
    struct Unseen {
        std::string inserted;
        std::string deleted;
        std::string hidden;
    };
    void Walk(const pugi::xml_node& node, int depth);
    bool WalkSpecial(const pugi::xml_node& node, std::string_view name, int depth);
    void WalkTracked(const pugi::xml_node& node, std::string_view name, int depth);
    void Tell(const pugi::xml_node& node, std::string_view name);
    void Run(const pugi::xml_node& run, int depth);
    void Link(const pugi::xml_node& link);
    void FieldMark(const pugi::xml_node& mark);
    void FieldCode(std::string_view code);
    void Formula(const pugi::xml_node& formula);
    void Drawing(const pugi::xml_node& drawing, int depth);
    void Graphic(const pugi::xml_node& node, const std::string& name, int depth);
    void GraphicPart(const pugi::xml_node& part, std::string_view element, const std::string& name);
    void PartText(const pugi::xml_node& node, std::string_view relation, BesideKind kind,
                  std::string_view shown);
    void Shape(const pugi::xml_node& shape, const std::string& name);
    void Object(const pugi::xml_node& object, int depth);
    bool ObjectData(const pugi::xml_node& object);
    void Comment(std::string_view id);
    void LoadComments();
    void Picture(const pugi::xml_node& node, std::string_view relation, std::string_view name);
    const Relationships& RelationsOf(const pugi::xml_node& node);
    const Relationship* Find(const pugi::xml_node& node, std::string_view id);
    void Send(const BesideItem& item) { sink_.Beside(item); }
    void SendUnseen();

    PartDigests digests_;
    const DocxStyles& styles_;
    DocumentSink& sink_;
    std::string main_part_;
    std::string margin_part_;
    std::unordered_map<std::string, Relationships> relations_;  ///< by part
    const Relationships* current_ = nullptr;                    ///< of the paragraph at work
    bool comments_loaded_ = false;
    std::unordered_map<std::string, std::string> comments_;  ///< by id
    RunLook base_;
    Unseen unseen_;
    struct Field {
        std::string code;
        bool in_code = true;
    };
    std::vector<Field> fields_;  ///< the open ones
};

}  // namespace zorvane
