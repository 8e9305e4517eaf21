// An unpacked part that is read more than once, in pieces: one string of its size would be copied
// as it grows.
#pragma once

#include <string>
#include <vector>

#include "load/readers/container/package.h"

namespace zorvane {

struct PartPieces {
    static constexpr std::size_t kSize = std::size_t{1} << 20;
    std::vector<std::string> pieces;  ///< all but the last one of that size

    ReadEnd Fill(PartStream& stream);
};

/// Reads them from a byte on. `pieces` is borrowed.
class PiecesStream : public PartStream {
  public:
    PiecesStream(const PartPieces& pieces, std::size_t from) : pieces_(pieces), at_(from) {}
    std::size_t Read(char* buffer, std::size_t size) override;
    ReadError Error() const override { return ReadError::None; }

  private:
    const PartPieces& pieces_;
    std::size_t at_;
};

}  // namespace zorvane
