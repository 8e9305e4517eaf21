// The text of a file in pieces of whole lines, as UTF-8 where that is needed.
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "common/base/text_encoding.h"
#include "common/platform/folder_handle.h"

namespace zorvane {

enum class WindowEnd {
    Window,  ///< there is one
    End,     ///< of the file
    Binary,  ///< no text; told at the first window
    Failed
};

struct WindowRules {
    bool needs_utf8 = true;  ///< else text of one byte a character stays as it is
    bool whole_files = false;
    std::string locale_encoding;
};

/// Bytes that are not cleared when they are made room for, since most of the room stays unused.
class ByteBuffer {
  public:
    std::string_view Text() const { return {bytes_.get(), size_}; }
    std::size_t size() const { return size_; }
    char* Room(std::size_t size);  ///< behind what is there, for up to `size` in all
    void Grow(std::size_t by) { size_ += by; }
    void DropFront(std::size_t count);
    void Clear() { size_ = 0; }
    void Append(std::string_view text);

  private:
    std::unique_ptr<char[]> bytes_;
    std::size_t size_ = 0;
    std::size_t room_ = 0;
};

/// Of one thread; its buffers serve file after file.
class TextWindows {
  public:
    explicit TextWindows(WindowRules rules);

    void Begin(OpenedFile& file);
    /// The next lines, until the next call. A line longer than 64 MB is cut, see `CutLine`.
    WindowEnd Next(std::string_view& window, const std::function<bool()>& stop);
    SystemError Error() const { return error_; }
    /// False when the last window was the file's last; true where nobody knows.
    bool MayGoOn() const { return !file_ended_ || wide_.size() > 0 || used_ < buffer_.size(); }
    bool CutLine() const { return cut_line_; }
    /// For a line of a window that is not UTF-8.
    std::string Decoded(std::string_view bytes);

  private:
    bool InFours() const;
    WindowEnd FirstLook();
    std::optional<std::size_t> EndOfWindow();
    bool Fill(ByteBuffer& buffer, std::size_t most, const std::function<bool()>& stop);
    WindowEnd Add(std::size_t most, const std::function<bool()>& stop);
    WindowEnd AddWide(const std::function<bool()>& stop);

    WindowRules rules_;
    OpenedFile* file_ = nullptr;
    ByteBuffer buffer_;     // bytes that were read, or UTF-8 of UTF-16
    ByteBuffer wide_;       // bytes of UTF-16
    std::string decoded_;   // of a window that was not UTF-8
    std::size_t used_ = 0;  // of `buffer_`: has been handed out
    bool first_ = true;
    bool file_ended_ = false;
    bool cut_line_ = false;
    std::optional<DetectedEncoding> wide_encoding_;
    std::optional<DetectedEncoding> byte_encoding_;
    SystemError error_;
};

}  // namespace zorvane
