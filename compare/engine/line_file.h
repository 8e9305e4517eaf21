// A line file in memory: where its lines begin.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace zorvane {

/// The lines of a text that is borrowed. A line ends at each CR LF pair and only there; a lone CR
/// or LF is content. Texts of 4 GiB and more are refused before they get here.
class LineFile {
  public:
    /// Keeps `text` by reference and finds its lines. The buffers of an earlier split are used
    /// again.
    void Split(std::string_view text);

    std::int32_t Count() const { return static_cast<std::int32_t>(starts_.size()) - 1; }
    std::string_view Bytes() const { return text_; }
    /// Without its line end; `index` is 0-based.
    std::string_view Line(std::int32_t index) const {
        std::string_view line = LineWithEnd(index);
        if (line.ends_with("\r\n"))
            line.remove_suffix(2);
        return line;
    }
    /// Number of lines that end within the first `bytes` bytes.
    std::int32_t CountWithin(std::size_t bytes) const;
    std::string_view LineWithEnd(std::int32_t index) const {
        const auto at = static_cast<std::size_t>(index);
        return text_.substr(starts_[at], starts_[at + 1] - starts_[at]);
    }

  private:
    std::string_view text_;
    std::vector<std::uint32_t> starts_{0};  // one more than there are lines
};

}  // namespace zorvane
