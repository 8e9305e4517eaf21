// Tasks done by several threads, whose results come out in one order whoever did them.
#pragma once

#include <atomic>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

namespace zorvane {

class OrderedWork;

/// A piece of work. Its place in the order: behind the task that it follows, before whatever came
/// behind that one.
class OrderedTask {
  public:
    virtual ~OrderedTask() = default;
    /// On any thread, numbered from 0; others do theirs meanwhile. May call `work.Follow` once. A
    /// long one asks `work.Aborted()` every few milliseconds.
    virtual void Do(OrderedWork& work, int thread) = 0;
    /// Once, after `Do`, in order, and never two at once. Not called after an abort. Short.
    virtual void Publish() = 0;

  private:
    friend class OrderedWork;
    OrderedTask* next_ = nullptr;
    std::atomic<bool> done_{false};
};

/// Threads, the stack of tasks, the wish to stop, and the cursor that publishes. The last task that
/// was put on the stack is done first, so that work stays near the cursor and results come early.
class OrderedWork {
  public:
    using Task = std::unique_ptr<OrderedTask>;

    /// `threads` 0: as many as suit work that waits for disks.
    /// `begin_thread` is called on each thread before its work.
    explicit OrderedWork(int threads = 0, std::function<void()> begin_thread = {});
    ~OrderedWork();  ///< aborts and waits
    OrderedWork(const OrderedWork&) = delete;
    OrderedWork& operator=(const OrderedWork&) = delete;

    /// Comes back at once, unless the system gives no thread. `ended` is called on one of the
    /// threads when all is published, or given up, just before `Busy` is false. One start for each
    /// object.
    void Start(Task first, std::function<void()> ended = {});
    /// From within `task.Do`, at most once: `tasks` come behind it, in this order.
    void Follow(OrderedTask& task, std::vector<Task> tasks);
    /// Comes back at once. What is published stays, the rest is dropped.
    void Abort();
    bool Aborted() const { return aborted_.load(std::memory_order_relaxed); }
    bool Busy() const { return busy_.load(std::memory_order_acquire); }
    /// Waits until no thread is at work. Not from within a task.
    void Join();
    int Threads() const { return thread_count_; }

  private:
    void Work(int thread);
    void MoveCursor();
    void Finish();
    void DoWithout(int missing);

    int thread_count_;
    std::function<void()> begin_thread_;
    std::function<void()> ended_;
    std::vector<std::thread> threads_;
    std::atomic<bool> aborted_{false};
    std::atomic<bool> busy_{false};

    std::mutex guard_;  ///< over the three below
    std::condition_variable changed_;
    std::vector<OrderedTask*> stack_;
    int open_ = 0;  ///< tasks that are not done

    std::atomic<int> running_{0};  ///< threads
    std::mutex cursor_guard_;
    std::atomic<bool> cursor_wanted_{false};
    OrderedTask* cursor_ = nullptr;  ///< the first task that is not published; owns those behind it
};

}  // namespace zorvane
