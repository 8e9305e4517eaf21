#include "load/readers/web/html_tags.h"

#include <array>
#include <initializer_list>

namespace zorvane {
namespace {

class TagSet {
  public:
    constexpr TagSet(std::initializer_list<GumboTag> tags) {
        for (const GumboTag tag : tags)
            has_[static_cast<std::size_t>(tag)] = true;
    }
    constexpr bool Has(GumboTag tag) const { return has_[static_cast<std::size_t>(tag)]; }

  private:
    std::array<bool, GUMBO_TAG_LAST + 1> has_{};
};

}  // namespace

bool IsHeadingTag(GumboTag tag) {
    return tag == GUMBO_TAG_H1 || tag == GUMBO_TAG_H2 || tag == GUMBO_TAG_H3 ||
           tag == GUMBO_TAG_H4 || tag == GUMBO_TAG_H5 || tag == GUMBO_TAG_H6;
}

bool EndsParagraph(GumboTag tag) {
    static constexpr TagSet kTags = {
        GUMBO_TAG_ADDRESS, GUMBO_TAG_ARTICLE,  GUMBO_TAG_ASIDE,      GUMBO_TAG_BLOCKQUOTE,
        GUMBO_TAG_CENTER,  GUMBO_TAG_DETAILS,  GUMBO_TAG_DIR,        GUMBO_TAG_DIV,
        GUMBO_TAG_DL,      GUMBO_TAG_FIELDSET, GUMBO_TAG_FIGCAPTION, GUMBO_TAG_FIGURE,
        GUMBO_TAG_FOOTER,  GUMBO_TAG_HEADER,   GUMBO_TAG_HGROUP,     GUMBO_TAG_MAIN,
        GUMBO_TAG_MENU,    GUMBO_TAG_NAV,      GUMBO_TAG_OL,         GUMBO_TAG_P,
        GUMBO_TAG_SECTION, GUMBO_TAG_SUMMARY,  GUMBO_TAG_UL,         GUMBO_TAG_H1,
        GUMBO_TAG_H2,      GUMBO_TAG_H3,       GUMBO_TAG_H4,         GUMBO_TAG_H5,
        GUMBO_TAG_H6,      GUMBO_TAG_PRE,      GUMBO_TAG_LISTING,    GUMBO_TAG_FORM,
        GUMBO_TAG_TABLE,   GUMBO_TAG_HR,       GUMBO_TAG_XMP,        GUMBO_TAG_PLAINTEXT,
        GUMBO_TAG_LI,      GUMBO_TAG_DD,       GUMBO_TAG_DT};
    return kTags.Has(tag);
}

bool IsBlockTag(GumboTag tag) {
    static constexpr TagSet kMore = {
        GUMBO_TAG_HTML,  GUMBO_TAG_BODY, GUMBO_TAG_CAPTION,  GUMBO_TAG_TBODY,  GUMBO_TAG_THEAD,
        GUMBO_TAG_TFOOT, GUMBO_TAG_TR,   GUMBO_TAG_FRAMESET, GUMBO_TAG_LEGEND, GUMBO_TAG_OPTGROUP};
    return EndsParagraph(tag) || kMore.Has(tag);
}

bool IsVoidTag(GumboTag tag) {
    static constexpr TagSet kTags = {
        GUMBO_TAG_AREA,   GUMBO_TAG_BASE,   GUMBO_TAG_BASEFONT, GUMBO_TAG_BGSOUND, GUMBO_TAG_BR,
        GUMBO_TAG_COL,    GUMBO_TAG_EMBED,  GUMBO_TAG_FRAME,    GUMBO_TAG_HR,      GUMBO_TAG_IMG,
        GUMBO_TAG_INPUT,  GUMBO_TAG_KEYGEN, GUMBO_TAG_LINK,     GUMBO_TAG_META,    GUMBO_TAG_PARAM,
        GUMBO_TAG_SOURCE, GUMBO_TAG_TRACK,  GUMBO_TAG_WBR,      GUMBO_TAG_IMAGE};
    return kTags.Has(tag);
}

bool IsFormattingTag(GumboTag tag) {
    static constexpr TagSet kTags = {
        GUMBO_TAG_A,      GUMBO_TAG_B,      GUMBO_TAG_BIG,  GUMBO_TAG_CODE, GUMBO_TAG_EM,
        GUMBO_TAG_FONT,   GUMBO_TAG_I,      GUMBO_TAG_NOBR, GUMBO_TAG_S,    GUMBO_TAG_SMALL,
        GUMBO_TAG_STRIKE, GUMBO_TAG_STRONG, GUMBO_TAG_TT,   GUMBO_TAG_U};
    return kTags.Has(tag);
}

bool IsRawTag(GumboTag tag) {
    static constexpr TagSet kTags = {GUMBO_TAG_SCRIPT,   GUMBO_TAG_STYLE,    GUMBO_TAG_TITLE,
                                     GUMBO_TAG_TEXTAREA, GUMBO_TAG_XMP,      GUMBO_TAG_IFRAME,
                                     GUMBO_TAG_NOEMBED,  GUMBO_TAG_NOFRAMES, GUMBO_TAG_NOSCRIPT,
                                     GUMBO_TAG_PLAINTEXT};
    return kTags.Has(tag);
}

bool IsScopeTag(GumboTag tag) {
    static constexpr TagSet kTags = {GUMBO_TAG_APPLET,  GUMBO_TAG_CAPTION, GUMBO_TAG_HTML,
                                     GUMBO_TAG_TABLE,   GUMBO_TAG_TD,      GUMBO_TAG_TH,
                                     GUMBO_TAG_MARQUEE, GUMBO_TAG_OBJECT,  GUMBO_TAG_TEMPLATE,
                                     GUMBO_TAG_SVG,     GUMBO_TAG_MATH};
    return kTags.Has(tag);
}

}  // namespace zorvane
