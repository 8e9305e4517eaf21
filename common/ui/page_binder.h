// Binds commands to the pages of one kind of viewer, of which one at most is active.
#pragma once

#include <functional>
#include <string_view>
#include <utility>

#include "common/ui/command_table.h"

namespace zorvane {

/// What is bound outlives the binder and asks at each use which page is active.
template <class Page>
class PageBinder {
  public:
    using Act = std::function<void(Page&)>;
    using WhyNot = std::function<std::string_view(Page&)>;
    using IsOn = std::function<bool(Page&)>;

    /// `active` gives nullptr while a window of another kind or none is active; `no_window` says
    /// so.
    PageBinder(CommandSet& commands, std::function<Page*()> active, std::string_view no_window)
        : commands_(commands), active_(std::move(active)), no_window_(no_window) {}

    /// A command of these windows alone.
    void Bind(std::string_view id, Act act, WhyNot why_not = {}, IsOn is_on = {}) {
        commands_.Bind(id, Binding(std::move(act), std::move(why_not), std::move(is_on)));
    }
    /// One that windows of other kinds have too, which were bound before.
    void BindShared(std::string_view id, Act act, WhyNot why_not = {}, IsOn is_on = {}) {
        BindAs({}, id, std::move(act), std::move(why_not), std::move(is_on));
    }
    /// The same, with words of its own in these windows.
    void BindAs(const CommandWords& words, std::string_view id, Act act, WhyNot why_not = {},
                IsOn is_on = {}) {
        CommandBinding binding = Binding(std::move(act), std::move(why_not), std::move(is_on));
        binding.words = words;
        commands_.BindWhere([active = active_] { return active() != nullptr; }, id, binding);
    }

  private:
    CommandBinding Binding(Act act, WhyNot why_not, IsOn is_on) {
        CommandBinding binding;
        binding.run = [active = active_, act = std::move(act)] {
            if (Page* page = active())
                act(*page);
        };
        binding.why_not = [active = active_, why_not = std::move(why_not),
                           no_window = no_window_]() -> std::string_view {
            Page* page = active();
            if (page == nullptr)
                return no_window;
            return why_not ? why_not(*page) : std::string_view();
        };
        if (is_on)
            binding.is_on = [active = active_, is_on = std::move(is_on)] {
                Page* page = active();
                return page != nullptr && is_on(*page);
            };
        return binding;
    }

    CommandSet& commands_;
    std::function<Page*()> active_;
    std::string_view no_window_;
};

}  // namespace zorvane
