// Which elements a tag closes: the rules by which browsers put wrong nesting right, as far as they
// change what is shown.
#include <algorithm>

#include "load/readers/web/html_parser.h"
#include "load/readers/web/html_tags.h"

namespace zorvane {
namespace {

constexpr std::size_t kMostPendingFormats = 16;
constexpr std::size_t kMostPendingOfATag = 3;

bool IsCell(GumboTag tag) {
    return tag == GUMBO_TAG_TD || tag == GUMBO_TAG_TH || tag == GUMBO_TAG_CAPTION;
}

bool IsSection(GumboTag tag) {
    return tag == GUMBO_TAG_TBODY || tag == GUMBO_TAG_THEAD || tag == GUMBO_TAG_TFOOT;
}

bool IsTablePart(GumboTag tag) {
    return IsCell(tag) || IsSection(tag) || tag == GUMBO_TAG_TR || tag == GUMBO_TAG_COL ||
           tag == GUMBO_TAG_COLGROUP;
}

bool IsRubyText(GumboTag tag) {
    return tag == GUMBO_TAG_RT || tag == GUMBO_TAG_RP || tag == GUMBO_TAG_RB ||
           tag == GUMBO_TAG_RTC;
}

// A marker in the list of formats: what is open outside does not go on inside.
bool BoundsFormats(GumboTag tag) {
    return IsCell(tag) || tag == GUMBO_TAG_BUTTON || tag == GUMBO_TAG_OBJECT ||
           tag == GUMBO_TAG_MARQUEE || tag == GUMBO_TAG_APPLET;
}

// Newer elements, which may stand in a drawing without ending it.
bool StaysInDrawing(GumboTag tag) {
    switch (tag) {
        case GUMBO_TAG_A:
        case GUMBO_TAG_ADDRESS:
        case GUMBO_TAG_ARTICLE:
        case GUMBO_TAG_ASIDE:
        case GUMBO_TAG_DETAILS:
        case GUMBO_TAG_FIELDSET:
        case GUMBO_TAG_FIGCAPTION:
        case GUMBO_TAG_FIGURE:
        case GUMBO_TAG_FOOTER:
        case GUMBO_TAG_FORM:
        case GUMBO_TAG_HEADER:
        case GUMBO_TAG_HGROUP:
        case GUMBO_TAG_MAIN:
        case GUMBO_TAG_NAV:
        case GUMBO_TAG_SECTION:
        case GUMBO_TAG_SUMMARY:
            return true;
        default:
            return false;
    }
}

// HTML inside a drawing ends the drawing.
bool BreaksOut(GumboTag tag) {
    return (EndsParagraph(tag) || IsFormattingTag(tag) || tag == GUMBO_TAG_SPAN ||
            tag == GUMBO_TAG_SUB || tag == GUMBO_TAG_SUP || tag == GUMBO_TAG_BR ||
            tag == GUMBO_TAG_IMG || tag == GUMBO_TAG_BODY || tag == GUMBO_TAG_HEAD) &&
           !StaysInDrawing(tag);
}

// Elements that a page's head may hold; anything else begins its body.
bool MayStandInHead(GumboTag tag) {
    return tag == GUMBO_TAG_HTML || tag == GUMBO_TAG_META || tag == GUMBO_TAG_LINK ||
           tag == GUMBO_TAG_TITLE || tag == GUMBO_TAG_SCRIPT || tag == GUMBO_TAG_STYLE ||
           tag == GUMBO_TAG_NOSCRIPT || tag == GUMBO_TAG_TEMPLATE || tag == GUMBO_TAG_BASE;
}

bool HoldsHtml(GumboTag tag) {
    return tag == GUMBO_TAG_FOREIGNOBJECT || tag == GUMBO_TAG_DESC || tag == GUMBO_TAG_TITLE ||
           tag == GUMBO_TAG_ANNOTATION_XML;
}

}  // namespace

bool HtmlParser::Matches(const Entry& entry, const HtmlElement& element) const {
    if (entry.tag != element.tag)
        return false;
    if (entry.tag != GUMBO_TAG_UNKNOWN)
        return true;
    const std::string_view name = page_.substr(entry.place + 1, entry.name_size);
    return std::equal(name.begin(), name.end(), element.name.begin(), element.name.end());
}

std::size_t HtmlParser::Nearest(GumboTag tag) const {
    for (std::size_t level = open_.size(); level-- > 0;) {
        if (open_[level].tag == tag)
            return level;
    }
    return kNowhere;
}

std::size_t HtmlParser::NearestInScope(GumboTag tag, GumboTag other_bound) const {
    for (std::size_t level = open_.size(); level-- > 0;) {
        if (open_[level].tag == tag)
            return level;
        if (IsScopeTag(open_[level].tag) || open_[level].tag == other_bound)
            return kNowhere;
    }
    return kNowhere;
}

// Closes what `tag` closes. False when the tag is passed over.
bool HtmlParser::AdmitStart(const Tag& tag) {
    const GumboTag name = tag.element.tag;
    if (InForeign() && BreaksOut(name)) {
        while (InForeign())
            PopTo(open_.size() - 1, false);
    }
    if (InForeign())
        return true;
    if (name == GUMBO_TAG_HEAD || (name == GUMBO_TAG_HTML && !open_.empty()) ||
        ((name == GUMBO_TAG_HTML || name == GUMBO_TAG_BODY) && body_begun_))
        return false;
    body_begun_ = body_begun_ || !MayStandInHead(name);
    if (IsTablePart(name))
        return CloseForTablePart(name);
    CloseForStart(name);
    if (!EndsParagraph(name) && !IsBlockTag(name))
        Reopen();
    return true;
}

void HtmlParser::CloseForStart(GumboTag tag) {
    if (tag == GUMBO_TAG_LI || tag == GUMBO_TAG_DD || tag == GUMBO_TAG_DT)
        CloseItem(tag);
    if (EndsParagraph(tag))
        CloseParagraph(tag);
    const GumboTag innermost = open_.empty() ? GUMBO_TAG_UNKNOWN : open_.back().tag;
    const bool option = tag == GUMBO_TAG_OPTION || tag == GUMBO_TAG_OPTGROUP;
    if ((option && innermost == GUMBO_TAG_OPTION) || (IsRubyText(tag) && IsRubyText(innermost)))
        PopTo(open_.size() - 1, true);
    // Links, buttons and lists of choices do not nest.
    if (tag == GUMBO_TAG_A || tag == GUMBO_TAG_BUTTON || tag == GUMBO_TAG_SELECT) {
        HtmlElement again;
        again.tag = tag;
        if (NearestInScope(tag, tag) != kNowhere)
            EndElement(again);
    }
    if (tag == GUMBO_TAG_TABLE)
        CloseBareTable();
}

void HtmlParser::CloseParagraph(GumboTag tag) {
    const std::size_t level = NearestInScope(GUMBO_TAG_P, GUMBO_TAG_BUTTON);
    if (level != kNowhere)
        PopTo(level, true);
    if (IsHeadingTag(tag) && !open_.empty() && IsHeadingTag(open_.back().tag))
        PopTo(open_.size() - 1, true);
}

// A table right inside a table, outside of its cells, ends that one.
void HtmlParser::CloseBareTable() {
    for (std::size_t level = open_.size(); level-- > 0;) {
        if (IsCell(open_[level].tag))
            return;
        if (open_[level].tag == GUMBO_TAG_TABLE) {
            PopTo(level, false);
            return;
        }
    }
}

void HtmlParser::CloseItem(GumboTag tag) {
    const bool item = tag == GUMBO_TAG_LI;
    for (std::size_t level = open_.size(); level-- > 0;) {
        const GumboTag open = open_[level].tag;
        const bool same =
            item ? open == GUMBO_TAG_LI : open == GUMBO_TAG_DD || open == GUMBO_TAG_DT;
        if (same) {
            PopTo(level, true);
            return;
        }
        const bool passed = open == GUMBO_TAG_ADDRESS || open == GUMBO_TAG_DIV ||
                            open == GUMBO_TAG_P ||
                            !(IsBlockTag(open) || IsScopeTag(open) || BoundsFormats(open));
        if (!passed)
            return;
    }
}

bool HtmlParser::CloseForTablePart(GumboTag tag) {
    const std::size_t table = Nearest(GUMBO_TAG_TABLE);
    if (table == kNowhere)
        return false;
    const bool cell = tag == GUMBO_TAG_TD || tag == GUMBO_TAG_TH;
    std::size_t keep = table + 1;
    bool row = false;
    for (std::size_t level = table + 1; level < open_.size(); ++level) {
        const GumboTag open = open_[level].tag;
        const bool section = IsSection(open) && (cell || tag == GUMBO_TAG_TR);
        row = open == GUMBO_TAG_TR && cell;
        if (!section && !row)
            break;
        keep = level + 1;
        if (row)
            break;
    }
    if (keep < open_.size())
        PopTo(keep, false);
    if (cell && !row) {
        Tag implied;
        implied.element.tag = GUMBO_TAG_TR;
        Push(implied);
    }
    return true;
}

void HtmlParser::Push(const Tag& tag) {
    if (open_.size() >= static_cast<std::size_t>(kMaxDepth)) {
        ++passed_over_;
        return;
    }
    Entry entry;
    entry.tag = tag.element.tag;
    entry.place = tag.place;
    entry.name_size = tag.element.name.size();
    entry.outer_base = pending_base_;
    const bool inside = InForeign() && !HoldsHtml(open_.back().tag);
    entry.foreign = inside || entry.tag == GUMBO_TAG_SVG || entry.tag == GUMBO_TAG_MATH;
    if (BoundsFormats(entry.tag))
        pending_base_ = pending_formats_.size();
    open_.push_back(entry);
    HtmlElement element = tag.element;
    element.foreign = entry.foreign;
    handler_.Open(element);
}

void HtmlParser::PopEmpty() {
    if (passed_over_ > 0)
        --passed_over_;
    else
        PopTo(open_.size() - 1, false);
}

void HtmlParser::PopTo(std::size_t level, bool keep_formats) {
    const std::size_t first_pending = pending_formats_.size();
    while (open_.size() > level) {
        const Entry entry = open_.back();
        open_.pop_back();
        if (BoundsFormats(entry.tag)) {
            pending_formats_.resize(std::min(pending_formats_.size(), pending_base_));
            pending_base_ = entry.outer_base;
        } else if (keep_formats && open_.size() > level && IsFormattingTag(entry.tag)) {
            AddPending(std::min(first_pending, pending_formats_.size()), entry);
        }
        handler_.Close();
    }
}

void HtmlParser::AddPending(std::size_t at, const Entry& entry) {
    const auto same = std::count_if(pending_formats_.begin(), pending_formats_.end(),
                                    [&](const Entry& other) { return other.tag == entry.tag; });
    if (pending_formats_.size() < kMostPendingFormats &&
        same < static_cast<std::ptrdiff_t>(kMostPendingOfATag))
        pending_formats_.insert(pending_formats_.begin() + static_cast<std::ptrdiff_t>(at), entry);
}

// Formats that a block's end has cut off begin again in front of the next text.
void HtmlParser::Reopen() {
    if (pending_formats_.size() <= pending_base_)
        return;
    const std::vector<Entry> formats(
        pending_formats_.begin() + static_cast<std::ptrdiff_t>(pending_base_),
        pending_formats_.end());
    pending_formats_.resize(pending_base_);
    const std::size_t place = at_;
    const std::vector<HtmlAttribute> attributes = attributes_;
    for (const Entry& entry : formats) {
        Tag tag;
        tag.place = entry.place;
        ReadTag(entry.place + 1, tag);
        Push(tag);
    }
    at_ = place;
    attributes_ = attributes;
}

void HtmlParser::EndElement(const HtmlElement& element) {
    const GumboTag tag = element.tag;
    if (passed_over_ > 0 && !IsVoidTag(tag)) {
        --passed_over_;
        return;
    }
    if (tag == GUMBO_TAG_HTML || tag == GUMBO_TAG_BODY || tag == GUMBO_TAG_HEAD)
        return;
    if (tag == GUMBO_TAG_BR) {
        Insert(tag);
        return;
    }
    if (IsFormattingTag(tag)) {
        EndFormatting(element);
    } else if (IsTablePart(tag) || tag == GUMBO_TAG_TABLE) {
        EndTablePart(tag);
    } else {
        EndOther(element);
    }
}

void HtmlParser::EndTablePart(GumboTag tag) {
    for (std::size_t level = open_.size(); level-- > 0;) {
        if (open_[level].tag == tag) {
            PopTo(level, false);
            return;
        }
        if (open_[level].tag == GUMBO_TAG_TABLE)
            return;
    }
}

void HtmlParser::EndOther(const HtmlElement& element) {
    const bool block = IsBlockTag(element.tag) || BoundsFormats(element.tag);
    const bool heading = IsHeadingTag(element.tag);
    const bool item = element.tag == GUMBO_TAG_LI;
    for (std::size_t level = open_.size(); level-- > 0;) {
        const GumboTag open = open_[level].tag;
        if (Matches(open_[level], element) || (heading && IsHeadingTag(open))) {
            PopTo(level, true);
            return;
        }
        const bool list = open == GUMBO_TAG_UL || open == GUMBO_TAG_OL;
        const bool special = IsBlockTag(open) || BoundsFormats(open);
        if (IsScopeTag(open) || (!block && special) || (item && list) ||
            (element.tag == GUMBO_TAG_P && open == GUMBO_TAG_BUTTON))
            break;
    }
    // Kept by every browser: the end of no paragraph is an empty one.
    if (element.tag == GUMBO_TAG_P)
        Insert(GUMBO_TAG_P);
}

// An element without content that no tag of the page begins.
void HtmlParser::Insert(GumboTag tag) {
    Tag inserted;
    inserted.element.tag = tag;
    Push(inserted);
    PopEmpty();
}

void HtmlParser::EndFormatting(const HtmlElement& element) {
    for (std::size_t level = open_.size(); level-- > 0;) {
        const Entry& entry = open_[level];
        if (entry.tag == element.tag) {
            const bool block_inside =
                std::any_of(open_.begin() + static_cast<std::ptrdiff_t>(level) + 1, open_.end(),
                            [](const Entry& inner) { return IsBlockTag(inner.tag); });
            if (!block_inside) {
                PopTo(level, true);
                return;
            }
            open_.erase(open_.begin() + static_cast<std::ptrdiff_t>(level));
            handler_.Lift(level);
            return;
        }
        if (IsScopeTag(entry.tag))
            break;
    }
    for (std::size_t place = pending_formats_.size(); place-- > pending_base_;) {
        if (pending_formats_[place].tag == element.tag) {
            pending_formats_.erase(pending_formats_.begin() + static_cast<std::ptrdiff_t>(place));
            return;
        }
    }
}

}  // namespace zorvane
