// A text that is edited anywhere without being moved.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "common/base/run_watcher.h"
#include "compare/document/span_list.h"

namespace zorvane {

/// The text as it was assigned is never touched; what is put in is added elsewhere; pieces of both
/// are the text. So an edit costs by its own length and by the pieces between it and the last one,
/// however long the text. Once there is more that nobody reads than text, all is put into one
/// piece.
class PieceText {
  public:
    std::int32_t Length() const { return pieces_.Length(); }
    void Assign(std::u16string text);
    /// Moves the text out; without a copy if it was not edited. Like `Take` part of it after a
    /// stop.
    std::u16string TakeAll(RunWatcher* watcher = nullptr);
    std::u16string Take(std::int32_t first, std::int32_t length,
                        RunWatcher* watcher = nullptr) const;
    std::vector<std::u16string_view> Pieces(std::int32_t first, std::int32_t length) const;
    char16_t At(std::int32_t position) const;
    /// False after a stop; then nothing has changed.
    bool Replace(std::int32_t first, std::int32_t length, std::u16string_view text,
                 RunWatcher* watcher = nullptr);
    /// Position of the next or last such unit at or behind `from`, in front of `before`, or -1.
    std::int32_t Next(char16_t unit, std::int32_t from) const;
    std::int32_t Last(char16_t unit, std::int32_t before) const;

  private:
    // A place in one of the sources: 0 is what was assigned, the others are what was added.
    struct Piece {
        std::uint32_t source = 0;
        std::int32_t offset = 0;

        Piece Behind(std::int32_t units) const { return {source, offset + units}; }
        bool Continues(Piece in_front, std::int32_t length) const {
            return source == in_front.source && offset == in_front.offset + length;
        }
    };

    std::u16string_view View(Piece piece, std::int32_t length) const {
        return std::u16string_view(sources_[piece.source])
            .substr(static_cast<std::size_t>(piece.offset), static_cast<std::size_t>(length));
    }
    Piece Add(std::u16string_view text, StopCheck& stop);

    std::vector<std::u16string> sources_;
    std::size_t stored_ = 0;  // units in all sources
    SpanList<Piece> pieces_;
};

}  // namespace zorvane
