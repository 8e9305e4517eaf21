// What lies beside the text of an RTF document, from the groups that its reader passes over.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "common/base/text_encoding.h"
#include "compare/document/beside.h"

namespace zorvane {

class RtfBeside {
  public:
    /// `items` may be null: then nothing is kept.
    explicit RtfBeside(std::vector<BesideItem>* items) : items_(items) {}

    /// A group that is left out: `name` is its control word, `rest` the file behind that.
    void Group(std::string_view name, std::string_view rest, std::int32_t paragraph, CodePage page);
    /// Text that is left out, hidden or deleted.
    void Unseen(std::string_view bytes, CodePage page, bool deleted);
    void Unseen(char16_t unit, bool deleted);
    /// A note or box of such text: `rest` begins behind its control word.
    void UnseenGroup(std::string_view rest, CodePage page, bool deleted);
    void EndParagraph(std::int32_t paragraph);
    /// The bytes end inside of a group.
    void EndsTooEarly();
    /// Behind the document.
    void Finish(std::int32_t paragraph);

  private:
    void Add(BesideItem item, std::int32_t paragraph);
    bool Thing(std::string_view name, std::string_view rest, std::int32_t paragraph, CodePage page);
    void Margin(std::string_view name, std::string_view group, CodePage page);
    void Picture(std::string_view group, std::int32_t paragraph);
    void Object(std::string_view group, std::int32_t paragraph);
    void FieldCode(std::string_view code, std::int32_t paragraph);
    void Info(std::string_view group, CodePage page);
    void Comment(const std::string& text, std::int32_t paragraph);

    std::vector<BesideItem>* items_;
    BesideList list_;
    std::u16string hidden_;  ///< of the paragraph at work
    std::u16string deleted_;
    std::string_view margin_;  ///< the one at work
    std::string author_;       ///< of the next comment
    std::string class_;        ///< of the next object
};

/// A field's instruction as an item: a link for a hyperlink, else a field; nothing for what a
/// program makes anew at each update (the lines of a table of contents).
std::optional<BesideItem> BesideOfFieldCode(std::string_view instruction);

}  // namespace zorvane
