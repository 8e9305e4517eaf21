// The streams of a compound file (OLE2), the container of binary office documents and of encrypted
// ones. Source: the public format description MS-CFB.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zorvane {

class CompoundFile {
  public:
    /// Nothing when the bytes are no compound file or its tables are broken. `bytes` is borrowed.
    static std::optional<CompoundFile> Open(std::string_view bytes);
    static bool LooksLike(std::string_view bytes);

    /// Paths such as "Workbook" or "\x06DataSpaces/Version"; regardless of ASCII case.
    bool Has(std::string_view path) const;
    /// The stream's bytes; nothing when missing or its chain is broken or loops.
    std::optional<std::string> Read(std::string_view path) const;
    std::vector<std::string> Names() const;

  private:
    struct Entry {
        std::string path;
        std::uint32_t start = 0;
        std::uint64_t size = 0;
        bool stream = false;
    };
    std::optional<std::string> ReadChain(std::uint32_t start, std::uint64_t size, bool mini) const;
    bool ReadTables();
    bool ReadDirectory();

    std::string_view bytes_;
    std::uint32_t sector_size_ = 512;
    std::uint32_t mini_sector_size_ = 64;
    std::uint32_t mini_cutoff_ = 4096;
    std::vector<std::uint32_t> chains_;
    std::vector<std::uint32_t> mini_chains_;
    std::string mini_stream_;
    std::vector<Entry> entries_;
};

}  // namespace zorvane
