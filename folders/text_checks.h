// The text checks of many pairs on all cores. What comes out of a pair does not depend on the
// others.
#pragma once

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

#include "folders/kept_checks.h"
#include "folders/text_check.h"

namespace zorvane {

class TextChecks {
  public:
    /// `process` outlives this. `threads` 0: one for each core. None is started before the first
    /// pair.
    TextChecks(ProcessState& process, TextCheckOptions how, int threads = 0);
    /// Before the first pair: checks that were made before are taken from `cache`, and made ones
    /// kept there.
    void UseCache(TextCache cache);
    ~TextChecks();  ///< aborts and waits
    TextChecks(const TextChecks&) = delete;
    TextChecks& operator=(const TextChecks&) = delete;

    /// `index` is that of the pair's record; each once. Comes back at once.
    void Add(std::int32_t index, TextPair pair);
    /// Nothing while it is waited for, or was never added.
    std::optional<TextCheck> Result(std::int32_t index) const;
    bool Wanted(std::int32_t index) const;  ///< was added
    /// Waits for that pair, which was added. After an abort it is told as aborted.
    TextCheck Wait(std::int32_t index);
    /// Comes back at once; what is done stays.
    void Abort();
    /// Pairs that wait or are at work; 0 after an abort once the threads have noticed.
    std::int32_t Open() const { return open_.load(); }

  private:
    class Watcher;
    void Work();

    ProcessState& process_;
    TextCheckOptions how_;
    std::unique_ptr<KeptChecks> kept_;
    int thread_count_;
    std::atomic<bool> aborted_{false};
    std::atomic<std::int32_t> open_{0};

    mutable std::mutex guard_;  ///< over all below
    std::condition_variable changed_;
    struct Waiting {
        std::int32_t index = 0;
        TextPair pair;
    };
    std::deque<Waiting> waiting_;
    std::map<std::int32_t, std::optional<TextCheck>> results_;
    bool ended_ = false;
    std::vector<std::thread> threads_;
};

}  // namespace zorvane
