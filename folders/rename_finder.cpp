#include "folders/rename_finder.h"

#include <algorithm>
#include <atomic>
#include <fcntl.h>
#include <map>
#include <optional>
#include <string>
#include <system_error>
#include <thread>
#include <unordered_map>
#include <utility>
#include <xxhash.h>

#include "common/platform/file_descriptor.h"
#include "common/platform/files.h"
#include "common/platform/native_path.h"
#include "folders/like_texts.h"
#include "load/extracted_texts.h"

namespace zorvane {
namespace {

constexpr std::int64_t kLargestText = 1 << 20;      // bytes; larger files are known by their hash
constexpr std::int64_t kLargestDocument = 8 << 20;  // alone
constexpr std::size_t kHeadOfText = 8192;           // a zero in it: no text
constexpr std::int32_t kLeastPercent = 50;          // that two texts have in common
// Above this many files without a partner on one side their texts are not read.
constexpr std::size_t kMostTexts = 20000;
// Words of more text than that, on one side, would take three times the memory.
constexpr std::int64_t kMostWordBytes = 32 << 20;

using Hash = std::pair<std::uint64_t, std::uint64_t>;

struct OneSided {
    std::int32_t record = 0;
    std::optional<Hash> hash;
    bool paired = false;
};
using Files = PerSide<std::vector<OneSided>>;

class RenameRun {
  public:
    RenameRun(const FolderScan& scan, const PerSide<std::string>& roots,
              const RenameOptions& options)
        : scan_(scan), roots_(roots), options_(options) {}

    std::vector<RenamedEntry> Run() {
        Collect();
        HashFiles();
        PairFolders();
        PairEqual();
        if (options_.by_text && !Stopped())
            PairLike();
        std::ranges::sort(found_, {}, &RenamedEntry::original);
        return std::move(found_);
    }

  private:
    bool Stopped() const { return options_.stop && options_.stop(); }
    bool Follows() const { return options_.follow == FollowLink::Yes; }

    void Collect() {
        for (std::size_t index = 0; index < scan_.Count(); ++index) {
            const ScannedEntry& entry = scan_.Entry(index);
            if (entry.InBoth())
                continue;
            const Side side = entry.Has(Side::Original) ? Side::Original : Side::Modified;
            const EntryKind kind = side == Side::Original ? entry.original : entry.modified;
            const bool link = kind == EntryKind::Link && Follows();
            if ((kind == EntryKind::File || link) && entry.sizes[side] > 0)
                files_[side].push_back({static_cast<std::int32_t>(index), {}, false});
        }
    }

    std::int64_t SizeOf(Side side, const OneSided& file) const {
        return scan_.Entry(static_cast<std::size_t>(file.record)).sizes[side];
    }
    std::string PathOf(Side side, const OneSided& file) const {
        return JoinPath(roots_[side], scan_.PathBelow(static_cast<std::size_t>(file.record)));
    }
    std::string_view NameOf(const OneSided& file) const {
        return scan_.Entry(static_cast<std::size_t>(file.record)).Name();
    }

    // Each `work(index)` once, on all cores.
    template <class Work>
    void Spread(std::size_t count, Work work) const {
        const int wanted = options_.threads > 0
                               ? options_.threads
                               : std::max(1, static_cast<int>(std::thread::hardware_concurrency()));
        std::atomic<std::size_t> next{0};
        const auto loop = [&] {
            for (std::size_t index = next++; index < count && !Stopped(); index = next++)
                work(index);
        };
        std::vector<std::thread> threads;
        try {
            for (int thread = 1; thread < wanted && count > 1; ++thread)
                threads.emplace_back(loop);
        } catch (const std::system_error&) {
            // The system gives no more threads; those that there are do the work.
        }
        loop();
        for (std::thread& thread : threads)
            thread.join();
    }

