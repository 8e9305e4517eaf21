// The Find Text In Files viewer: owns the engine, the settings and the histories of one search and
// makes all its decisions. Everything here belongs to the viewer's thread.
#pragma once

#include <chrono>
#include <cstdint>
#include <mutex>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "common/base/background_value.h"
#include "common/string_utilities.h"
#include "compare/viewer.h"
#include "find/engine/orben_x.h"
#include "find/find_rows.h"
#include "find/find_window.h"
#include "find/hit_choice.h"
#include "find/hit_document.h"
#include "find/loaded_documents.h"
#include "options/find_settings.h"

namespace zorvane {

struct ProcessState;

/// What a sign of simple regular expressions does to the entry "What To Find".
struct ExpressionSign {
    const char* words = "";  ///< a row of the picker, in English
    const char* symbol = "";
    bool in_front = false;  ///< put at the front, else added at the end
};
/// In the order of the picker.
const std::vector<ExpressionSign>& ExpressionSigns();

class frmFindTextInFiles : public Viewer, private OrbenXEvents {
  public:
    /// Both are borrowed and outlive the viewer.
    frmFindTextInFiles(ProcessState& process, FindTextWindow& window);
    ~frmFindTextInFiles() override;

    // ---- life ----
    ViewerKind Kind() const override { return ViewerKind::FindText; }
    void Setup(const std::string& sName, bool bFlag) override;
    void ReadIniFile() override;
    /// The settings; histories are written when a search begins.
    void SaveIniFile() override;
    const std::string& Description() const override { return msFormName; }
    std::vector<std::string> FileNames() const override { return {folder_}; }
    void Activate() override { window_.Activate(); }
    bool MayClose() override { return true; }
    void Close() override;

    // ---- a search ----
    void Refresh_View() { BeginSearch(); }
    /// Takes the window's entries over and begins.
    void UpdateEngineFromGUI();
    void BeginSearch();
    bool Busy() const override { return OrbenX1.IsSearching(); }
    /// Without a search nothing happens.
    void Abort() override;
    /// A tick of the timer, about every 25 ms. True when the search has ended.
    bool Poll() override;
    /// In the last search; empty before the first.
    const std::string& SearchedFor() const { return searched_for_; }
    /// A click on one of the five boxes.
    void TakeSwitches();

    // ---- what is shown ----
    const HitRows& fgFiles() const { return hits_; }
    const std::vector<std::string>& fgErrorMessages() const { return errors_; }
    const ContextRows& fgFileWithHit() const { return context_; }
    /// A double click; `row` counts the header row as 0. Lines that are not there at once come with
    /// a later `Poll`.
    void ShowHit(std::int32_t row);
    /// The hit whose lines are shown, or are being read.
    const ShownHit& Shown() const { return shown_; }
    bool ReadsLines() const { return lines_.Busy(); }
    /// The whole document of the hit in place of the lines around it. Kept for the next hits.
    void SetShowDocument(bool on);
    /// Null, until it has been read; its text may be missing.
    const HitDocument* Document() const { return document_.get(); }
    /// The hit in it; a length of -1: nobody knows.
    TextRange PlaceInShownDocument() const { return document_place_; }
    /// Waits for them.
    void FinishReading();
    /// The entry "What To Find" with a sign of the picker in it; ticks the box.
    void PickSign(const ExpressionSign& sign);
    /// Written beside the window, then opened in a text editor.
    void mnuReportTabDelimitedFile_Click();
    bool WritesReport() const { return writing_.Busy(); }
    /// Waits for it.
    void FinishWriting();
    /// `cmdSelectFolder`.
    void ChooseFolder();
    /// `cmdSelectReportFolderDefaultCSV`.
    void ChooseReportFile();
    bool CanAbort() const { return abort_enabled_ || WritesReport(); }
    /// The last search came to its end by itself.
    bool Completed() const { return completed_; }
    /// Documents of the last search that only a password opens.
    std::int32_t ProtectedDocuments() const { return protected_; }
    /// Tried on such documents from now on, until the viewer goes; the search begins anew.
    void UsePassword(const std::string& password);
    /// For the documents that are still closed nobody has given the right one.
    bool GavePassword() const { return !passwords_.empty(); }

