#include "load/readers/container/part_pieces.h"

namespace zorvane {

ReadEnd PartPieces::Fill(PartStream& stream) {
    while (true) {
        std::string piece(kSize, '\0');
        std::size_t filled = 0;
        while (filled < kSize) {
            const std::size_t got = stream.Read(piece.data() + filled, kSize - filled);
            if (got == 0)
                break;
            filled += got;
        }
        piece.resize(filled);
        pieces.push_back(std::move(piece));
        if (stream.Error() == ReadError::Damaged)
            return ReadEnd::Fault(ReadError::Damaged, "the part content.xml is broken");
        if (stream.Failed() || pieces.size() * kSize > kMaxPartBytes)
            return ReadEnd::Fault(ReadError::TooLarge, "the sheets are too large");
        if (filled < kSize)
            return ReadEnd::Ok();
    }
}

std::size_t PiecesStream::Read(char* buffer, std::size_t size) {
    const std::size_t index = at_ / PartPieces::kSize;
    if (index >= pieces_.pieces.size())
        return 0;
    const std::string& piece = pieces_.pieces[index];
    const std::size_t place = at_ % PartPieces::kSize;
    const std::size_t got = place < piece.size() ? piece.copy(buffer, size, place) : 0;
    at_ += got;
    return got;
}

}  // namespace zorvane
