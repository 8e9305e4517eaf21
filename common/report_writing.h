// A report that is written beside the window that wants it.
#pragma once

#include <atomic>
#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <utility>

#include "common/base/background_value.h"
#include "common/base/result.h"

namespace zorvane {

/// What a report asks and tells between two of its rows.
struct WritingWatch {
    std::function<bool()> stop = [] { return false; };
    std::function<void(int percent)> progress = [](int) {};
};

class ReportWriting {
  public:
    using Write = std::function<Status(const std::string& file, const WritingWatch& watch)>;
    struct Written {
        std::string file;
        Status status = Status::Ok();
    };

    /// One that is in work is stopped first.
    void Begin(std::string file, Write write) {
        percent_ = 0;
        work_.Begin([this, file = std::move(file), write = std::move(write)](const auto& stop) {
            const WritingWatch watch{stop, [this](int percent) { percent_ = percent; }};
            return Written{file, write(file, watch)};
        });
    }
    bool Busy() const { return work_.Busy(); }
    int Percent() const { return percent_; }
    /// Once, when it is written or failed.
    std::optional<Written> Take(std::chrono::milliseconds patience = {}) {
        return work_.Take(patience);
    }
    /// Nothing is left behind of a report that is not whole.
    void Stop() { work_.Drop(); }

  private:
    std::atomic<int> percent_{0};
    BackgroundValue<Written> work_;
};

}  // namespace zorvane
