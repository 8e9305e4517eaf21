#include <algorithm>

#include "common/base/text_encoding.h"
#include "common/base/visible_text.h"
#include "folders/folder_findings.h"
#include "folders/pieces_at_once.h"

namespace zorvane {
namespace {

struct LetterRow {
    FolderVerdict verdict;
    const char* letter;
    const char* color;
};
constexpr LetterRow kLetters[] = {
    {FolderVerdict::Same, "=", ""},
    {FolderVerdict::Date, "t", ""},
    {FolderVerdict::SameWords, "m", ""},
    {FolderVerdict::Changed, "M", "\x1B[33m"},
    {FolderVerdict::OnlyOriginal, "D", "\x1B[31m"},
    {FolderVerdict::OnlyModified, "A", "\x1B[32m"},
    {FolderVerdict::Renamed, "R", "\x1B[36m"},
    {FolderVerdict::Failed, "!", "\x1B[31m"},
};

const LetterRow& RowOf(FolderVerdict verdict) {
    return *std::find_if(std::begin(kLetters), std::end(kLetters),
                         [verdict](const LetterRow& row) { return row.verdict == verdict; });
}

// Names are bytes of anybody's choice; the terminal is shown pictures of what would steer it.
std::string Shown(std::string_view name) {
    return VisibleText(IsValidUtf8(name) ? std::string(name) : ToUtf8(ToUtf16(name)),
                       LineBreaks::Shown);
}

std::string WordsOf(const TextCheck& check) {
    if (check.end != TextCheckEnd::Compared)
        return check.reason;
    std::string words;
    const auto add = [&words](std::int32_t count, const char* what) {
        if (count > 0)
            words += (words.empty() ? "" : ", ") + std::to_string(count) + " " + what;
    };
    add(check.changed, "changed");
    add(check.added, "added");
    add(check.deleted, "deleted");
    add(check.beside, "beside the words");
    if (words.empty())
        words = "same words";
    return check.reason.empty() ? words : words + "; " + check.reason;
}

class FolderList {
  public:
    FolderList(const FolderFindings& findings, const FolderListStyle& style)
        : findings_(findings), style_(style) {}

    Status Write(const TextTarget& target) {
        for (std::size_t index = 0; index < findings_.scan.Count(); ++index) {
            Line(static_cast<std::int32_t>(index));
            if (out_.size() < kBytesAtOnce)
                continue;
            if (Status written = target(out_); !written.ok())
                return written;
            out_.clear();
        }
        return out_.empty() ? Status::Ok() : target(out_);
    }

  private:
    bool Lists(FolderVerdict verdict) const {
        if (style_.only.empty())
            return verdict != FolderVerdict::Same;
        return std::find(style_.only.begin(), style_.only.end(), verdict) != style_.only.end();
    }

    void Line(std::int32_t record) {
        const auto index = static_cast<std::size_t>(record);
        const ScannedEntry& entry = findings_.scan.Entry(index);
        const FolderVerdict verdict = findings_.VerdictOf(record);
        if (!Lists(verdict) || (entry.IsFolder() && verdict == FolderVerdict::Same))
            return;
        std::string path = findings_.scan.PathBelow(index);
        if (verdict == FolderVerdict::Renamed) {
            const RenamedEntry& renamed = *findings_.RenamedOf(record);
            if (renamed.original != record)
                return;
            Put(verdict, path,
                " -> " +
                    Shown(findings_.scan.PathBelow(static_cast<std::size_t>(renamed.modified))) +
                    (renamed.percent < 100 ? " (" + std::to_string(renamed.percent) + " %)" : ""));
            return;
        }
        const bool one_sided =
            verdict == FolderVerdict::OnlyOriginal || verdict == FolderVerdict::OnlyModified;
        if (one_sided && !inside_.empty() && path.starts_with(inside_))
            return;
        if (one_sided && entry.IsFolder() && IsWhole(index, verdict))
            inside_ = path;
        std::string what;
        const std::optional<TextCheck> check =
            findings_.text ? findings_.text(record) : std::nullopt;
        if (check)
            what = "  " + WordsOf(*check);
        Put(verdict, path, Shown(what));
    }

    // A folder stands for all that is in it, unless some of that is told in another way.
    bool IsWhole(std::size_t folder, FolderVerdict verdict) const {
        const std::string below = findings_.scan.PathBelow(folder);
        for (std::size_t next = folder + 1;
             next < findings_.scan.Count() && findings_.scan.PathBelow(next).starts_with(below);
             ++next) {
            if (findings_.VerdictOf(static_cast<std::int32_t>(next)) != verdict)
                return false;
        }
        return true;
    }

    void Put(FolderVerdict verdict, std::string_view path, const std::string& behind) {
        const LetterRow& row = RowOf(verdict);
        const bool color = style_.color && row.color[0] != '\0';
        out_ += color ? row.color : "";
        out_.append(row.letter).append("  ").append(Shown(path));
        out_ += color ? "\x1B[0m" : "";
        out_.append(behind).append("\n");
    }

    const FolderFindings& findings_;
    const FolderListStyle& style_;
    std::string inside_;  // the folder that stands for what comes
    std::string out_;
};

}  // namespace

Status WriteFolderList(const FolderFindings& findings, const FolderListStyle& style,
                       const TextTarget& target) {
    return FolderList(findings, style).Write(target);
}

std::string WriteFolderStat(const FolderFindings& findings) {
    return findings.Count().Words() + "\n";
}

}  // namespace zorvane
