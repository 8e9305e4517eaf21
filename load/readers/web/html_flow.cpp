#include "load/readers/web/html_flow.h"

#include <algorithm>

#include "common/base/text_encoding.h"
#include "load/readers/web/html_tags.h"

namespace zorvane {
namespace {

constexpr std::int32_t kLabelIndent = 360;

bool IsList(GumboTag tag) {
    return tag == GUMBO_TAG_OL || tag == GUMBO_TAG_UL || tag == GUMBO_TAG_MENU ||
           tag == GUMBO_TAG_DIR;
}

bool IsBlockBox(CssDisplay display) {
    return display == CssDisplay::Block || display == CssDisplay::ListItem ||
           display == CssDisplay::TableRow;
}

}  // namespace

void HtmlFlow::Open(const HtmlElement& element) {
    if (element.tag == GUMBO_TAG_BODY && !boxes_.empty())
        StyleRoot(boxes_.back());
    Box box = boxes_.empty() ? RootBox() : boxes_.back();
    const Box& outer = boxes_.empty() ? RootBox() : boxes_.back();
    box.tag = element.tag;
    box.display = CssDisplay::Inline;
    box.cell = box.row = box.listed = box.picked = false;
    if (!box.hidden)
        SetUp(element, outer, box);
    boxes_.push_back(box);
    if (!box.hidden)
        Begin(element, boxes_.back());
    beside_.Open(element, boxes_.back().hidden);
}

void HtmlFlow::SetUp(const HtmlElement& element, const Box& outer, Box& box) {
    ApplyDefaults(element, box);
    const bool in_line = box.display == CssDisplay::Inline;
    ApplyAttributes(element, box);
    if (!sheet_.Empty())
        ApplySheet(element, outer, box);
    if (const std::string_view* style = element.Find("style")) {
        CssStyle own;
        ParseDeclarations(Decoded(style), own);
        ApplyStyle(own, outer, box);
    }
    box.hidden = box.hidden || element.Has("hidden");
    if (box.display == CssDisplay::TableCell && rows_ == 0)
        box.display = CssDisplay::Block;
    if (IsBlockBox(box.display) || box.display == CssDisplay::TableCell)
        box.line_is_paragraph = box.space == CssSpace::Pre;
    if (box.display == CssDisplay::Inline)
        KeepParagraph(outer, box);
    else if (in_line)
        box.block_space = 0;
}

void HtmlFlow::Begin(const HtmlElement& element, Box& box) {
    if (box.display == CssDisplay::TableRow) {
        BeginRow(box);
    } else if (box.display == CssDisplay::TableCell) {
        BeginCell(box);
    } else if (box.display != CssDisplay::Inline) {
        // Text in a table but in none of its cells stands in front of it, on the line before.
        if (element.tag != GUMBO_TAG_TABLE)
            Break();
        if (box.display == CssDisplay::ListItem)
            BeginItem(element, box);
    }
    BeginSpecial(element, box);
}

void HtmlFlow::Close() {
    const Box box = boxes_.back();
    boxes_.pop_back();
    if (box.hidden) {
        if (boxes_.empty() || !boxes_.back().hidden)
            beside_.EndHidden();
        return;
    }
    if (box.tag == GUMBO_TAG_Q)
        Write("\u201D", box);
    if (box.tag == GUMBO_TAG_RT && box.picked)
        Write(")", box);
    if (box.cell) {
        EndCell();
    } else if (box.row) {
        EndRow();
    } else if (box.display != CssDisplay::Inline) {
        if (box.display == CssDisplay::ListItem && !labels_.empty())
            Prepare(box);
        Break();
    }
}

// The formats of the element at `level` are taken back from those inside it.
void HtmlFlow::Lift(std::size_t level) {
    const Box inner = boxes_[level];
    const Box outer = level == 0 ? RootBox() : boxes_[level - 1];
    boxes_.erase(boxes_.begin() + static_cast<std::ptrdiff_t>(level));
    const auto take_back = [&](auto member, CharFormat& chars) {
        if (chars.*member == inner.chars.*member)
            chars.*member = outer.chars.*member;
    };
    for (std::size_t at = level; at < boxes_.size(); ++at) {
        CharFormat& chars = boxes_[at].chars;
        take_back(&CharFormat::font, chars);
        take_back(&CharFormat::half_points, chars);
        take_back(&CharFormat::fore_color, chars);
        take_back(&CharFormat::back_color, chars);
        take_back(&CharFormat::underline, chars);
        take_back(&CharFormat::bold, chars);
        take_back(&CharFormat::italic, chars);
        take_back(&CharFormat::strikeout, chars);
        boxes_[at].hidden = boxes_[at].hidden && !(inner.hidden && !outer.hidden);
    }
}

bool HtmlFlow::Proceed(std::size_t done, std::size_t total) {
    if (writer_.Sink().Size() > kMaxPartBytes)
        error_ = ReadError::TooLarge;
    else if (!monitor_.Progress(static_cast<std::int64_t>(done), static_cast<std::int64_t>(total)))
        error_ = ReadError::Cancelled;
    return error_ == ReadError::None;
}

void HtmlFlow::Finish() {
    beside_.EndHidden();
    Break();
    writer_.EndIfBegun();
}

void HtmlFlow::Text(std::string_view utf8) {
    if (boxes_.empty())
        Write(utf8, RootBox());
    else if (!boxes_.back().hidden && !boxes_.back().drawing &&
             boxes_.back().tag != GUMBO_TAG_SELECT)
        Write(utf8, boxes_.back());
    else if (boxes_.back().hidden && !boxes_.back().never_shown)
        beside_.Hidden(utf8);
}

void HtmlFlow::Write(std::string_view utf8, const Box& box) {
    if (box.space == CssSpace::Pre)
        WriteKept(utf8, box);
    else
        WriteCollapsed(utf8, box);
}

void HtmlFlow::WriteCollapsed(std::string_view utf8, const Box& box) {
    scratch_.clear();
    std::size_t at = 0;
    while (at < utf8.size()) {
        if (!IsHtmlBlank(utf8[at])) {
            const std::size_t from = at;
            while (at < utf8.size() && !IsHtmlBlank(utf8[at]))
                ++at;
            TakeBlank(box);
            scratch_ += utf8.substr(from, at - from);
            line_has_text_ = true;
            continue;
        }
        const bool line = utf8[at] == '\n' && box.space == CssSpace::PreLine;
        ++at;
        if (line) {
            FlushScratch(box);
            Line();
        } else if (line_has_text_ && !blank_waits_) {
            blank_waits_ = true;
            blank_format_ = box.chars;
        }
    }
    FlushScratch(box);
}

// The white space in front of a word, in the format of where it stood.
void HtmlFlow::TakeBlank(const Box& box) {
    if (!blank_waits_)
        return;
    blank_waits_ = false;
    if (blank_format_ == box.chars)
        scratch_ += ' ';
    else
        Emit(" ", blank_format_, box);
}

void HtmlFlow::FlushScratch(const Box& box) {
    if (!scratch_.empty())
        Emit(scratch_, box.chars, box);
    scratch_.clear();
}

void HtmlFlow::WriteKept(std::string_view utf8, const Box& box) {
    while (!utf8.empty()) {
        const std::size_t end = std::min(utf8.find_first_of("\r\n"), utf8.size());
        if (end > 0) {
            scratch_.clear();
            TakeBlank(box);
            scratch_ += utf8.substr(0, end);
            FlushScratch(box);
            line_has_text_ = true;
        }
        utf8.remove_prefix(end);
        if (utf8.empty())
            return;
        utf8.remove_prefix(utf8.starts_with("\r\n") ? 2 : 1);
        if (!box.line_is_paragraph || rows_ > 0) {
            Line();
        } else {
            Prepare(box);
            writer_.End();
            StartLine();
        }
    }
}

void HtmlFlow::Emit(std::string_view utf8, const CharFormat& chars, const Box& box) {
    Prepare(box);
    if (box.transform == CssTransform::None)
        writer_.Text(utf8, chars);
    else
        writer_.Text(box.transform == CssTransform::Upper ? ToUpper(utf8) : ToLower(utf8), chars);
    has_text_ = true;
}

// What has waited for text comes in front of it.
void HtmlFlow::Prepare(const Box& box) {
    if (!writer_.InParagraph() && rows_ == 0)
        writer_.SetFormat(FormatOf(box));
    if (block_waits_ && has_text_)
        ++line_breaks_;
    block_waits_ = false;
    if (line_breaks_ > 0) {
        writer_.Text(std::string(line_breaks_, kLineInParagraph), box.chars);
        line_breaks_ = 0;
    }
    for (const Label& label : labels_)
        writer_.ListLabel(label.text, label.chars);
    labels_.clear();
}

ParagraphFormat HtmlFlow::FormatOf(const Box& box) const {
    ParagraphFormat format;
    format.alignment = box.alignment;
    format.right_to_left = box.right_to_left;
    format.left_indent = box.left;
    format.first_line_indent = labels_.empty() ? box.text_indent : -kLabelIndent;
    format.space_after = box.block_space;
    return format;
}

void HtmlFlow::StartLine() {
    blank_waits_ = false;
    line_has_text_ = false;
}

// A line break at the end of a block is not shown: it ends the line that the block ends anyway.
void HtmlFlow::Break() {
    StartLine();
    if (rows_ > 0) {
        block_waits_ = block_waits_ || has_text_;
        line_breaks_ = has_text_ && line_breaks_ > 1 ? line_breaks_ - 1 : 0;
        return;
    }
    if (line_breaks_ > 0) {
        const std::size_t shown = line_breaks_ - 1;
        line_breaks_ = 0;
        const Box& box = boxes_.empty() ? RootBox() : boxes_.back();
        if (!writer_.InParagraph())
            writer_.SetFormat(FormatOf(box));
        if (shown > 0)
            writer_.Text(std::string(shown, kLineInParagraph), box.chars);
        writer_.End();
    }
    writer_.EndIfBegun();
    has_text_ = false;
}

void HtmlFlow::Line() {
    StartLine();
    ++line_breaks_;
}

void HtmlFlow::BeginRow(Box& box) {
    Break();
    box.row = true;
    box.number = 0;
    if (++rows_ > 1)
        return;
    writer_.BeginRow();
    row_cells_ = 0;
    has_text_ = block_waits_ = false;
}

void HtmlFlow::EndRow() {
    if (rows_ > 1) {
        Break();
        --rows_;
        return;
    }
    StartLine();
    line_breaks_ = 0;
    labels_.clear();
    block_waits_ = has_text_ = false;
    rows_ = 0;
    if (row_cells_ > 0)
        writer_.End();
    else
        writer_.EndIfBegun();
}

// A row inside a cell is a line of it, with tabs between its cells.
void HtmlFlow::BeginCell(Box& box) {
    box.cell = true;
    if (cells_++ == 0) {
        StartLine();
        has_text_ = block_waits_ = false;
        line_breaks_ = 0;
        return;
    }
    const auto row =
        std::find_if(boxes_.rbegin(), boxes_.rend(), [](const Box& each) { return each.row; });
    if (row != boxes_.rend() && row->number++ > 0) {
        block_waits_ = false;
        StartLine();
        Emit("\t", box.chars, box);
        has_text_ = false;  // a block that begins the cell stands behind the tab
        has_tab_ = true;
    }
}

void HtmlFlow::EndCell() {
    if (cells_ > 1) {
        --cells_;
        StartLine();
        block_waits_ = false;
        has_text_ = has_text_ || has_tab_;
        return;
    }
    cells_ = 0;
    line_breaks_ = 0;
    block_waits_ = false;
    writer_.EndCell((boxes_.empty() ? RootBox() : boxes_.back()).chars);
    ++row_cells_;
    StartLine();
    has_text_ = has_tab_ = false;
}

std::size_t HtmlFlow::ListLevel() const {
    return static_cast<std::size_t>(std::count_if(boxes_.begin(), boxes_.end(),
                                                  [](const Box& box) { return IsList(box.tag); }));
}

void HtmlFlow::BeginItem(const HtmlElement& element, const Box& box) {
    std::int32_t number = 1;
    for (std::size_t level = boxes_.size() - 1; level-- > 0;) {
        Box& list = boxes_[level];
        if (!IsList(list.tag))
            continue;
        if (const std::string_view* value = element.Find("value"))
            list.number = ParseNumber(*value, list.number);
        number = list.number;
        constexpr std::int32_t kLargest = 1'000'000'000;
        list.number = std::clamp(list.number + list.step, -kLargest, kLargest);
        break;
    }
    if (box.list.marker == CssMarker::Number) {
        labels_.push_back({NumberText(number, box.list.number) + ".", box.chars});
    } else if (box.list.marker == CssMarker::Bullet) {
        const std::size_t level = ListLevel();
        const std::string_view bullet =
            box.list.bullet.empty() ? BulletText(level == 0 ? 0 : level - 1) : box.list.bullet;
        labels_.push_back({std::string(bullet), box.chars});
    }
}

}  // namespace zorvane
