// The program zorvane-convert as the loader drives it: a child with a socket, limits and an end.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "load/conversion_message.h"

namespace zorvane {

/// How a request to the child ended.
enum class ConversionEnd {
    Answered,    ///< the child's answer holds its own error code
    NotStarted,  ///< no such program, or the system is out of processes
    Crashed,     ///< it ended without an answer, gave one that makes no sense, or was killed
    TimedOut,    ///< no progress for too long, or too long in all; it was killed
    Cancelled    ///< as the caller wished
};

struct ConversionAnswer {
    ConversionEnd end = ConversionEnd::NotStarted;
    ConversionMessage values;
    /// After `Crashed`: the system call that the child was ended for, where it was that.
    std::optional<std::int32_t> forbidden_call;
};

inline constexpr std::chrono::minutes kLongestConversion{15};

/// How long a child is waited for.
struct ConversionPatience {
    std::chrono::milliseconds stall;                       ///< without progress
    std::chrono::milliseconds total = kLongestConversion;  ///< in all
};

/// Told some times a second and at each progress, with -1 or 0 to 100. False cancels.
using ConversionObserver = std::function<bool(std::int32_t percent)>;

/// One child. Killed with this object, and by the system when this process ends. While one lives,
/// nobody may look into this process.
class ConverterProcess {
  public:
    ConverterProcess() = default;
    ~ConverterProcess() { Kill(); }
    ConverterProcess(const ConverterProcess&) = delete;
    ConverterProcess& operator=(const ConverterProcess&) = delete;

    /// `program`: full path. The child sees no variable of the environment but those given, each as
    /// "NAME=value", and no open file. False when it cannot be started.
    bool Start(const std::string& program, const std::vector<std::string>& arguments,
               const std::vector<std::string>& environment = {});
    bool Running() const { return process_ > 0; }
    /// A request goes out at once, so that several children work side by side. The child gets
    /// `files` with it.
    void Send(const ConversionMessage& request, std::span<const int> files = {});
    /// Waits for the answer to the last request. The child is not trusted.
    ConversionAnswer Wait(const ConversionPatience& patience, const ConversionObserver& observer);
    void Kill();

  private:
    enum class Received { Something, Nothing, End };
    struct Course;
    Received Receive(int milliseconds);
    std::optional<ConversionAnswer> TakeMessages(Course& course);
    ConversionAnswer Cancel();
    ConversionAnswer Crash(std::optional<std::int32_t> forbidden_call = std::nullopt);

    int process_ = -1;
    int socket_ = -1;
    MessageReader reader_;
};

}  // namespace zorvane
