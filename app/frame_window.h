// What the frame asks of its window: verbs, never widgets.
#pragma once

#include <cstdint>
#include <string>

namespace zorvane {

/// Window states of the platform.
enum class WindowState : std::int32_t { Normal = 0, Minimised = 1, Maximised = 2 };

/// In twips (1440 to an inch).
struct FrameRectangle {
    float left = 1000;
    float top = 1000;
    float width = 6500;
    float height = 6500;
    friend bool operator==(const FrameRectangle&, const FrameRectangle&) = default;
};

class FrameWindow {
  public:
    virtual ~FrameWindow() = default;
    /// The captions in the language in force, the menus; once, before anything else.
    virtual void Load() = 0;
    virtual WindowState State() const = 0;
    virtual void SetState(WindowState state) = 0;
    /// Of the window in its normal state, whatever state it is in.
    virtual FrameRectangle Rectangle() const = 0;
    virtual void SetRectangle(const FrameRectangle& rectangle) = 0;
    /// A viewer came, went, or got the focus.
    virtual void ViewersChanged() = 0;
    /// Dialogs of the program, not of a viewer: languages, about, prompts.
    virtual void CloseDialogs() = 0;
    /// A box with the information icon; comes back when the user has closed it.
    virtual void ShowMessage(const std::string& message) = 0;
    /// The frame is closed: the program ends when it comes back to its event loop.
    virtual void EndProgram() = 0;
};

/// Shows nothing; remembers the state.
class SilentFrame : public FrameWindow {
  public:
    void Load() override {}
    WindowState State() const override { return state_; }
    void SetState(WindowState state) override { state_ = state; }
    FrameRectangle Rectangle() const override { return rectangle_; }
    void SetRectangle(const FrameRectangle& rectangle) override { rectangle_ = rectangle; }
    void ViewersChanged() override {}
    void CloseDialogs() override {}
    void ShowMessage(const std::string&) override {}
    void EndProgram() override {}

  private:
    WindowState state_ = WindowState::Normal;
    FrameRectangle rectangle_;
};

}  // namespace zorvane
