#include "common/platform/ini_profile.h"

#include <cerrno>
#include <fcntl.h>
#include <map>
#include <optional>
#include <sys/file.h>
#include <unistd.h>
#include <vector>

#include "common/base/text_encoding.h"
#include "common/platform/files.h"
#include "common/platform/native_path.h"

namespace zorvane {
namespace {

// Settings keys are ASCII, where this is the same as a full folding and far cheaper.
std::string Folded(std::string_view name) {
    std::string folded(name);
    for (char& character : folded) {
        if (character >= 'A' && character <= 'Z')
            character = static_cast<char>(character - 'A' + 'a');
    }
    return folded;
}

std::string_view Unquoted(std::string_view value) {
    value = Trim(value);
    const bool quoted = value.size() >= 2 && value.front() == value.back() &&
                        (value.front() == '"' || value.front() == '\'');
    return quoted ? value.substr(1, value.size() - 2) : value;
}

std::string Cut(std::string_view value, std::size_t max_bytes) {
    if (value.size() <= max_bytes)
        return std::string(value);
    std::size_t end = max_bytes;
    while (end > 0 && (static_cast<unsigned char>(value[end]) & 0xC0) == 0x80)
        --end;
    return std::string(value.substr(0, end));
}

std::optional<std::string_view> SectionName(std::string_view line) {
    line = Trim(line);
    if (line.size() < 2 || line.front() != '[')
        return std::nullopt;
    const std::size_t close = line.find(']');
    return line.substr(1, close == std::string_view::npos ? close : close - 1);
}

struct Entry {
    std::string_view key;
    std::string_view value;
};

std::optional<Entry> ParseEntry(std::string_view line) {
    const std::size_t equals = line.find('=');
    if (equals == std::string_view::npos || Trim(line).starts_with(';'))
        return std::nullopt;
    return Entry{Trim(line.substr(0, equals)), line.substr(equals + 1)};
}

// Files of other makers: a byte-order mark goes, UTF-16 and the old Western code page are read.
std::string AsUtf8(const std::string& bytes) {
    if (!LooksLikeUtf16(bytes) && !bytes.starts_with("\xEF\xBB\xBF"))
        return IsValidUtf8(bytes) ? bytes : ToUtf8(DecodeCodePage(bytes, CodePage{1252}));
    return ToUtf8(DecodeText(bytes, DetectEncoding(bytes, "")));
}

std::vector<std::string> LinesOf(std::string_view text) {
    std::vector<std::string> lines;
    while (!text.empty()) {
        const std::size_t end = text.find('\n');
        std::string_view line = text.substr(0, end);
        if (line.ends_with('\r'))
            line.remove_suffix(1);
        lines.emplace_back(line);
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    }
    return lines;
}

struct Name {
    std::string section;
    std::string key;
    auto operator<=>(const Name&) const = default;
};

struct Pending {
    std::string section;  // as it is to be written
    std::string key;
    std::string value;
};
using PendingMap = std::map<Name, Pending>;

// The lines of a file with the pending keys in place: replaced where they stand, else behind the
// last line of their section that is not empty, else in a new section at the end.
std::string Merged(std::string_view old_text, PendingMap pending) {
    const std::vector<std::string> lines = LinesOf(old_text);
    std::vector<std::string> out;
    std::string section;
    const auto add_rest = [&](const std::string& folded_section) {
        std::size_t place = out.size();
        while (place > 0 && Trim(out[place - 1]).empty())
            --place;
        for (auto it = pending.begin(); it != pending.end();) {
            if (it->first.section != folded_section) {
                ++it;
                continue;
            }
            out.insert(out.begin() + static_cast<std::ptrdiff_t>(place++),
                       it->second.key + "=" + it->second.value);
            it = pending.erase(it);
        }
    };
    bool in_section = false;
    for (const std::string& line : lines) {
        if (const auto name = SectionName(line)) {
            if (in_section)
                add_rest(section);
            section = Folded(*name);
            in_section = true;
        } else if (const auto entry = ParseEntry(line); entry && in_section) {
            const auto found = pending.find({section, Folded(entry->key)});
            if (found != pending.end()) {
                out.push_back(std::string(entry->key) + "=" + found->second.value);
                pending.erase(found);
                continue;
            }
        }
        out.push_back(line);
    }
    if (in_section)
        add_rest(section);
    while (!pending.empty()) {
        const Name first = pending.begin()->first;
        out.push_back("[" + pending.begin()->second.section + "]");
        add_rest(first.section);
    }
    std::string text;
    for (const std::string& line : out)
        text.append(line).append("\r\n");
    return text;
}

// Held while the file is read, merged and replaced, so that two writers lose nothing of each other.
class FileLock {
  public:
    explicit FileLock(const std::string& native)
        : descriptor_(open((native + ".lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600)) {
        while (descriptor_ >= 0 && flock(descriptor_, LOCK_EX) != 0 && errno == EINTR) {
        }
    }
    ~FileLock() {
        if (descriptor_ >= 0)
            close(descriptor_);
    }
    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;

  private:
    int descriptor_;
};

class FileIniProfile : public IniProfile {
  public:
    explicit FileIniProfile(std::string path) : path_(std::move(path)) {}

    std::string Read(std::string_view section, std::string_view key, std::string_view default_value,
                     std::size_t max_bytes) override {
        Load();
        const auto found = values_.find({Folded(section), Folded(key)});
        return Cut(Unquoted(found == values_.end() ? default_value : found->second), max_bytes);
    }

    void Write(std::string_view section, std::string_view key, std::string_view value) override {
        Load();
        const std::string kept(value.substr(0, value.find_first_of("\r\n")));
        const Name name{Folded(section), Folded(key)};
        values_[name] = kept;
        pending_[name] = {std::string(section), std::string(key), kept};
    }

    Status Flush() override {
        if (pending_.empty() || path_.empty())
            return Status::Ok();
        const FileLock lock(NativePath(path_));
        const Result<std::string> old = ReadWholeFile(path_);
        // A file that is there and cannot be read holds settings that must not be lost.
        if (!old.ok() && access(NativePath(path_).c_str(), F_OK) == 0)
            return old.failure();
        const std::string text = old.ok() ? AsUtf8(old.value()) : std::string();
        const Status written = ReplaceFile(path_, Merged(text, pending_), 0600);
        if (written.ok())
            pending_.clear();
        return written;
    }

  private:
    void Load() {
        if (loaded_)
            return;
        loaded_ = true;
        const Result<std::string> text =
            path_.empty() ? Result<std::string>(std::string()) : ReadWholeFile(path_);
        if (!text.ok())
            return;
        std::string section;
        bool in_section = false;
        for (const std::string& line : LinesOf(AsUtf8(text.value()))) {
            if (const auto name = SectionName(line)) {
                section = Folded(*name);
                in_section = true;
            } else if (const auto entry = ParseEntry(line); entry && in_section) {
                values_.emplace(Name{section, Folded(entry->key)}, entry->value);
            }
        }
    }

    std::string path_;
    bool loaded_ = false;
    std::map<Name, std::string> values_;
    PendingMap pending_;
};

}  // namespace

std::unique_ptr<IniProfile> OpenIniProfile(const std::string& path) {
    return std::make_unique<FileIniProfile>(path);
}

std::unique_ptr<IniProfile> MakeMemoryIniProfile() {
    return std::make_unique<FileIniProfile>("");
}

}  // namespace zorvane
