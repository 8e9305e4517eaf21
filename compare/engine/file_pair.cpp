#include "compare/engine/file_pair.h"

#include <algorithm>
#include <cstring>
#include <span>

namespace zorvane {
namespace {

constexpr std::size_t kBuffer = 128 * 1024;

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
        const PerSide<EntryFacts>& facts = verdict.facts;
        if (entry.InBoth() && !Failed(verdict)) {
            if (facts.original.kind != facts.modified.kind ||
                facts.original.special != facts.modified.special)
                verdict.content = PairContent::Different;
            else if (facts.original.kind == EntryKind::Link)
                CompareLinks(entry, handles, verdict);
            else if (facts.original.kind == EntryKind::File && rules_.content)
                CompareFiles(entry, handles, stop, verdict);
        }
    }
    if (Failed(verdict) || verdict.shrank)
        verdict.content = PairContent::Failed;
    return verdict;
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
    else if (one.device != two.device || one.inode != two.inode)
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

// Both in step, up to the first difference. A file below the buffer is one read.
void FilePairs::CompareBytes(const Files& files, const OrderedWork& stop, PairVerdict& verdict) {
    for (const Side side : kBothSides) {
        if (!buffers_[side])
            buffers_[side] = std::make_unique_for_overwrite<char[]>(kBuffer);
    }
    auto left = static_cast<std::uint64_t>(verdict.facts.original.size);
    while (left > 0 && !stop.Aborted()) {
        const auto wanted = static_cast<std::size_t>(std::min<std::uint64_t>(left, kBuffer));
        for (const Side side : kBothSides) {
            std::size_t got = 0;
            verdict.errors[side] = ReadFull(*files[side], {buffers_[side].get(), wanted}, got);
            verdict.shrank = verdict.shrank || got < wanted;
        }
        if (Failed(verdict) || verdict.shrank)
            return;
        if (std::memcmp(buffers_.original.get(), buffers_.modified.get(), wanted) != 0) {
            verdict.content = PairContent::Different;
            return;
        }
        left -= wanted;
    }
}

}  // namespace zorvane
