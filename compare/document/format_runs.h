// The runs of one kind of format over a text.
#pragma once

#include <cstdint>
#include <utility>
#include <vector>

#include "common/base/run_watcher.h"
#include "compare/document/format_table.h"
#include "compare/document/span_list.h"

namespace zorvane {

/// Outside a run is `Run`, which has `length` and `format`; in here it takes 8 bytes. Looking up a
/// place costs by the logarithm of the runs, an edit by the runs between it and the last one.
template <class Run>
class FormatRuns {
  public:
    using FormatOf = decltype(Run::format);

    /// After a stop the lengths are right, and the formats are not.
    void Assign(const std::vector<Run>& runs, RunWatcher* watcher = nullptr) {
        formats_.Clear();
        spans_.Clear();
        PushAll(runs, watcher);
    }

    /// The runs of a range, cut to it; some of them after a stop.
    std::vector<Run> Take(std::int32_t first, std::int32_t length,
                          RunWatcher* watcher = nullptr) const {
        std::vector<Run> taken;
        StopCheck stop(watcher);
        // Growing a long list moves it, which is slower than counting.
        std::size_t count = 0;
        spans_.Walk(first, length, [&](FormatNumber, std::int32_t) { return ++count > 0; });
        taken.reserve(count);
        spans_.Walk(first, length, [&](FormatNumber format, std::int32_t units) {
            taken.push_back({units, formats_.At(format.number)});
            return stop.KeepGoing();
        });
        return taken;
    }

    /// Moves all runs out; some of them after a stop.
    std::vector<Run> TakeAll(RunWatcher* watcher = nullptr) {
        std::vector<Run> runs = Take(0, spans_.Length(), watcher);
        Assign({});
        return runs;
    }

    /// The format at a position, or nothing outside. Borrowed until the next change.
    const FormatOf* At(std::int32_t position) const {
        const auto found = spans_.At(position);
        return found.value == nullptr ? nullptr : &formats_.At(found.value->number);
    }

    /// As `Assign`.
    void Replace(std::int32_t first, std::int32_t length, const std::vector<Run>& runs,
                 RunWatcher* watcher = nullptr) {
        spans_.Cut(first, length);
        PushAll(runs, watcher);
        spans_.Close();
    }

    /// Changes the format of a range by `change(format)`.
    template <class Change>
    void ChangeFormats(std::int32_t first, std::int32_t length, const Change& change) {
        std::vector<std::pair<std::int32_t, FormatNumber>> changed;
        spans_.Walk(first, length, [&](FormatNumber format, std::int32_t units) {
            changed.emplace_back(units, format);
            return true;
        });
        spans_.Cut(first, length);
        FormatNumber last_old;
        FormatNumber last_new;
        for (auto [units, format] : changed) {
            if (last_old.number != format.number) {
                FormatOf copy = formats_.At(format.number);
                change(copy);
                last_old = format;
                last_new.number = formats_.NumberOf(copy);
            }
            spans_.Push(units, last_new);
        }
        spans_.Close();
    }

  private:
    struct FormatNumber {
        std::int32_t number = -1;

        FormatNumber Behind(std::int32_t /*units*/) const { return *this; }
        bool Continues(FormatNumber in_front, std::int32_t /*length*/) const {
            return number == in_front.number;
        }
    };

    void PushAll(const std::vector<Run>& runs, RunWatcher* watcher) {
        StopCheck stop(watcher);
        FormatNumber format;
        for (const Run& run : runs) {
            if (stop.KeepGoing() || format.number < 0)
                format.number = formats_.NumberOf(run.format);
            spans_.Push(run.length, format);
        }
    }

    SpanList<FormatNumber> spans_;
    FormatTable<FormatOf> formats_;
};

}  // namespace zorvane
