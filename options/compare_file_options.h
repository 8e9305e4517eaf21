// The options of a compare: names are settings keys, field names and the user's vocabulary at once.
#pragma once

#include "options/option_values.h"

namespace zorvane {

/// Colours are 24-bit values with red in the low byte. Sheets, rows and columns are text, so that
/// ranges can be written. Passwords are kept as plain text: `_TO` opens, `_TOTW` and `_TW` write.
class clsCompareFileOptions : public OptionSet {
  public:
    clsCompareFileOptions();
    clsCompareFileOptions(const clsCompareFileOptions& other);
    ~clsCompareFileOptions() override;
    clsCompareFileOptions& operator=(const clsCompareFileOptions& other) {
        CopyFrom(other);
        return *this;
    }
    friend bool operator==(const clsCompareFileOptions& one, const clsCompareFileOptions& two) {
        return one.HasSameData(two);
    }

    // The two files; "Uninitialized": none was chosen yet.
    clsVarString sFileOriginal{*this, "sFileOriginal", "Uninitialized"};
    clsVarString sFileModified{*this, "sFileModified", "Uninitialized"};
    // What the document level leaves out, and how the run works.
    clsVarBoolean bIgnoreCase{*this, "bIgnoreCase", false};
    clsVarBoolean bIgnoreWhitespace{*this, "bIgnoreWhitespace", false};
    clsVarBoolean bIgnoreEmptyLines{*this, "bIgnoreEmptyLines", false};
    clsVarBoolean bBeepWhenDone{*this, "bBeepWhenDone", false};
    clsVarBoolean bQuickCompare{*this, "bQuickCompare", false};
    clsVarBoolean bReloadOnRefresh{*this, "bReloadOnRefresh", true};
    clsVarBoolean bRemoveFormatting{*this, "bRemoveFormatting", false};
    clsVarBoolean bCompareByCharacter{*this, "bCompareByCharacter", false};
    clsVarBoolean bShowChangesInLargerSections{*this, "bShowChangesInLargerSections", false};
    clsVarBoolean bCompareFaster{*this, "bCompareFaster", false};
    clsVarBoolean bUseLineBracket{*this, "bUseLineBracket", false};
    clsVarBoolean bModifyOriginalDocuments{*this, "bModifyOriginalDocuments", true};
    clsVarBoolean bOptimizeFileLoading{*this, "bOptimizeFileLoading", true};
    clsVarLong lLoadDelay{*this, "lLoadDelay", 0};
    clsVarLong lLineBracket{*this, "lLineBracket", 1};
    clsVarString sIgnoreRegularExpression{*this, "sIgnoreRegularExpression", ""};
    clsVarBoolean bIgnoreRegExOnBothPasses{*this, "bIgnoreRegExOnBothPasses", false};
    clsVarBoolean bSelectTextInDiffViewer{*this, "bSelectTextInDiffViewer", false};
    clsVarBoolean bShowSubParagraphChangesSimilarly{*this, "bShowSubParagraphChangesSimilarly",
                                                    false};
    // Marks of the four kinds of difference.
    clsVarBoolean bViewChangeUnderlineOriginal{*this, "bViewChangeUnderlineOriginal", false};
    clsVarBoolean bViewChangeStrikeoutOriginal{*this, "bViewChangeStrikeoutOriginal", true};
    clsVarBoolean bViewChangeBoldOriginal{*this, "bViewChangeBoldOriginal", true};
    clsVarBoolean bViewChangeItalicOriginal{*this, "bViewChangeItalicOriginal", false};
    clsVarLong lViewChangeBackColorOriginal{*this, "lViewChangeBackColorOriginal", 0xFFFFFF};
    clsVarLong lViewChangeForeColorOriginal{*this, "lViewChangeForeColorOriginal", 0x0000FF};
    clsVarBoolean bViewChangeUnderlineModified{*this, "bViewChangeUnderlineModified", true};
    clsVarBoolean bViewChangeStrikeoutModified{*this, "bViewChangeStrikeoutModified", false};
    clsVarBoolean bViewChangeBoldModified{*this, "bViewChangeBoldModified", true};
    clsVarBoolean bViewChangeItalicModified{*this, "bViewChangeItalicModified", false};
    clsVarLong lViewChangeBackColorModified{*this, "lViewChangeBackColorModified", 0xFFFFFF};
    clsVarLong lViewChangeForeColorModified{*this, "lViewChangeForeColorModified", 0x0000FF};
    clsVarBoolean bViewDeletionUnderline{*this, "bViewDeletionUnderline", false};
    clsVarBoolean bViewDeletionStrikeout{*this, "bViewDeletionStrikeout", true};
    clsVarBoolean bViewDeletionBold{*this, "bViewDeletionBold", true};
    clsVarBoolean bViewDeletionItalic{*this, "bViewDeletionItalic", false};
    clsVarLong lViewDeletionBackColor{*this, "lViewDeletionBackColor", 0xFFFFFF};
    clsVarLong lViewDeletionForeColor{*this, "lViewDeletionForeColor", 0xFF0000};
    clsVarBoolean bViewAdditionBold{*this, "bViewAdditionBold", true};
    clsVarBoolean bViewAdditionItalic{*this, "bViewAdditionItalic", false};
    clsVarBoolean bViewAdditionUnderline{*this, "bViewAdditionUnderline", true};
    clsVarBoolean bViewAdditionStrikeout{*this, "bViewAdditionStrikeout", false};
    clsVarLong lViewAdditionBackColor{*this, "lViewAdditionBackColor", 0xFFFFFF};
    clsVarLong lViewAdditionForeColor{*this, "lViewAdditionForeColor", 0x008000};
    // Spreadsheets.
    clsVarBoolean bExcelQuickTextExtraction{*this, "bExcelQuickTextExtraction", true};
    clsVarBoolean bExcelCompareFormulas{*this, "bExcelCompareFormulas", false};
    clsVarBoolean bExcelIncludeValues{*this, "bExcelIncludeValues", false};
    clsVarString sExcelSheetNumberMaster{*this, "sExcelSheetNumberMaster", "1"};
    clsVarBoolean bExcelUseRowsMaster{*this, "bExcelUseRowsMaster", false};
    clsVarString sExcelRowsMaster{*this, "sExcelRowsMaster", "1"};
    clsVarBoolean bExcelUseColsMaster{*this, "bExcelUseColsMaster", false};
    clsVarString sExcelColsMaster{*this, "sExcelColsMaster", "1"};
    clsVarString sExcelSheetNumberSource{*this, "sExcelSheetNumberSource", "1"};
    clsVarBoolean bExcelUseRowsSource{*this, "bExcelUseRowsSource", false};
    clsVarString sExcelRowsSource{*this, "sExcelRowsSource", "1"};
    clsVarBoolean bExcelUseColsSource{*this, "bExcelUseColsSource", false};
    clsVarString sExcelColsSource{*this, "sExcelColsSource", "1"};
    clsVarBoolean bRemoveBlankLines{*this, "bRemoveBlankLines", false};
    clsVarBoolean bExcelAddNewLineBetweenSheets{*this, "bExcelAddNewLineBetweenSheets", true};
    clsVarBoolean bExcelAddSheetNameBetweenSheets{*this, "bExcelAddSheetNameBetweenSheets", true};
    clsVarLong lPadLength{*this, "lPadLength", 20};
    // Passwords.
    clsVarString sExcelPasswordOriginal{*this, "sExcelPasswordOriginal", ""};
    clsVarString sExcelPasswordModified{*this, "sExcelPasswordModified", ""};
    clsVarString sExcelPasswordOriginal_TW{*this, "sExcelPasswordOriginal_TW", ""};
    clsVarString sExcelPasswordModified_TW{*this, "sExcelPasswordModified_TW", ""};
    clsVarString sDOCPassword_TO_Original{*this, "sDOCPassword_TO_Original", ""};
    clsVarString sDOCPassword_TOTW_Original{*this, "sDOCPassword_TOTW_Original", ""};
    clsVarString sDOCPasswordTemplate_TO_Original{*this, "sDOCPasswordTemplate_TO_Original", ""};
    clsVarString sDOCPasswordTemplate_TOTW_Original{*this, "sDOCPasswordTemplate_TOTW_Original",
                                                    ""};
    clsVarString sDOCPassword_TO_Modified{*this, "sDOCPassword_TO_Modified", ""};
    clsVarString sDOCPassword_TOTW_Modified{*this, "sDOCPassword_TOTW_Modified", ""};
    clsVarString sDOCPasswordTemplate_TO_Modified{*this, "sDOCPasswordTemplate_TO_Modified", ""};
    clsVarString sDOCPasswordTemplate_TOTW_Modified{*this, "sDOCPasswordTemplate_TOTW_Modified",
                                                    ""};
    clsVarBoolean bHTMLCompareSource{*this, "bHTMLCompareSource", false};
};

/// As a fresh settings file gives them; a set that was just made has not been loaded yet.
inline clsCompareFileOptions DefaultCompareFileOptions() {
    clsCompareFileOptions options;
    IgnoreFailure(options.LoadStateFromFile(*MakeMemoryIniProfile()), "an empty file has no fault");
    return options;
}

}  // namespace zorvane
