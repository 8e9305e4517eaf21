#include "options/marking_styles.h"

#include <array>

#include "options/compare_file_options.h"

namespace zorvane {
namespace {

using Options = clsCompareFileOptions;

struct StyleRow {
    clsVarLong Options::*fore_color;
    clsVarLong Options::*back_color;
    clsVarBoolean Options::*bold;
    clsVarBoolean Options::*underline;
    clsVarBoolean Options::*strikeout;
    clsVarBoolean Options::*italic;
};
// In the order of `Mark`.
constexpr std::array<StyleRow, 4> kStyles = {{
    {&Options::lViewAdditionForeColor, &Options::lViewAdditionBackColor,
     &Options::bViewAdditionBold, &Options::bViewAdditionUnderline,
     &Options::bViewAdditionStrikeout, &Options::bViewAdditionItalic},
    {&Options::lViewDeletionForeColor, &Options::lViewDeletionBackColor,
     &Options::bViewDeletionBold, &Options::bViewDeletionUnderline,
     &Options::bViewDeletionStrikeout, &Options::bViewDeletionItalic},
    {&Options::lViewChangeForeColorOriginal, &Options::lViewChangeBackColorOriginal,
     &Options::bViewChangeBoldOriginal, &Options::bViewChangeUnderlineOriginal,
     &Options::bViewChangeStrikeoutOriginal, &Options::bViewChangeItalicOriginal},
    {&Options::lViewChangeForeColorModified, &Options::lViewChangeBackColorModified,
     &Options::bViewChangeBoldModified, &Options::bViewChangeUnderlineModified,
     &Options::bViewChangeStrikeoutModified, &Options::bViewChangeItalicModified},
}};

}  // namespace

MarkStyle StyleFor(const clsCompareFileOptions& options, Mark mark) {
    const StyleRow& row = kStyles[static_cast<std::size_t>(mark)];
    MarkStyle style;
    style.ForeColor = (options.*row.fore_color).Data();
    style.BackColor = (options.*row.back_color).Data();
    style.bBold = (options.*row.bold).Data();
    style.bUnderline = (options.*row.underline).Data();
    style.bStrikeout = (options.*row.strikeout).Data();
    style.bItalic = (options.*row.italic).Data();
    return style;
}

MarkStyle SubParagraphStyleFor(const clsCompareFileOptions& options, Mark mark) {
    const bool similar = options.bShowSubParagraphChangesSimilarly.Data();
    const bool whole = mark == Mark::Addition || mark == Mark::Deletion;
    return StyleFor(options, similar && whole ? Mark::ChangeModified : mark);
}

}  // namespace zorvane
