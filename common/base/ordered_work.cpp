#include "common/base/ordered_work.h"

#include <algorithm>
#include <cassert>
#include <system_error>

namespace zorvane {
namespace {

// Threads beyond the cores cost nothing on a warm disk and are the whole gain on a cold one.
constexpr int kAtLeast = 8;
constexpr int kAtMost = 32;

int FittingThreads(int wanted) {
    if (wanted > 0)
        return wanted;
    return std::clamp(static_cast<int>(std::thread::hardware_concurrency()), kAtLeast, kAtMost);
}

}  // namespace

OrderedWork::OrderedWork(int threads, std::function<void()> begin_thread)
    : thread_count_(FittingThreads(threads)), begin_thread_(std::move(begin_thread)) {}

OrderedWork::~OrderedWork() {
    Abort();
    Join();
}

void OrderedWork::Start(Task first, std::function<void()> ended) {
    assert(threads_.empty());
    ended_ = std::move(ended);
    busy_.store(true, std::memory_order_release);
    cursor_ = first.release();
    stack_.push_back(cursor_);
    open_ = 1;
    running_ = thread_count_;
    int started = 0;
    try {
        for (; started < thread_count_; ++started)
            threads_.emplace_back([this, thread = started] {
                if (begin_thread_)
                    begin_thread_();
                Work(thread);
            });
    } catch (const std::system_error&) {
        // The system gives no more: those that there are do the work, or this one without any.
        DoWithout(thread_count_ - started);
    }
}

void OrderedWork::DoWithout(int missing) {
    if (missing == thread_count_) {
        running_ = 1;
        Work(0);
    } else if ((running_ -= missing) == 0) {
        Finish();
    }
}

// Only a task that is being done gets followers, and the cursor looks behind a task only when it is
// done: the list needs no lock.
void OrderedWork::Follow(OrderedTask& task, std::vector<Task> tasks) {
    if (tasks.empty())
        return;
    std::vector<OrderedTask*> followers;
    followers.reserve(tasks.size());
    for (Task& follower : tasks)
        followers.push_back(follower.release());
    followers.back()->next_ = task.next_;
    for (std::size_t index = 0; index + 1 < followers.size(); ++index)
        followers[index]->next_ = followers[index + 1];
    task.next_ = followers.front();
    {
        const std::lock_guard lock(guard_);
        stack_.insert(stack_.end(), followers.rbegin(), followers.rend());
        open_ += static_cast<int>(followers.size());
    }
    if (followers.size() > 1)
        changed_.notify_all();
}

void OrderedWork::Abort() {
    {
        const std::lock_guard lock(guard_);
        aborted_.store(true, std::memory_order_relaxed);
    }
    changed_.notify_all();
}

void OrderedWork::Join() {
    for (std::thread& thread : threads_) {
        if (thread.joinable())
            thread.join();
    }
}

void OrderedWork::Work(int thread) {
    std::unique_lock lock(guard_);
    while (true) {
        changed_.wait(lock, [this] { return !stack_.empty() || open_ == 0 || Aborted(); });
        if (stack_.empty() || Aborted())
            break;
        OrderedTask* task = stack_.back();
        stack_.pop_back();
        lock.unlock();
        task->Do(*this, thread);
        task->done_.store(true, std::memory_order_release);
        MoveCursor();
        lock.lock();
        if (--open_ == 0)
            changed_.notify_all();
    }
    lock.unlock();
    if (--running_ == 0)
        Finish();
}

// Whoever finishes a task moves the cursor on, unless somebody does so already: that one looks once
// more when it lets go.
void OrderedWork::MoveCursor() {
    cursor_wanted_ = true;
    while (cursor_wanted_ && cursor_guard_.try_lock()) {
        cursor_wanted_ = false;
        while (cursor_ != nullptr && cursor_->done_.load(std::memory_order_acquire) && !Aborted()) {
            cursor_->Publish();
            const Task published(cursor_);
            cursor_ = published->next_;
        }
        cursor_guard_.unlock();
    }
}

void OrderedWork::Finish() {
    while (cursor_ != nullptr) {
        const Task dropped(cursor_);
        cursor_ = dropped->next_;
    }
    if (ended_)
        ended_();
    busy_.store(false, std::memory_order_release);
}

}  // namespace zorvane
