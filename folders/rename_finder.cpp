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

constexpr std::int64_t kLargestText = 1 << 20;
constexpr std::int64_t kLargestDocument = 8 << 20;
constexpr std::size_t kHeadOfText = 8192;
constexpr std::int32_t kLeastPercent = 50;
// Above this many files without a partner on one side their texts are not read.
constexpr std::size_t kMostTexts = 20000;
// Words of more text than that, on one side, would take three times the memory.
constexpr std::int64_t kMostWordBytes = 32 << 20;

struct OneSided {
    std::int32_t record = 0;
    std::optional<std::pair<std::uint64_t, std::uint64_t>> hash;
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
        PairEqual();
        if (options_.by_text && !Stopped())
            PairLike();
        std::sort(found_.begin(), found_.end(),
                  [](const RenamedEntry& one, const RenamedEntry& two) {
                      return one.original < two.original;
                  });
        JoinFolders();
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
            const bool file = kind == EntryKind::File || (kind == EntryKind::Link && Follows());
            if (file && entry.sizes[side] > 0)
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
        for (const Side side : kBothSides) {
            for (const OneSided& file : files_[side])
                sizes[side][SizeOf(side, file)] = true;
        }
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
    }

    std::optional<std::pair<std::uint64_t, std::uint64_t>> HashOf(const std::string& path) const {
        constexpr std::size_t kBuffer = 128 * 1024;
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

    // Files of one name first, then the rest in their order.
    void PairEqual() {
        std::map<std::pair<std::uint64_t, std::uint64_t>, std::vector<OneSided*>> by_hash;
        for (OneSided& file : files_.modified) {
            if (file.hash)
                by_hash[*file.hash].push_back(&file);
        }
        for (const bool by_name : {true, false}) {
            for (OneSided& original : files_.original) {
                if (original.paired || !original.hash || !by_hash.contains(*original.hash))
                    continue;
                for (OneSided* modified : by_hash[*original.hash]) {
                    if (modified->paired || (by_name && NameOf(original) != NameOf(*modified)))
                        continue;
                    Pair(original, *modified, 100);
                    break;
                }
            }
        }
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

    // The folder of the other side that all files of this one went to, each in its place.
    std::optional<std::int32_t> TargetOf(std::size_t folder, std::size_t end) const {
        const std::string from = scan_.PathBelow(folder);
        std::string to;
        std::size_t files = 0;
        for (std::size_t index = folder + 1; index < end; ++index) {
            if (scan_.Entry(index).IsFolder())
                continue;
            const auto partner = equal_.find(static_cast<std::int32_t>(index));
            if (partner == equal_.end())
                return std::nullopt;
            const std::string place = scan_.PathBelow(static_cast<std::size_t>(partner->second));
            const std::string within = scan_.PathBelow(index).substr(from.size());
            if (files++ == 0)
                to = place.ends_with(within) ? place.substr(0, place.size() - within.size()) : "";
            if (to.empty() || place != to + within)
                return std::nullopt;
        }
        const auto target = folders_.find(to);
        if (files == 0 || target == folders_.end() ||
            FilesIn(static_cast<std::size_t>(target->second)) != files)
            return std::nullopt;
        return target->second;
    }

    std::size_t FilesIn(std::size_t folder) const {
        std::size_t files = 0;
        const std::size_t end = BehindFolder(folder);
        for (std::size_t index = folder + 1; index < end; ++index)
            files += !scan_.Entry(index).IsFolder();
        return files;
    }

    void JoinFolders() {
        for (const RenamedEntry& entry : found_) {
            if (entry.percent == 100)
                equal_[entry.original] = entry.modified;
        }
        if (equal_.empty())
            return;
        for (std::size_t index = 0; index < scan_.Count(); ++index) {
            const ScannedEntry& entry = scan_.Entry(index);
            if (entry.IsFolder() && !entry.InBoth() && entry.Has(Side::Modified))
                folders_[scan_.PathBelow(index)] = static_cast<std::int32_t>(index);
        }
        std::vector<RenamedEntry> joined;
        auto file = found_.begin();
        for (std::size_t index = 0; index < scan_.Count() && !Stopped();) {
            const ScannedEntry& entry = scan_.Entry(index);
            std::size_t next = index + 1;
            const auto record = static_cast<std::int32_t>(index);
            if (entry.IsFolder() && !entry.InBoth() && entry.Has(Side::Original)) {
                const std::size_t end = BehindFolder(index);
                if (const auto target = TargetOf(index, end)) {
                    joined.push_back({record, *target, 100, true});
                    while (file != found_.end() && file->original < static_cast<std::int32_t>(end))
                        ++file;
                    next = end;
                }
            } else if (file != found_.end() && file->original == record) {
                joined.push_back(*file++);
            }
            index = next;
        }
        found_ = std::move(joined);
    }

    const FolderScan& scan_;
    const PerSide<std::string>& roots_;
    const RenameOptions& options_;
    Files files_;
    std::vector<RenamedEntry> found_;
    std::unordered_map<std::int32_t, std::int32_t> equal_;   // records of the two sides
    std::unordered_map<std::string, std::int32_t> folders_;  // only in the Modified tree
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