    // ---- what is done with files of hits; hits count from 0 ----
    void ToggleMark(std::int32_t hit);
    const MarkedHits& Marked() const { return marked_; }
    /// In the program of its type.
    void OpenFileOf(const ShownHit& hit);
    /// See `FilesToCompare`; false: there are no two files, and nothing happens.
    bool CompareFilesOf(std::span<const std::int32_t> hits);
    /// With a file that the person chooses.
    void CompareWithAnother(const ShownHit& hit);
    ShownHit HitAt(std::int32_t hit) const;

    // ---- settings and layout ----
    FindSettings& Settings() { return settings_; }
    /// 1.0: the grid of errors is hidden.
    double mdDividerPrimaryRatio = 1.0;
    double mdDividerPrimaryRatioLast = 0.85;
    double mdDividerSecondaryRatio = 0.5;
    /// Whoever reads documents in place of the user's cache and readers: for tests.
    void SetDocuments(DocumentTexts* documents) { OrbenX1.SetDocuments(documents); }
    const OrbenX& Engine() const { return OrbenX1; }

  private:
    struct EngineEvent {
        enum class Kind { Started, Completed, Error } kind = Kind::Started;
        std::int32_t code = 0;
        std::string message;
    };

    void OnSearchStarted() override;
    void OnSearchCompleted() override;
    void OnSearchError(std::int32_t lCode, const std::string& sMessage) override;
    void Queue(EngineEvent event);
    void TakeEvents();
    void SearchStarted();
    void SearchCompleted();
    void SearchError(std::int32_t lCode, const std::string& sMessage);
    std::string ErrorText(std::int32_t lCode, const std::string& sMessage);

    void UpdateGUI();
    void AddToHistory(std::vector<std::string>& list, const char* section, const std::string& item);
    void ClearResultGrids();
    void WriteHitsToMSFlexGrid(std::int32_t lMaxHits);
    void EndSearch();
    void Finished();
    void ShowElapsed(std::int64_t milliseconds);
    std::int64_t Elapsed();
    std::string ReportsFile(const std::string& name) const;
    std::string TextFile() const;
    struct HitLines {
        std::string source;  ///< the file that they were read from
        bool readable = false;
        ContextRows rows;
        std::shared_ptr<const HitDocument> document;
        TextRange place{CharPos{0}, -1};
    };
    struct HitRequest {
        ShownHit hit;
        std::string
            text_file{};  ///< where a document's text is written; empty: it is read as it is
        std::string encoding;
        bool whole = false;  ///< its document too
        std::shared_ptr<const HitDocument> known;
        std::vector<std::string> passwords{};
    };
    HitLines ReadLines(const HitRequest& request, const BackgroundValue<HitLines>::Stop& stop);
    void BeginReading();
    void TakeLines(std::chrono::milliseconds patience);
    void TakeReport(std::chrono::milliseconds patience);
    bool StopWriting();

    ProcessState& process_;
    FindTextWindow& window_;
    std::string msFormName;
    std::vector<std::string> mcolSearchFor;
    std::vector<std::string> mcolFileExt;
    std::vector<std::string> mcolSearchPath;
    FindSettings settings_;
    std::string folder_;  // of the last search, for captions
    std::string searched_for_;
    std::int32_t mlNextHit = 0;
    std::uint32_t mlStartTick = 0;
    std::int32_t mlTickCount = 0;
    bool timer_on_ = false;
    bool abort_enabled_ = false;
    bool completed_ = false;
    bool aborted_ = false;  ///< and hits of it may still be missing in the grid
    ProgressTicker ticker_;

    std::mutex guard_;  ///< over the list below
    std::vector<EngineEvent> events_;

    std::vector<std::string> errors_;
    std::int32_t protected_ = 0;
    std::vector<std::string> passwords_;  ///< never stored
    ContextRows context_;
    LoadedDocuments documents_;
    OrbenX OrbenX1;  ///< its threads use what stands above
    HitRows hits_{OrbenX1};
    MarkedHits marked_;
    ShownHit shown_;
    std::shared_ptr<const HitDocument> document_;
    TextRange document_place_{CharPos{0}, -1};
    // The last members: they use what stands above.
    BackgroundValue<HitLines> lines_;
    ReportWriting writing_;
};

}  // namespace zorvane
