#include "common/base/ordered_work.h"

#include <atomic>
#include <chrono>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "common/base/append_only.h"

namespace zorvane {
namespace {

// A tree of tasks, each of which publishes its name: "", "0", "00", "01", "1", ...
class NameTask : public OrderedTask {
  public:
    NameTask(std::string name, std::size_t depth, std::vector<std::string>& out)
        : name_(std::move(name)), depth_(depth), out_(out) {}
    void Do(OrderedWork& work, int /*thread*/) override {
        // The first of each row is the last to be done, so that the rest has to wait for it.
        if (name_.ends_with('0'))
            std::this_thread::sleep_for(std::chrono::microseconds(200));
        std::vector<OrderedWork::Task> tasks;
        for (char letter = '0'; depth_ > 0 && letter < '4'; ++letter)
            tasks.push_back(std::make_unique<NameTask>(name_ + letter, depth_ - 1, out_));
        work.Follow(*this, std::move(tasks));
    }
    void Publish() override { out_.push_back(name_); }

  private:
    std::string name_;
    std::size_t depth_;
    std::vector<std::string>& out_;
};

void ExpectedNames(const std::string& name, std::size_t depth, std::vector<std::string>& out) {
    out.push_back(name);
    for (char letter = '0'; depth > 0 && letter < '4'; ++letter)
        ExpectedNames(name + letter, depth - 1, out);
}

TEST(OrderedWork, PublishesInTheOrderOfTheTreeForAnyNumberOfThreads) {
    std::vector<std::string> expected;
    ExpectedNames("", 4, expected);
    for (const int threads : {1, 2, 3, 8}) {
        SCOPED_TRACE(threads);
        std::vector<std::string> published;
        std::atomic<int> ended = 0;
        OrderedWork work(threads);
        work.Start(std::make_unique<NameTask>("", 4, published), [&] { ++ended; });
        work.Join();
        EXPECT_FALSE(work.Busy());
        EXPECT_EQ(ended, 1);
        EXPECT_EQ(published, expected);
    }
}

// Follows itself without end, unless somebody stops it.
class EndlessTask : public OrderedTask {
  public:
    explicit EndlessTask(std::atomic<int>& alive) : alive_(alive) { ++alive_; }
    ~EndlessTask() override { --alive_; }
    void Do(OrderedWork& work, int /*thread*/) override {
        std::vector<OrderedWork::Task> tasks;
        tasks.push_back(std::make_unique<EndlessTask>(alive_));
        tasks.push_back(std::make_unique<EndlessTask>(alive_));
        work.Follow(*this, std::move(tasks));
    }
    void Publish() override { published = true; }
    static inline std::atomic<bool> published{false};

  private:
    std::atomic<int>& alive_;
};

TEST(OrderedWork, AnAbortEndsItSoonAndLeavesNoTask) {
    for (const int threads : {1, 4}) {
        SCOPED_TRACE(threads);
        std::atomic<int> alive = 0;
        bool ended = false;
        OrderedWork work(threads);
        EndlessTask::published = false;
        work.Start(std::make_unique<EndlessTask>(alive), [&] { ended = true; });
        while (!EndlessTask::published)
            std::this_thread::yield();
        const auto before = std::chrono::steady_clock::now();
        work.Abort();
        work.Join();
        EXPECT_LT(std::chrono::steady_clock::now() - before, std::chrono::seconds(1));
        EXPECT_TRUE(ended);
        EXPECT_FALSE(work.Busy());
        EXPECT_EQ(alive, 0);
    }
}

TEST(AppendOnly, AReaderSeesWholeRecordsThatStayWhereTheyAre) {
    struct Row {
        std::size_t number = 0;
        std::string_view text;
    };
    AppendOnly<Row> rows;
    TextArena texts;
    constexpr std::size_t kOrdered = 3 * 8192 + 1;
    std::size_t faults = 0;
    std::thread reader([&] {
        for (std::size_t seen = 0; seen < kOrdered;) {
            const std::size_t count = rows.size();
            for (; seen < count; ++seen)
                faults += rows[seen].text != std::to_string(rows[seen].number) ||
                          rows[seen].number != seen;
        }
    });
    const Row* first = nullptr;
    for (std::size_t index = 0; index < kOrdered; ++index) {
        rows.Append({index, texts.Add(std::to_string(index))});
        first = index == 0 ? &rows[0] : first;
    }
    reader.join();
    EXPECT_EQ(faults, 0U);
    EXPECT_EQ(&rows[0], first);
    const std::string large(200000, 'x');
    EXPECT_EQ(texts.Add(large), large);
    EXPECT_EQ(texts.Add("behind"), "behind");
}

}  // namespace
}  // namespace zorvane
