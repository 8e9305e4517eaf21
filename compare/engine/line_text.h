// One text of a compare, cut into lines. Editors hold UTF-16, files UTF-8; a line's bytes decide
// whether two lines of the same form are equal, so neither form is turned into the other for that.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "common/base/run_watcher.h"

namespace zorvane {

/// The text is borrowed. A line ends at each CR LF pair and only there; a lone CR or LF is content.
class LineText {
  public:
    /// A line file in UTF-8: a last line without an end counts, the end of the file after a final
    /// line end begins no line. Less than 4 GiB.
    void SplitFile(std::string_view utf8);
    /// An editor's text: the last paragraph needs no break and counts, an empty one too. After a
    /// stop the last one is all the rest.
    void SplitEditor(std::u16string_view utf16, RunWatcher* watcher = nullptr);

    std::int32_t Count() const { return static_cast<std::int32_t>(starts_.size()) - 1; }
    /// In UTF-16.
    bool IsWide() const { return wide_; }
    /// The whole text as it lies in memory.
    std::string_view AllBytes() const;
    /// The line in memory, without its end; `line` is 0-based here and below.
    std::string_view Bytes(std::int32_t line) const;
    /// Units (bytes or UTF-16) of a stretch of lines, their ends included: a cheap measure of it.
    std::int64_t Units(std::int32_t first, std::int32_t end) const {
        return static_cast<std::int64_t>(starts_[static_cast<std::size_t>(end)]) -
               starts_[static_cast<std::size_t>(first)];
    }
    /// In UTF-16; `buffer` holds it where it had to be decoded.
    std::u16string_view Text(std::int32_t line, std::u16string& buffer) const;
    void AppendUtf8(std::int32_t line, std::string& out) const;
    std::string Utf8(std::int32_t line) const;
    /// The lines from `first` up to `end`, joined by CR LF.
    std::u16string Joined(std::int32_t first, std::int32_t end) const;
    /// The same where it lies; `buffer` holds it where it had to be decoded.
    std::u16string_view Joined(std::int32_t first, std::int32_t end, std::u16string& buffer) const;
    /// Where a line of an editor's text begins, in UTF-16 units.
    std::size_t Start(std::int32_t line) const { return starts_[static_cast<std::size_t>(line)]; }

  private:
    std::u16string_view Wide(std::int32_t line) const;
    std::string_view Narrow(std::int32_t line) const;

    std::string_view utf8_;
    std::u16string_view utf16_;
    bool wide_ = false;
    std::vector<std::uint32_t> starts_{0};  // one more than there are lines
};

}  // namespace zorvane
