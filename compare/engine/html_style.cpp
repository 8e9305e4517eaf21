#include "compare/engine/html_style.h"

#include <array>
#include <fmt/format.h>

#include "compare/engine/html_palette.h"

namespace zorvane {
namespace {

// Rows: r, and behind it c changed, x deleted, p added, m moved, o on one side unseen by the
// compare, s where the right cell holds both texts for narrow screens. Cells: b the gutter, n
// nothing here, k a link to the other place, t a table's row.
constexpr std::string_view kStyle = R"(
*{box-sizing:border-box}
html{scroll-padding-top:72px}
body{margin:0;background:var(--window);color:var(--text);font:15px/1.5 system-ui,"Segoe UI","Noto Sans","Liberation Sans",sans-serif}
header,nav,.beside,main,footer{max-width:1480px;margin:0 auto;padding:0 24px}
header{padding-top:24px}
h1{font-size:1.5em;font-weight:600;margin:0 0 4px;line-height:1.25}
h2{font:inherit;margin:0}
p{margin:4px 0}
.sub,footer{color:var(--text2);font-size:.9em}
.counts{display:flex;flex-wrap:wrap;gap:8px;list-style:none;margin:12px 0;padding:0}
.counts li{padding:2px 10px;border-radius:4px;background:var(--paper);border:1px solid var(--line)}
.counts li.c{color:var(--changed);background:var(--changed-word)}
.counts li.x{color:var(--deleted);background:var(--deleted-word)}
.counts li.p{color:var(--added);background:var(--added-word)}
.counts li.m{color:var(--moved);background:var(--moved-word)}
.counts i,.r>b>i{font-style:normal;font-family:"Segoe UI","DejaVu Sans","Liberation Sans",sans-serif;font-weight:600;margin-right:4px}
nav details,.beside section{margin-top:12px;background:var(--paper);border:1px solid var(--line);border-radius:6px}
nav summary,.beside h2{padding:8px 16px;font-weight:600}
nav summary,.fold>summary{cursor:pointer}
nav ol{margin:0;padding:0 16px 12px 56px;max-height:40vh;overflow:auto}
.beside ul{margin:0;padding:0 16px 12px 32px}
nav li{margin:4px 0}
a{color:inherit;text-decoration-color:var(--muted);text-underline-offset:2px}
:focus-visible{outline:2px solid var(--text);outline-offset:1px}
nav q{color:var(--text2);quotes:none}
main{margin-top:16px;padding-bottom:24px}
footer{padding-bottom:32px}
.box{background:var(--paper);border:1px solid var(--line);border-radius:6px;overflow:hidden;overflow:clip;padding-bottom:8px}
.r{display:grid;grid-template-columns:var(--g) minmax(0,1fr) var(--g) minmax(0,1fr)}
.one .r{grid-template-columns:minmax(0,1fr) calc(var(--g) - 20px) var(--g) minmax(0,760px) minmax(8px,1fr)}
.one .r>:first-child{grid-column:2}
.one .r>b:first-child{padding-right:0}
.r>div{padding:2px 16px 2px 4px;min-height:1.75em;white-space:pre-wrap;overflow-wrap:anywhere;unicode-bidi:plaintext}
.rich .r>div{padding-top:5px;padding-bottom:7px;font-family:Charter,"Noto Serif","Liberation Serif",Georgia,serif}
.r>b{position:relative;padding:4px 24px 0 0;font-weight:400;font-size:.76em;line-height:1.85;color:var(--muted);text-align:right;white-space:nowrap;font-variant-numeric:tabular-nums;user-select:none}
.rich .r>b{padding-top:7px}
.r>b>i{position:absolute;right:5px;font-style:normal;font-weight:600;font-size:1.15em;line-height:1.6}
.two .r>b+div+*{border-left:1px solid var(--line)}
.two .n:first-child{border-right:1px solid var(--line)}
.c{background:var(--changed-row)}.c>b>i{color:var(--changed)}
.x{background:var(--deleted-row)}.x>b>i{color:var(--deleted)}
.p{background:var(--added-row)}.p>b>i{color:var(--added)}
.m{background:var(--moved-row)}.m>b>i{color:var(--moved)}
.r>.n,.rich .r>.n{grid-column:span 2;padding:4px 16px 2px calc(var(--g) + 4px);background:repeating-linear-gradient(135deg,var(--hatch) 0 7px,var(--hatch-line) 7px 8px);color:var(--text2);font:.87em/1.5 system-ui,"Segoe UI","Noto Sans",sans-serif}
.n>span,.n>a{background:var(--hatch);padding:0 4px;margin-left:-4px;border-radius:3px}
.k{color:var(--text2);font:.87em/1.5 system-ui,"Segoe UI","Noto Sans",sans-serif}
.one .k{display:block}
.two .s>:last-child del{display:none}
.words.two .s>:last-child del+ins{margin-left:0}
.head,.rich .head{position:sticky;top:0;z-index:1;background:var(--paper);border-bottom:1px solid var(--line)}
.head>div,.rich .head>div{padding:8px 16px 8px 4px;white-space:normal;font:600 1em/1.4 system-ui,"Segoe UI","Noto Sans",sans-serif}
.head small{display:block;font-weight:400;font-size:.87em;color:var(--text2)}
.names{display:flex;flex-wrap:wrap;gap:0 40px}
.d{position:relative}
.d:target,.d.at{box-shadow:inset 4px 0 0 var(--text),inset -4px 0 0 var(--text),inset 0 1px 0 var(--text),inset 0 -1px 0 var(--text)}
.what>span{position:absolute;z-index:1;right:8px;top:2px;opacity:0;font-size:.8em;background:var(--paper);border:1px solid var(--line);border-radius:6px}
.d:hover>.what>span,.d:focus-within>.what>span,.d:target>.what>span{opacity:1}
.what a{display:inline-block;padding:1px 8px;min-height:24px;text-decoration:none}
.fold{font-size:.87em;color:var(--text2);background:var(--window);margin:0;border:solid var(--line);border-width:1px 0}
p.fold,.fold>summary{padding:5px 16px}
.fold[open]>summary{border-bottom:1px solid var(--line)}
.fold>.run{font-size:15px;color:var(--text);background:var(--paper)}
.run{content-visibility:auto;contain-intrinsic-size:auto 2000px}
ins,del{border-radius:3px;text-decoration-thickness:1.2px;text-underline-offset:2px}
.words del+ins{margin-left:3px}
.v{color:var(--moved);text-decoration:underline dotted 1.2px;text-underline-offset:2px}
.t{display:grid;column-gap:16px}
.t>span{border-bottom:1px solid var(--line);min-width:0}
.t ins,.t del{display:inline-block;max-width:100%}
.h1{font-size:1.45em;font-weight:600;line-height:1.3}.h2{font-size:1.2em;font-weight:600}.h3{font-weight:600}
.ac{text-align:center}.ar{text-align:right}
.rich .r>.in{padding-left:calc(4px + var(--i)*1.5em)}.hang{text-indent:-1.5em;tab-size:1.5em}
.q,.what>h2,.box ins::before,.box ins::after,.box del::before,.box del::after{position:absolute;width:1px;height:1px;overflow:hidden;clip-path:inset(50%);white-space:nowrap}
.box ins::before{content:" [added:] "}
.box del::before{content:" [deleted:] "}
.box ins::after,.box del::after{content:" [end] "}
.box .z::before,.box .z::after{content:none}
.z{text-decoration:none}
@media screen and (max-width:760px){
header,nav,.beside,main,footer{padding-left:8px;padding-right:8px}
.two .r{grid-template-columns:var(--g) minmax(0,1fr)}
.two .r>b+div+*{border-left:0}
.two [class="r"]>:nth-child(n+3),.two .r:not(.head)>:empty,.two .n:not(.k),.two .s>:nth-child(-n+2){display:none}
.two .s>:last-child del{display:inline}
.two .s>.t:last-child del{display:inline-block}
.words.two .s>:last-child del+ins{margin-left:3px}
.head{position:static}
html{scroll-padding-top:0}
}
@media print{@page{margin:14mm 12mm}body,.box{background:#fff}body{font-size:10pt}.box,.c,.x,.p,.m,.n,ins,del,.counts li{print-color-adjust:exact;-webkit-print-color-adjust:exact}header,nav,.beside,main,footer{max-width:none;padding:0}nav,footer,.what>span{display:none}.box{border:0;overflow:visible}.head{position:static}.r{break-inside:avoid}.run{content-visibility:visible}}
@media print{.fold::details-content{content-visibility:visible;display:block}}
)";

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

// NOLINTNEXTLINE(clang-analyzer-optin.performance.Padding): six, read in this order
struct MarkRow {
    std::string_view selector;
    const MarkStyle& mark;
    MarkStyle usual;  // what the user has who chose nothing
    std::string_view token;
    std::string_view line;  // in the usual mark
    bool whole;             // a whole paragraph, which must stay easy to read
};

// The same lines and weight as if the user had chosen nothing?
bool SameLines(const MarkStyle& mark, const MarkStyle& usual) {
    return mark.bBold == usual.bBold && mark.bItalic == usual.bItalic &&
           mark.bUnderline == usual.bUnderline && mark.bStrikeout == usual.bStrikeout;
}

std::string LinesOf(const MarkRow& row) {
    const MarkStyle& mark = row.mark;
    if (SameLines(mark, row.usual)) {
        return fmt::format("text-decoration-line:{};font-weight:{}", row.line,
                           row.whole ? "400;text-decoration-color:color-mix(in srgb,currentColor "
                                       "55%,transparent)"
                                     : "600");
    }
    std::string lines = mark.bUnderline ? " underline" : "";
    if (mark.bStrikeout)
        lines += " line-through";
    std::string style = "text-decoration-line:" + (lines.empty() ? "none" : lines.substr(1));
    style += mark.bBold ? ";font-weight:600" : ";font-weight:400";
    return style + (mark.bItalic ? ";font-style:italic" : "");
}

void AppendMark(const MarkRow& row, std::string& light, std::string& dark) {
    const MarkStyle& mark = row.mark;
    const std::string token(row.token);
    const ColorToken& ground = TokenNamed(token + (row.whole ? "-row" : "-word"));
    const bool own_ground = mark.BackColor != row.usual.BackColor;
    std::string color = "var(--" + token + ")";
    if (mark.ForeColor != row.usual.ForeColor || own_ground) {
        const Rgb wanted = mark.ForeColor == row.usual.ForeColor ? RgbOfHex(TokenNamed(token).light)
                                                                 : RgbOfStored(mark.ForeColor);
        const Rgb own = RgbOfStored(mark.BackColor);
        color = HexOf(ReadableOn(wanted, own_ground ? own : RgbOfHex(ground.light)));
        dark += fmt::format("{}{{color:{}}}", row.selector,
                            HexOf(ReadableOn(wanted, own_ground ? own : RgbOfHex(ground.dark))));
    }
    std::string background = row.whole ? "transparent" : "var(--" + token + "-word)";
    if (own_ground)
        background = HexOf(RgbOfStored(mark.BackColor));
    light += fmt::format("{}{{color:{};background:{};{}}}\n", row.selector, color, background,
                         LinesOf(row));
}

std::string MarkStyles(const ReportLook& look) {
    const ReportLook usual;
    const bool similar = look.similar_sub_paragraph_marks;
    const MarkStyle& inner_added = similar ? look.change_modified : look.addition;
    const MarkStyle& inner_deleted = similar ? look.change_modified : look.deletion;
    const std::string_view added = similar ? "changed" : "added";
    const std::string_view deleted = similar ? "changed" : "deleted";
    const MarkRow rows[] = {
        {"ins.a", look.addition, usual.addition, "added", "underline", true},
        {"del.a", look.deletion, usual.deletion, "deleted", "line-through", true},
        {"ins.w", inner_added, similar ? usual.change_modified : usual.addition, added, "underline",
         false},
        {"del.w", inner_deleted, similar ? usual.change_modified : usual.deletion, deleted,
         "line-through", false},
        {"ins.c", look.change_modified, usual.change_modified, "changed", "underline", false},
        {"del.c", look.change_original, usual.change_original, "changed", "line-through", false},
    };
    std::string light;
    std::string dark;
    for (const MarkRow& row : rows)
        AppendMark(row, light, dark);
    if (!dark.empty())
        light += "@media screen and (prefers-color-scheme:dark){" + dark + "}\n";
    return light;
}

std::string Tokens(std::int32_t ColorToken::*theme) {
    std::string tokens;
    for (const ColorToken& token : kColorTokens)
        tokens += fmt::format("--{}:{};", token.name, HexOf(RgbOfHex(token.*theme)));
    return tokens;
}

}  // namespace

std::string HtmlStyle(const ReportLook& look, std::int32_t largest_number) {
    constexpr int kDigitWidth = 7;
    constexpr int kBesideDigits = 30;
    constexpr int kLeastGutter = 54;
    const auto digits = static_cast<int>(std::to_string(largest_number).size());
    std::string style =
        fmt::format(":root{{color-scheme:light dark;{}--g:{}px}}\n", Tokens(&ColorToken::light),
                    std::max(kLeastGutter, kBesideDigits + digits * kDigitWidth));
    style +=
        "@media screen and (prefers-color-scheme:dark){:root{" + Tokens(&ColorToken::dark) + "}}";
    return style.append(kStyle).append(MarkStyles(look));
}

std::string_view HtmlScript() {
    return kScript;
}

}  // namespace zorvane
