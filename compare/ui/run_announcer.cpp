#include "compare/ui/run_announcer.h"

#include <utility>

#include "common/ui/announce.h"

namespace zorvane {
namespace {

constexpr int kQuarter = 25;
constexpr int kQuarters = 4;

}  // namespace

RunAnnouncer::RunAnnouncer(QWidget& from, UiText text) : from_(from), text_(std::move(text)) {}

void RunAnnouncer::Begin(const QString& stage) {
    quarter_ = 0;
    Announce(from_, stage);
}

// The end is told by the verdict.
void RunAnnouncer::Progress(double percent) {
    const int quarter = static_cast<int>(percent) / kQuarter;
    if (quarter <= quarter_ || quarter >= kQuarters)
        return;
    quarter_ = quarter;
    Announce(from_, text_("%1 percent").arg(quarter * kQuarter));
}

void RunAnnouncer::End(const QString& verdict) {
    Announce(from_, verdict);
}

}  // namespace zorvane
