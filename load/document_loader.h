// The road from a file name to text in an editor of the viewer.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "common/base/run_watcher.h"
#include "common/base/side.h"
#include "compare/document/beside.h"
#include "compare/document/format_compare.h"
#include "compare/document/rtb_document.h"
#include "load/conversion_service.h"
#include "load/file_kind.h"
#include "load/load_context.h"
#include "load/text_stream.h"
#include "load/word_conversion.h"
#include "options/compare_file_options.h"
#include "options/compare_files_settings.h"
#include "options/recent_items.h"

namespace zorvane {

struct ProcessState;
class RunTelling;

/// What a load asks of the user. A command-line run never asks.
class LoadQuestions {
  public:
    virtual ~LoadQuestions() = default;
    virtual bool AskYesNo(const std::string& text, const std::string& title) = 0;
    virtual void ShowMessage(const std::string& text, const std::string& title) = 0;
    /// A file that the user picks for that side; empty when the dialog is cancelled.
    virtual std::string BrowseFor(Side side) = 0;
    virtual void PumpEvents() = 0;
    /// Calls nest: a load inside a run leaves the run's pointer as it is.
    virtual void SetHourglass(bool on) = 0;
    /// A notice with one way on; true when it is never to be shown again.
    virtual bool ShowNotice(const std::string& text, const std::string& title) = 0;
};

enum class EditorTarget : std::int32_t {
    AllInOneDiff = 1,
    OriginalDiffFinal = 2,
    ModifiedDiffFinal = 3,
    Original = 4,
    Modified = 5
};
/// Whether it shows a document as it was loaded, and not a result.
constexpr bool IsSide(EditorTarget target) {
    return target == EditorTarget::Original || target == EditorTarget::Modified;
}
/// Of one that `IsSide`.
constexpr Side SideOf(EditorTarget target) {
    return target == EditorTarget::Original ? Side::Original : Side::Modified;
}

/// The editor that shows a side's document.
constexpr EditorTarget TargetOf(Side side) {
    return side == Side::Original ? EditorTarget::Original : EditorTarget::Modified;
}

enum class Reload { WhenChanged, Forced };

/// What tells that a file is still the one that was loaded; times in text form.
struct LoadedFileIdentity {
    std::string Path;
    std::string DateLastModified;
    std::string DateLastAccessed;
    std::string DateCreated;
    std::int64_t Attributes = 0;
    std::int64_t Size = 0;
    friend bool operator==(const LoadedFileIdentity&, const LoadedFileIdentity&) = default;
};

/// What a load leaves for the next one and for whoever compares, side by side. A value: a run works
/// on a copy, and the viewer takes it over with the rest of the result.
struct LoadMemory {
    PerSide<LoadedFileIdentity> loaded;
    PerSide<bool> bForceReload{false, false};
    /// A slide deck could not be read and its editor is empty; the load counts as done all the
    /// same.
    PerSide<bool> bSlidesFailed{false, false};
    /// Why the loaded file of a side gave no text although it holds something; empty otherwise.
    PerSide<std::string> sNoText;
    /// What lies beside the text that was loaded last, with the numbers of its paragraphs.
    PerSide<std::vector<BesideItem>> beside;
    PerSide<std::string> looks;  ///< the extension of a side with formatting, else empty

    /// How far the looks of the two texts that were loaded last can be compared.
    FormatDepth FormattingDepth() const;
};

/// Whether a load that is not forced leaves the editor of that side alone, since the file is still
/// the one that was loaded.
bool IsAsItWasLoaded(const clsCompareFileOptions& options, const LoadMemory& memory, Side side,
                     const std::string& sFile);

/// Everything is borrowed from the run and outlives the loader.
struct LoaderParts {
    ProcessState& process;
    RunTelling& telling;  ///< of the run that loads
    clsCompareFileOptions& options;
    CompareFilesSettings& settings;
    LoadQuestions& questions;
    PerSide<clsMRU>& recent_files;
    clsMRU& TextFileExtensions;
    std::function<clsRTBDocument&(EditorTarget)> document;
    std::function<void(const std::string&)> show_detail = [](const std::string&) {};
    std::function<void()> restart_time_count = {};  ///< empty: nobody counts
    RunWatcher* watcher = nullptr;
    ConversionService* service = nullptr;  ///< nullptr: the loader has one of its own
};

class DocumentLoader {
  public:
    explicit DocumentLoader(LoaderParts parts);