    // Only a size that both sides have is worth a look inside.
    void HashFiles() {
        PerSide<std::unordered_map<std::int64_t, bool>> sizes;
        for (const Side side : kBothSides)
            for (const OneSided& file : files_[side])
                sizes[side][SizeOf(side, file)] = true;
        std::vector<std::pair<Side, OneSided*>> wanted;
        for (const Side side : kBothSides) {
            for (OneSided& file : files_[side]) {
                if (sizes[OtherSide(side)].contains(SizeOf(side, file)))
                    wanted.emplace_back(side, &file);
            }
        }
        Spread(wanted.size(), [&](std::size_t index) {
            const auto [side, file] = wanted[index];
            file->hash = HashOf(PathOf(side, *file));
        });
        for (OneSided& file : files_.modified)
            if (file.hash)
                by_hash_[*file.hash].push_back(&file);
    }

    std::optional<Hash> HashOf(const std::string& path) const {
        constexpr std::size_t kBuffer = std::size_t{128} * 1024;
        const FileDescriptor file(open(NativePath(path).c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC |
                                                                     (Follows() ? 0 : O_NOFOLLOW)));
        if (!file.IsOpen())
            return std::nullopt;
        const auto buffer = std::make_unique_for_overwrite<char[]>(kBuffer);
        XXH3_state_t state;
        XXH3_128bits_reset(&state);
        while (!Stopped()) {
            const ssize_t got = read(file.Get(), buffer.get(), kBuffer);
            if (got < 0)
                return std::nullopt;
            if (got == 0) {
                const XXH128_hash_t hash = XXH3_128bits_digest(&state);
                return std::pair(hash.low64, hash.high64);
            }
            XXH3_128bits_update(&state, buffer.get(), static_cast<std::size_t>(got));
        }
        return std::nullopt;
    }

    void Pair(OneSided& original, OneSided& modified, std::int32_t percent) {
        original.paired = modified.paired = true;
        found_.push_back({original.record, modified.record, percent, false});
    }

    // Of those with one key each takes the first that is left.
    template <class KeyOf>
    void PairEqualBy(KeyOf key_of) {
        std::map<decltype(key_of(OneSided())), std::vector<OneSided*>> left;
        for (auto file = files_.modified.rbegin(); file != files_.modified.rend(); ++file) {
            if (file->hash && !file->paired)
                left[key_of(*file)].push_back(&*file);
        }
        for (OneSided& original : files_.original) {
            if (original.paired || !original.hash)
                continue;
            const auto found = left.find(key_of(original));
            if (found == left.end() || found->second.empty())
                continue;
            Pair(original, *found->second.back(), 100);
            found->second.pop_back();
        }
    }

    // Files of one name first, then the rest in their order.
    void PairEqual() {
        PairEqualBy([this](const OneSided& file) { return std::pair(*file.hash, NameOf(file)); });
        PairEqualBy([](const OneSided& file) { return *file.hash; });
    }

    std::optional<std::string> TextOf(Side side, const OneSided& file) const {
        if (options_.document_text && IsReadAsDocument(NameOf(file)))
            return SizeOf(side, file) <= kLargestDocument
                       ? options_.document_text(PathOf(side, file))
                       : std::nullopt;
        if (SizeOf(side, file) > kLargestText)
            return std::nullopt;
        Result<std::string> bytes = ReadWholeFile(PathOf(side, file));
        if (!bytes.ok() || bytes.value().substr(0, kHeadOfText).find('\0') != std::string::npos)
            return std::nullopt;
        return std::move(bytes).value();
    }

    using Left = PerSide<std::vector<OneSided*>>;

    Left Unpaired() {
        Left left;
        for (const Side side : kBothSides) {
            for (OneSided& file : files_[side]) {
                if (!file.paired)
                    left[side].push_back(&file);
            }
        }
        return left;
    }

