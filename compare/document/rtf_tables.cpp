#include "compare/document/rtf_tables.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>

namespace zorvane {
namespace {

// In ascending order of the names: the search halves.
constexpr RtfWord kWords[] = {
    {"aftncn", RtfAction::SkipGroup},
    {"aftnsep", RtfAction::SkipGroup},
    {"aftnsepc", RtfAction::SkipGroup},
    {"annotation", RtfAction::SkipGroup},
    {"ansi", RtfAction::CodePageFixed, 1252},
    {"ansicpg", RtfAction::AnsiCodePage},
    {"atnauthor", RtfAction::SkipGroup},
    {"atndate", RtfAction::SkipGroup},
    {"atnid", RtfAction::SkipGroup},
    {"atnparent", RtfAction::SkipGroup},
    {"atnref", RtfAction::SkipGroup},
    {"atrfend", RtfAction::SkipGroup},
    {"atrfstart", RtfAction::SkipGroup},
    {"b", RtfAction::Bold},
    {"bin", RtfAction::Binary},
    {"bkmkend", RtfAction::SkipGroup},
    {"bkmkstart", RtfAction::SkipGroup},
    {"blue", RtfAction::Blue},
    {"bullet", RtfAction::Character, 0x2022},
    {"cb", RtfAction::BackColor},
    {"cell", RtfAction::CellEnd},
    {"cf", RtfAction::ForeColor},
    {"chcbpat", RtfAction::BackColor},
    {"colorschememapping", RtfAction::SkipGroup},
    {"colortbl", RtfAction::ColorTable},
    {"column", RtfAction::PageBreak},
    {"cpg", RtfAction::FontCodePage},
    {"datafield", RtfAction::SkipGroup},
    {"datastore", RtfAction::SkipGroup},
    {"deff", RtfAction::DefaultFont},
    {"deleted", RtfAction::Deleted},
    {"dn", RtfAction::RaiseLower, 2},
    {"do", RtfAction::Visible},
    {"docvar", RtfAction::SkipGroup},
    {"dptxbxtext", RtfAction::Box},
    {"emdash", RtfAction::Character, 0x2014},
    {"emspace", RtfAction::Character, 0x2003},
    {"endash", RtfAction::Character, 0x2013},
    {"enspace", RtfAction::Character, 0x2002},
    {"f", RtfAction::Font},
    {"falt", RtfAction::SkipGroup},
    {"fcharset", RtfAction::FontCharset},
    {"fi", RtfAction::FirstIndent},
    {"filetbl", RtfAction::SkipGroup},
    {"fldinst", RtfAction::SkipGroup},
    {"fontemb", RtfAction::SkipGroup},
    {"fontfile", RtfAction::SkipGroup},
    {"fonttbl", RtfAction::FontTable},
    {"footer", RtfAction::SkipGroup},
    {"footerf", RtfAction::SkipGroup},
    {"footerl", RtfAction::SkipGroup},
    {"footerr", RtfAction::SkipGroup},
    {"footnote", RtfAction::Footnote},
    {"fs", RtfAction::FontSize},
    {"ftncn", RtfAction::SkipGroup},
    {"ftnsep", RtfAction::SkipGroup},
    {"ftnsepc", RtfAction::SkipGroup},
    {"generator", RtfAction::SkipGroup},
    {"green", RtfAction::Green},
    {"header", RtfAction::SkipGroup},
    {"headerf", RtfAction::SkipGroup},
    {"headerl", RtfAction::SkipGroup},
    {"headerr", RtfAction::SkipGroup},
    {"highlight", RtfAction::BackColor},
    {"i", RtfAction::Italic},
    {"info", RtfAction::SkipGroup},
    {"intbl", RtfAction::InTable},
    {"keywords", RtfAction::SkipGroup},
    {"latentstyles", RtfAction::SkipGroup},
    {"lbr", RtfAction::LineBreak},
    {"ldblquote", RtfAction::Character, 0x201c},
    {"li", RtfAction::LeftIndent},
    {"lin", RtfAction::LeftIndent},
    {"line", RtfAction::LineBreak},
    {"listoverridetable", RtfAction::SkipGroup},
    {"listtable", RtfAction::SkipGroup},
    {"lquote", RtfAction::Character, 0x2018},
    {"ltrmark", RtfAction::Character, 0x200e},
    {"ltrpar", RtfAction::RightToLeft, 0},
    {"mac", RtfAction::CodePageFixed, 10000},
    {"mmathPr", RtfAction::SkipGroup},
    {"moMath", RtfAction::SkipGroup},
    {"nestcell", RtfAction::Character, 9},
    {"nestrow", RtfAction::NestedRowEnd},
    {"nonesttables", RtfAction::SkipGroup},
    {"nonshppict", RtfAction::SkipGroup},
    {"nosupersub", RtfAction::NoSuperSub},
    {"objalias", RtfAction::SkipGroup},
    {"objclass", RtfAction::SkipGroup},
    {"objdata", RtfAction::SkipGroup},
    {"objname", RtfAction::SkipGroup},
    {"page", RtfAction::PageBreak},
    {"panose", RtfAction::SkipGroup},
    {"par", RtfAction::ParagraphEnd},
    {"pard", RtfAction::ParagraphDefaults},
    {"passwordhash", RtfAction::SkipGroup},
    {"pc", RtfAction::CodePageFixed, 437},
    {"pca", RtfAction::CodePageFixed, 850},
    {"pgptbl", RtfAction::SkipGroup},
    {"pict", RtfAction::SkipGroup},
    {"plain", RtfAction::Plain},
    {"pntxta", RtfAction::SkipGroup},
    {"pntxtb", RtfAction::SkipGroup},
    {"protusertbl", RtfAction::SkipGroup},
    {"qc", RtfAction::Align, 1},
    {"qd", RtfAction::Align, 3},
    {"qj", RtfAction::Align, 3},
    {"ql", RtfAction::Align, 0},
    {"qmspace", RtfAction::Character, 0x2005},
    {"qr", RtfAction::Align, 2},
    {"rdblquote", RtfAction::Character, 0x201d},
    {"red", RtfAction::Red},
    {"revtbl", RtfAction::SkipGroup},
    {"ri", RtfAction::RightIndent},
    {"rin", RtfAction::RightIndent},
    {"row", RtfAction::RowEnd},
    {"rquote", RtfAction::Character, 0x2019},
    {"rsidtbl", RtfAction::SkipGroup},
    {"rtlmark", RtfAction::Character, 0x200f},
    {"rtlpar", RtfAction::RightToLeft, 1},
    {"rxe", RtfAction::SkipGroup},
    {"sa", RtfAction::SpaceAfter},
    {"sb", RtfAction::SpaceBefore},
    {"sect", RtfAction::SectionEnd},
    {"shpgrp", RtfAction::Visible},
    {"shpinst", RtfAction::Visible},
    {"shppict", RtfAction::Visible},
    {"shprslt", RtfAction::SkipGroup},
    {"shptxt", RtfAction::Box},
    {"sl", RtfAction::LineSpacing},
    {"slmult", RtfAction::LineSpacingMultiple},
    {"sn", RtfAction::SkipGroup},
    {"strike", RtfAction::Strike},
    {"striked", RtfAction::Strike},
    {"stylesheet", RtfAction::SkipGroup},
    {"sub", RtfAction::Subscript},
    {"super", RtfAction::Superscript},
    {"sv", RtfAction::SkipGroup},
    {"tab", RtfAction::Character, 9},
    {"tb", RtfAction::TabBarAt},
    {"tc", RtfAction::SkipGroup},
    {"tcn", RtfAction::SkipGroup},
    {"template", RtfAction::SkipGroup},
    {"themedata", RtfAction::SkipGroup},
    {"tqc", RtfAction::TabKindNext, 1},
    {"tqdec", RtfAction::TabKindNext, 3},
    {"tqr", RtfAction::TabKindNext, 2},
    {"tx", RtfAction::TabAt},
    {"txe", RtfAction::SkipGroup},
    {"u", RtfAction::Unicode},
    {"uc", RtfAction::UnicodeSkip},
    {"ud", RtfAction::UnicodeText},
    {"ul", RtfAction::UnderlineKind, 1},
    {"uld", RtfAction::UnderlineKind, 4},
    {"uldash", RtfAction::UnderlineKind, 5},
    {"uldashd", RtfAction::UnderlineKind, 6},
    {"uldashdd", RtfAction::UnderlineKind, 7},
    {"uldb", RtfAction::UnderlineKind, 3},
    {"ulhwave", RtfAction::UnderlineKind, 12},
    {"ulldash", RtfAction::UnderlineKind, 11},
    {"ulnone", RtfAction::UnderlineKind, 0},
    {"ulth", RtfAction::UnderlineKind, 9},
    {"ulthd", RtfAction::UnderlineKind, 13},
    {"ulthdash", RtfAction::UnderlineKind, 14},
    {"ulthdashd", RtfAction::UnderlineKind, 15},
    {"ulthdashdd", RtfAction::UnderlineKind, 16},
    {"ulthldash", RtfAction::UnderlineKind, 17},
    {"ululdbwave", RtfAction::UnderlineKind, 10},
    {"ulw", RtfAction::UnderlineKind, 2},
    {"ulwave", RtfAction::UnderlineKind, 8},
    {"up", RtfAction::RaiseLower, 1},
    {"upr", RtfAction::AnsiAndUnicode},
    {"userprops", RtfAction::SkipGroup},
    {"v", RtfAction::Hidden},
    {"webhidden", RtfAction::Hidden},
    {"wgrffmtfilter", RtfAction::SkipGroup},
    {"xe", RtfAction::SkipGroup},
    {"xmlnstbl", RtfAction::SkipGroup},
    {"zvbeside", RtfAction::SkipGroup},
    {"zvcell", RtfAction::CellTab},
    {"zwbo", RtfAction::Character, 0x200b},
    {"zwj", RtfAction::Character, 0x200d},
    {"zwnbo", RtfAction::Character, 0x2060},
    {"zwnj", RtfAction::Character, 0x200c},
};
static_assert(std::is_sorted(std::begin(kWords), std::end(kWords),
                             [](const RtfWord& left, const RtfWord& right) {
                                 return left.name < right.name;
                             }));

struct CharsetRow {
    std::int32_t charset;
    std::int32_t page;
};
constexpr CharsetRow kCharsets[] = {
    {0, 1252},   {2, 42},     {77, 10000}, {128, 932},  {129, 949},  {130, 1361}, {134, 936},
    {136, 950},  {161, 1253}, {162, 1254}, {163, 1258}, {177, 1255}, {178, 1256}, {186, 1257},
    {204, 1251}, {222, 874},  {238, 1250}, {254, 437},  {255, 850},
};

// By the first letter, where its words begin; one entry more for the end of "z".
constexpr auto kBegins = [] {
    std::array<std::uint16_t, 'z' - 'a' + 2> begins{};
    std::size_t word = 0;
    for (std::size_t letter = 0; letter < begins.size(); ++letter) {
        while (word < std::size(kWords) &&
               kWords[word].name.front() < 'a' + static_cast<int>(letter))
            ++word;
        begins[letter] = static_cast<std::uint16_t>(word);
    }
    return begins;
}();

}  // namespace

const RtfWord* FindRtfWord(std::string_view name) {
    if (name.empty() || name.front() < 'a' || name.front() > 'z')
        return nullptr;
    const auto letter = static_cast<std::size_t>(name.front() - 'a');
    const RtfWord* const end = kWords + kBegins[letter + 1];
    const RtfWord* const found = std::lower_bound(
        kWords + kBegins[letter], end, name,
        [](const RtfWord& word, std::string_view wanted) { return word.name < wanted; });
    return found != end && found->name == name ? found : nullptr;
}

CodePage CodePageOfCharset(std::int32_t charset) {
    for (const CharsetRow& row : kCharsets) {
        if (row.charset == charset)
            return CodePage{row.page};
    }
    return CodePage{0};
}

}  // namespace zorvane
