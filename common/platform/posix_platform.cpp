// The services of services.h on a POSIX system with a freedesktop.org desktop.
#include <array>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <mutex>
#include <pwd.h>
#include <spawn.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

#include "common/base/text_encoding.h"
#include "common/platform/desktop_shell.h"
#include "common/platform/file_lock.h"
#include "common/platform/files.h"
#include "common/platform/ini_profile.h"
#include "common/platform/native_path.h"
#include "common/platform/platform.h"
#include "common/platform/private_folder.h"
#include "common/platform/system_failure.h"
#include "common/platform/terminal.h"

namespace zorvane {
namespace {

std::string EnvironmentOr(const char* name, const std::string& otherwise) {
    const std::string value = Environment(name).value_or("");
    return value.empty() ? otherwise : value;
}

class PosixClock : public Clock {
  public:
    std::uint32_t TickMilliseconds() override {
        const auto now = std::chrono::steady_clock::now().time_since_epoch();
        return static_cast<std::uint32_t>(
            std::chrono::duration_cast<std::chrono::milliseconds>(now).count());
    }
    void Sleep(std::chrono::milliseconds duration) override {
        if (duration.count() > 0)
            std::this_thread::sleep_for(duration);
    }
    std::chrono::system_clock::time_point Now() override {
        return std::chrono::system_clock::now();
    }
};

class TerminalBell : public Sound {
  public:
    void Beep() override {
        if (IsTerminal(Stream::Error))
            IgnoreFailure(WriteStream(Stream::Error, "\a"), "a bell that nobody hears");
    }
};

class XdgFolders : public SpecialFolders {
  public:
    std::string GetSpecialFolder(std::int32_t csidl) override {
        const std::string home = Home();
        switch (csidl) {
            case 5:
                return home.empty() ? "(error)" : Documents(home);
            case 26:
                return Xdg("XDG_CONFIG_HOME", home, "/.config");
            case 28:
                return Xdg("XDG_DATA_HOME", home, "/.local/share");
            case 35:
            case 46:
                return "/usr/share";
            case 36:
                return "/etc";
            case 38:
            case 42:
                return "/usr";
            case 40:
                return home.empty() ? "(error)" : home;
            default:
                return "(error)";
        }
    }
    std::string ProgramFolder() override {
        std::error_code error;
        return std::filesystem::read_symlink("/proc/self/exe", error).parent_path().string();
    }
    std::string RuntimeFolder() override {
        std::string runtime = EnvironmentOr("XDG_RUNTIME_DIR", "");
        if (!runtime.empty() && access(runtime.c_str(), W_OK) == 0)
            return runtime;
        const std::string own =
            EnvironmentOr("TMPDIR", "/tmp") + "/zorvane-" + std::to_string(geteuid());
        mkdir(own.c_str(), 0700);
        struct stat facts {};
        // A folder that somebody else put there is not ours to lock in.
        const bool safe =
            lstat(own.c_str(), &facts) == 0 && S_ISDIR(facts.st_mode) && facts.st_uid == geteuid();
        return safe ? own : "";
    }