    // By lines, which is cheap, then by words, which also tells a text of which each line was
    // touched or that was wrapped anew.
    void PairLike() {
        const Left all = Unpaired();
        if (std::max(all.original.size(), all.modified.size()) <= kMostTexts)
            PairLike(all, TextPieces::Lines);
        const Left left = Unpaired();
        if (std::max(BytesOf(left, Side::Original), BytesOf(left, Side::Modified)) <=
            kMostWordBytes)
            PairLike(left, TextPieces::Words);
    }

    std::int64_t BytesOf(const Left& left, Side side) const {
        std::int64_t bytes = 0;
        for (const OneSided* file : left[side])
            bytes += std::min(SizeOf(side, *file), kLargestText);
        return bytes;
    }

    void PairLike(const Left& left, TextPieces pieces) {
        if (left.original.empty() || left.modified.empty() || Stopped())
            return;
        PerSide<std::vector<TextWeights>> texts;
        for (const Side side : kBothSides) {
            texts[side].resize(left[side].size(), TextWeights({}));
            Spread(left[side].size(), [&](std::size_t index) {
                if (const std::optional<std::string> text = TextOf(side, *left[side][index]))
                    texts[side][index] = TextWeights(*text, pieces);
            });
        }
        if (Stopped())
            return;
        for (const LikePair& pair : PairLikeTexts(texts.original, texts.modified, kLeastPercent))
            Pair(*left.original[pair.first], *left.modified[pair.second],
                 std::min(pair.percent, 99));
    }

    // ---- folders ----

    // What lies in a folder comes right behind its record.
    std::size_t BehindFolder(std::size_t folder) const {
        const std::string below = scan_.PathBelow(folder);
        std::size_t index = folder + 1;
        while (index < scan_.Count() && scan_.PathBelow(index).starts_with(below))
            ++index;
        return index;
    }

    // Files are in the order of their records.
    OneSided* FileOf(Side side, std::size_t record) {
        const auto before = [](const OneSided& file, std::size_t wanted) {
            return static_cast<std::size_t>(file.record) < wanted;
        };
        const auto found =
            std::lower_bound(files_[side].begin(), files_[side].end(), record, before);
        const bool there =
            found != files_[side].end() && static_cast<std::size_t>(found->record) == record;
        return there ? &*found : nullptr;
    }

    bool IsEmptyFile(Side side, std::size_t record) const {
        const ScannedEntry& entry = scan_.Entry(record);
        return (side == Side::Original ? entry.original : entry.modified) == EntryKind::File &&
               entry.sizes[side] == 0;
    }

    // What a folder that could not be read holds is not known.
    bool AreAlike(const PerSide<std::size_t>& records) {
        PerSide<const OneSided*> files;
        for (const Side side : kBothSides) {
            if (scan_.Entry(records[side]).content == PairContent::Failed)
                return false;
            files[side] = FileOf(side, records[side]);
        }
        const bool folder = scan_.Entry(records.original).IsFolder();
        if (folder || scan_.Entry(records.modified).IsFolder())
            return folder && scan_.Entry(records.modified).IsFolder();
        if (files.original == nullptr || files.modified == nullptr)
            return IsEmptyFile(Side::Original, records.original) &&
                   IsEmptyFile(Side::Modified, records.modified);
        return files.original->hash && files.original->hash == files.modified->hash;
    }

    bool HoldTheSame(const PerSide<std::size_t>& folders, const PerSide<std::size_t>& behind) {
        if (behind.original - folders.original != behind.modified - folders.modified)
            return false;
        PerSide<std::size_t> below;
        for (const Side side : kBothSides)
            below[side] = scan_.PathBelow(folders[side]).size();
        for (PerSide<std::size_t> at{folders.original + 1, folders.modified + 1};
             at.original < behind.original; ++at.original, ++at.modified) {
            if (!AreAlike(at) || scan_.PathBelow(at.original).substr(below.original) !=
                                     scan_.PathBelow(at.modified).substr(below.modified))
                return false;
        }
        return true;
    }

