#include "compare/run/question_relay.h"

#include <memory>
#include <utility>

namespace zorvane {

// The answer lies in memory that the question owns: after a stop nobody waits for it any more, and
// it is only read once it is there.
bool QuestionRelay::AskYesNo(const std::string& text, const std::string& title) {
    const auto answer = std::make_shared<bool>(false);
    return Ask([=](LoadQuestions& window) { *answer = window.AskYesNo(text, title); }) && *answer;
}

void QuestionRelay::ShowMessage(const std::string& text, const std::string& title) {
    Ask([=](LoadQuestions& window) { window.ShowMessage(text, title); });
}

std::string QuestionRelay::BrowseFor(Side side) {
    const auto answer = std::make_shared<std::string>();
    const bool answered = Ask([=](LoadQuestions& window) { *answer = window.BrowseFor(side); });
    return answered ? *answer : std::string();
}

bool QuestionRelay::ShowNotice(const std::string& text, const std::string& title) {
    const auto answer = std::make_shared<bool>(false);
    return Ask([=](LoadQuestions& window) { *answer = window.ShowNotice(text, title); }) && *answer;
}

bool QuestionRelay::Ask(std::function<void(LoadQuestions&)> question) {
    std::unique_lock guard(lock_);
    if (stopped_)
        return false;
    question_ = std::move(question);
    answered_ = false;
    changed_.wait(guard, [this] { return answered_ || stopped_; });
    question_ = nullptr;
    return answered_;
}

void QuestionRelay::Answer(LoadQuestions& window) {
    std::function<void(LoadQuestions&)> question;
    {
        const std::lock_guard guard(lock_);
        question = std::exchange(question_, nullptr);
    }
    if (!question)
        return;
    question(window);  // without the lock: the window may stop the run while it asks
    const std::lock_guard guard(lock_);
    answered_ = true;
    changed_.notify_all();
}

void QuestionRelay::StopAsking() {
    const std::lock_guard guard(lock_);
    stopped_ = true;
    question_ = nullptr;  // nobody is to be asked any more
    changed_.notify_all();
}

}  // namespace zorvane
