// Finds a text or a simple regular expression in the files of a folder, in the background.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "common/base/append_only.h"
#include "common/base/result.h"
#include "common/report_writing.h"
#include "find/engine/find_run.h"

namespace zorvane {

/// Codes of errors that end a search before it begins; any other does not stop it.
enum class FindError : std::int32_t {
    SearchString = 507,  ///< nothing to find, or no usable expression
    Folder = 508,
    FileType = 509
};

/// Called on the thread that starts the search or on those of the search, `SearchError` never on
/// two at once.
class OrbenXEvents {
  public:
    virtual ~OrbenXEvents() = default;
    virtual void OnSearchStarted() {}
    virtual void OnSearchCompleted() {}  ///< after an abort too
    virtual void OnSearchError(std::int32_t /*lCode*/, const std::string& /*sMessage*/) {}
};

/// Where hits are: a hit once found never changes, and reading takes no lock.
class OrbenX : private FindReceiver {
  public:
    OrbenX();
    ~OrbenX() override;

    std::int32_t HitCount() const;
    bool CaseSensitive() const { return match_case_; }
    void putCaseSensitive(bool on) { match_case_ = on; }
    bool LookInSubfolders() const { return subfolders_; }
    void putLookInSubfolders(bool on) { subfolders_ = on; }
    /// Nothing but blanks on either side.
    bool WholeWordOnly() const { return whole_word_; }
    void putWholeWordOnly(bool on) { whole_word_ = on; }
    void putSearchFolder(std::string folder) { folder_ = std::move(folder); }
    void putFileTypes(std::string types) { types_ = std::move(types); }
    void putSearchString(std::string text) { text_ = std::move(text); }
    /// With the signs of `FindSyntax::Simple`.
    bool RegularExpression() const { return expression_; }
    void putRegularExpression(bool on) { expression_ = on; }
    bool SupportOfficeDocs() const { return office_; }
    void putSupportOfficeDocs(bool on) { office_ = on; }
    /// While nothing is searched.
    void UsePasswords(const std::vector<std::string>& passwords) {
        if (documents_ != nullptr)
            documents_->UsePasswords(passwords);
    }
    bool IsSearching() const { return run_.Busy(); }

    /// Comes back at once; a search that goes on is ended first, and its hits go.
    void StartSearch();
    /// Comes back at once; what was found stays.
    void AbortSearch() { run_.Abort(); }
    /// `index` from 0; false: there is no such hit.
    bool GetHit(std::int32_t index, std::string& sFile, std::int32_t& lLine, std::int32_t& lCol,
                std::string& sItem) const;
    /// A table with tabs between and a row of titles, a hit a line. On any thread; a stop is a
    /// failure, and no file is left.
    Status WriteReport(const std::string& sFile, const WritingWatch& watch = {}) const;
    /// The text whose lines a document's hits count. True when it is written. On any thread.
    bool ConvertOfficeDocToText(
        const std::string& sFile, const std::string& target,
        const std::function<bool()>& stop = [] { return false; });

    // ---- beyond what every caller knows ----

    /// Page, sheet and cell, or slide of a hit in a document, where its reader knows it.
    std::string PlaceOf(std::int32_t index) const;
    /// What the last search looked for.
    const FindRules& Rules() const { return rules_; }
    /// Whoever reads documents; nullptr: nobody, and they are read as they are. Outlives this.
    void SetDocuments(DocumentTexts* documents) { documents_ = documents; }
    /// May be nullptr; else outlives this.
    void SetEvents(OrbenXEvents* events) { events_ = events; }
    /// What is told in another language than English; safe from any thread.
    void SetTranslation(EnglishTo translate) { translate_ = std::move(translate); }
    void SetThreads(int threads) { threads_ = threads; }
    FindCounts Counts() const { return run_.Counts(); }
    void Join() { run_.Join(); }
    void Release() { run_.Release(); }  ///< aborts and waits

  private:
    struct Hit {
        std::string_view item;
        std::string_view place;
        std::int32_t file = 0;
        std::int32_t line = 0;
        std::int32_t column = 0;
    };

    void Take(FoundFile&& file, std::string&& rendered) override;
    void Tell(std::int32_t code, const std::string& message);
    bool Refuse(FindError error, const std::string& message);

    bool match_case_ = false;
    bool subfolders_ = true;
    bool whole_word_ = false;
    bool expression_ = false;
    bool office_ = false;
    std::string folder_;
    std::string types_;
    std::string text_;
    int threads_ = 0;
    DocumentTexts* documents_ = nullptr;
    OrbenXEvents* events_ = nullptr;
    EnglishTo translate_ = [](std::string_view english) { return std::string(english); };
    FindRules rules_;
    std::unique_ptr<LineFinder> finder_;
    AppendOnly<Hit> hits_;
    AppendOnly<std::string_view> files_;
    TextArena texts_;
    FindRun run_;  ///< the last member: its threads use all the others
};

}  // namespace zorvane
