#include "find/find_viewer.h"

#include <algorithm>
#include <utility>

#include "common/base/text_encoding.h"
#include "common/file_utilities.h"
#include "common/platform/native_path.h"
#include "common/process_state.h"

namespace zorvane {
namespace {

constexpr double kHidden = 1.0;
constexpr std::int32_t kHitsOfTick = 100;
constexpr std::int32_t kTicksBetweenTimes = 15;
constexpr std::int64_t kMillisecondsOfSecond = 1000;

std::vector<std::string> NewestFirst(const std::vector<std::string>& collection) {
    return {collection.rbegin(), collection.rend()};
}

std::string FirstOf(const std::vector<std::string>& items) {
    return items.empty() ? std::string() : items.front();
}

}  // namespace

frmFindTextInFiles::frmFindTextInFiles(ProcessState& process, FindTextWindow& window)
    : process_(process),
      window_(window),
      settings_(DefaultFindSettings(process.gsDataFolder)),
      documents_(process) {
    OrbenX1.SetDocuments(&documents_);
    OrbenX1.SetEvents(this);
    OrbenX1.SetTranslation(
        [this](std::string_view english) { return process_.Translate(english); });
}

frmFindTextInFiles::~frmFindTextInFiles() {
    OrbenX1.Release();
}

// ---- life ----

void frmFindTextInFiles::Setup(const std::string& sName, bool bFlag) {
    msFormName = sName;
    if (bFlag)
        ReadIniFile();
    UpdateGUI();
    window_.SettingsChanged();
    window_.Form_Resize();
}

void frmFindTextInFiles::ReadIniFile() {
    IniProfile& file = *process_.settings;
    ReadFindSettings(file, msFormName, settings_);
    mdDividerPrimaryRatioLast = settings_.dDividerPrimaryRatioLast;
    mdDividerSecondaryRatio = settings_.dDividerSecondaryRatio;
    ReadIniFileIntoCollection(file, kSearchForHistory, mcolSearchFor);
    ReadIniFileIntoCollection(file, kFileExtHistory, mcolFileExt);
    ReadIniFileIntoCollection(file, kSearchPathHistory, mcolSearchPath);
}

void frmFindTextInFiles::SaveIniFile() {
    if (msFormName.empty())
        return;
    settings_.dDividerPrimaryRatioLast =
        mdDividerPrimaryRatio == kHidden ? mdDividerPrimaryRatioLast : mdDividerPrimaryRatio;
    settings_.dDividerSecondaryRatio = mdDividerSecondaryRatio;
    SaveFindSettings(*process_.settings, msFormName, settings_);
    IgnoreFailure(process_.settings->Flush(), "a viewer that closes has nobody to tell");
}

void frmFindTextInFiles::Close() {
    window_.CloseDialogs();
    lines_.Drop();
    writing_.Stop();
    OrbenX1.Release();
    SaveIniFile();
}

void frmFindTextInFiles::UpdateGUI() {
    const FindHistories histories{NewestFirst(mcolSearchFor), NewestFirst(mcolFileExt),
                                  NewestFirst(mcolSearchPath)};
    window_.SetHistories(histories);
    FindEntries entries;
    entries.cbSearchFor = FirstOf(histories.cbSearchFor);
    entries.cbFileExt = FirstOf(histories.cbFileExt);
    entries.cbDirectory = FirstOf(histories.cbDirectory);
    entries.cbSupportOfficeDocs = OrbenX1.SupportOfficeDocs();
    entries.cbCaseSensitive = OrbenX1.CaseSensitive();
    entries.cbLookInSubfolders = OrbenX1.LookInSubfolders();
    entries.cbWholeWordOnly = OrbenX1.WholeWordOnly();
    entries.cbRegularExpression = OrbenX1.RegularExpression();
    window_.SetEntries(entries);
}

// ---- a search ----

void frmFindTextInFiles::AddToHistory(std::vector<std::string>& list, const char* section,
                                      const std::string& item) {
    AddUniqueItemToCollection(list, item);
    if (process_.bHistoryOff)
        return;
    WriteCollectionToIniFile(*process_.settings, section, list);
    IgnoreFailure(process_.settings->Flush(), "a history that is not kept stops no search");
}

void frmFindTextInFiles::UpdateEngineFromGUI() {
    FindEntries entries = window_.Entries();
    OrbenX1.putSearchFolder(entries.cbDirectory);
    folder_ = entries.cbDirectory;
    AddToHistory(mcolSearchPath, kSearchPathHistory, entries.cbDirectory);
    if (Trim(entries.cbFileExt).empty()) {
        entries.cbFileExt = "*.*";
        window_.SetEntries(entries);
    }
    OrbenX1.putFileTypes(entries.cbFileExt);
    AddToHistory(mcolFileExt, kFileExtHistory, entries.cbFileExt);
    OrbenX1.putSearchString(entries.cbSearchFor);
    searched_for_ = entries.cbSearchFor;
    AddToHistory(mcolSearchFor, kSearchForHistory, entries.cbSearchFor);
    window_.SetHistories(
        {NewestFirst(mcolSearchFor), NewestFirst(mcolFileExt), NewestFirst(mcolSearchPath)});
    TakeSwitches();
    BeginSearch();
}

void frmFindTextInFiles::TakeSwitches() {
    const FindEntries entries = window_.Entries();
    OrbenX1.putSupportOfficeDocs(entries.cbSupportOfficeDocs);
    OrbenX1.putCaseSensitive(entries.cbCaseSensitive);
    OrbenX1.putLookInSubfolders(entries.cbLookInSubfolders);
    OrbenX1.putWholeWordOnly(entries.cbWholeWordOnly);
    OrbenX1.putRegularExpression(entries.cbRegularExpression);
}

void frmFindTextInFiles::BeginSearch() {
    StopWriting();
    // What an earlier search still tells belongs to nobody.
    OrbenX1.Release();
    {
        const std::lock_guard lock(guard_);
        events_.clear();
    }
    mlStartTick = process_.platform.clock->TickMilliseconds();
    aborted_ = false;
    completed_ = false;
    ClearResultGrids();
    window_.ShowStatus(FindPanel::Time, "...");
    OrbenX1.StartSearch();
    TakeEvents();
}

void frmFindTextInFiles::UsePassword(const std::string& password) {
    OrbenX1.Release();
    lines_.Drop();
    passwords_.push_back(password);
    OrbenX1.UsePasswords(passwords_);
    BeginSearch();
}

void frmFindTextInFiles::ClearResultGrids() {
    if (mdDividerPrimaryRatio != kHidden)
        mdDividerPrimaryRatioLast = mdDividerPrimaryRatio;
    mdDividerPrimaryRatio = kHidden;
    mlNextHit = 0;
    hits_.SetCount(0);
    marked_.Clear();
    shown_.index = -1;
    errors_.clear();
    protected_ = 0;
    window_.GridChanged(FindGrid::Files);
    window_.GridChanged(FindGrid::ErrorMessages);
    window_.SettingsChanged();
    window_.Form_Resize();
}

void frmFindTextInFiles::Abort() {
    if (StopWriting())
        window_.ShowStatus(FindPanel::Main, process_.Translate("The report was not written"));
    if (!abort_enabled_)
        return;
    OrbenX1.AbortSearch();
    aborted_ = true;
    window_.SetHourglass(false);
    abort_enabled_ = false;
    window_.EnableAbort(false);
    window_.ShowStatus(FindPanel::Main, process_.Translate("Scan Aborted"));
    ShowElapsed(Elapsed());
    timer_on_ = false;
    if (mdDividerPrimaryRatio != kHidden)
        window_.SizeRows(FindGrid::ErrorMessages);
    window_.SizeRows(FindGrid::Files);
}

bool frmFindTextInFiles::Poll() {
    TakeLines({});
    TakeReport({});
    // Asked first: what was found before the end is then all there.
    const bool searching = OrbenX1.IsSearching();
    if (aborted_ && !searching) {
        // What was found until then is shown too.
        aborted_ = false;
        WriteHitsToMSFlexGrid(0);
    }
    if (timer_on_) {
        window_.ShowStatus(
            FindPanel::Main,
            ticker_.sProgressTicker(process_.Translate("Search In Progress. Press ESC to abort.")));
        if (!searching) {
            TakeEvents();
            EndSearch();
            return true;
        }
        if (!settings_.cbDontStreamResults)
            WriteHitsToMSFlexGrid(kHitsOfTick);
        if (mlTickCount > kTicksBetweenTimes) {
            mlTickCount = 0;
            ShowElapsed(Elapsed());
        }
        ++mlTickCount;
    }
    TakeEvents();
    return false;
}

// The last tick of the timer.
void frmFindTextInFiles::EndSearch() {
    timer_on_ = false;
    WriteHitsToMSFlexGrid(0);
    const std::int64_t elapsed = Elapsed();
    mlStartTick = static_cast<std::uint32_t>(elapsed);
    ShowElapsed(elapsed);
    Finished();
}

// Kept: it happens at the engine's word and at the timer's last tick, so that a search may end with
// two beeps.
void frmFindTextInFiles::Finished() {
    abort_enabled_ = false;
    completed_ = true;
    window_.EnableAbort(false);
    window_.SetHourglass(false);
    window_.ShowStatus(FindPanel::Main, "Scan Completed");
    if (settings_.cbBeepWhenDone)
        process_.platform.sound->Beep();
    if (mdDividerPrimaryRatio != kHidden)
        window_.SizeRows(FindGrid::ErrorMessages);
    window_.SizeRows(FindGrid::Files);
}

std::int64_t frmFindTextInFiles::Elapsed() {
    return process_.platform.clock->TickMilliseconds() - mlStartTick;
}

void frmFindTextInFiles::ShowElapsed(std::int64_t milliseconds) {
    window_.ShowStatus(FindPanel::Time,
                       sTimeSpan(milliseconds / kMillisecondsOfSecond, TimeSpanStyle::Colons));
}

void frmFindTextInFiles::WriteHitsToMSFlexGrid(std::int32_t lMaxHits) {
    const std::int32_t count = OrbenX1.HitCount();
    const std::int32_t most = lMaxHits < 1 ? count - mlNextHit : lMaxHits;
    const std::int32_t next = mlNextHit + std::min(most, count - mlNextHit);
    if (next > mlNextHit) {
        mlNextHit = next;
        hits_.SetCount(next);
        window_.GridChanged(FindGrid::Files);
    }
    window_.ShowStatus(FindPanel::Hits, std::to_string(mlNextHit));
}

// ---- what the engine says ----

void frmFindTextInFiles::Queue(EngineEvent event) {
    const std::lock_guard lock(guard_);
    events_.push_back(std::move(event));
}

void frmFindTextInFiles::OnSearchStarted() {
    Queue({EngineEvent::Kind::Started, 0, ""});
}

void frmFindTextInFiles::OnSearchCompleted() {
    Queue({EngineEvent::Kind::Completed, 0, ""});
}

void frmFindTextInFiles::OnSearchError(std::int32_t lCode, const std::string& sMessage) {
    Queue({EngineEvent::Kind::Error, lCode, sMessage});
}

void frmFindTextInFiles::TakeEvents() {
    std::vector<EngineEvent> events;
    {
        const std::lock_guard lock(guard_);
        events.swap(events_);
    }
    for (const EngineEvent& event : events) {
        switch (event.kind) {
            case EngineEvent::Kind::Started:
                SearchStarted();
                break;
            case EngineEvent::Kind::Completed:
                SearchCompleted();
                break;
            case EngineEvent::Kind::Error:
                SearchError(event.code, event.message);
                break;
        }
    }
}

void frmFindTextInFiles::SearchStarted() {
    abort_enabled_ = true;
    window_.EnableAbort(true);
    timer_on_ = true;
    mlTickCount = 0;
    window_.ShowStatus(FindPanel::Hits, "0");
    window_.ShowStatus(FindPanel::Main, process_.Translate("Search In Process..."));
    window_.SetHourglass(true);
}

// After an abort the words of the abort stay.
void frmFindTextInFiles::SearchCompleted() {
    if (timer_on_)
        Finished();
}

void frmFindTextInFiles::SearchError(std::int32_t lCode, const std::string& sMessage) {
    if (mdDividerPrimaryRatio == kHidden) {
        mdDividerPrimaryRatio = mdDividerPrimaryRatioLast;
        window_.Form_Resize();
    }
    if (lCode == static_cast<std::int32_t>(FindError::SearchString) ||
        lCode == static_cast<std::int32_t>(FindError::Folder) ||
        lCode == static_cast<std::int32_t>(FindError::FileType)) {
        Abort();
        window_.FocusEntry(static_cast<FindError>(lCode));
    }
    protected_ += lCode == kWantsPassword ? 1 : 0;
    errors_.push_back(process_.Translate("Error") + ": " + ErrorText(lCode, sMessage));
    window_.GridChanged(FindGrid::ErrorMessages);
}

}  // namespace zorvane
