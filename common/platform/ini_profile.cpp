#include "common/platform/ini_profile.h"

#include <algorithm>
#include <map>
#include <optional>
#include <unistd.h>
#include <vector>

#include "common/base/ascii.h"
#include "common/base/text_bytes.h"
#include "common/base/text_encoding.h"
#include "common/platform/file_lock.h"
#include "common/platform/file_stamp.h"
#include "common/platform/files.h"
#include "common/platform/native_path.h"

namespace zorvane {
namespace {

// Settings keys are ASCII, where this is the same as a full folding and far cheaper.
std::string Folded(std::string_view name) {
    std::string folded(name);
    std::transform(folded.begin(), folded.end(), folded.begin(), AsciiLower);
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
    while (end > 0 && IsContinuation(value[end]))
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

// Files of other makers: a byte-order mark goes, UTF-16 and the old Western code page are read. A
// second mark goes too: what is written begins with none, and one in front would be taken for it.
std::string AsUtf8(const std::string& bytes) {
    constexpr std::string_view kMark = "\xEF\xBB\xBF";
    if (!LooksLikeUtf16(bytes) && !bytes.starts_with(kMark))
        return IsValidUtf8(bytes) ? bytes : ToUtf8(DecodeCodePage(bytes, CodePage{1252}));
    std::string text = ToUtf8(DecodeText(bytes, DetectEncoding(bytes, "")));
    while (text.starts_with(kMark))
        text.erase(0, kMark.size());
    return text;
}

// A name of a file may hold bytes that are no UTF-8, and one of them would make the whole file look
// like one of the old code page. In the file each is a character that nobody uses: U+10FE80 for the
// byte 80, and so on.
constexpr std::string_view kByteFrom80 = "\xF4\x8F\xBA";
constexpr std::string_view kByteFromC0 = "\xF4\x8F\xBB";

std::string InFile(std::string_view value) {
    if (IsValidUtf8(value))
        return std::string(value);
    std::string text;
    while (!value.empty()) {
        const std::size_t length = FirstCharacter(value);
        if (length > 0) {
            text += value.substr(0, length);
        } else {
            const auto byte = static_cast<unsigned char>(value.front());
            text += byte < 0xC0 ? kByteFrom80 : kByteFromC0;
            text += static_cast<char>(0x80 | (byte & 0x3F));
        }
        value.remove_prefix(std::max<std::size_t>(length, 1));
    }
    return text;
}

std::string FromFile(std::string_view text) {
    std::string value;
    while (!text.empty()) {
        const bool from_80 = text.starts_with(kByteFrom80);
        if (text.size() > kByteFrom80.size() && (from_80 || text.starts_with(kByteFromC0))) {
            const int low = text[kByteFrom80.size()] & 0x3F;
            value += static_cast<char>(low | (from_80 ? 0x80 : 0xC0));
            text.remove_prefix(kByteFrom80.size() + 1);
        } else {
            value += text.front();
            text.remove_prefix(1);
        }
    }
    return value;
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

// What is pending of a section, behind its last line that is not empty.
void AddRest(const std::string& folded_section, PendingMap& pending,
             std::vector<std::string>& out) {
    std::size_t place = out.size();
    while (place > 0 && Trim(out[place - 1]).empty())
        --place;
    for (auto it = pending.begin(); it != pending.end();) {
        if (it->first.section != folded_section) {
            ++it;
            continue;
        }
        out.insert(out.begin() + static_cast<std::ptrdiff_t>(place++),
                   it->second.key + "=" + InFile(it->second.value));
        it = pending.erase(it);
    }
}

// A line, with the pending value of its key where it has one.
std::string MergedLine(const std::string& line, const std::string& section, PendingMap& pending) {
    const auto entry = ParseEntry(line);
    if (!entry)
        return line;
    const auto found = pending.find({section, Folded(entry->key)});
    if (found == pending.end())
        return line;
    std::string merged = std::string(entry->key) + "=" + InFile(found->second.value);
    pending.erase(found);
    return merged;
}

// The lines of a file with the pending keys in place: replaced where they stand, else behind the
// last line of their section that is not empty, else in a new section at the end.
std::string Merged(std::string_view old_text, PendingMap pending) {
    const std::vector<std::string> lines = LinesOf(old_text);
    std::vector<std::string> out;
    std::string section;
    bool in_section = false;
    for (const std::string& line : lines) {
        if (const auto name = SectionName(line)) {
            if (in_section)
                AddRest(section, pending, out);
            section = Folded(*name);
            in_section = true;
            out.push_back(line);
        } else {
            out.push_back(in_section ? MergedLine(line, section, pending) : line);
        }
    }
    if (in_section)
        AddRest(section, pending, out);
    while (!pending.empty()) {
        const Name first = pending.begin()->first;
        out.push_back("[" + pending.begin()->second.section + "]");
        AddRest(first.section, pending, out);
    }
    std::string text;
    for (const std::string& line : out)
        text.append(line).append("\r\n");
    return text;
}

class FileIniProfile : public IniProfile {
  public:
    FileIniProfile(std::string path, std::chrono::milliseconds lock_patience)
        : path_(std::move(path)), lock_patience_(lock_patience), patience_(lock_patience) {}

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
        locked_elsewhere_ = false;
        if (pending_.empty() || path_.empty())
            return Status::Ok();
        // Held while the file is read, merged and replaced, so that two writers lose nothing of
        // each other. Where the system has no locks, or no place for one, the work is done without.
        const FileDescriptor lock = OpenLockFile(NativePath(path_) + ".lock");
        locked_elsewhere_ = LockFile(lock, patience_) == LockEnd::Busy;
        if (locked_elsewhere_) {
            patience_ = std::chrono::milliseconds(0);
            return Failure{path_ + ": another program keeps it locked"};
        }
        patience_ = lock_patience_;
        const Result<std::string> old = ReadWholeFile(path_);
        // A file that is there and cannot be read holds settings that must not be lost.
        if (!old.ok() && access(NativePath(path_).c_str(), F_OK) == 0)
            return old.failure();
        const std::string text = Merged(old.ok() ? AsUtf8(old.value()) : std::string(), pending_);
        SweepHalfFiles(path_);
        Status written = ReplaceFile(path_, text, 0600);
        if (!written.ok())
            return written;
        pending_.clear();
        stamp_ = FileStampOf(path_);
        Take(text);
        return written;
    }

    void Refresh() override {
        if (loaded_ && !path_.empty() && FileStampOf(path_) != stamp_) {
            loaded_ = false;
            Load();
        }
    }

    bool IsLockedElsewhere() const override { return locked_elsewhere_; }

  private:
    void Load() {
        if (loaded_)
            return;
        loaded_ = true;
        // The stamp first: a file that is replaced in between is then read again.
        stamp_ = FileStampOf(path_);
        const Result<std::string> text =
            path_.empty() ? Result<std::string>(std::string()) : ReadWholeFile(path_);
        Take(text.ok() ? AsUtf8(text.value()) : std::string());
    }

    void Take(std::string_view text) {
        values_.clear();
        for (const auto& [name, pending] : pending_)
            values_.emplace(name, pending.value);
        std::string section;
        bool in_section = false;
        for (const std::string& line : LinesOf(text)) {
            if (const auto name = SectionName(line)) {
                section = Folded(*name);
                in_section = true;
            } else if (const auto entry = ParseEntry(line); entry && in_section) {
                values_.emplace(Name{section, Folded(entry->key)}, FromFile(entry->value));
            }
        }
    }

    std::string path_;
    std::chrono::milliseconds lock_patience_;
    std::chrono::milliseconds patience_;  // none after waiting in vain
    bool locked_elsewhere_ = false;
    bool loaded_ = false;
    std::optional<FileStamp> stamp_;
    std::map<Name, std::string> values_;
    PendingMap pending_;
};

}  // namespace

std::unique_ptr<IniProfile> OpenIniProfile(const std::string& path,
                                           std::chrono::milliseconds lock_patience) {
    return std::make_unique<FileIniProfile>(path, lock_patience);
}

std::unique_ptr<IniProfile> MakeMemoryIniProfile() {
    return std::make_unique<FileIniProfile>("", kSettingsLockPatience);
}

}  // namespace zorvane
