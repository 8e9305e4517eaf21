// The line comparison engine: two line files in, numbered difference records out.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "common/base/number.h"
#include "common/base/result.h"
#include "compare/engine/compare_texts.h"
#include "compare/engine/difference_record.h"
#include "compare/engine/document_look.h"
#include "compare/engine/engine_report.h"
#include "compare/engine/folder_record.h"

namespace zorvane {

class FolderScan;
struct FolderScanOptions;

/// One engine. Set the two files and the switches, call `Compare`, read the records; they stay
/// until the next compare on the same object. A line ends at each CR LF pair and only there; a last
/// line without an end counts, and the end of the file after a final line end begins no line.
class VestrelX {
  public:
    VestrelX();
    ~VestrelX();
    VestrelX(VestrelX&&) noexcept;
    VestrelX& operator=(VestrelX&&) noexcept;

    void putMasterFile(const std::string& path);
    void putSourceFile(const std::string& path);
    void putIgnoreCase(bool on);
    void putIgnoreWhitespace(bool on);
    void putIgnoreEmptyLines(bool on);
    void putReservedSwitch(bool on);  ///< no effect
    void putCompareFaster(bool on);
    void putLargerSections(bool on);
    void putUseLineBracket(bool on);
    void putLineBracket(std::int32_t lines);
    /// One or more regular expressions separated by "@@"; what one matches is left out of a line's
    /// comparison. A "*" is any run of characters. A bad expression fails at `Compare`.
    void putFilterExpression(const std::string& expressions);
    void putFilterEnabled(bool on);
    void putCompareMode(std::int32_t mode);  ///< always 0

    /// Compares the two files, which are read anew. On a failure (a file that cannot be read, a bad
    /// expression, by name) there are no records.
    Status Compare();
    /// The same on line-file text in memory, byte for byte what the files would hold. The text is
    /// borrowed until the next compare.
    Status CompareText(std::string_view master, std::string_view source);
    /// The same on the texts of two editors, without files; words, letters and moves are found too.
    /// Fails with `kCompareStopped` when the watcher stopped it; nullptr: nobody watches.
    Status CompareEditors(PerSide<std::shared_ptr<const std::u16string>> texts,
                          RunWatcher* watcher);
    /// Takes a result over, as if it had been compared here.
    void Show(Comparison comparison);
    /// Everything of the last compare: what every view and report reads.
    const Comparison& Compared() const;
    /// Adds to the last compare what it did not look at itself.
    void putBeside(std::vector<BesideNote> notes, const std::string& sentence);
    void putSameFiles(bool same);
    /// All switches at once.
    void SetOptions(const CompareOptions& options);

    /// Number of records of the last compare; 0 before the first.
    std::int32_t getDifferenceCount() const;
    /// Nothing when there is no such record. Constant time.
    std::optional<DifferenceRecord> GetDifference(RecordIndex index) const;
    const std::vector<DifferenceRecord>& Records() const;

    // Reports of the last compare; titles, look and locale are kept until set again.
    void putMasterTitle(const std::string& title);
    void putSourceTitle(const std::string& title);
    /// When the two files were written, for people; empty: not known.
    void putFileDates(PerSide<std::string> dates);
    /// How the two documents look that `CompareEditors` compared.
    void putDocumentLooks(PerSide<DocumentLook> looks);
    void putReportTitle(const std::string& title);  ///< empty: no title
    void putHighDetailSummary(bool on);
    void putDoubleByteLocale(bool on);
    void putReportLook(const ReportLook& look);
    /// Who may read the reports from here on, see `ReplaceFile`.
    void putReportMode(std::uint32_t mode);
    void putUnchangedText(UnchangedText unchanged);
    /// Writes one report whole to a new file and renames it. `flags`: 1 all in one, else side by
    /// side.
    /// A report that the watcher stopped leaves no file.
    ReportResult CreateEngineReport(const std::string& file, ReportType type, std::int32_t flags,
                                    RunWatcher* watcher = nullptr);
    /// Why a compare of the two files gave nothing: one of them cannot be read (then
    /// `getReportStatus` says more), or there is another reason, which the compare told.
    ReportResult WhyNotCompared();
    /// What the system said when the last report could not be written: the file and the reason.
    const Status& getReportStatus() const;

    /// Checks expressions as `putFilterExpression` takes them, without a compare.
    static Status CheckFilterExpression(const std::string& expressions);

    // Two folders in place of two files. Nothing of this touches a compare of files.
    void putMasterFolder(const std::string& folder);
    void putSourceFolder(const std::string& folder);
    void putFileTypes(const std::string& patterns);  ///< as `FilePatterns` takes them
    void putContentCompare(bool on);                 ///< bytes, not only size and date
    void putShowOnlyInMaster(bool on);
    void putShowOnlyInSource(bool on);
    void putShowSameInBoth(bool on);
    void putShowDifferentInBoth(bool on);
    void putIgnoreDateDifferences(bool on);
    void putSubfolders(bool on);
    /// What the fixed names do not tell of: hidden files, links, threads. The names above are
    /// fields of it.
    FolderScanOptions& FolderOptions();
    /// Outlives the runs; nullptr: nobody is told.
    void putFolderEvents(FolderCompareEvents* events);
    /// Begins and comes back at once.
    void StartFolderCompare();
    bool getBusy() const;
    /// Finished so far; they never change.
    std::int32_t getRecordCount() const;
    /// Nothing when there is no such record. Takes no lock; any thread may ask during a run.
    std::optional<FolderRecord> GetFolderRecord(std::int32_t index) const;
    /// Comes back at once; the run ends within a tenth of a second. What is published stays.
    void AbortCompare();
    /// Waits for the end of an aborted run.
    void ReleaseEngine();
    /// The records in their small form, with more than the fixed names tell.
    FolderScan& Folders();
    const FolderScan& Folders() const;

  private:
    struct State;
    struct FolderState;
    std::unique_ptr<State> state_;
    std::unique_ptr<FolderState> folders_;
};

}  // namespace zorvane
