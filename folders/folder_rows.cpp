#include "folders/folder_rows.h"

#include "common/base/text_encoding.h"
#include "common/base/visible_text.h"
#include "common/process_state.h"
#include "folders/text_checks.h"
#include "load/password_wanted.h"

namespace zorvane {
namespace {

constexpr std::int32_t kEqual = 100;
constexpr const char* kFolderBlanks = "     ";

// For display alone: a name is bytes, and some of them would pass it off as another.
std::string Shown(const std::string& name) {
    return VisibleText(IsValidUtf8(name) ? name : ToUtf8(ToUtf16(name)), LineBreaks::Shown);
}

std::string Greater(std::int32_t sign) {
    if (sign == 0)
        return " ";
    return sign < 0 ? "[M]>[O]" : "[O]>[M]";
}

// The row names the file, so that its side will do.
std::string ReasonInRow(const FolderRecord& record, const std::string& reason) {
    std::string words = WithoutAdvice(reason);
    for (const Side side : kBothSides) {
        const std::string path =
            (side == Side::Original ? record.Original() : record.Modified()) + ": ";
        if (words.starts_with(path))
            return (side == Side::Original ? "[O] " : "[M] ") + words.substr(path.size());
    }
    return words;
}

bool OnlyOther(const FolderRecord& record, Side side) {
    return side == Side::Original ? record.OnlyInSource != 0 : record.OnlyInMaster != 0;
}

std::string NameCell(const FolderRecord& record, Side side) {
    const bool missing = OnlyOther(record, side);
    if (record.IsFile == 0)
        return kFolderBlanks +
               (missing ? "" : Shown(side == Side::Original ? record.DirMaster : record.DirSource));
    if (missing)
        return side == Side::Original ? " " : "    ";
    return std::string(kFileBlanks) + Shown(record.FileName);
}

}  // namespace

void FolderRows::Begin(const TextChecks* checks, bool ignore_dates) {
    checks_ = checks;
    ignore_dates_ = ignore_dates;
    changed_.clear();
    renamed_.clear();
}

void FolderRows::TellRenamed(const std::vector<RenamedEntry>& renamed) {
    renamed_.clear();
    for (const RenamedEntry& entry : renamed) {
        renamed_[entry.original] = entry;
        renamed_[entry.modified] = entry;
    }
}

// In the room of the side that has nothing of that name.
void FolderRows::PutPartner(std::int32_t record, FolderRow& row) const {
    const auto found = renamed_.find(record);
    if (found == renamed_.end())
        return;
    const RenamedEntry& entry = found->second;
    const bool original = entry.original == record;
    const std::int32_t partner = original ? entry.modified : entry.original;
    std::string place = Shown(engine_.Folders().PathBelow(static_cast<std::size_t>(partner)));
    if (entry.percent < kEqual)
        place += " (" + std::to_string(entry.percent) + " %)";
    FolderCell& cell = row[ColumnOf(original ? Side::Modified : Side::Original)];
    cell.text = (original ? "\u2192 " : "\u2190 ") + place;
    cell.ink = CellInk::Moved;
}

std::optional<FolderRecord> FolderRows::Record(std::int32_t record) const {
    std::optional<FolderRecord> found = engine_.GetFolderRecord(record);
    if (found && ignore_dates_ && found->ContentDifferent == kContentSame &&
        found->SizeDifferent == 0)
        found->DateDifferent = 0;
    return found;
}

std::optional<TextCheck> FolderRows::Check(std::int32_t record) const {
    return checks_ == nullptr ? std::nullopt : checks_->Result(record);
}

std::string FolderRows::ContentsCell(const FolderRecord& record) const {
    if (record.ContentDifferent == kContentSame)
        return "  ";
    if (record.ContentDifferent != kContentDifferent)
        return process_.Translate("ERR") + ": " + process_.Translate("File");
    if (checks_ == nullptr || !checks_->Wanted(record.Record))
        return process_.Translate("CHANGED");
    const std::optional<TextCheck> check = checks_->Result(record.Record);
    if (!check || check->end == TextCheckEnd::Aborted)
        return "...";
    if (check->end == TextCheckEnd::Failed)
        return process_.Translate("ERR") + ": " + ReasonInRow(record, check->reason);
    if (check->Differences() == 0)
        return "  ";
    return std::to_string(check->changed) + "C, " + std::to_string(check->added) + "A, " +
           std::to_string(check->deleted) + "D";
}

FolderRow FolderRows::Row(std::int32_t record) const {
    FolderRow row;
    const std::optional<FolderRecord> found = Record(record);
    if (!found)
        return row;
    for (const Side side : kBothSides)
        row[ColumnOf(side)].text = NameCell(*found, side);
    row[FolderColumn::Contents].text = ContentsCell(*found);
    row[FolderColumn::Size].text = Greater(found->SizeDifferent);
    row[FolderColumn::Date].text = Greater(found->DateDifferent);
    Paint(*found, row);
    PutPartner(record, row);
    const auto changed = changed_.find(record);
    for (const Side side : kBothSides) {
        if (changed != changed_.end() && changed->second.cells[side])
            row[ColumnOf(side)] = *changed->second.cells[side];
    }
    return row;
}

void FolderRows::Paint(const FolderRecord& record, FolderRow& row) const {
    const CellPicture picture = record.IsFile != 0 ? CellPicture::File : CellPicture::Folder;
    const auto paint = [&row](FolderColumn column, CellInk ink, bool shaded) {
        row[column].ink = ink;
        row[column].shaded = shaded;
    };
    for (const Side side : kBothSides) {
        if (!OnlyOther(record, side))
            row[ColumnOf(side)].picture = picture;
    }
    if (!record.InBoth()) {
        const Side side = record.OnlyInMaster != 0 ? Side::Original : Side::Modified;
        paint(ColumnOf(side),
              side == Side::Original ? CellInk::OnlyOriginal : CellInk::OnlyModified, true);
        paint(ColumnOf(OtherSide(side)), CellInk::Plain, true);
        paint(FolderColumn::Contents, CellInk::Plain, false);
        return;
    }
    const bool content = record.ContentDifferent != kContentSame;
    if (!content && record.SizeDifferent == 0 && record.DateDifferent == 0)
        return;
    for (const Side side : kBothSides)
        paint(ColumnOf(side), CellInk::Changed, true);
    if (content)
        paint(FolderColumn::Contents, CellInk::Changed, true);
    // Kept: the size has no back colour, the date has one.
    if (record.SizeDifferent != 0)
        paint(FolderColumn::Size, CellInk::Changed, false);
    if (record.DateDifferent != 0)
        paint(FolderColumn::Date, CellInk::Changed, true);
}

std::string FolderRows::Head(FolderColumn column) const {
    switch (column) {
        case FolderColumn::Original:
            return process_.Translate("[O] Original Folder");
        case FolderColumn::Modified:
            return process_.Translate("[M] Modified Folder");
        case FolderColumn::Contents:
            return process_.Translate("Contents");
        case FolderColumn::Size:
            return process_.Translate("Size");
        case FolderColumn::Date:
            break;
    }
    return process_.Translate("Date");
}

void FolderRows::MarkGone(std::int32_t record, Side side, bool other_exists) {
    FolderRow row = Row(record);
    PerSide<std::optional<FolderCell>>& cells = changed_[record].cells;
    cells[side] = row[ColumnOf(side)];
    cells[side]->ink = CellInk::Gone;
    if (!other_exists)
        return;
    const Side other = OtherSide(side);
    cells[other] = row[ColumnOf(other)];
    cells[other]->ink = other == Side::Original ? CellInk::OnlyOriginal : CellInk::OnlyModified;
}

void FolderRows::MarkCopied(std::int32_t record, Side to) {
    const std::optional<FolderRecord> found = Record(record);
    if (!found)
        return;
    for (const Side side : kBothSides) {
        FolderCell cell = Row(record)[ColumnOf(side)];
        cell.ink = CellInk::Plain;
        cell.shaded = false;
        if (side == to) {
            cell.picture = CellPicture::File;
            cell.text = std::string(kFileBlanks) + Shown(found->FileName);
        }
        changed_[record].cells[side] = cell;
    }
}

}  // namespace zorvane
