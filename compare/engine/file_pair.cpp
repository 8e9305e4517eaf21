#include "compare/engine/file_pair.h"

#include <algorithm>
#include <cstring>
#include <span>

namespace zorvane {
namespace {

constexpr std::size_t kBuffer = std::size_t{128} * 1024;

bool Failed(const PairVerdict& verdict) {
    return verdict.errors.original || verdict.errors.modified;
}

// Fills the buffer as far as the file goes.
SystemError ReadFull(OpenedFile& file, std::span<char> buffer, std::size_t& total) {
    total = 0;
    while (total < buffer.size()) {
        std::size_t got = 0;
        if (const SystemError error = file.Read(buffer.subspan(total), got))
            return error;
        if (got == 0)
            break;
        total += got;
    }
    return {};
}

}  // namespace

PairVerdict FilePairs::Compare(const TreeEntry& entry, const PerSide<FolderHandle*>& handles,
                               const OrderedWork& stop) {
    PairVerdict verdict;
    const bool files =
        entry.kinds.original == EntryKind::File && entry.kinds.modified == EntryKind::File;
    if (files && rules_.content) {
        CompareFiles(entry, handles, stop, verdict);
    } else {
        LookUp(entry, handles, verdict);
        if (entry.InBoth() && !Failed(verdict))
            CompareKinds(entry, handles, stop, verdict);
    }
    if (Failed(verdict) || verdict.shrank)
        verdict.content = PairContent::Failed;
    return verdict;
}

void FilePairs::CompareKinds(const TreeEntry& entry, const PerSide<FolderHandle*>& handles,
                             const OrderedWork& stop, PairVerdict& verdict) {
    const EntryFacts& one = verdict.facts.original;
    const EntryFacts& two = verdict.facts.modified;
    if (one.kind != two.kind || one.special != two.special)
        verdict.content = PairContent::Different;
    else if (one.kind == EntryKind::Link)
        CompareLinks(entry, handles, verdict);
    else if (one.kind == EntryKind::File && rules_.content)
        CompareFiles(entry, handles, stop, verdict);
}

void FilePairs::LookUp(const TreeEntry& entry, const PerSide<FolderHandle*>& handles,
                       PairVerdict& verdict) const {
    for (const Side side : kBothSides) {
        if (entry.kinds[side] == EntryKind::None)
            continue;
        EntryFacts& facts = verdict.facts[side];
        verdict.errors[side] = handles[side]->Facts(entry.name, FollowLink::No, facts);
        if (facts.kind != EntryKind::Link || rules_.follow == FollowLink::No)
            continue;
        EntryFacts behind;
        if (!handles[side]->Facts(entry.name, FollowLink::Yes, behind) &&
            behind.kind == EntryKind::File)
            facts = behind;
    }
}

void FilePairs::CompareFiles(const TreeEntry& entry, const PerSide<FolderHandle*>& handles,
                             const OrderedWork& stop, PairVerdict& verdict) {
    Files files;
    for (const Side side : kBothSides) {
        SystemError& error = verdict.errors[side];
        error = handles[side]->OpenFile(entry.name, rules_.follow, files[side]);
        if (!error)
            error = files[side]->Facts(verdict.facts[side]);
    }
    if (Failed(verdict))
        return;
    const EntryFacts& one = verdict.facts.original;
    const EntryFacts& two = verdict.facts.modified;
    // Between listing and opening a name may have come to stand for something else.
    if (one.kind != EntryKind::File || two.kind != EntryKind::File || one.size != two.size)
        verdict.content = PairContent::Different;
    // Some network file systems give a number to two files; these have a date of their own.
    else if (one.device != two.device || one.inode != two.inode || one.seconds != two.seconds)
        CompareBytes(files, stop, verdict);
}

void FilePairs::CompareLinks(const TreeEntry& entry, const PerSide<FolderHandle*>& handles,
                             PairVerdict& verdict) const {
    PerSide<std::string> texts;
    for (const Side side : kBothSides)
        verdict.errors[side] = handles[side]->ReadLink(entry.name, texts[side]);
    if (texts.original != texts.modified)
        verdict.content = PairContent::Different;
}

// Both in step, up to the first difference. A file below the buffer is one read. The system tells
// no size of what it makes when it is asked (as in /proc): such files are read to their ends.
void FilePairs::CompareBytes(const Files& files, const OrderedWork& stop, PairVerdict& verdict) {
    for (const Side side : kBothSides) {
        if (!buffers_[side])
            buffers_[side] = std::make_unique_for_overwrite<char[]>(kBuffer);
    }
    constexpr std::uint64_t kUntold = ~std::uint64_t{0};
    const auto size = static_cast<std::uint64_t>(verdict.facts.original.size);
    const std::uint64_t told = size == 0 ? kUntold : size;
    for (std::uint64_t at = 0; at < told && !stop.Aborted(); at += kBuffer) {
        const auto wanted = static_cast<std::size_t>(std::min<std::uint64_t>(told - at, kBuffer));
        PerSide<std::size_t> got{0, 0};
        for (const Side side : kBothSides)
            verdict.errors[side] =
                ReadFull(*files[side], {buffers_[side].get(), wanted}, got[side]);
        if (Failed(verdict))
            return;
        const std::size_t both = std::min(got.original, got.modified);
        if (std::memcmp(buffers_.original.get(), buffers_.modified.get(), both) != 0) {
            verdict.content = PairContent::Different;
            return;
        }
        if (got.original < wanted || got.modified < wanted) {
            TakeEnd(files, got, verdict);
            return;
        }
    }
}

// One of them ended, equal so far. Where a size was told it was reached too early: some files of
// the system never have theirs, and all others were written to.
void FilePairs::TakeEnd(const Files& files, const PerSide<std::size_t>& got, PairVerdict& verdict) {
    const bool together = got.original == got.modified;
    if (verdict.facts.original.size == 0) {
        verdict.content = together ? PairContent::Same : PairContent::Different;
        return;
    }
    verdict.shrank = !together;
    for (const Side side : kBothSides) {
        EntryFacts now;
        verdict.errors[side] = files[side]->Facts(now);
        verdict.shrank = verdict.shrank || now.size != verdict.facts[side].size;
    }
}

}  // namespace zorvane
