// The HTML report: one self-contained page, readable without script, well formed as XML too.
#include <algorithm>
#include <array>
#include <fmt/format.h>

#include "common/base/text_encoding.h"
#include "compare/engine/comparison_model.h"

namespace zorvane {
namespace {

constexpr std::int32_t kContext = 3;      // unchanged paragraphs left open around a difference
constexpr std::int32_t kLeastFolded = 4;  // fewer are not worth a fold
constexpr std::int32_t kChunk = 200;  // paragraphs a block that a browser lays out when it is near
constexpr std::size_t kExcerpt = 60;

constexpr std::string_view kStyle = R"(
:root{color-scheme:light dark;--ink:#1d2430;--soft:#667085;--line:#e3e7ee;--paper:#fff;--ground:#f4f6f9;--tint:#f8fafc}
*{box-sizing:border-box}
body{margin:0;background:var(--ground);color:var(--ink);font:15px/1.55 system-ui,"Segoe UI","Noto Sans","Liberation Sans",sans-serif}
header,nav,main,footer{max-width:1320px;margin:0 auto;padding:0 24px}
header{padding-top:28px}
h1{font-size:1.55em;font-weight:650;margin:0 0 .2em}
.sum{font-size:1.08em;margin:.3em 0}
.sub,.key,footer{color:var(--soft);font-size:.92em}
.key span{margin-right:1.6em}
nav{margin-top:14px}
nav details,.box{background:var(--paper);border:1px solid var(--line);border-radius:8px}
nav summary{padding:9px 16px;cursor:pointer;font-weight:600}
nav ol{margin:0;padding:0 16px 12px 52px;max-height:40vh;overflow:auto}
nav li{margin:2px 0}
a{color:inherit;text-decoration-color:var(--soft)}
nav q,.what{color:var(--soft)}
nav q{quotes:none}
main{margin-top:18px;padding-bottom:40px}
.box{overflow:hidden}
.r{display:grid;grid-template-columns:4.2em minmax(0,1fr) 4.2em minmax(0,1fr)}
.one .r{grid-template-columns:4.2em 4.2em minmax(0,1fr)}
.r>*{padding:2px 12px;min-height:1.55em}
.r>div{white-space:pre-wrap;overflow-wrap:anywhere;unicode-bidi:plaintext}
.r>b{font-weight:400;font-size:.82em;color:var(--soft);text-align:right;padding-top:5px;font-variant-numeric:tabular-nums;user-select:none;background:var(--tint)}
.head{position:sticky;top:0;z-index:1;background:var(--paper);border-bottom:1px solid var(--line);font-weight:650}
.head>div{padding-top:9px;padding-bottom:9px;white-space:normal}
.d{border-top:1px solid var(--line);border-bottom:1px solid var(--line);margin:6px 0;scroll-margin-top:56px}
.d:target,.d.at{box-shadow:inset 4px 0 0 #2f6fdd}
.what{display:flex;gap:1em;padding:4px 14px;font-size:.85em;background:var(--tint)}
.what a{text-decoration:none;margin-left:.8em}
.what span{margin-left:auto}
.none{background:repeating-linear-gradient(135deg,transparent 0 6px,var(--tint) 6px 12px)}
.fold>summary{padding:5px 14px;cursor:pointer;color:var(--soft);font-size:.88em;background:var(--tint);border-top:1px dashed var(--line);border-bottom:1px dashed var(--line)}
.run{content-visibility:auto;contain-intrinsic-size:auto 4000px}
ins,del{border-radius:2px;text-decoration-thickness:1px}
.v{position:absolute;width:1px;height:1px;overflow:hidden;clip-path:inset(50%)}
@media (max-width:760px){.two .r{grid-template-columns:3.4em minmax(0,1fr)}.head{position:static}}
@media print{body{background:#fff;font-size:10pt}header,nav,main,footer{max-width:none;padding:0}nav,.what span{display:none}.box{border:0}.head{position:static}.r{break-inside:avoid}.run{content-visibility:visible}}
@media (prefers-color-scheme:dark){:root{--ink:#e4e8ef;--soft:#98a2b3;--line:#303845;--paper:#171c24;--ground:#10141a;--tint:#1d232d}}
)";

constexpr std::string_view kScript = R"(
(function(){var d=document.querySelectorAll('.d'),at=-1;
function go(n){if(!d.length)return;if(at>=0)d[at].classList.remove('at');at=(n+d.length)%d.length;d[at].classList.add('at');d[at].scrollIntoView({block:'center'});}
document.addEventListener('keydown',function(e){if(e.ctrlKey||e.metaKey||e.altKey)return;if(e.key==='n'||e.key==='j')go(at+1);else if(e.key==='p'||e.key==='k')go(at<0?d.length-1:at-1);});
var closed=[];addEventListener('beforeprint',function(){closed=[].slice.call(document.querySelectorAll('.fold:not([open])'));closed.forEach(function(f){f.open=true;});});
addEventListener('afterprint',function(){closed.forEach(function(f){f.open=false;});});})();
)";

// Markup and control characters made harmless; bytes that are no UTF-8 shown as the replacement
// character.
void AppendEscaped(std::string_view text, std::string& out) {
    std::size_t begin = 0;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const auto byte = static_cast<unsigned char>(text[at]);
        if (byte >= 0x20 && byte != '&' && byte != '<' && byte != '>' && byte != '"' &&
            byte != 0x7F)
            continue;
        if (byte == '\t')
            continue;
        out.append(text, begin, at - begin);
        begin = at + 1;
        switch (byte) {
            case '&':
                out += "&amp;";
                break;
            case '<':
                out += "&lt;";
                break;
            case '>':
                out += "&gt;";
                break;
            case '"':
                out += "&quot;";
                break;
            case 7:
                out += "\t";
                break;
            case 11:
                out += "\n";
                break;
            default:
                out += "\xEF\xBF\xBD";
        }
    }
    out.append(text, begin);
}

// A line of the file, which is UTF-8 unless it came from elsewhere.
void AppendLine(std::string_view line, std::string& out) {
    if (IsValidUtf8(line))
        AppendEscaped(line, out);
    else
        AppendEscaped(ToUtf8(ToUtf16(line)), out);
}

void AppendNumber(std::int32_t number, std::string& out) {
    fmt::format_to(std::back_inserter(out), "{}", number);
}

struct Rgb {
    int red;
    int green;
    int blue;
};
Rgb RgbOf(std::int32_t color) {
    return {color & 0xFF, (color >> 8) & 0xFF, (color >> 16) & 0xFF};
}
std::string Hex(Rgb rgb) {
    return fmt::format("#{:02x}{:02x}{:02x}", rgb.red, rgb.green, rgb.blue);
}
// The same hue, light enough for a dark ground.
Rgb Lightened(Rgb rgb) {
    const auto lighter = [](int part) { return part + (255 - part) * 11 / 20; };
    return {lighter(rgb.red), lighter(rgb.green), lighter(rgb.blue)};
}

constexpr std::int32_t kWhite = 0xFFFFFF;

void AppendMarkStyle(std::string_view selector, const ReportMark& mark, std::string& light,
                     std::string& dark) {
    const Rgb fore = RgbOf(mark.fore_color);
    std::string lines = mark.underline ? " underline double" : "";
    if (mark.strikeout)
        lines += " line-through";
    light += fmt::format("{}{{color:{};text-decoration:{}", selector, Hex(fore),
                         lines.empty() ? "none" : lines.substr(1));
    if (mark.bold)
        light += ";font-weight:700";
    if (mark.italic)
        light += ";font-style:italic";
    // White is the paper; on it a faint tint of the text's own colour says where the mark ends.
    if (mark.back_color == kWhite)
        light += fmt::format(";background:rgb({} {} {}/9%)", fore.red, fore.green, fore.blue);
    else
        light += ";background:" + Hex(RgbOf(mark.back_color));
    light += "}\n";
    const Rgb bright = Lightened(fore);
    if (mark.back_color == kWhite)
        dark += fmt::format("{}{{color:{};background:rgb({} {} {}/14%)}}", selector, Hex(bright),
                            bright.red, bright.green, bright.blue);
}

std::string MarkStyles(const ReportLook& look) {
    const ReportMark& addition = look.addition;
    const ReportMark& deletion = look.deletion;
    const ReportMark& inner_addition =
        look.similar_sub_paragraph_marks ? look.change_modified : addition;
    const ReportMark& inner_deletion =
        look.similar_sub_paragraph_marks ? look.change_modified : deletion;
    std::string light;
    std::string dark;
    AppendMarkStyle("ins.a", addition, light, dark);
    AppendMarkStyle("del.a", deletion, light, dark);
    AppendMarkStyle("ins.w", inner_addition, light, dark);
    AppendMarkStyle("del.w", inner_deletion, light, dark);
    AppendMarkStyle("ins.c", look.change_modified, light, dark);
    AppendMarkStyle("del.c", look.change_original, light, dark);
    return light + "@media (prefers-color-scheme:dark){" + dark + "}\n";
}

struct Tag {
    std::string_view open;
    std::string_view close;
};
Tag TagOf(PieceKind kind) {
    switch (kind) {
        case PieceKind::Same:
            return {"", ""};
        case PieceKind::Deleted:
            return {"<del class=\"w\">", "</del>"};
        case PieceKind::Added:
            return {"<ins class=\"w\">", "</ins>"};
        case PieceKind::ChangedOld:
            return {"<del class=\"c\">", "</del>"};
        case PieceKind::ChangedNew:
            break;
    }
    return {"<ins class=\"c\">", "</ins>"};
}

class HtmlWriter {
  public:
    HtmlWriter(const ComparisonModel& model, bool all_in_one)
        : model_(model), engine_(model.engine), one_(all_in_one), detail_(model.detail) {}

    std::string Write() {
        WriteBody();
        std::string page;
        AppendHead(page);
        AppendHeader(page);
        AppendList(page);
        page += one_ ? "<main><div class=\"box one\">\n" : "<main><div class=\"box two\">\n";
        AppendColumnTitles(page);
        body_.insert(0, page);  // one move, where a second page would cost its size again
        body_ +=
            "</div></main>\n<footer>n and p go to the next and the previous "
            "difference.</footer>\n";
        body_.append("<script>").append(kScript).append("</script>\n</body></html>\n");
        return std::move(body_);
    }

  private:
    // ---- the frame ----

    std::string Title() const {
        return model_.title.empty() ? model_.original_name + " / " + model_.modified_name
                                    : model_.title;
    }

    void AppendHead(std::string& page) const {
        page +=
            "<!DOCTYPE html>\n<html lang=\"en\"><head><meta charset=\"utf-8\"/>"
            "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\"/><title>";
        AppendLine(Title(), page);
        page.append("</title><style>").append(kStyle).append(MarkStyles(model_.look));
        page += "</style></head>\n<body>\n";
    }

    void AppendHeader(std::string& page) const {
        page += "<header>";
        if (!model_.title.empty()) {
            page += "<h1>";
            AppendLine(model_.title, page);
            page += "</h1>";
        }
        page += "<p class=\"sum\">" + SummaryText(CountRecords(engine_)) + "</p>";
        if (model_.high_detail) {
            page += "<p class=\"sub\">" + SubCounts("Words", detail_.SectionCounts());
            if (model_.detail.by_character)
                page += "<br/>" + SubCounts("Letters", detail_.CharacterCounts());
            page += "</p>";
        }
        if (engine_.getDifferenceCount() > 0) {
            page +=
                "<p class=\"key\"><span><del class=\"a\">deleted</del></span>"
                "<span><ins class=\"a\">added</ins></span><span><del class=\"c\">changed "
                "from</del> "
                "<ins class=\"c\">changed to</ins></span></p>";
        }
        page += "</header>\n";
    }

    static std::string SubCounts(std::string_view what, const DetailCounts& counts) {
        return fmt::format("{} inside changed paragraphs: {}, {}, {}.", what,
                           CountText(counts.changes, "change", "changes"),
                           CountText(counts.additions, "addition", "additions"),
                           CountText(counts.deletions, "deletion", "deletions"));
    }

    void AppendList(std::string& page) const {
        if (list_.empty())
            return;
        page +=
            "<nav aria-label=\"Differences\"><details><summary>List of differences</summary><ol>\n";
        page += list_;
        page += "</ol></details></nav>\n";
    }

    void AppendColumnTitles(std::string& page) const {
        if (one_) {
            page += "<div class=\"r head\"><div></div><div></div><div>";
            AppendLine(model_.original_name, page);
            page += " &#8594; ";
            AppendLine(model_.modified_name, page);
            page += "</div></div>\n";
            return;
        }
        page += "<div class=\"r head\"><div></div><div>";
        AppendLine(model_.original_name, page);
        page += "</div><div></div><div>";
        AppendLine(model_.modified_name, page);
        page += "</div></div>\n";
    }

    // ---- the paragraphs ----

    void WriteBody() {
        const std::int32_t originals = engine_.MasterLineCount();
        body_.reserve(engine_.TextBytes() * (one_ ? 1U : 2U) +
                      static_cast<std::size_t>(originals) * 64U);
        std::int32_t original = 1;
        std::int32_t modified = 1;
        number_ = 0;
        for (const DifferenceRecord& record : engine_.Records()) {
            const bool addition = record.type == DifferenceType::Addition;
            const std::int32_t end = addition ? record.first_original + 1 : record.first_original;
            Unchanged(original, modified, end - original, number_ == 0, false);
            ++number_;
            Difference(record);
            original = record.last_original + 1;
            modified = record.last_modified + 1;
        }
        Unchanged(original, modified, originals + 1 - original, number_ == 0, true);
    }

    // Long stretches are folded, but for some paragraphs beside the differences.
    void Unchanged(std::int32_t original, std::int32_t modified, std::int32_t count, bool first,
                   bool last) {
        const std::int32_t before = first ? 0 : kContext;
        const std::int32_t behind = last ? 0 : kContext;
        const std::int32_t folded = count - before - behind;
        const bool nothing_differs = first && last;
        if (folded < kLeastFolded || nothing_differs) {
            Rows(original, modified, count);
            return;
        }
        Rows(original, modified, before);
        fmt::format_to(std::back_inserter(body_),
                       "<details class=\"fold\"><summary>{} unchanged paragraphs ({} to "
                       "{})</summary>\n",
                       folded, original + before, original + before + folded - 1);
        for (std::int32_t at = 0; at < folded; at += kChunk) {
            body_ += "<div class=\"run\">\n";
            Rows(original + before + at, modified + before + at, std::min(kChunk, folded - at));
            body_ += "</div>\n";
        }
        body_ += "</details>\n";
        Rows(original + before + folded, modified + before + folded, behind);
    }

    void Rows(std::int32_t original, std::int32_t modified, std::int32_t count) {
        for (std::int32_t i = 0; i < count; ++i) {
            Number(original + i);
            if (!one_) {
                body_ += "<div>";
                AppendLine(engine_.MasterLine(original + i), body_);
                body_ += "</div>";
            }
            body_ += "<b>";
            AppendNumber(modified + i, body_);
            body_ += "</b><div>";
            AppendLine(engine_.SourceLine(modified + i), body_);
            body_ += "</div></div>\n";
        }
    }

    // Begins a row.
    void Number(std::int32_t number) {
        body_ += "<div class=\"r\"><b>";
        AppendNumber(number, body_);
        body_ += "</b>";
    }

    // ---- the differences ----

    void Difference(const DifferenceRecord& record) {
        const std::u16string original = OriginalText(engine_, record);
        const std::u16string modified = ModifiedText(engine_, record);
        ListEntry(record, original.empty() ? modified : original);
        fmt::format_to(std::back_inserter(body_),
                       "<section class=\"d\" id=\"d{0}\"><div class=\"what\">{0}. {1}<span>",
                       number_, DescribeRecord(record));
        if (number_ > 1)
            fmt::format_to(std::back_inserter(body_), "<a href=\"#d{}\">&#8593; previous</a>",
                           number_ - 1);
        if (number_ < engine_.getDifferenceCount())
            fmt::format_to(std::back_inserter(body_), "<a href=\"#d{}\">&#8595; next</a>",
                           number_ + 1);
        body_ += "</span></div>\n";
        if (record.type == DifferenceType::Change)
            Change(record, original, modified);
        else
            Whole(record);
        body_ += "</section>\n";
    }

    void ListEntry(const DifferenceRecord& record, const std::u16string& text) {
        fmt::format_to(std::back_inserter(list_), "<li><a href=\"#d{}\">{}</a> <q>", number_,
                       DescribeRecord(record));
        std::u16string_view excerpt(text);
        excerpt = excerpt.substr(0, std::min(excerpt.find(u'\r'), kExcerpt));
        AppendEscaped(ToUtf8(excerpt), list_);
        list_ += excerpt.size() < text.size() ? "&#8230;</q></li>\n" : "</q></li>\n";
    }

    // Paragraphs that stand on one side only.
    void Whole(const DifferenceRecord& record) {
        const bool addition = record.type == DifferenceType::Addition;
        const std::int32_t first = addition ? record.first_modified : record.first_original;
        const std::int32_t count = addition ? record.ModifiedCount() : record.OriginalCount();
        for (std::int32_t line = first; line < first + count; ++line) {
            body_ += "<div class=\"r\">";
            if (addition)
                body_ += one_ ? "<b></b>" : "<b></b><div class=\"none\"></div>";
            body_ += addition ? "<b>+ " : "<b>&#8722; ";
            AppendNumber(line, body_);
            body_ += "</b>";
            if (!addition && one_)
                body_ += "<b></b>";
            body_ += addition ? "<div><ins class=\"a\">" : "<div><del class=\"a\">";
            AppendLine(addition ? engine_.SourceLine(line) : engine_.MasterLine(line), body_);
            body_ += addition ? "</ins></div>" : "</del></div>";
            if (!addition && !one_)
                body_ += "<b></b><div class=\"none\"></div>";
            body_ += "</div>\n";
        }
    }

    void Change(const DifferenceRecord& record, const std::u16string& original,
                const std::u16string& modified) {
        detail_.Find(original, modified);
        if (one_) {
            MergedRows(record);
            return;
        }
        const auto left = SplitPieces(detail_.OriginalPieces());
        const auto right = SplitPieces(detail_.ModifiedPieces());
        for (const ParagraphPair pair : PairParagraphs(
                 detail_.MergedPieces(), record.OriginalCount(), record.ModifiedCount())) {
            body_ += "<div class=\"r\">";
            Cell(left, pair.original, record.first_original, "&#8722; ");
            Cell(right, pair.modified, record.first_modified, "+ ");
            body_ += "</div>\n";
        }
    }

    void Cell(const std::vector<std::vector<Piece>>& paragraphs, std::int32_t index,
              std::int32_t first_line, std::string_view sign) {
        if (index < 0 || index >= static_cast<std::int32_t>(paragraphs.size())) {
            body_ += "<b></b><div class=\"none\"></div>";
            return;
        }
        body_ += "<b>";
        body_ += sign;
        AppendNumber(first_line + index, body_);
        body_ += "</b><div>";
        AppendPieces(paragraphs[static_cast<std::size_t>(index)]);
        body_ += "</div>";
    }

    void AppendPieces(const std::vector<Piece>& pieces) {
        for (const Piece& piece : pieces) {
            const Tag tag = TagOf(piece.kind);
            body_ += tag.open;
            AppendEscaped(ToUtf8(piece.text), body_);
            body_ += tag.close;
        }
    }

    // A row for each paragraph of the merged text; a number stands where its paragraph begins.
    void MergedRows(const DifferenceRecord& record) {
        std::int32_t original = record.first_original;
        std::int32_t modified = record.first_modified;
        bool original_begins = true;
        bool modified_begins = true;
        body_ += "<div class=\"r\">";
        MergedNumbers(original, modified, original_begins, modified_begins);
        for (const Piece& piece : detail_.MergedPieces()) {
            const Tag tag = TagOf(piece.kind);
            std::size_t begin = 0;
            while (true) {
                const std::size_t end = piece.text.find(u"\r\n", begin);
                body_ += tag.open;
                AppendEscaped(ToUtf8(std::u16string_view(piece.text).substr(begin, end - begin)),
                              body_);
                body_ += tag.close;
                if (end == std::u16string::npos)
                    break;
                original_begins = IsOriginalPiece(piece.kind);
                modified_begins = IsModifiedPiece(piece.kind);
                original += original_begins ? 1 : 0;
                modified += modified_begins ? 1 : 0;
                body_ += "</div></div>\n<div class=\"r\">";
                MergedNumbers(original, modified, original_begins, modified_begins);
                begin = end + 2;
            }
        }
        body_ += "</div></div>\n";
    }

    void MergedNumbers(std::int32_t original, std::int32_t modified, bool original_begins,
                       bool modified_begins) {
        body_ += "<b>";
        if (original_begins) {
            body_ += "&#8722; ";
            AppendNumber(original, body_);
        }
        body_ += "</b><b>";
        if (modified_begins) {
            body_ += "+ ";
            AppendNumber(modified, body_);
        }
        body_ += "</b><div>";
    }

    const ComparisonModel& model_;
    const VestrelX& engine_;
    bool one_;
    ChangeDetail detail_;
    std::int32_t number_ = 0;
    std::string body_;
    std::string list_;
};

}  // namespace

std::string WriteHtmlReport(const ComparisonModel& model, std::int32_t style) {
    constexpr std::int32_t kAllInOne = 1;
    return HtmlWriter(model, style == kAllInOne).Write();
}

}  // namespace zorvane
