#include "load/readers/container/compound_file.h"

#include <algorithm>
#include <array>
#include <limits>

#include "common/base/ascii.h"
#include "common/base/text_encoding.h"
#include "load/file_signature.h"

namespace zorvane {
namespace {

constexpr std::size_t kHeaderSize = 512;
constexpr std::size_t kEntrySize = 128;
constexpr std::uint32_t kEndOfChain = 0xFFFFFFFE;
constexpr std::uint32_t kFreeSector = 0xFFFFFFFF;
constexpr std::uint32_t kNoEntry = 0xFFFFFFFF;
constexpr std::uint64_t kWholeChain = std::numeric_limits<std::uint64_t>::max();
constexpr std::size_t kMostEntries = 65'536;
constexpr std::size_t kLongestPath = 1024;

// The caller has checked that the bytes are there.
std::uint32_t Number(std::string_view bytes, std::size_t at, std::size_t count) {
    std::uint32_t number = 0;
    for (std::size_t i = count; i-- > 0;)
        number = number << 8 | static_cast<unsigned char>(bytes[at + i]);
    return number;
}
std::uint32_t Long(std::string_view bytes, std::size_t at) {
    return Number(bytes, at, 4);
}
std::uint32_t Short(std::string_view bytes, std::size_t at) {
    return Number(bytes, at, 2);
}

void AppendLongs(std::string_view bytes, std::vector<std::uint32_t>& numbers) {
    for (std::size_t at = 0; at + 4 <= bytes.size(); at += 4)
        numbers.push_back(Long(bytes, at));
}

bool SameName(std::string_view one, std::string_view other) {
    return std::equal(one.begin(), one.end(), other.begin(), other.end(),
                      [](char left, char right) { return AsciiLower(left) == AsciiLower(right); });
}

std::string NameOf(std::string_view entry) {
    const std::size_t length = std::min<std::size_t>(Short(entry, 0x40), 64) / 2;
    std::u16string name;
    for (std::size_t i = 0; i + 1 < length; ++i)  // the last unit is a terminator
        name += static_cast<char16_t>(Short(entry, 2 * i));
    return ToUtf8(name);
}

}  // namespace

bool CompoundFile::LooksLike(std::string_view bytes) {
    return HasSignature(bytes, Signature::Compound);
}

std::optional<CompoundFile> CompoundFile::Open(std::string_view bytes) {
    if (!LooksLike(bytes) || bytes.size() < kHeaderSize)
        return std::nullopt;
    CompoundFile file;
    file.bytes_ = bytes;
    const std::uint32_t sector_shift = Short(bytes, 0x1E);
    const std::uint32_t mini_shift = Short(bytes, 0x20);
    if (sector_shift < 7 || sector_shift > 16 || mini_shift < 4 || mini_shift >= sector_shift)
        return std::nullopt;
    file.sector_size_ = std::uint32_t{1} << sector_shift;
    file.mini_sector_size_ = std::uint32_t{1} << mini_shift;
    file.mini_cutoff_ = Long(bytes, 0x38);
    if (!file.ReadTables() || !file.ReadDirectory())
        return std::nullopt;
    return file;
}

bool CompoundFile::ReadTables() {
    const std::size_t most_sectors = bytes_.size() / sector_size_ + 1;
    const auto sector = [this](std::uint32_t number) {
        const std::uint64_t at = (std::uint64_t{number} + 1) * sector_size_;
        return at >= bytes_.size() ? std::string_view()
                                   : bytes_.substr(static_cast<std::size_t>(at), sector_size_);
    };
    // The places of the chain table's sectors: 109 in the header, the others in a list of sectors
    // of their own, each of which ends with the number of the next.
    std::vector<std::uint32_t> places;
    AppendLongs(bytes_.substr(0x4C, kHeaderSize - 0x4C), places);
    std::uint32_t next = Long(bytes_, 0x44);
    for (std::size_t count = 0; next < kEndOfChain - 1 && count < most_sectors; ++count) {
        const std::string_view list = sector(next);
        if (list.size() < sector_size_)
            break;
        AppendLongs(list.substr(0, list.size() - 4), places);
        next = Long(list, list.size() - 4);
    }
    for (const std::uint32_t place : places) {
        if (place == kFreeSector)
            continue;
        if (chains_.size() > most_sectors)
            break;
        const std::string_view table = sector(place);
        AppendLongs(table, chains_);
        // A cut table is filled up, so that the next one begins where it should.
        chains_.resize(
            (chains_.size() + sector_size_ / 4 - 1) / (sector_size_ / 4) * (sector_size_ / 4),
            kFreeSector);
    }
    if (chains_.empty())
        return false;
    const std::uint32_t mini = Long(bytes_, 0x3C);
    if (mini < kEndOfChain - 1) {
        if (const auto table = ReadChain(mini, kWholeChain, false))
            AppendLongs(*table, mini_chains_);
    }
    return true;
}

bool CompoundFile::ReadDirectory() {
    const auto directory = ReadChain(Long(bytes_, 0x30), kWholeChain, false);
    if (!directory || directory->size() < kEntrySize)
        return false;
    const std::size_t count = std::min(directory->size() / kEntrySize, kMostEntries);
    const auto entry_at = [&directory](std::size_t index) {
        return std::string_view(*directory).substr(index * kEntrySize, kEntrySize);
    };
    const std::string_view root = entry_at(0);
    if (const auto stream = ReadChain(Long(root, 0x74), Long(root, 0x78), false))
        mini_stream_ = *stream;
    struct Visit {
        std::uint32_t index;
        std::string folder;
    };
    std::vector<Visit> open = {{Long(root, 0x4C), ""}};
    std::vector<bool> seen(count);
    while (!open.empty()) {
        const Visit visit = std::move(open.back());
        open.pop_back();
        if (visit.index == kNoEntry || visit.index >= count || seen[visit.index])
            continue;
        seen[visit.index] = true;
        const std::string_view entry = entry_at(visit.index);
        open.push_back({Long(entry, 0x44), visit.folder});
        open.push_back({Long(entry, 0x48), visit.folder});
        std::string path = visit.folder + NameOf(entry);
        const auto type = static_cast<unsigned char>(entry[0x42]);
        if (type == 1 && path.size() < kLongestPath)
            open.push_back({Long(entry, 0x4C), path + "/"});
        std::uint64_t size = Long(entry, 0x78);
        if (sector_size_ > 512)  // the upper half is rubbish in files of small sectors
            size |= std::uint64_t{Long(entry, 0x7C)} << 32;
        entries_.push_back({std::move(path), Long(entry, 0x74), size, type == 2});
    }
    return true;
}

std::optional<std::string> CompoundFile::ReadChain(std::uint32_t start, std::uint64_t size,
                                                   bool mini) const {
    const std::vector<std::uint32_t>& chains = mini ? mini_chains_ : chains_;
    const std::string_view source = mini ? std::string_view(mini_stream_) : bytes_;
    const std::uint64_t step = mini ? mini_sector_size_ : sector_size_;
    if (size != kWholeChain && size > source.size())
        return std::nullopt;
    std::string stream;
    if (size != kWholeChain)
        stream.reserve(static_cast<std::size_t>(size));
    std::size_t visited = 0;
    for (std::uint32_t sector = start; stream.size() < size && sector < kEndOfChain - 1;) {
        const std::uint64_t at = (std::uint64_t{sector} + (mini ? 0 : 1)) * step;
        // A chain longer than its table is a loop.
        if (at >= source.size() || sector >= chains.size() || ++visited > chains.size())
            return std::nullopt;
        const std::uint64_t take = std::min(step, size - stream.size());
        stream += source.substr(static_cast<std::size_t>(at), static_cast<std::size_t>(take));
        sector = chains[sector];
    }
    if (size != kWholeChain && stream.size() < size)
        return std::nullopt;
    return stream;
}

bool CompoundFile::Has(std::string_view path) const {
    return std::any_of(entries_.begin(), entries_.end(),
                       [path](const Entry& entry) { return SameName(entry.path, path); });
}

std::optional<std::string> CompoundFile::Read(std::string_view path) const {
    const auto found = std::find_if(entries_.begin(), entries_.end(), [path](const Entry& entry) {
        return entry.stream && SameName(entry.path, path);
    });
    if (found == entries_.end())
        return std::nullopt;
    return ReadChain(found->start, found->size, found->size < mini_cutoff_);
}

std::vector<std::string> CompoundFile::Names() const {
    std::vector<std::string> names;
    for (const Entry& entry : entries_)
        names.push_back(entry.path);
    return names;
}

}  // namespace zorvane
