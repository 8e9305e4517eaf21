#include "folders/kept_checks.h"

#include <array>
#include <filesystem>
#include <sstream>
#include <string_view>
#include <utility>

#include "common/file_utilities.h"
#include "common/platform/files.h"
#include "common/platform/native_path.h"
#include "common/process_state.h"
#include "common/text_privacy.h"
#include "load/file_types.h"
#include "load/reader_stamps.h"
#include "reports/report_driver.h"

namespace zorvane {
namespace {

// A page larger than this is made anew.
constexpr std::size_t kMostReport = std::size_t{8} << 20;

// Takes down what a save would write.
class TakenDown : public IniProfile {
  public:
    std::string Read(std::string_view, std::string_view, std::string_view default_value,
                     std::size_t) override {
        return std::string(default_value);
    }
    void Write(std::string_view, std::string_view key, std::string_view value) override {
        text.append(key).append("=").append(value).append("\n");
    }
    Status Flush() override { return Status::Ok(); }
    void Refresh() override {}
    bool IsLockedElsewhere() const override { return false; }

    std::string text;
};

// A program that is installed anew may read and compare in another way.
std::string ProgramStamps(ProcessState& process) {
    return StampText("/proc/self/exe") + ReaderStamps(process.platform.folders->ProgramFolder());
}

std::string OptionsText(const TextCheckOptions& how) {
    std::string text;
    for (const OptionValue* option : how.options.colOptions()) {
        const bool file =
            option == &how.options.sFileOriginal || option == &how.options.sFileModified;
        text += file ? "" : option->Name() + "=" + option->ActiveData() + "\n";
    }
    TakenDown settings;
    SaveCompareFilesSettings(settings, "", how.settings);
    text += settings.text + "moves=" + (how.find_moves ? "1" : "0") + "\ntitle=" + how.title + "\n";
    for (const std::string& extension : how.TextFileExtensions.Items())
        text += "text=" + extension + "\n";
    return text;
}

// What was read with a password is not left where none is asked for.
bool HasPassword(const TextCheckOptions& how) {
    for (const OptionValue* option : how.options.colOptions()) {
        if (option->Name().find("Password") != std::string::npos && !option->ActiveData().empty())
            return true;
    }
    return !how.settings.sBCLPasswordUser.empty() || !how.settings.sBCLPasswordOwner.empty();
}

}  // namespace

/// Both files as they were read once, and what else the outcome depends on.
struct KeptChecks::Contents {
    TextKey key;
    std::string reading;  ///< stands in the entry too, so that no hash decides alone
    friend bool operator==(const Contents&, const Contents&) = default;
};

KeptChecks::KeptChecks(ProcessState& process, TextCache cache, const TextCheckOptions& how)
    : process_(process), cache_(HasPassword(how) ? TextCache("") : std::move(cache)) {
    if (cache_.Folder().empty())
        return;
    const modTranslator& translator = process.translator;
    how_ = "check 1\n" + ProgramStamps(process) + OptionsText(how) +
           "encoding=" + process.platform.locale->EncodingName() +
           "\nlanguage=" + translator.gsLanguage + "\n" + StampText(translator.gsLanguageFile);
}

KeptChecks::~KeptChecks() {
    if (wrote_)
        cache_.Trim();
}

// A report names the files and their dates; without one only the types of the files matter.
std::string KeptChecks::ReadingOf(const TextPair& pair) const {
    std::string reading = how_;
    for (const Side side : kBothSides) {
        const std::string& file = pair.files[side];
        reading += pair.report.empty() ? UpperExtension(file) : file + "\n" + ReportDateOf(file);
        reading += '\n';
    }
    if (!pair.report.empty())
        reading += pair.report + "\n" + std::to_string(static_cast<int>(pair.report_type)) + "\n";
    return reading;
}

std::optional<KeptChecks::Contents> KeptChecks::ContentsOf(const TextPair& pair) const {
    PerSide<TextKey> keys;
    for (const Side side : kBothSides) {
        const Result<std::string> bytes = ReadWholeFile(pair.files[side]);
        if (!bytes.ok())
            return std::nullopt;
        keys[side] = KeyOf(bytes.value(), "");
    }
    std::array<std::uint64_t, 6> both{keys.original.content[0], keys.original.content[1],
                                      keys.original.size,       keys.modified.content[0],
                                      keys.modified.content[1], keys.modified.size};
    Contents contents;
    std::ostringstream reading;
    for (const std::uint64_t number : both)
        reading << number << ' ';
    reading << '\n' << ReadingOf(pair);
    contents.reading = reading.str();
    contents.key = KeyOf(contents.reading, "text check");
    return contents;
}

TextCheck KeptChecks::Check(const TextPair& pair, const std::function<TextCheck()>& make) {
    if (cache_.Folder().empty())
        return make();
    const std::optional<Contents> before = ContentsOf(pair);
    if (!before)
        return make();
    if (std::optional<TextCheck> known = Find(*before, pair)) {
        ++hits_;
        return *known;
    }
    TextCheck check = make();
    // What was written to a file meanwhile may be what was compared.
    if (check.end == TextCheckEnd::Compared && check.reason.empty() && ContentsOf(pair) == before)
        Keep(*before, pair, check);
    return check;
}

// An entry: what it was made of, a NUL, the counts and whether there is a report, a NUL, the
// report.
void KeptChecks::Keep(const Contents& contents, const TextPair& pair, const TextCheck& check) {
    std::string report;
    if (!check.report.empty()) {
        Result<std::string> bytes = ReadWholeFile(check.report);
        if (check.report != pair.report || !bytes.ok() || bytes.value().size() > kMostReport)
            return;
        report = std::move(bytes).value();
    }
    std::ostringstream entry;
    entry << contents.reading << '\0' << check.changed << ' ' << check.added << ' ' << check.deleted
          << ' ' << check.beside << ' ' << (check.report.empty() ? 0 : 1) << '\0' << report;
    cache_.Keep(contents.key, {entry.str(), {}});
    wrote_ = true;
}

std::optional<TextCheck> KeptChecks::Find(const Contents& contents, const TextPair& pair) {
    const std::optional<DocumentText> entry = cache_.Find(contents.key);
    if (!entry || !entry->text.starts_with(contents.reading + '\0'))
        return std::nullopt;
    const std::string_view rest = std::string_view(entry->text).substr(contents.reading.size() + 1);
    const std::size_t end = rest.find('\0');
    if (end == std::string_view::npos)
        return std::nullopt;
    TextCheck check;
    int reported = 0;
    std::istringstream counts{std::string(rest.substr(0, end))};
    counts >> check.changed >> check.added >> check.deleted >> check.beside >> reported;
    if (counts.fail())
        return std::nullopt;
    if (reported != 0) {
        if (!PutReport(std::string(rest.substr(end + 1)), pair))
            return std::nullopt;  // the road that makes it tells why it cannot be written
        check.report = pair.report;
    }
    check.end = TextCheckEnd::Compared;
    return check;
}

// One that stands there as it would be made is left alone.
bool KeptChecks::PutReport(const std::string& report, const TextPair& pair) const {
    const Result<std::string> standing = ReadWholeFile(pair.report);
    if (standing.ok() && standing.value() == report)
        return true;
    std::error_code error;
    std::filesystem::create_directories(
        std::filesystem::path(NativePath(pair.report)).parent_path(), error);
    return ReplaceFile(pair.report, report, ModeForTextOf(process_.telling, pair.files)).ok();
}

}  // namespace zorvane
