// HTML as a stream of properly nested elements and text. No tree is kept, so that a page of any
// size is read in little memory; elements that a page leaves open or closes in the wrong order are
// put right as browsers do it. Tags and names of characters are those of gumbo.
#pragma once

#include <cstdint>
#include <gumbo.h>
#include <string>
#include <string_view>
#include <vector>

#include "load/readers/reader.h"
#include "load/readers/web/html_references.h"

namespace zorvane {

/// Borrowed from the page; the value as it stands, with its references.
struct HtmlAttribute {
    std::string_view name;
    std::string_view value;
};

struct HtmlElement {
    GumboTag tag = GUMBO_TAG_UNKNOWN;
    std::string_view name;  ///< as it stands
    const std::vector<HtmlAttribute>* attributes = nullptr;
    std::string_view rest;  ///< the page behind the tag
    bool foreign = false;   ///< of a drawing or formula

    /// The value as it stands; null without such an attribute. `lower` is in lower case.
    const std::string_view* Find(std::string_view lower) const;
    bool Has(std::string_view lower) const { return Find(lower) != nullptr; }
};

class HtmlHandler {
  public:
    virtual ~HtmlHandler() = default;
    virtual void Open(const HtmlElement& element) = 0;
    /// The innermost open element.
    virtual void Close() = 0;
    /// The element at `level` (0 is the outermost) ends, but those inside it go on.
    virtual void Lift(std::size_t level) = 0;
    virtual void Text(std::string_view utf8) = 0;
    /// The content of the open style element.
    virtual void Style(std::string_view css) = 0;
    /// False ends the reading.
    virtual bool Proceed(std::size_t done, std::size_t total) = 0;
};

bool EqualsLower(std::string_view text, std::string_view lower);

enum class HtmlSyntax : std::uint8_t {
    Html,
    Xhtml  ///< "<a/>" is an element without content
};

class HtmlParser {
  public:
    HtmlParser(std::string_view page, HtmlSyntax syntax, HtmlHandler& handler)
        : page_(page), handler_(handler), syntax_(syntax) {}
    /// False when the handler wanted no more.
    bool Run();

  private:
    struct Entry {
        GumboTag tag = GUMBO_TAG_UNKNOWN;
        bool foreign = false;
        std::size_t place = 0;  ///< of the tag in the page
        std::size_t name_size = 0;
        std::size_t outer_base = 0;
    };
    struct Tag {
        HtmlElement element;
        bool self_closing = false;
        std::size_t place = 0;
    };

    static constexpr std::size_t kNowhere = static_cast<std::size_t>(-1);

    bool InForeign() const { return !open_.empty() && open_.back().foreign; }
    void TextRun(std::size_t end);
    void Markup();
    void Declaration();
    void CharacterData();
    void ReadTag(std::size_t name_at, Tag& tag);
    bool ReadAttribute();
    std::string_view ReadValue();
    void SkipBlanks();
    void StartTag();
    void EndTag();
    void RawContent(const HtmlElement& element);

    // Nesting.
    bool Matches(const Entry& entry, const HtmlElement& element) const;
    std::size_t Nearest(GumboTag tag) const;
    std::size_t NearestInScope(GumboTag tag, GumboTag other_bound) const;
    bool AdmitStart(const Tag& tag);
    void CloseForStart(GumboTag tag);
    void CloseParagraph(GumboTag tag);
    void CloseBareTable();
    void CloseItem(GumboTag tag);
    bool CloseForTablePart(GumboTag tag);
    void Push(const Tag& tag);
    void PopEmpty();
    void Insert(GumboTag tag);
    void PopTo(std::size_t level, bool keep_formats);
    void AddPending(std::size_t at, const Entry& entry);
    void Reopen();
    void EndElement(const HtmlElement& element);
    void EndTablePart(GumboTag tag);
    void EndOther(const HtmlElement& element);
    void EndFormatting(const HtmlElement& element);

    std::string_view page_;
    HtmlHandler& handler_;
    HtmlSyntax syntax_;
    HtmlReferences references_;
    std::size_t at_ = 0;
    bool body_begun_ = false;
    std::size_t passed_over_ = 0;  ///< open elements beyond the greatest depth
    std::vector<Entry> open_;
    std::vector<Entry> pending_formats_;  ///< cut off by the end of a block; go on in the next
    std::size_t pending_base_ = 0;        ///< those in front belong to an outer cell
    std::vector<HtmlAttribute> attributes_;
    std::string decoded_;
};

}  // namespace zorvane
