#include "folders/text_checks.h"

#include <algorithm>
#include <system_error>
#include <utility>

#include "common/process_state.h"
#include "load/conversion_service.h"
#include "load/warm_readers.h"

namespace zorvane {

class TextChecks::Watcher : public RunWatcher {
  public:
    explicit Watcher(const std::atomic<bool>& aborted) : aborted_(aborted) {}
    bool KeepGoing() override { return !aborted_.load(std::memory_order_relaxed); }

  private:
    const std::atomic<bool>& aborted_;
};

TextChecks::TextChecks(ProcessState& process, TextCheckOptions how, int threads)
    : process_(process),
      how_(std::move(how)),
      thread_count_(threads > 0
                        ? threads
                        : std::max(1, static_cast<int>(std::thread::hardware_concurrency()))) {}

TextChecks::~TextChecks() {
    Abort();
    {
        const std::lock_guard lock(guard_);
        ended_ = true;
    }
    changed_.notify_all();
    for (std::thread& thread : threads_)
        thread.join();
}

void TextChecks::UseCache(TextCache cache) {
    kept_ = std::make_unique<KeptChecks>(process_, std::move(cache), how_);
}

void TextChecks::Add(std::int32_t index, TextPair pair) {
    const std::lock_guard lock(guard_);
    results_[index];
    waiting_.push_back({index, std::move(pair)});
    ++open_;
    try {
        if (threads_.size() < static_cast<std::size_t>(thread_count_))
            threads_.emplace_back([this] { Work(); });
    } catch (const std::system_error& error) {
        // Those that there are do the work; without any the pair is told as failed.
        if (threads_.empty()) {
            waiting_.pop_back();
            --open_;
            results_[index] = TextCheck{TextCheckEnd::Failed, 0, 0, 0, 0, error.what(), ""};
        }
    }
    changed_.notify_all();
}

std::optional<TextCheck> TextChecks::Result(std::int32_t index) const {
    const std::lock_guard lock(guard_);
    const auto found = results_.find(index);
    return found == results_.end() ? std::nullopt : found->second;
}

bool TextChecks::Wanted(std::int32_t index) const {
    const std::lock_guard lock(guard_);
    return results_.contains(index);
}

TextCheck TextChecks::Wait(std::int32_t index) {
    std::unique_lock lock(guard_);
    changed_.wait(lock, [&] { return results_.at(index).has_value(); });
    return *results_.at(index);
}

void TextChecks::Abort() {
    aborted_ = true;
    const std::lock_guard lock(guard_);
    for (const Waiting& waiting : waiting_) {
        results_[waiting.index] = TextCheck{};
        --open_;
    }
    waiting_.clear();
    changed_.notify_all();
}

void TextChecks::Work() {
    const WarmReaders warm;
    ConversionService service(process_);
    Watcher watcher(aborted_);
    std::unique_lock lock(guard_);
    while (true) {
        changed_.wait(lock, [this] { return !waiting_.empty() || ended_; });
        if (waiting_.empty())
            return;
        const Waiting next = std::move(waiting_.front());
        waiting_.pop_front();
        lock.unlock();
        const auto make = [&] { return CheckText(process_, how_, next.pair, service, watcher); };
        TextCheck check = kept_ ? kept_->Check(next.pair, make) : make();
        lock.lock();
        results_[next.index] = std::move(check);
        --open_;
        changed_.notify_all();
    }
}

}  // namespace zorvane
