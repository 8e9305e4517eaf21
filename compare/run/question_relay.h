// What a run asks the user, carried from the thread that runs to the one that has the window.
#pragma once

#include <condition_variable>
#include <functional>
#include <mutex>
#include <string>

#include "load/document_loader.h"

namespace zorvane {

/// The run waits for the answer. Once it is stopped, and whatever waits then, every answer is no.
class QuestionRelay : public LoadQuestions {
  public:
    // From the thread that runs.
    bool AskYesNo(const std::string& text, const std::string& title) override;
    void ShowMessage(const std::string& text, const std::string& title) override;
    std::string BrowseFor(Side side) override;
    bool ShowNotice(const std::string& text, const std::string& title) override;
    void PumpEvents() override {}        // the window has a thread of its own
    void SetHourglass(bool) override {}  // for a whole run, by the viewer

    // From the thread of the window.
    /// Puts the question that waits, if any, to the window.
    void Answer(LoadQuestions& window);
    /// Ends every wait, now and later.
    void StopAsking();

  private:
    /// False when nobody answered.
    bool Ask(std::function<void(LoadQuestions&)> question);

    std::mutex lock_;
    std::condition_variable changed_;
    std::function<void(LoadQuestions&)> question_;
    bool answered_ = false;
    bool stopped_ = false;
};

}  // namespace zorvane