    /// True when the editor of that side holds the file: loaded now, or unchanged since it was.
    /// `sFile` is in and out: the user may pick another. A failure has been reported.
    bool LoadSide(Side side, std::string& sFile, Reload reload);
    bool LoadOriginalFile(std::string& sFile, Reload reload) {
        return LoadSide(Side::Original, sFile, reload);
    }
    bool LoadModifiedFile(std::string& sFile, Reload reload) {
        return LoadSide(Side::Modified, sFile, reload);
    }
    /// Starts the conversion of a side that is loaded next but one, so that both sides are
    /// converted at once. Changes nothing else; a file that will not be converted is left alone.
    void Expect(Side side, const std::string& sFile, Reload reload);
    bool LoadFileIntoEditor(const std::string& sFile, EditorTarget target);
    /// The bytes of an RTF or text file that stands for `sFile` in an editor; what needs no
    /// conversion is read once, so that a pipe serves too. Nothing after a failure, which has been
    /// reported and makes the next load of both sides a full one.
    std::optional<std::string> ConvertFileIfNecessary(const std::string& sFile,
                                                      const SideType& type, Side side);

    // Advice that is given once in a user's life, before a reload.
    void WarnIfPPTAndRetainingFormatting(const PerSide<std::string>& files);
    void WarnIfHTMLAndRetainingFormatting(const PerSide<std::string>& files);
    void WarnIfXLSAndWordWrapIsTrue(const PerSide<std::string>& files);
    void WarnIfDOCAndIsBigFile(const PerSide<std::string>& files, bool all_in_one,
                               const std::function<void()>& switch_to_side_by_side);

    bool bLoadedAsPlainText = false;
    bool bSpaceAddedToTextFile = false;

    /// Of the load before, until a run puts its own there.
    LoadMemory& Memory() { return kept_; }
    TrellisPage& Page() { return page_; }

  private:
    bool SelectFile(Side side, std::string& sFile);
    bool ReportMissing(const std::string& sFile);
    bool IsAsItWasLoaded(Side side, const std::string& sFile, Reload reload) const;
    void RememberFile(Side side, const std::string& sFile);
    std::optional<std::string> ReadForView(const std::string& sFile);
    RichText PlainText(const SideType& type, const std::string& bytes, bool remove_blank_lines,
                       std::vector<BesideItem>& beside) const;
    void FillEditor(const std::string& sFile, const SideType& type, std::string bytes,
                    EditorTarget target);
    void TakeNoText(const std::string& sFile, const SideType& type, std::u16string_view text,
                    Side side);
    void RewriteRichText(const std::string& sFile, std::string& bytes);
    std::u16string Decode(const std::string& bytes) const;
    std::optional<std::string> ConvertWord(const std::string& sFile,
                                           const WordPasswords& passwords);
    std::optional<std::string> ConvertPdf(const std::string& sFile, Side side);
    std::optional<std::string> PrepareSpreadsheet(const std::string& sFile, Side side);
    std::optional<std::string> PrepareSlides(const std::string& sFile, Side side);
    std::optional<std::string> Converted(const std::function<bool(const std::string&)>& road,
                                         const std::string& sFile);
    StreamWait Wait() const;
    std::optional<std::string> Read(const std::string& sFile);
    std::optional<std::string> ReadText(const std::string& sFile);
    std::optional<std::string> RunTellingPlainly(const std::string& sFile, const SideType& type,
                                                 Side side);
    std::optional<std::string> RunConversion(const std::string& sFile, const SideType& type,
                                             Side side);
    SideType TypeOf(const std::string& sFile) const {
        return TypeOfSide(sFile, parts_.options, parts_.TextFileExtensions);
    }
    void RemoveBlankLines(const SideType& type, std::u16string& text,
                          std::vector<BesideItem>& beside) const;
    void LogFailure(std::string_view text, const std::string& sFile, const std::string& reason);
    void Advise(bool& warned, const std::string& question, const std::string& done_text);

    bool KeepGoing() const { return zorvane::KeepGoing(parts_.watcher); }

    LoaderParts parts_;
    std::unique_ptr<ConversionService> own_service_;
    ConversionService& service_;
    NativeTrellisPage page_;
    LoadContext context_;
    WordConversion word_;
    LoadMemory kept_;
    std::string system_reason_;  ///< of the last failure, as far as the system told one
};

}  // namespace zorvane
