#include "app/load_options.h"

#include <CLI/CLI.hpp>
#include <optional>

#include "common/base/parse_number.h"
#include "load/csv_operations.h"
#include "options/compare_file_options.h"
#include "options/compare_files_settings.h"

namespace zorvane {
namespace {

struct NumberPair {
    std::int32_t first = 1;
    std::int32_t last = 1;
};

std::optional<std::int32_t> WholeNumber(std::string_view text) {
    const auto number = ParseNumber<std::int32_t>(text);
    return number && *number >= 1 ? number : std::nullopt;
}

// "3" or "2-5".
std::optional<NumberPair> PairOf(std::string_view text) {
    const std::size_t dash = text.find('-');
    const auto first = WholeNumber(text.substr(0, dash));
    const auto last = dash == std::string_view::npos ? first : WholeNumber(text.substr(dash + 1));
    if (!first || !last)
        return std::nullopt;
    return NumberPair{*first, *last};
}

void ApplyPasswords(const LoadOptions& from, clsCompareFileOptions& options,
                    CompareFilesSettings& settings) {
    const std::string& original =
        from.original_password.empty() ? from.password : from.original_password;
    const std::string& modified =
        from.modified_password.empty() ? from.password : from.modified_password;
    const auto set = [](const std::string& password, clsVarString& option) {
        if (!password.empty())
            option.SetData(password);
    };
    set(original, options.sDOCPassword_TO_Original);
    set(modified, options.sDOCPassword_TO_Modified);
    set(original, options.sExcelPasswordOriginal);
    set(modified, options.sExcelPasswordModified);
    // A PDF is tried with the one and then the other, whichever side it is on.
    if (!original.empty())
        settings.sBCLPasswordUser = original;
    if (!modified.empty())
        (original.empty() ? settings.sBCLPasswordUser : settings.sBCLPasswordOwner) = modified;
}

void ApplySheets(const LoadOptions& from, clsCompareFileOptions& options) {
    if (!from.sheets.empty()) {
        options.sExcelSheetNumberMaster.SetData(from.sheets);
        options.sExcelSheetNumberSource.SetData(from.sheets);
    }
    if (!from.rows.empty()) {
        options.bExcelUseRowsMaster.SetData(true);
        options.bExcelUseRowsSource.SetData(true);
        options.sExcelRowsMaster.SetData(from.rows);
        options.sExcelRowsSource.SetData(from.rows);
    }
    if (!from.columns.empty()) {
        options.bExcelUseColsMaster.SetData(true);
        options.bExcelUseColsSource.SetData(true);
        options.sExcelColsMaster.SetData(from.columns);
        options.sExcelColsSource.SetData(from.columns);
    }
}

Status ApplyRanges(const LoadOptions& from, CompareFilesSettings& settings) {
    if (!from.pages.empty()) {
        const auto pages = PairOf(from.pages);
        if (!pages)
            return Failure{"--pages " + from.pages + ": write a page or a range, such as 2-5"};
        settings.bBCLUsingPageRange = true;
        settings.lBCLPageFrom = settings.lBCLPageFromModified = pages->first;
        settings.lBCLPageTo = settings.lBCLPageToModified = pages->last;
    }
    if (!from.slides.empty()) {
        const auto slides = PairOf(from.slides);
        if (!slides)
            return Failure{"--slides " + from.slides + ": write a slide or a range, such as 2-5"};
        settings.bConvertAllSlides = false;
        settings.lFromSlideOriginal = settings.lFromSlideModified = slides->first;
        settings.lToSlideOriginal = settings.lToSlideModified = slides->last;
    }
    return Status::Ok();
}

// A list without a number would keep all rows, and what it was meant to leave out would be
// compared.
Status CheckLists(const clsCompareFileOptions& options) {
    struct ListRow {
        const clsVarBoolean& used;
        const clsVarString& list;
        const char* option;
        const char* example;
    };
    const ListRow rows[] = {
        {options.bExcelUseRowsMaster, options.sExcelRowsMaster, "--rows", "1,12,30-50"},
        {options.bExcelUseRowsSource, options.sExcelRowsSource, "--rows", "1,12,30-50"},
        {options.bExcelUseColsMaster, options.sExcelColsMaster, "--columns", "1-3,7"},
        {options.bExcelUseColsSource, options.sExcelColsSource, "--columns", "1-3,7"},
    };
    for (const ListRow& row : rows) {
        if (row.used.Data() && !IsNumberList(row.list.Data()))
            return Failure{std::string(row.option) + " " + row.list.Data() +
                           ": write numbers and ranges, such as " + row.example};
    }
    return Status::Ok();
}

}  // namespace

void AddLoadOptions(CLI::App& app, LoadOptions& options, std::vector<std::string>& sets) {
    const std::string group = "Loading";
    const auto text = [&](const char* name, std::string& value, const char* help) {
        return app.add_option(name, value, help)->type_name("TEXT")->group(group);
    };
    app.add_flag("--plain", options.plain, "Compare and show plain text, without formatting")
        ->group(group);
    app.add_flag("--remove-blank-lines", options.remove_blank_lines,
                 "Remove empty paragraphs while loading")
        ->group(group);
    text("--password", options.password,
         "Password to open either document; other users may see it in the list of processes");
    text("--original-password", options.original_password, "Password to open the first version");
    text("--modified-password", options.modified_password, "Password to open the second version");
    text("--password-file", options.password_file,
         "Read the password from the first line of this file; a second line is that of the second "
         "version. $ZORVANE_PASSWORD works too")
        ->type_name("FILE");
    app.add_flag("--ask-password", options.ask_password, "Ask for the password on the terminal")
        ->group(group);
    text("--sheets", options.sheets,
         "Sheets of a workbook: numbers, ranges and names, such as 1-2,Costs; * is all (1)")
        ->type_name("LIST");
    text("--rows", options.rows, "Rows of a sheet, such as 1,12,30-50")->type_name("LIST");
    text("--columns", options.columns, "Columns of a sheet, such as 1-3,7")->type_name("LIST");
    app.add_flag("--formulas", options.formulas, "Formulas of a sheet in place of their values")
        ->group(group);
    app.add_flag("--source", options.source, "Web pages, XML and Markdown as source text")
        ->group(group);
    text("--pages", options.pages, "Pages of a PDF, such as 2-5")->type_name("RANGE");
    app.add_flag("--pdf-quick", options.pdf_quick, "Plain text of a PDF, faster")->group(group);
    text("--slides", options.slides, "Slides of a deck, such as 2-5")->type_name("RANGE");
    app.add_flag("--notes", options.notes, "Notes of slides too (with --plain)")->group(group);
    app.add_option("--set", sets, "Set any option by its name, such as lPadLength=30")
        ->type_name("NAME=VALUE")
        ->allow_extra_args(false)
        ->group(group);
    app.add_option("--settings", options.settings_file,
                   "Start from the options in this settings file; it is only read")
        ->type_name("FILE")
        ->group(group);
    app.add_flag("--no-sandbox", options.no_sandbox,
                 "Read documents even where the system offers no sandbox for it")
        ->group(group);
    app.add_option("--log", options.log_file, "Append messages to this file")
        ->type_name("FILE")
        ->group(group);
}

Status TakeSets(const std::vector<std::string>& sets, LoadOptions& options) {
    for (const std::string& set : sets) {
        const std::size_t equals = set.find('=');
        if (equals == std::string::npos || equals == 0)
            return Failure{"--set " + set + ": write NAME=VALUE"};
        options.settings.emplace_back(set.substr(0, equals), set.substr(equals + 1));
    }
    return Status::Ok();
}

Status ApplyLoadOptions(const LoadOptions& from, SetBy command, clsCompareFileOptions& options,
                        CompareFilesSettings& settings) {
    TurnOn(from.plain, options.bRemoveFormatting);
    TurnOn(from.remove_blank_lines, options.bRemoveBlankLines);
    TurnOn(from.formulas, options.bExcelCompareFormulas);
    TurnOn(from.source, options.bHTMLCompareSource);
    settings.bDoQuickTextExtraction = settings.bDoQuickTextExtraction || from.pdf_quick;
    settings.bIncludeNotes = settings.bIncludeNotes || from.notes;
    ApplyPasswords(from, options, settings);
    ApplySheets(from, options);
    if (Status ranges = ApplyRanges(from, settings); !ranges.ok())
        return ranges;
    if (Status set = ApplySets(from.settings, command, options, settings); !set.ok())
        return set;
    // A settings file may say otherwise for windows; nothing loaded would compare as equal.
    options.bReloadOnRefresh.SetData(true);
    return CheckLists(options);
}

}  // namespace zorvane
