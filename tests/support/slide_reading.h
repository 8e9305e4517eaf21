// Reading of decks in tests.
#pragma once

#include <string>

#include "load/readers/slides/slide_reader.h"

namespace zorvane {

class RecordingMonitor : public ReadMonitor {
  public:
    bool Progress(std::int64_t done, std::int64_t total) override {
        calls.emplace_back(done, total);
        return calls.size() < stop_at;
    }
    std::vector<std::pair<std::int64_t, std::int64_t>> calls;
    std::size_t stop_at = SIZE_MAX;
};

using SlideReading = ReadEnd (*)(Package&, const SlideOptions&, DocumentSink&, ReadMonitor&);

/// The text, lines ended by LF, or "error N: detail" for a reading that failed.
inline std::string SlideText(SlideReading read, const std::string& file,
                             const SlideOptions& options = {}) {
    const std::unique_ptr<Package> package = Package::Open(file);
    if (!package)
        return "no package";
    const auto sink = MakePlainSink();
    RecordingMonitor monitor;
    const ReadEnd end = read(*package, options, *sink, monitor);
    if (!end.ok())
        return "error " + std::to_string(static_cast<int>(end.error)) + ": " + end.detail;
    std::string text = sink->Finish();
    std::erase(text, '\r');
    return text;
}

}  // namespace zorvane