  private:
    // A service or a timed job may run without HOME.
    static std::string Home() {
        std::string home = EnvironmentOr("HOME", "");
        if (!home.empty())
            return home;
        const passwd* user = getpwuid(geteuid());
        return user == nullptr || user->pw_dir == nullptr ? "" : user->pw_dir;
    }
    // As the desktop's own setting has it, in the user's language.
    static std::string Documents(const std::string& home) {
        constexpr std::string_view kKey = "XDG_DOCUMENTS_DIR=\"";
        const std::string configuration = Xdg("XDG_CONFIG_HOME", home, "/.config");
        const Result<std::string> setting = ReadWholeFile(configuration + "/user-dirs.dirs");
        const std::string text = setting.ok() ? "\n" + setting.value() : std::string();
        const std::size_t found = text.find("\n" + std::string(kKey));
        if (found == std::string::npos)
            return home + "/Documents";
        const std::size_t begin = found + 1 + kKey.size();
        const std::string value = text.substr(begin, text.find_first_of("\"\n", begin) - begin);
        constexpr std::string_view kHome = "$HOME";
        const std::string folder =
            value.starts_with(kHome) ? home + value.substr(kHome.size()) : value;
        return folder.starts_with('/') ? folder : home + "/Documents";
    }
    static std::string Xdg(const char* variable, const std::string& home, const char* below) {
        std::string folder = EnvironmentOr(variable, "");
        if (!folder.empty() && folder.front() == '/')
            return folder;
        return home.empty() ? "(error)" : home + below;
    }
};

struct LocaleRow {
    std::string_view language;
    std::int32_t id;
};
// The first matching row counts, so a country stands in front of its language; others are United
// States English.
constexpr LocaleRow kLocales[] = {
    {"en_US", 1033}, {"en_GB", 2057}, {"de", 1031},    {"fr", 1036},    {"es", 3082},
    {"it", 1040},    {"ja", 1041},    {"ko", 1042},    {"zh_CN", 2052}, {"zh_TW", 1028},
    {"zh_HK", 3076}, {"zh_SG", 4100}, {"zh_MO", 5124}, {"ru", 1049},    {"pt_BR", 1046},
    {"pt", 2070},    {"nl", 1043},    {"pl", 1045},    {"sv", 1053},    {"zh", 2052},
};

class EnvironmentLocale : public UserLocale {
  public:
    std::int32_t LocaleId() override {
        const std::string name = Name();
        for (const LocaleRow& row : kLocales) {
            if (name.starts_with(row.language))
                return row.id;
        }
        return 1033;
    }
    std::string EncodingName() override {
        const std::string name = Name();
        const std::size_t dot = name.find('.');
        return dot == std::string::npos ? "" : name.substr(dot + 1, name.find('@') - dot - 1);
    }

  private:
    static std::string Name() {
        return EnvironmentOr("LC_ALL", EnvironmentOr("LC_CTYPE", EnvironmentOr("LANG", "")));
    }
};

class FileRegistryStore : public RegistryStore {
  public:
    /// Without a folder the values live as long as the process.
    explicit FileRegistryStore(std::string folder) : folder_(std::move(folder)) {}
    std::string Get(std::string_view section, std::string_view key,
                    std::string_view default_value) override {
        return Profile().Read(section, key, default_value, 4096);
    }
    void Set(std::string_view section, std::string_view key, std::string_view value) override {
        std::error_code error;
        if (!folder_.empty())
            std::filesystem::create_directories(folder_, error);
        Profile().Write(section, key, value);
        IgnoreFailure(Profile().Flush(), "a value that cannot be kept is asked for again");
    }

  private:
    IniProfile& Profile() {
        if (!profile_)
            profile_ = folder_.empty() ? MakeMemoryIniProfile()
                                       : OpenIniProfile(folder_ + "/registry.ini");
        return *profile_;
    }
    std::string folder_;
    std::unique_ptr<IniProfile> profile_;
};

class FileMutexes : public NamedMutexes {
  public:
    explicit FileMutexes(SpecialFolders& folders) : folders_(folders) {}
    Result<int> Lock(std::string_view name) override {
        const std::string folder = folders_.RuntimeFolder();
        if (folder.empty())
            return Failure{std::string(name) + ": no private folder for locks"};
        const std::string path = folder + "/" + std::string(name) + ".lock";
        FileDescriptor file = OpenLockFile(path);
        if (LockFile(file, kWithoutLimit) != LockEnd::Taken)
            return SystemFailure(path);
        return file.Release();
    }
    void Unlock(int handle) override { close(handle); }

  private:
    SpecialFolders& folders_;
};

}  // namespace

Platform MakePosixPlatform() {
    Platform platform;
    platform.clock = std::make_unique<PosixClock>();
    platform.sound = std::make_unique<TerminalBell>();
    platform.folders = std::make_unique<XdgFolders>();
    platform.shell = std::make_unique<DesktopShell>();
    platform.locale = std::make_unique<EnvironmentLocale>();
    const std::string configuration = platform.folders->GetSpecialFolder(26);
    platform.registry = std::make_unique<FileRegistryStore>(
        configuration == "(error)" ? "" : configuration + "/Tarnwick, Inc/Zorvane");
    platform.mutexes = std::make_unique<FileMutexes>(*platform.folders);
    platform.temp_files = std::make_unique<PrivateTempFiles>();
    return platform;
}

}  // namespace zorvane
