// The program zorvane-convert as the loader drives it: a child with a socket, limits and an end.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "load/conversion_message.h"

namespace zorvane {

/// How a request to the child ended.
enum class ConversionEnd {
    Answered,    ///< the child's answer holds its own error code
    NotStarted,  ///< no such program, or the system is out of processes
    Crashed,     ///< it ended without an answer; or was killed for its use of memory
    TimedOut,    ///< no progress for too long; it was killed
    Cancelled    ///< as the caller wished
};

struct ConversionAnswer {
    ConversionEnd end = ConversionEnd::NotStarted;
    ConversionMessage values;
};

/// Told some times a second and at each progress, with -1 or 0 to 100. False cancels.
using ConversionObserver = std::function<bool(std::int32_t percent)>;

/// One child. Killed with this object, and by the system when this process ends.
class ConverterProcess {
  public:
    ConverterProcess() = default;
    ~ConverterProcess() { Kill(); }
    ConverterProcess(const ConverterProcess&) = delete;
    ConverterProcess& operator=(const ConverterProcess&) = delete;

    /// `program`: full path. False when it cannot be started.
    bool Start(const std::string& program, const std::vector<std::string>& arguments);
    bool Running() const { return process_ > 0; }
    /// A request goes out at once, so that several children work side by side.
    void Send(const ConversionMessage& request);
    /// Waits for the answer to the last request. `stall`: longest time without progress.
    ConversionAnswer Wait(std::chrono::milliseconds stall, const ConversionObserver& observer);
    void Kill();

  private:
    enum class Received { Something, Nothing, End };
    Received Receive(int milliseconds);
    ConversionAnswer Cancel();

    int process_ = -1;
    int socket_ = -1;
    MessageReader reader_;
};

}  // namespace zorvane
