// A viewer of any kind that does nothing but remember, and a frame of such viewers.
#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "app/main_frame.h"
#include "common/process_state.h"

namespace zorvane {

class FakeViewer : public Viewer {
  public:
    FakeViewer(ProcessState& process, ViewerKind kind, std::vector<std::string>& events)
        : process_(process), kind_(kind), events_(events) {}
    ~FakeViewer() override { events_.push_back("gone " + name_); }

    ViewerKind Kind() const override { return kind_; }
    void Setup(const std::string& sDescription, bool load) override {
        name_ = sDescription;
        if (load)
            ReadIniFile();
    }
    void ReadIniFile() override { text = process_.settings->Read(name_, "text", ""); }
    void SaveIniFile() override { process_.settings->Write(name_, "text", text); }
    const std::string& Description() const override { return name_; }
    std::vector<std::string> FileNames() const override { return {text}; }
    void Activate() override { events_.push_back("focus " + name_); }
    bool Busy() const override { return busy; }
    void Abort() override {
        events_.push_back("stop " + name_);
        if (stops_at_once)
            busy = false;
    }
    bool MayClose() override {
        if (on_question)
            on_question();
        return answer;
    }
    void Close() override {
        events_.push_back("close " + name_);
        SaveIniFile();
    }

    std::string text;
    bool busy = false;
    bool stops_at_once = false;
    bool answer = true;
    std::function<void()> on_question;

  private:
    ProcessState& process_;
    ViewerKind kind_;
    std::vector<std::string>& events_;
    std::string name_;
};

inline ViewerFactories FakeViewers(ProcessState& process, std::vector<std::string>& events) {
    const auto of_kind = [&](ViewerKind kind) {
        return [&process, &events, kind](const CommandLineRequest&) {
            return MadeViewer{nullptr, std::make_unique<FakeViewer>(process, kind, events)};
        };
    };
    return {of_kind(ViewerKind::CompareFiles), of_kind(ViewerKind::CompareFolders),
            of_kind(ViewerKind::FindText)};
}

class FakeFrameWindow : public SilentFrame {
  public:
    void ShowMessage(const std::string& message) override { messages.push_back(message); }
    void EndProgram() override { ended = true; }
    std::vector<std::string> messages;
    bool ended = false;
};

}  // namespace zorvane
