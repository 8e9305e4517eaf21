#include "folders/folder_findings.h"

#include <algorithm>

namespace zorvane {
namespace {

struct VerdictRow {
    FolderVerdict verdict;
    const char* name;
    const char* words;
};
constexpr VerdictRow kVerdicts[] = {
    {FolderVerdict::Changed, "changed", "changed"},
    {FolderVerdict::OnlyOriginal, "original", "only in the original"},
    {FolderVerdict::OnlyModified, "modified", "only in the modified"},
    {FolderVerdict::Renamed, "renamed", "renamed"},
    {FolderVerdict::Date, "date", "of another date"},
    {FolderVerdict::SameWords, "same-words", "with the same words"},
    {FolderVerdict::Failed, "failed", "not compared"},
    {FolderVerdict::Same, "same", "the same"},
};

}  // namespace

const char* NameOf(FolderVerdict verdict) {
    for (const VerdictRow& row : kVerdicts) {
        if (row.verdict == verdict)
            return row.name;
    }
    return "";
}

std::optional<FolderVerdict> FolderVerdictNamed(std::string_view name) {
    for (const VerdictRow& row : kVerdicts) {
        if (row.name == name)
            return row.verdict;
    }
    return std::nullopt;
}

std::int64_t FolderCounts::Of(FolderVerdict verdict) const {
    const auto found = files.find(verdict);
    return found == files.end() ? 0 : found->second;
}

bool FolderCounts::Different() const {
    return std::any_of(files.begin(), files.end(), [](const auto& entry) {
        return entry.first != FolderVerdict::Same && entry.first != FolderVerdict::SameWords &&
               entry.second > 0;
    });
}

std::string FolderCounts::Words() const {
    std::string words;
    for (const VerdictRow& row : kVerdicts) {
        const std::int64_t count = Of(row.verdict);
        if (count > 0 || row.verdict == FolderVerdict::Same)
            words += (words.empty() ? "" : ", ") + std::to_string(count) + " " + row.words;
    }
    return words;
}

FolderVerdict FolderFindings::VerdictOf(std::int32_t record) const {
    const ScannedEntry& entry = scan.Entry(static_cast<std::size_t>(record));
    if (entry.content == PairContent::Failed)
        return FolderVerdict::Failed;
    if (!entry.InBoth()) {
        if (RenamedOf(record) != nullptr)
            return FolderVerdict::Renamed;
        return entry.Has(Side::Original) ? FolderVerdict::OnlyOriginal
                                         : FolderVerdict::OnlyModified;
    }
    if (entry.content == PairContent::Different) {
        const std::optional<TextCheck> check = text ? text(record) : std::nullopt;
        const bool same = check && check->end == TextCheckEnd::Compared &&
                          check->Differences() == 0 && check->beside == 0;
        return same ? FolderVerdict::SameWords : FolderVerdict::Changed;
    }
    if (entry.SizeSign() != 0)
        return FolderVerdict::Changed;
    return entry.DateSign() != 0 && !ignore_dates ? FolderVerdict::Date : FolderVerdict::Same;
}

const RenamedEntry* FolderFindings::RenamedOf(std::int32_t record) const {
    const auto found = renamed_of.find(record);
    return found == renamed_of.end() ? nullptr : &renamed[found->second];
}

void FolderFindings::IndexRenamed() {
    renamed_of.clear();
    const auto add = [this](std::int32_t first, std::size_t place) {
        renamed_of[first] = place;
        if (!renamed[place].folder)
            return;
        const std::string below = scan.PathBelow(static_cast<std::size_t>(first));
        for (auto next = static_cast<std::size_t>(first) + 1;
             next < scan.Count() && scan.PathBelow(next).starts_with(below); ++next)
            renamed_of[static_cast<std::int32_t>(next)] = place;
    };
    for (std::size_t place = 0; place < renamed.size(); ++place) {
        add(renamed[place].original, place);
        add(renamed[place].modified, place);
    }
}

FolderCounts FolderFindings::Count() const {
    FolderCounts counts;
    for (std::size_t index = 0; index < scan.Count(); ++index) {
        const ScannedEntry& entry = scan.Entry(index);
        const FolderVerdict verdict = VerdictOf(static_cast<std::int32_t>(index));
        // A folder that is there twice is no news; one on one side only is a difference even if
        // nothing is in it.
        if (entry.IsFolder()) {
            ++counts.folders;
            if (verdict == FolderVerdict::Same || verdict == FolderVerdict::Renamed)
                continue;
        }
        // Of a renamed one the Original's record is counted.
        if (verdict != FolderVerdict::Renamed || entry.Has(Side::Original))
            ++counts.files[verdict];
    }
    counts.faults = static_cast<std::int64_t>(scan.Faults().size());
    return counts;
}

}  // namespace zorvane
