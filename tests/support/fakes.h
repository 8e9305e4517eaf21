// Stand-ins for the services of the system.
#pragma once

#include <atomic>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "common/platform/platform.h"
#include "tests/support/temp_folder.h"

namespace zorvane {

/// Sleeping takes no time and moves the clock.
class FakeClock : public Clock {
  public:
    std::uint32_t TickMilliseconds() override { return ticks += step; }
    void Sleep(std::chrono::milliseconds duration) override {
        ticks += static_cast<std::uint32_t>(duration.count());
    }
    std::chrono::system_clock::time_point Now() override { return now; }

    std::atomic<std::uint32_t> ticks = 0;  // two runs may look at once
    std::uint32_t step = 0;                ///< between two looks
    std::chrono::system_clock::time_point now = std::chrono::system_clock::from_time_t(1700000000);
};

class FakeSound : public Sound {
  public:
    void Beep() override { ++beeps; }
    int beeps = 0;
};

class FakeFolders : public SpecialFolders {
  public:
    explicit FakeFolders(std::string root) : root_(std::move(root)) {}
    std::string GetSpecialFolder(std::int32_t csidl) override {
        return csidl == 36 ? "(error)" : root_ + "/" + std::to_string(csidl);
    }
    std::string ProgramFolder() override { return root_ + "/program"; }
    std::string RuntimeFolder() override { return root_; }

  private:
    std::string root_;
};

class FakeShell : public ShellOpen {
  public:
    Status Open(const std::string& what) override {
        calls.push_back("open " + what);
        return Status::Ok();
    }
    Status EditText(const std::string& path) override {
        calls.push_back("edit " + path);
        return Status::Ok();
    }
    std::vector<std::string> calls;
};

class FakeLocale : public UserLocale {
  public:
    std::int32_t LocaleId() override { return id; }
    std::string EncodingName() override { return "UTF-8"; }
    std::int32_t id = 1033;
};

class FakeRegistry : public RegistryStore {
  public:
    std::string Get(std::string_view section, std::string_view key,
                    std::string_view default_value) override {
        const auto found = values.find({std::string(section), std::string(key)});
        return found == values.end() ? std::string(default_value) : found->second;
    }
    void Set(std::string_view section, std::string_view key, std::string_view value) override {
        values[{std::string(section), std::string(key)}] = value;
    }
    std::map<std::pair<std::string, std::string>, std::string> values;
};

class FakeMutexes : public NamedMutexes {
  public:
    Result<int> Lock(std::string_view) override { return ++locked; }
    void Unlock(int) override { --locked; }
    std::atomic<int> locked = 0;
};

class FakeTempFiles : public TempFiles {
  public:
    Result<std::string> Folder() override { return folder_.Path(); }
    Result<std::string> NewName(std::string_view prefix, std::string_view extension) override {
        return folder_.Path(std::string(prefix) + std::to_string(++count_) + "." +
                            std::string(extension));
    }

  private:
    TempFolder folder_;
    std::atomic<int> count_ = 0;
};

/// A platform of fakes under a fresh folder.
struct FakePlatform {
    FakePlatform() {
        platform.clock = std::make_unique<FakeClock>();
        platform.sound = std::make_unique<FakeSound>();
        platform.folders = std::make_unique<FakeFolders>(folder.Path());
        platform.shell = std::make_unique<FakeShell>();
        platform.locale = std::make_unique<FakeLocale>();
        platform.registry = std::make_unique<FakeRegistry>();
        platform.mutexes = std::make_unique<FakeMutexes>();
        platform.temp_files = std::make_unique<FakeTempFiles>();
    }
    FakeClock& clock() { return static_cast<FakeClock&>(*platform.clock); }
    FakeSound& sound() { return static_cast<FakeSound&>(*platform.sound); }
    FakeShell& shell() { return static_cast<FakeShell&>(*platform.shell); }
    FakeLocale& locale() { return static_cast<FakeLocale&>(*platform.locale); }

    TempFolder folder;
    Platform platform;
};

}  // namespace zorvane
