#include "find/engine/text_windows.h"

#include <algorithm>
#include <cstring>
#include <span>
#include <utility>

#include "find/engine/byte_finder.h"

namespace zorvane {
namespace {

constexpr std::size_t kWindow = 1 << 18;
constexpr std::size_t kHead = 8192;
constexpr std::size_t kLongestLine = std::size_t{64} << 20;

// A file is held as a whole where lines in front of a hit are wanted.
constexpr std::size_t kLargestWhole = std::size_t{1} << 30;
constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";

}  // namespace

char* ByteBuffer::Room(std::size_t size) {
    if (room_ < size) {
        auto bytes = std::make_unique_for_overwrite<char[]>(size);
        if (size_ > 0)
            std::memcpy(bytes.get(), bytes_.get(), size_);
        bytes_ = std::move(bytes);
        room_ = size;
    }
    return bytes_.get() + size_;
}

void ByteBuffer::DropFront(std::size_t count) {
    size_ -= count;
    if (count > 0 && size_ > 0)
        std::memmove(bytes_.get(), bytes_.get() + count, size_);
}

void ByteBuffer::Append(std::string_view text) {
    if (text.empty())
        return;
    const std::size_t size = size_ + text.size();
    std::memcpy(Room(size <= room_ ? size : std::max(size, 2 * room_)), text.data(), text.size());
    size_ = size;
}

TextWindows::TextWindows(WindowRules rules) : rules_(std::move(rules)) {}

void TextWindows::Begin(OpenedFile& file) {
    file_ = &file;
    buffer_.Clear();
    wide_.Clear();
    used_ = 0;
    first_ = true;
    file_ended_ = false;
    cut_line_ = false;
    wide_encoding_.reset();
    byte_encoding_.reset();
    error_ = {};
}

// Reads until there are `most` bytes or the file ends. False after a failure or a stop.
bool TextWindows::Fill(ByteBuffer& buffer, std::size_t most, const std::function<bool()>& stop) {
    while (buffer.size() < most && !file_ended_ && !error_ && !stop()) {
        char* const room = buffer.Room(most);
        std::size_t got = 0;
        error_ = file_->Read({room, most - buffer.size()}, got);
        if (!error_)
            buffer.Grow(got);
        file_ended_ = !error_ && got == 0;
    }
    return !error_ && (file_ended_ || buffer.size() >= most);
}

bool TextWindows::InFours() const {
    return wide_encoding_->name.starts_with("UTF-32");
}

// A text has no NUL at its begin, unless each of its characters takes two bytes or four.
WindowEnd TextWindows::FirstLook() {
    const std::string_view head = buffer_.Text().substr(0, kHead);
    constexpr std::string_view kMarks[] = {"\xFF\xFE", "\xFE\xFF", {"\0\0\xFE\xFF", 4}};
    const bool marked = std::any_of(std::begin(kMarks), std::end(kMarks),
                                    [head](auto mark) { return head.starts_with(mark); });
    const bool zeros = head.find('\0') != std::string_view::npos;
    if (marked || (zeros && LooksLikeUtf16(head))) {
        wide_encoding_ = DetectEncoding(head, rules_.locale_encoding);
        if (!wide_encoding_->name.starts_with("UTF-16") && !InFours())
            return WindowEnd::Binary;
        wide_.Append(buffer_.Text().substr(wide_encoding_->bom_size));
        wide_encoding_->bom_size = 0;
        buffer_.Clear();
        return WindowEnd::Window;
    }
    if (zeros)
        return WindowEnd::Binary;
    used_ = head.starts_with(kUtf8Mark) ? kUtf8Mark.size() : 0;
    return WindowEnd::Window;
}

// Reads until `most` bytes wait, in UTF-8 where the file is wider.
WindowEnd TextWindows::Add(std::size_t most, const std::function<bool()>& stop) {
    if (!wide_encoding_ && !Fill(buffer_, most, stop))
        return error_ ? WindowEnd::Failed : WindowEnd::End;
    if (std::exchange(first_, false)) {
        if (const WindowEnd look = FirstLook(); look != WindowEnd::Window)
            return look;
    }
    return wide_encoding_ ? AddWide(stop) : WindowEnd::Window;
}

// What is not handed out moves to the front, and the rest is read behind it.
WindowEnd TextWindows::Next(std::string_view& window, const std::function<bool()>& stop) {
    buffer_.DropFront(used_);
    used_ = 0;
    std::optional<std::size_t> end;
    for (std::size_t most = kWindow; !end; most = std::max(most, buffer_.size()) * 2) {
        if (const WindowEnd added = Add(most, stop); added != WindowEnd::Window)
            return added;
        end = EndOfWindow();
    }
    window = buffer_.Text().substr(used_, *end - used_);
    used_ = *end;
    if (window.empty())
        return WindowEnd::End;
    if (!wide_encoding_ && rules_.needs_utf8 && !IsAsciiText(window) && !IsValidUtf8(window)) {
        decoded_ = Decoded(window);
        window = decoded_;
    }
    return WindowEnd::Window;
}

// Behind the last whole line; nothing where more has to be read first.
std::optional<std::size_t> TextWindows::EndOfWindow() {
    const std::size_t size = buffer_.size();
    if (file_ended_ && wide_.size() == 0)
        return size;
    const std::size_t longest = rules_.whole_files ? kLargestWhole : kLongestLine;
    const std::size_t line_end = buffer_.Text().substr(used_).rfind('\n');
    const bool whole_line = line_end != std::string_view::npos;
    if (size < longest && (rules_.whole_files || !whole_line))
        return std::nullopt;
    cut_line_ = cut_line_ || !whole_line;
    return whole_line ? used_ + line_end + 1 : size;
}

// Adds a window's worth to `buffer_`. A pair of surrogates is not parted.
WindowEnd TextWindows::AddWide(const std::function<bool()>& stop) {
    if (!Fill(wide_, kWindow, stop))
        return error_ ? WindowEnd::Failed : WindowEnd::End;
    std::size_t size = wide_.size();
    if (!file_ended_) {
        size -= size % (InFours() ? 4 : 2);
        const std::size_t high = wide_encoding_->name == "UTF-16BE" ? size - 2 : size - 1;
        if (!InFours() && (static_cast<unsigned char>(wide_.Text()[high]) & 0xFCU) == 0xD8U)
            size -= 2;
    }
    buffer_.Append(ToUtf8(DecodeText(wide_.Text().substr(0, size), *wide_encoding_)));
    wide_.DropFront(size);
    return WindowEnd::Window;
}

std::string TextWindows::Decoded(std::string_view bytes) {
    if (!byte_encoding_)
        byte_encoding_ = DetectEncoding(bytes, rules_.locale_encoding);
    DetectedEncoding encoding = *byte_encoding_;
    encoding.bom_size = 0;
    return ToUtf8(DecodeText(bytes, encoding));
}

}  // namespace zorvane
