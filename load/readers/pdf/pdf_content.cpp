#include "load/readers/pdf/pdf_content.h"

#include <algorithm>
#include <array>

#include "common/base/ascii.h"

namespace zorvane {
namespace {

constexpr std::string_view kBlanks("\0\t\n\f\r ", 6);

enum class Kind : std::uint8_t { Regular, Blank, Delimiter };

constexpr std::array<Kind, 256> MakeKinds() {
    std::array<Kind, 256> kinds{};
    for (const char blank : kBlanks)
        kinds[static_cast<unsigned char>(blank)] = Kind::Blank;
    for (const char delimiter : std::string_view("()<>[]{}/%"))
        kinds[static_cast<unsigned char>(delimiter)] = Kind::Delimiter;
    return kinds;
}
constexpr std::array<Kind, 256> kKinds = MakeKinds();

Kind KindOf(char byte) {
    return kKinds[static_cast<unsigned char>(byte)];
}

// "#20" in a name stands for a blank.
std::string Decoded(std::string_view name) {
    std::string decoded;
    for (std::size_t at = 0; at < name.size(); ++at) {
        const bool coded = name[at] == '#' && at + 2 < name.size() && HexDigit(name[at + 1]) >= 0 &&
                           HexDigit(name[at + 2]) >= 0;
        decoded += coded ? static_cast<char>(HexDigit(name[at + 1]) * 16 + HexDigit(name[at + 2]))
                         : name[at];
        at += coded ? 2 : 0;
    }
    return decoded;
}

}  // namespace

bool PdfContent::Next(PdfDrawing& drawing) {
    std::string_view name;
    for (Word word = NextWord(); word != Word::End; word = NextWord()) {
        if (word == Word::Name) {
            name = word_;
        } else if (word == Word::Plain && word_ == "Do") {
            drawing = {Decoded(name), {}, {}, {}};
            return true;
        } else if (word == Word::Plain && word_ == "BI") {
            Inline(drawing);
            return true;
        }
    }
    return false;
}

PdfContent::Word PdfContent::NextWord() {
    while (at_ < content_.size() && KindOf(content_[at_]) == Kind::Blank)
        ++at_;
    if (at_ == content_.size())
        return Word::End;
    const char first = content_[at_];
    if (first == '(') {
        SkipString();
        return Word::Other;
    }
    if (first == '%') {
        at_ = std::min(content_.find_first_of("\r\n", at_), content_.size());
        return Word::Other;
    }
    if (first == '<' && content_.substr(at_, 2) != "<<") {
        at_ = std::min(content_.find('>', at_), content_.size());
        return Word::Other;
    }
    if (first != '/' && KindOf(first) == Kind::Delimiter) {
        ++at_;
        return Word::Other;
    }
    const std::size_t begin = first == '/' ? ++at_ : at_;
    while (at_ < content_.size() && KindOf(content_[at_]) == Kind::Regular)
        ++at_;
    word_ = content_.substr(begin, at_ - begin);
    return first == '/' ? Word::Name : Word::Plain;
}

void PdfContent::SkipString() {
    int depth = 0;
    do {
        const char byte = content_[at_++];
        if (byte == '\\' && at_ < content_.size())
            ++at_;
        else if (byte == '(')
            ++depth;
        else if (byte == ')')
            --depth;
    } while (depth > 0 && at_ < content_.size());
}

// Behind "BI": keys with their values, "ID", one blank, the bytes, "EI".
void PdfContent::Inline(PdfDrawing& drawing) {
    drawing = {};
    const std::size_t begin = at_;
    std::string_view key;
    for (Word word = NextWord(); word != Word::End; word = NextWord()) {
        if (word == Word::Plain && word_ == "ID")
            break;
        if (word == Word::Plain && (key == "W" || key == "Width"))
            drawing.width = word_;
        if (word == Word::Plain && (key == "H" || key == "Height"))
            drawing.height = word_;
        key = word == Word::Name ? word_ : std::string_view();
    }
    FindInlineEnd();
    drawing.bytes = content_.substr(begin, at_ - begin);
}

// Where "EI" stands as a word, which the bytes of a picture hardly ever hold.
void PdfContent::FindInlineEnd() {
    const auto is_border = [this](std::size_t at) {
        return at >= content_.size() || KindOf(content_[at]) == Kind::Blank;
    };
    for (at_ = content_.find("EI", at_); at_ != std::string_view::npos;
         at_ = content_.find("EI", at_ + 1)) {
        if (is_border(at_ - 1) && is_border(at_ + 2)) {
            at_ += 2;
            return;
        }
    }
    at_ = content_.size();
}

}  // namespace zorvane