    // A file of a folder and those of the other side that it is equal to, of which there are few.
    struct Clue {
        std::string within;                                ///< its place in the folder
        const std::vector<OneSided*>* partners = nullptr;  ///< none: a file has no partner at all
    };
    Clue ClueTo(std::size_t folder, std::size_t end) {
        Clue clue;
        for (std::size_t index = folder + 1; index < end; ++index) {
            const OneSided* file = FileOf(Side::Original, index);
            if (file == nullptr)
                continue;
            const auto equal = file->hash ? by_hash_.find(*file->hash) : by_hash_.end();
            if (equal == by_hash_.end())
                return {};
            if (clue.partners == nullptr || equal->second.size() < clue.partners->size())
                clue = {scan_.PathBelow(index).substr(scan_.PathBelow(folder).size()),
                        &equal->second};
        }
        return clue;
    }

    // The folder of the other side that holds all that this one holds, each in its place, and
    // nothing else. A file that few others are equal to tells where to look.
    std::optional<std::size_t> TargetOf(std::size_t folder, std::size_t end) {
        const Clue clue = ClueTo(folder, end);
        if (clue.partners == nullptr)
            return std::nullopt;
        for (const OneSided* partner : *clue.partners) {
            const std::string place = scan_.PathBelow(static_cast<std::size_t>(partner->record));
            if (partner->paired || !place.ends_with(clue.within))
                continue;
            const auto target = folders_.find(place.substr(0, place.size() - clue.within.size()));
            if (target != folders_.end() &&
                HoldTheSame({folder, target->second}, {end, BehindFolder(target->second)}))
                return target->second;
        }
        return std::nullopt;
    }

    void TakeFiles(Side side, std::size_t folder, std::size_t end) {
        for (std::size_t index = folder + 1; index < end; ++index) {
            if (OneSided* file = FileOf(side, index))
                file->paired = true;
        }
    }

    // Before the files, so that no file of a folder that moved is paired with a copy elsewhere.
    void PairFolders() {
        for (std::size_t index = 0; index < scan_.Count() && !by_hash_.empty(); ++index) {
            const ScannedEntry& entry = scan_.Entry(index);
            if (entry.IsFolder() && !entry.InBoth() && entry.Has(Side::Modified))
                folders_[scan_.PathBelow(index)] = index;
        }
        for (std::size_t index = 0; index < scan_.Count() && !Stopped(); ++index) {
            const ScannedEntry& entry = scan_.Entry(index);
            if (!entry.IsFolder() || entry.InBoth() || !entry.Has(Side::Original))
                continue;
            const std::size_t end = BehindFolder(index);
            const std::optional<std::size_t> target = TargetOf(index, end);
            if (!target)
                continue;
            found_.push_back(
                {static_cast<std::int32_t>(index), static_cast<std::int32_t>(*target), 100, true});
            TakeFiles(Side::Original, index, end);
            TakeFiles(Side::Modified, *target, BehindFolder(*target));
            index = end - 1;
        }
    }

    const FolderScan& scan_;
    const PerSide<std::string>& roots_;
    const RenameOptions& options_;
    Files files_;
    std::vector<RenamedEntry> found_;
    std::map<Hash, std::vector<OneSided*>> by_hash_;        // of the Modified tree
    std::unordered_map<std::string, std::size_t> folders_;  // only in the Modified tree
};

}  // namespace

std::function<std::optional<std::string>(const std::string&)> DocumentTextsOf(
    ExtractedTexts& texts, std::function<bool()> stop) {
    return [&texts, stop = std::move(stop)](const std::string& path) -> std::optional<std::string> {
        const ExtractedText read = texts.TextOf(path, [&stop] { return stop && stop(); });
        return read.document ? std::optional(read.document->text) : std::nullopt;
    };
}

std::vector<RenamedEntry> FindRenames(const FolderScan& scan, const PerSide<std::string>& roots,
                                      const RenameOptions& options) {
    return RenameRun(scan, roots, options).Run();
}

}  // namespace zorvane
