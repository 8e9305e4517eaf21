#include "compare/engine/html_markup.h"

#include <array>
#include <fmt/format.h>

#include "common/base/text_encoding.h"

namespace zorvane {
namespace {

constexpr std::string_view kStyle = R"(
*{box-sizing:border-box}
body{margin:0;background:var(--ground);color:var(--ink);font:15px/1.55 system-ui,"Segoe UI","Noto Sans","Liberation Sans",sans-serif}
header,nav,main,footer{max-width:1320px;margin:0 auto;padding:0 24px}
header{padding-top:28px}
h1{font-size:1.55em;font-weight:650;margin:0 0 .2em}
h2{font:inherit;margin:0}
.sum{font-size:1.08em;margin:.3em 0}
.sub,.key,footer{color:var(--soft);font-size:.92em}
.key span{margin-right:1.6em}
footer{padding-bottom:32px}
nav{margin-top:14px}
nav details,.box{background:var(--paper);border:1px solid var(--line);border-radius:8px}
nav summary{padding:9px 16px;cursor:pointer;font-weight:600}
nav ol{margin:0;padding:0 16px 12px 52px;max-height:40vh;overflow:auto}
nav li{margin:2px 0}
a{color:inherit;text-decoration-color:var(--soft)}
nav q,.what{color:var(--soft)}
nav q{quotes:none}
main{margin-top:18px;padding-bottom:24px}
.box{overflow:hidden;overflow:clip}
.r{display:grid;grid-template-columns:var(--num) minmax(0,1fr) var(--num) minmax(0,1fr)}
.one .r{grid-template-columns:var(--num) var(--num) minmax(0,1fr)}
.r>*{padding:2px 12px;min-height:1.55em}
.r>div{white-space:pre-wrap;overflow-wrap:anywhere;unicode-bidi:plaintext}
.r>b{font-weight:400;font-size:.82em;color:var(--soft);text-align:right;padding-top:5px;white-space:nowrap;font-variant-numeric:tabular-nums;user-select:none;background:var(--tint)}
.head{position:sticky;top:0;z-index:1;background:var(--paper);border-bottom:1px solid var(--line);font-weight:650}
.head>div{padding-top:9px;padding-bottom:9px;white-space:normal}
.d{border-top:1px solid var(--line);border-bottom:1px solid var(--line);scroll-margin-top:56px}
.d:target,.d.at{box-shadow:inset 4px 0 0 #2f6fdd}
.what{display:flex;gap:1em;padding:4px 14px;font-size:.85em;background:var(--tint)}
.what a{text-decoration:none;margin-left:.8em}
.what span{margin-left:auto;white-space:nowrap}
.none{background:repeating-linear-gradient(135deg,transparent 0 6px,var(--tint) 6px 12px)}
.fold>summary{padding:5px 14px;cursor:pointer;color:var(--soft);font-size:.88em;background:var(--tint);border-top:1px dashed var(--line);border-bottom:1px dashed var(--line)}
.run{content-visibility:auto;contain-intrinsic-size:auto 2400px}
ins,del{border-radius:2px;text-decoration-thickness:1px}
.words del+ins{margin-left:.3em}
.v,.box ins::before,.box ins::after,.box del::before,.box del::after{position:absolute;width:1px;height:1px;overflow:hidden;clip-path:inset(50%);white-space:nowrap}
.box ins::before{content:" [added:] "}
.box del::before{content:" [deleted:] "}
.box ins::after,.box del::after{content:" [end] "}
@media screen and (max-width:760px){.two .r{grid-template-columns:var(--num) minmax(0,1fr)}.head{position:static}header,nav,main,footer{padding-left:8px;padding-right:8px}}
@media print{@page{margin:14mm 12mm}body{background:#fff;font-size:10pt}header,nav,main,footer{max-width:none;padding:0}nav,footer,.what span{display:none}.box{border:0;overflow:visible}.head{position:static}.r{break-inside:avoid}.run{content-visibility:visible}}
@media print{.fold::details-content{content-visibility:visible;display:block}}
)";

constexpr std::string_view kLight =
    ":root{color-scheme:light dark;--ink:#1d2430;--soft:#5f6b7e;--line:#e3e7ee;--paper:#fff;"
    "--ground:#f4f6f9;--tint:#f8fafc;";
constexpr std::string_view kDark =
    ":root{--ink:#e4e8ef;--soft:#98a2b3;--line:#303845;--paper:#171c24;--ground:#10141a;"
    "--tint:#1d232d}\n";

// Without "<" and "&", which a script element of XML would have to escape and HTML must not.
constexpr std::string_view kScript = R"(
(function(){var d=document.querySelectorAll('.d'),at=-1;
function mark(n){if(at>=0)d[at].classList.remove('at');at=n;d[at].classList.add('at');}
function go(n){if(d.length){mark((n+d.length)%d.length);d[at].scrollIntoView({block:'center'});}}
document.addEventListener('keydown',function(e){if(e.ctrlKey||e.metaKey||e.altKey)return;if(e.key==='n'||e.key==='j')go(at+1);else if(e.key==='p'||e.key==='k')go(at>0?at-1:d.length-1);});
function jump(){var n=Number(location.hash.slice(2));if(n>0)if(d.length>=n)mark(n-1);}
addEventListener('hashchange',jump);jump();
var closed=[];addEventListener('beforeprint',function(){closed=[].slice.call(document.querySelectorAll('.fold:not([open])'));closed.forEach(function(f){f.open=true;});});
addEventListener('afterprint',function(){closed.forEach(function(f){f.open=false;});});})();
)";

constexpr std::string_view kReplacement = "\xEF\xBF\xBD";
constexpr std::int32_t kWhite = 0xFFFFFF;

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
    const bool similar = look.similar_sub_paragraph_marks;
    std::string light;
    std::string dark;
    AppendMarkStyle("ins.a", look.addition, light, dark);
    AppendMarkStyle("del.a", look.deletion, light, dark);
    AppendMarkStyle("ins.w", similar ? look.change_modified : look.addition, light, dark);
    AppendMarkStyle("del.w", similar ? look.change_modified : look.deletion, light, dark);
    AppendMarkStyle("ins.c", look.change_modified, light, dark);
    AppendMarkStyle("del.c", look.change_original, light, dark);
    return light + "@media (prefers-color-scheme:dark){" + dark + "}\n";
}

// What stands for a byte that cannot stand for itself; empty: it can.
std::string_view Escape(unsigned char byte) {
    switch (byte) {
        case '&':
            return "&amp;";
        case '<':
            return "&lt;";
        case '>':
            return "&gt;";
        case '"':
            return "&quot;";
        case '\t':
            return "";
        case 7:
            return "\t";
        case 11:
            return "\n";
        default:
            return byte < 0x20 || byte == 0x7F ? kReplacement : "";
    }
}

// Bytes that need no further look: nearly all.
constexpr std::array<bool, 256> kPlain = [] {
    std::array<bool, 256> plain{};
    for (std::size_t byte = 0x20; byte < plain.size(); ++byte)
        plain[byte] = std::string_view("&<>\"\x7F\xC2\xEF").find(static_cast<char>(byte)) ==
                      std::string_view::npos;
    return plain;
}();

void AppendEscaped(std::string_view text, std::string& out) {
    std::size_t begin = 0;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const auto byte = static_cast<unsigned char>(text[at]);
        if (kPlain[byte])
            continue;
        // U+0080 to U+009F and U+FFFE, U+FFFF: valid UTF-8, but no characters of a page.
        const bool control = byte == 0xC2 && static_cast<unsigned char>(text[at + 1]) < 0xA0;
        const bool none = byte == 0xEF && static_cast<unsigned char>(text[at + 1]) == 0xBF &&
                          static_cast<unsigned char>(text[at + 2]) >= 0xBE;
        const std::string_view escape = control || none ? kReplacement : Escape(byte);
        if (escape.empty())
            continue;
        out.append(text, begin, at - begin).append(escape);
        at += none ? 2 : static_cast<std::size_t>(control);
        begin = at + 1;
    }
    out.append(text, begin);
}

}  // namespace

void AppendHtmlText(std::string_view text, std::string& out) {
    if (IsValidUtf8(text))
        AppendEscaped(text, out);
    else
        AppendEscaped(ToUtf8(ToUtf16(text)), out);
}

std::string HtmlStyle(const ReportLook& look, std::int32_t largest_number) {
    const auto digits = static_cast<double>(std::to_string(largest_number).size());
    std::string style(kLight);
    style +=
        fmt::format("--num:{:.1f}em}}\n@media (prefers-color-scheme:dark){{", 2.9 + digits / 2);
    return style.append(kDark).append("}").append(kStyle).append(MarkStyles(look));
}

std::string_view HtmlScript() {
    return kScript;
}

}  // namespace zorvane
