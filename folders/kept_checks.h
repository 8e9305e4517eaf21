// Text checks that were made before, in the cache of texts: by what both files hold and by all that
// the outcome depends on, never by a name or date alone.
#pragma once

#include <atomic>
#include <functional>
#include <optional>
#include <string>

#include "folders/text_check.h"
#include "load/text_cache.h"

namespace zorvane {

class KeptChecks {
  public:
    /// `process` outlives this. Nothing is kept of a run with passwords.
    KeptChecks(ProcessState& process, TextCache cache, const TextCheckOptions& how);
    ~KeptChecks();  ///< who wrote into the cache tests its size
    KeptChecks(const KeptChecks&) = delete;
    KeptChecks& operator=(const KeptChecks&) = delete;

    /// The check of a pair: a kept one, its report put in its place, or what `make` gives. Safe
    /// from any thread.
    TextCheck Check(const TextPair& pair, const std::function<TextCheck()>& make);
    /// Checks that were not made anew.
    std::int64_t Hits() const { return hits_.load(); }

  private:
    struct Contents;
    std::optional<Contents> ContentsOf(const TextPair& pair) const;
    std::string ReadingOf(const TextPair& pair) const;
    std::optional<TextCheck> Find(const Contents& contents, const TextPair& pair);
    bool PutReport(const std::string& report, const TextPair& pair) const;
    void Keep(const Contents& contents, const TextPair& pair, const TextCheck& check);

    ProcessState& process_;
    TextCache cache_;
    std::string how_;  ///< all options of the run, and the programs that read and compare
    std::atomic<std::int64_t> hits_{0};
    std::atomic<bool> wrote_{false};
};

}  // namespace zorvane
