// A value that is made on a thread of its own, for whoever asks for it now and then.
#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <optional>
#include <thread>
#include <utility>

namespace zorvane {

/// Of one thread; only what makes the value runs on another.
template <class T>
class BackgroundValue {
  public:
    using Stop = std::function<bool()>;
    /// Comes back soon once it is told to stop; what it then gives is dropped.
    using Make = std::function<T(const Stop& stop)>;

    BackgroundValue() = default;
    ~BackgroundValue() { Drop(); }
    BackgroundValue(const BackgroundValue&) = delete;
    BackgroundValue& operator=(const BackgroundValue&) = delete;

    /// What was being made is dropped.
    void Begin(Make make) {
        Drop();
        stop_ = false;
        busy_ = true;
        worker_ = std::thread([this, make = std::move(make)] {
            T made = make([this] { return stop_.load(); });
            const std::lock_guard lock(guard_);
            value_ = std::move(made);
            changed_.notify_all();
        });
    }
    /// It is being made, or was made and not taken.
    bool Busy() const { return busy_; }
    /// Once, when it is there; waits for it at most so long.
    std::optional<T> Take(std::chrono::milliseconds patience = {}) {
        if (!busy_)
            return std::nullopt;
        {
            std::unique_lock lock(guard_);
            if (!changed_.wait_for(lock, patience, [this] { return value_.has_value(); }))
                return std::nullopt;
        }
        return Finish();
    }
    /// Stops and waits.
    void Drop() {
        stop_ = true;
        if (busy_)
            Finish();
    }

  private:
    std::optional<T> Finish() {
        worker_.join();
        busy_ = false;
        return std::exchange(value_, std::nullopt);
    }

    std::atomic<bool> stop_{false};
    bool busy_ = false;
    std::mutex guard_;  ///< over the value
    std::condition_variable changed_;
    std::optional<T> value_;
    std::thread worker_;
};

}  // namespace zorvane
