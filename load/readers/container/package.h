// The parts of a ZIP package (DOCX, ODT, XLSX, PPTX, EPUB), under bounds. Uses libzip.
#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "load/readers/reader.h"

namespace zorvane {

/// A part that is read piece by piece. Belongs to its package and must not outlive it.
class PartStream {
  public:
    virtual ~PartStream() = default;
    /// Fills up to `size` bytes; 0 at the end and after a fault.
    virtual std::size_t Read(char* buffer, std::size_t size) = 0;
    /// Damaged; TooLarge when all parts together unpack to more than the package may.
    virtual ReadError Error() const = 0;
    bool Failed() const { return Error() != ReadError::None; }
};

class Package {
  public:
    /// `bytes` is borrowed and outlives the package. Nothing when it is no ZIP file. All parts
    /// together may unpack to `most_bytes`.
    static std::unique_ptr<Package> Open(std::string_view bytes,
                                         std::size_t most_bytes = kMaxPackageBytes);
    virtual ~Package() = default;

    virtual bool Has(std::string_view name) const = 0;
    /// With "/" between folders, whatever the file has.
    virtual std::vector<std::string> Names() const = 0;
    /// The unpacked part, at most `kMaxPartBytes`. A leading "/" or "./" in the name is passed
    /// over,
    /// "\\" is "/", since some programs write it, and ASCII case does not count. `error` tells why
    /// there is none: Damaged, TooLarge, or WrongFormat when there is no such part.
    virtual std::optional<std::string> Read(std::string_view name, ReadError* error = nullptr) = 0;
    /// Nothing when there is no such part.
    virtual std::unique_ptr<PartStream> Stream(std::string_view name) = 0;
    /// Size and checksum of a part as the package's directory tells them, without reading it; empty
    /// when it tells of none.
    virtual std::string ToldChecksum(std::string_view name) const = 0;
    /// True when a part of the package itself is encrypted (old ZIP encryption).
    virtual bool Encrypted() const = 0;

    /// For whoever finds a part's content broken and goes on without it. The package tells of what
    /// cannot be unpacked by itself.
    void TellDamage(std::string_view part) { damaged_.emplace(part); }
    const std::set<std::string>& Damaged() const { return damaged_; }

  private:
    std::set<std::string> damaged_;
};

/// Folder and file of a reference from one part to another: "word/document.xml" and
/// "../media/a.xml" give "media/a.xml"; a "\\" parts folders, too. Never leaves the package.
std::string ResolvePart(std::string_view from_part, std::string_view reference);

}  // namespace zorvane
