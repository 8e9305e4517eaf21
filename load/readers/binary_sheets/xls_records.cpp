#include "load/readers/binary_sheets/xls_records.h"

#include <algorithm>
#include <bit>

#include "common/base/text_bytes.h"

namespace zorvane::xls {
namespace {

constexpr std::size_t kMostTexts = std::size_t{16} << 20;

// Reads on over the ends of records. Where characters are cut, the next record begins with a flag
// that tells their size anew.
class ContinuedBytes {
  public:
    ContinuedBytes(std::string_view stream, const Record& first)
        : stream_(stream), next_(first.end), rest_(first.data) {}

    bool AtEnd() { return rest_.empty() && !NextRecord(); }

    std::uint32_t Number(std::size_t count) {
        std::uint32_t number = 0;
        for (std::size_t i = 0; i < count && !AtEnd(); ++i) {
            number |= std::uint32_t{static_cast<unsigned char>(rest_.front())} << (8 * i);
            rest_.remove_prefix(1);
        }
        return number;
    }

    bool Skip(std::uint64_t count) {
        while (count > 0) {
            if (AtEnd())
                return false;
            const auto step =
                static_cast<std::size_t>(std::min<std::uint64_t>(count, rest_.size()));
            rest_.remove_prefix(step);
            count -= step;
        }
        return true;
    }

    bool Characters(std::size_t count, bool wide, const Book& book, std::string& out) {
        while (true) {
            const std::size_t width = wide ? 2 : 1;
            const std::size_t here = std::min(count, rest_.size() / width);
            const std::string_view bytes = rest_.substr(0, here * width);
            if (wide)
                AppendWide(bytes, out);
            else
                AppendNarrow(bytes, book, out);
            rest_.remove_prefix(here * width);
            count -= here;
            if (count == 0)
                return true;
            if (!NextRecord() || rest_.empty())
                return false;
            wide = (rest_.front() & 1) != 0;
            rest_.remove_prefix(1);
        }
    }

  private:
    bool NextRecord() {
        Record record;
        if (!ReadRecord(stream_, next_, record) || record.id != kContinue)
            return false;
        next_ = record.end;
        rest_ = record.data;
        return !rest_.empty();
    }

    std::string_view stream_;
    std::size_t next_;
    std::string_view rest_;
};

}  // namespace

std::uint64_t Bytes::Take(std::size_t count) {
    if (rest_.size() < count) {
        failed_ = true;
        rest_ = {};
        return 0;
    }
    std::uint64_t number = 0;
    for (std::size_t i = count; i-- > 0;)
        number = number << 8 | static_cast<unsigned char>(rest_[i]);
    rest_.remove_prefix(count);
    return number;
}

double Bytes::Double() {
    return std::bit_cast<double>(Take(8));
}

std::string_view Bytes::View(std::size_t count) {
    if (rest_.size() < count)
        failed_ = true;
    const std::string_view view = rest_.substr(0, count);
    rest_.remove_prefix(view.size());
    return view;
}

bool ReadRecord(std::string_view stream, std::size_t at, Record& record) {
    if (at >= stream.size() || stream.size() - at < 4)
        return false;
    Bytes head(stream.substr(at, 4));
    record.id = head.U16();
    const std::size_t size = head.U16();
    if (stream.size() - at - 4 < size)
        return false;
    record.data = stream.substr(at + 4, size);
    record.begin = at;
    record.end = at + 4 + size;
    return true;
}

void AppendWide(std::string_view bytes, std::string& out) {
    std::u16string text(bytes.size() / 2, u'\0');
    for (std::size_t i = 0; i < text.size(); ++i)
        text[i] = static_cast<char16_t>(static_cast<unsigned char>(bytes[2 * i]) |
                                        static_cast<unsigned char>(bytes[2 * i + 1]) << 8);
    AppendUtf8(text, out);
}

void AppendNarrow(std::string_view bytes, const Book& book, std::string& out) {
    const bool ascii = std::all_of(bytes.begin(), bytes.end(), [](char character) {
        return static_cast<unsigned char>(character) < 0x80;
    });
    if (ascii) {
        out += bytes;
        return;
    }
    if (!book.biff8) {
        AppendUtf8(DecodeCodePage(bytes, book.code_page), out);
        return;
    }
    for (const char character : bytes)
        AppendUtf8(static_cast<unsigned char>(character), out);
}

void AppendText(Bytes& bytes, std::size_t count, const Book& book, std::string& out) {
    const bool wide = book.biff8 && (bytes.U8() & 1) != 0;
    const std::string_view view = bytes.View(wide ? 2 * count : count);
    if (wide)
        AppendWide(view, out);
    else
        AppendNarrow(view, book, out);
}

ReadEnd ReadTexts(const Book& book, const Record& first, SharedTexts& texts) {
    ContinuedBytes bytes(book.stream, first);
    bytes.Number(4);  // how often the texts are used
    const std::uint32_t count = bytes.Number(4);
    for (std::uint32_t i = 0; i < count && !bytes.AtEnd(); ++i) {
        const std::size_t characters = bytes.Number(2);
        const std::uint32_t flags = bytes.Number(1);
        const std::uint64_t runs = (flags & 8) != 0 ? bytes.Number(2) : 0;
        const std::uint64_t phonetic = (flags & 4) != 0 ? bytes.Number(4) : 0;
        if (!bytes.Characters(characters, (flags & 1) != 0, book, texts.text) ||
            !bytes.Skip(4 * runs + phonetic))
            return ReadEnd::Fault(ReadError::Damaged, "the table of texts ends too early");
        if (texts.ends.size() >= kMostTexts || texts.text.size() > kMaxPartBytes)
            return ReadEnd::Fault(ReadError::TooLarge, "the texts of the sheets are too large");
        texts.ends.push_back(static_cast<std::uint32_t>(texts.text.size()));
    }
    return ReadEnd::Ok();
}

std::string_view ErrorName(std::uint8_t code) {
    switch (code) {
        case 0x00:
            return "#NULL!";
        case 0x07:
            return "#DIV/0!";
        case 0x0F:
            return "#VALUE!";
        case 0x17:
            return "#REF!";
        case 0x1D:
            return "#NAME?";
        case 0x24:
            return "#NUM!";
        default:
            return "#N/A";
    }
}

double DecodeRk(std::uint32_t rk) {
    double value = 0;
    if ((rk & 2) != 0)
        value = static_cast<std::int32_t>(rk) >> 2;
    else
        value = std::bit_cast<double>(std::uint64_t{rk & 0xFFFFFFFC} << 32);
    return (rk & 1) != 0 ? value / 100 : value;
}

}  // namespace zorvane::xls
