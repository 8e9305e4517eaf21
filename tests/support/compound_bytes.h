// Makes compound files for tests: small streams in the mini stream, large ones in sectors.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace zorvane {

class CompoundWriter {
  public:
    void Add(std::string_view name, std::string bytes) {
        streams_.emplace_back(std::u16string(name.begin(), name.end()), std::move(bytes));
    }

    std::string Finish() {
        std::string mini_stream;
        std::vector<std::uint32_t> mini_chains;
        std::vector<std::uint32_t> starts;
        for (const auto& [name, bytes] : streams_) {
            const bool mini = bytes.size() < kCutoff;
            starts.push_back(mini ? Append(bytes, 64, mini_stream, mini_chains)
                                  : Append(bytes, 512, sectors_, chains_));
        }
        const std::uint32_t mini_start = Append(mini_stream, 512, sectors_, chains_);
        std::string mini_table;
        for (const std::uint32_t next : mini_chains)
            Put(mini_table, next, 4);
        mini_table.resize((mini_table.size() + 511) / 512 * 512, '\xFF');
        const std::uint32_t mini_table_start = Append(mini_table, 512, sectors_, chains_);
        const std::uint32_t directory =
            Append(Directory(starts, mini_start, mini_stream.size()), 512, sectors_, chains_);
        return Header(directory, mini_table_start) + sectors_;
    }

  private:
    static constexpr std::size_t kCutoff = 4096;
    static constexpr std::uint32_t kEnd = 0xFFFFFFFE;
    static constexpr std::uint32_t kFree = 0xFFFFFFFF;

    static void Put(std::string& out, std::uint64_t number, int count) {
        for (int i = 0; i < count; ++i)
            out += static_cast<char>(number >> (8 * i) & 0xFF);
    }

    static std::uint32_t Append(const std::string& bytes, std::size_t step, std::string& to,
                                std::vector<std::uint32_t>& chains) {
        if (bytes.empty())
            return kEnd;
        const auto start = static_cast<std::uint32_t>(chains.size());
        const std::size_t count = (bytes.size() + step - 1) / step;
        for (std::size_t i = 1; i < count; ++i)
            chains.push_back(start + static_cast<std::uint32_t>(i));
        chains.push_back(kEnd);
        to += bytes;
        to.resize(chains.size() * step);
        return start;
    }

    static void PutEntry(std::string& out, const std::u16string& name, char type,
                         std::uint32_t right, std::uint32_t child, std::uint32_t start,
                         std::size_t size) {
        std::string entry;
        for (const char16_t unit : name)
            Put(entry, unit, 2);
        entry.resize(64);
        Put(entry, 2 * (name.size() + 1), 2);
        entry += type;
        entry += '\1';
        Put(entry, kFree, 4);
        Put(entry, right, 4);
        Put(entry, child, 4);
        entry.resize(0x74);
        Put(entry, start, 4);
        Put(entry, size, 8);
        out += entry;
    }

    std::string Directory(const std::vector<std::uint32_t>& starts, std::uint32_t mini_start,
                          std::size_t mini_size) const {
        std::string directory;
        PutEntry(directory, u"Root Entry", 5, kFree, streams_.empty() ? kFree : 1, mini_start,
                 mini_size);
        for (std::size_t i = 0; i < streams_.size(); ++i) {
            const auto right = static_cast<std::uint32_t>(i + 2);
            PutEntry(directory, streams_[i].first, 2, i + 1 < streams_.size() ? right : kFree,
                     kFree, starts[i], streams_[i].second.size());
        }
        return directory;
    }

    // Adds the chain table behind all sectors.
    std::string Header(std::uint32_t directory, std::uint32_t mini_table) {
        const std::size_t used = chains_.size();
        std::size_t tables = 1;
        while (tables * 128 < used + tables)
            ++tables;
        std::string header = "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1";
        header.resize(0x18);
        for (const std::uint64_t number : {0x3Eu, 3u, 0xFFFEu, 9u, 6u})
            Put(header, number, 2);
        header.resize(0x2C);
        Put(header, tables, 4);
        Put(header, directory, 4);
        header.resize(0x38);
        Put(header, kCutoff, 4);
        Put(header, mini_table, 4);
        header.resize(0x44);
        Put(header, kEnd, 4);
        Put(header, 0, 4);
        for (std::size_t i = 0; i < tables; ++i)
            Put(header, used + i, 4);
        header.resize(512, '\xFF');
        chains_.resize(used + tables, 0xFFFFFFFD);
        std::string table;
        for (const std::uint32_t next : chains_)
            Put(table, next, 4);
        table.resize(tables * 512, '\xFF');
        sectors_ += table;
        return header;
    }

    std::vector<std::pair<std::u16string, std::string>> streams_;
    std::string sectors_;
    std::vector<std::uint32_t> chains_;
};

}  // namespace zorvane
