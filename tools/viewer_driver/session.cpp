#include "tools/viewer_driver/session.h"

#include <algorithm>
#include <map>
#include <thread>
#include <utility>

#include "app/run_modes.h"

namespace zorvane {
namespace {

/// The user's folders inside of one; those of the program are the true ones.
class DriverFolders : public SpecialFolders {
  public:
    DriverFolders(std::string root, std::unique_ptr<SpecialFolders> system)
        : root_(std::move(root)), system_(std::move(system)) {}
    std::string GetSpecialFolder(std::int32_t csidl) override {
        return root_ + "/user" + std::to_string(csidl);
    }
    std::string ProgramFolder() override { return system_->ProgramFolder(); }
    std::string RuntimeFolder() override { return root_; }

  private:
    std::string root_;
    std::unique_ptr<SpecialFolders> system_;
};

class QuietShell : public ShellOpen {
  public:
    Status Open(const std::string&) override { return Status::Ok(); }
    Status EditText(const std::string&) override { return Status::Ok(); }
};

class QuietSound : public Sound {
  public:
    void Beep() override {}
};

class DriverLocale : public UserLocale {
  public:
    std::int32_t LocaleId() override { return 1033; }
    std::string EncodingName() override { return "UTF-8"; }
};

class MemoryRegistry : public RegistryStore {
  public:
    std::string Get(std::string_view section, std::string_view key,
                    std::string_view default_value) override {
        const auto found = values_.find({std::string(section), std::string(key)});
        return found == values_.end() ? std::string(default_value) : found->second;
    }
    void Set(std::string_view section, std::string_view key, std::string_view value) override {
        values_[{std::string(section), std::string(key)}] = value;
    }

  private:
    std::map<std::pair<std::string, std::string>, std::string> values_;
};

}  // namespace

Platform MakeDriverPlatform(const std::string& folder) {
    Platform platform = MakePosixPlatform();
    platform.folders = std::make_unique<DriverFolders>(folder, std::move(platform.folders));
    platform.shell = std::make_unique<QuietShell>();
    platform.sound = std::make_unique<QuietSound>();
    platform.locale = std::make_unique<DriverLocale>();
    platform.registry = std::make_unique<MemoryRegistry>();
    return platform;
}

DriverSession::DriverSession(Platform& platform, Answers& answers)
    : answers_(answers), process_(platform), frame_(process_, window_, Factories()) {
    process_.messages.WaitForWindow([] {});
    CommandLineRequest request;
    Main(process_, "", request, frame_);
    RunBeside();
}

ViewerFactories DriverSession::Factories() {
    ViewerFactories factories;
    factories.compare_files = [this](const CommandLineRequest& request) {
        auto window = std::make_unique<ScriptedWindow>(answers_);
        ScriptedWindow* const shown = window.get();
        MadeViewer made = MakeCompareFiles(process_, request, std::move(window));
        frmCompareFiles& viewer = static_cast<frmCompareFiles&>(*made.viewer);
        shown->on_filter = [&viewer](ViewFilter filter) { viewer.ShowFilter(filter); };
        opened_.push_back({&viewer, shown});
        // The window goes last, and takes the note of it along.
        made.window = std::shared_ptr<void>(shown, [this, kept = made.window](void* gone) {
            std::erase_if(opened_, [gone](const Opened& entry) { return entry.window == gone; });
        });
        return made;
    };
    return factories;
}

frmCompareFiles* DriverSession::Current() const {
    return dynamic_cast<frmCompareFiles*>(frame_.ActiveViewer());
}

ScriptedWindow& DriverSession::WindowOf(const Viewer& viewer) const {
    return *std::find_if(opened_.begin(), opened_.end(), [&viewer](const Opened& entry) {
                return entry.viewer == &viewer;
            })->window;
}

frmCompareFiles* DriverSession::At(std::size_t number) const {
    if (number < 1 || number > opened_.size())
        return nullptr;
    return opened_[number - 1].viewer;
}

clsZorvane& DriverSession::Automation() {
    if (automation_ == nullptr)
        automation_ = std::make_unique<clsZorvane>(
            process_, frame_, [this](const std::string& message, std::int32_t code) {
                refused_.push_back(std::to_string(code) + " " + message);
            });
    return *automation_;
}

bool DriverSession::Busy() const {
    return std::any_of(opened_.begin(), opened_.end(),
                       [](const Opened& entry) { return entry.viewer->Busy(); });
}

// A viewer of a command line runs on this thread until that line has ended.
void DriverSession::RunBeside() {
    for (const Opened& entry : opened_) {
        if (!entry.viewer->Busy())
            entry.viewer->RunInBackground(true);
    }
}

void DriverSession::Poll() {
    RunBeside();
    frame_.Poll();
}

bool DriverSession::Wait(std::chrono::milliseconds patience) {
    const auto end = std::chrono::steady_clock::now() + patience;
    while (Busy()) {
        if (std::chrono::steady_clock::now() > end)
            return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
        Poll();
    }
    Poll();
    return !Busy() || Wait(patience);
}

void DriverSession::PollFor(std::chrono::microseconds time) {
    const auto end = std::chrono::steady_clock::now() + time;
    do {
        Poll();
        std::this_thread::sleep_for(std::min(time, std::chrono::microseconds(500)));
    } while (std::chrono::steady_clock::now() < end);
}

}  // namespace zorvane
