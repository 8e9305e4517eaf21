// What a Find Text In Files viewer shows of hits, and what a person does with them.
#include <utility>

#include "common/file_utilities.h"
#include "common/platform/native_path.h"
#include "common/process_state.h"
#include "find/find_viewer.h"

namespace zorvane {
namespace {

// So long lines may keep a window waiting; most are there sooner, and nothing flickers.
constexpr std::chrono::milliseconds kPatience{30};

}  // namespace

const std::vector<ExpressionSign>& ExpressionSigns() {
    static const std::vector<ExpressionSign> signs{
        {"? - Match 0 or 1 character", "?", false},
        {"* - Match 0 or more characters", "*", false},
        {"[] - Match any 1 character included with the brackets", "[]", false},
        {"^ - Match must be at the beginning of the string", "^", true},
        {"$ - Match must be at the end of the string", "$", false},
        {"\\ - Literal character to match the character followng \\", "\\", false}};
    return signs;
}

std::string frmFindTextInFiles::ErrorText(std::int32_t lCode, const std::string& sMessage) {
    switch (static_cast<FindError>(lCode)) {
        case FindError::SearchString: {
            const std::string text = window_.Entries().cbSearchFor;
            return text.empty()
                       ? process_.Translate("Search string is empty, change 'What To Find' entry")
                       : sMessage + " " + text;
        }
        case FindError::Folder:
            return window_.Entries().cbDirectory.empty()
                       ? process_.Translate("Folder not specified. Change 'Folder' entry")
                       : sMessage;
        case FindError::FileType: {
            const std::string types = window_.Entries().cbFileExt;
            return types.empty() ? process_.Translate(
                                       "File Type not specified. Change 'File Types' entry. "
                                       "i.e. '*.DOC'")
                                 : sMessage + " " + types;
        }
    }
    return sMessage;
}

// ---- what a person does with hits ----

std::string frmFindTextInFiles::ReportsFile(const std::string& name) const {
    return process_.gsDataFolder + "\\Reports\\" + name;
}

// Each window has its own: two may read documents at a time.
std::string frmFindTextInFiles::TextFile() const {
    const std::string number = msFormName.substr(0, msFormName.find('_'));
    return ReportsFile(number.empty() || number == "1" ? "DemoTemp.TXT"
                                                       : "DemoTemp" + number + ".TXT");
}

ShownHit frmFindTextInFiles::HitAt(std::int32_t hit) const {
    ShownHit shown;
    if (OrbenX1.GetHit(hit, shown.file, shown.line, shown.column, shown.item)) {
        shown.index = hit;
        shown.place = OrbenX1.PlaceOf(hit);
    }
    return shown;
}

void frmFindTextInFiles::ShowHit(std::int32_t row) {
    const ShownHit hit = HitAt(row - 1);
    if (hit.index < 0)
        return;
    shown_ = hit;
    window_.SetCaption("FILE: " + hit.file + " LINE: " + std::to_string(hit.line) +
                       " COL: " + std::to_string(hit.column) + " ITEM: " + hit.item);
    window_.ShownHitChanged();
    BeginReading();
}

void frmFindTextInFiles::SetShowDocument(bool on) {
    settings_.bShowDocument = on;
    if (!shown_.file.empty())
        BeginReading();
}

void frmFindTextInFiles::BeginReading() {
    HitRequest request{.hit = shown_,
                       .encoding = process_.platform.locale->EncodingName(),
                       .whole = settings_.bShowDocument,
                       .known = document_,
                       .passwords = passwords_};
    if (OrbenX1.SupportOfficeDocs())
        request.text_file = TextFile();
    lines_.Begin([this, request](const auto& stop) { return ReadLines(request, stop); });
    TakeLines(kPatience);
}

// Beside the windows: a hit may lie far behind the begin of a large file.
frmFindTextInFiles::HitLines frmFindTextInFiles::ReadLines(
    const HitRequest& request, const BackgroundValue<HitLines>::Stop& stop) {
    HitLines lines;
    lines.source = request.hit.file;
    if (!request.text_file.empty()) {
        MakeDirectoryTree(std::string(ParentOf(request.text_file)));
        if (OrbenX1.ConvertOfficeDocToText(request.hit.file, request.text_file, stop))
            lines.source = request.text_file;
    }
    lines.readable = ReadContextRows(lines.source, request.hit, request.encoding, stop, lines.rows);
    // What may have been opened by a password is left nowhere.
    if (lines.source == request.text_file && !request.passwords.empty())
        DeleteFileWithRetry(*process_.platform.clock, request.text_file);
    if (!request.whole || stop())
        return lines;
    lines.document =
        LoadHitDocument(process_, request.hit.file, request.known, request.passwords, stop);
    lines.place = PlaceInDocument(lines.document->text.text, request.hit, lines.rows.marked_text);
    return lines;
}

void frmFindTextInFiles::FinishReading() {
    while (lines_.Busy())
        TakeLines(kPatience);
}

void frmFindTextInFiles::TakeLines(std::chrono::milliseconds patience) {
    std::optional<HitLines> lines = lines_.Take(patience);
    if (!lines)
        return;
    context_ = std::move(lines->rows);
    if (lines->document) {
        document_ = std::move(lines->document);
        document_place_ = lines->place;
    }
    if (!lines->readable && !settings_.bShowDocument) {
        context_ = {};
        window_.ShowInContextGrid(
            process_.Translate("File Name") + ":  " + lines->source + "\n" +
            process_.Translate("Not Found or can't open!") + "\n" +
            process_.Translate("It may be a binary file.") + "\n" +
            process_.Translate(
                "For office docs make sure to check SUPPORT OFFICE DOCS in search options"));
        return;
    }
    window_.GridChanged(FindGrid::FileWithHit);
    window_.SizeRows(FindGrid::FileWithHit);
}

void frmFindTextInFiles::PickSign(const ExpressionSign& sign) {
    FindEntries entries = window_.Entries();
    entries.cbRegularExpression = true;
    entries.cbSearchFor =
        sign.in_front ? sign.symbol + entries.cbSearchFor : entries.cbSearchFor + sign.symbol;
    window_.SetEntries(entries);
    TakeSwitches();
}

void frmFindTextInFiles::mnuReportTabDelimitedFile_Click() {
    const std::string path =
        ReplaceDateTokens(settings_.txtDefaultReportCSV, process_.platform.clock->Now());
    MakeDirectoryTree(std::string(ParentOf(path)));
    writing_.Begin(path, [this](const std::string& file, const WritingWatch& watch) {
        return OrbenX1.WriteReport(file, watch);
    });
    window_.WritingChanged();
    TakeReport(kPatience);
}

void frmFindTextInFiles::TakeReport(std::chrono::milliseconds patience) {
    if (!writing_.Busy())
        return;
    const std::optional<ReportWriting::Written> written = writing_.Take(patience);
    if (!written) {
        if (!timer_on_)
            window_.ShowStatus(FindPanel::Main, process_.Translate("Creating Report") + "... " +
                                                    std::to_string(writing_.Percent()) + " %");
        return;
    }
    if (!timer_on_)
        window_.ShowStatus(FindPanel::Main, completed_ ? "Scan Completed" : "");
    window_.WritingChanged();
    Status end = written->status;
    if (end.ok())
        end = process_.platform.shell->EditText(written->file);
    if (!end.ok())
        window_.ShowMessage(end.failure().reason);
}

void frmFindTextInFiles::FinishWriting() {
    while (writing_.Busy())
        TakeReport(kPatience);
}

// False: none was in work.
bool frmFindTextInFiles::StopWriting() {
    if (!writing_.Busy())
        return false;
    writing_.Stop();
    window_.WritingChanged();
    return true;
}

void frmFindTextInFiles::ToggleMark(std::int32_t hit) {
    if (HitAt(hit).index < 0)
        return;
    marked_.Toggle(hit);
    window_.GridChanged(FindGrid::Files);
}

void frmFindTextInFiles::OpenFileOf(const ShownHit& hit) {
    if (hit.file.empty())
        return;
    if (const Status opened = process_.platform.shell->Open(hit.file); !opened.ok())
        window_.ShowMessage(opened.failure().reason);
}

bool frmFindTextInFiles::CompareFilesOf(std::span<const std::int32_t> hits) {
    const std::optional<PerSide<std::string>> files = FilesToCompare(OrbenX1, hits, marked_);
    if (files)
        window_.CompareFiles(*files);
    return files.has_value();
}

void frmFindTextInFiles::CompareWithAnother(const ShownHit& hit) {
    if (hit.file.empty())
        return;
    const std::string other = window_.PickFile(process_.Translate("Compare With"), hit.file);
    if (!other.empty())
        window_.CompareFiles({hit.file, other});
}

void frmFindTextInFiles::ChooseReportFile() {
    const std::string file = window_.PickReportFile(
        process_.Translate("Pick Find Text Report File"), settings_.txtDefaultReportCSV);
    if (!file.empty())
        settings_.txtDefaultReportCSV = file;
}

void frmFindTextInFiles::ChooseFolder() {
    FindEntries entries = window_.Entries();
    const std::string folder = window_.BrowseForFolder(entries.cbDirectory);
    if (folder.empty())
        return;
    entries.cbDirectory = folder;
    window_.SetEntries(entries);
}

}  // namespace zorvane
