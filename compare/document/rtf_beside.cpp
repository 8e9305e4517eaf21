#include "compare/document/rtf_beside.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <utility>

#include "common/base/ascii.h"
#include "common/base/parse_number.h"
#include "compare/document/rtf_reader.h"

namespace zorvane {
namespace {

constexpr std::size_t kMostTextBytes = std::size_t{1} << 20;  // of a group that is read as text
constexpr std::size_t kMostUnseen = std::size_t{1} << 20;     // of a paragraph

// Behind the backslash at `at`: one step on, or past the bytes of a \bin.
std::size_t PastEscape(std::string_view text, std::size_t at) {
    const std::string_view word = text.substr(at + 1, 4);
    if (!word.starts_with("bin") || (word.size() == 4 && IsAsciiLetter(word[3])))
        return at + 2;
    const std::size_t digits = at + 4;
    const std::size_t bytes =
        ReadNumber<std::size_t>(text.substr(std::min(digits, text.size()))).value.value_or(0);
    std::size_t begin = std::min(text.find_first_not_of("0123456789", digits), text.size());
    if (begin < text.size() && text[begin] == ' ')
        ++begin;
    return begin + std::min(bytes, text.size() - begin);
}

// Up to the brace that ends the group.
std::string_view GroupContent(std::string_view rest) {
    std::size_t depth = 1;
    for (std::size_t at = 0; at < rest.size();) {
        at = rest.find_first_of("\\{}", at);
        if (at >= rest.size())
            break;
        if (rest[at] == '\\') {
            at = PastEscape(rest, at);
            continue;
        }
        depth = rest[at] == '{' ? depth + 1 : depth - 1;
        if (depth == 0)
            return rest.substr(0, at);
        ++at;
    }
    return rest;
}

std::string TextOf(std::string_view group, CodePage page) {
    const std::string document = "{\\rtf1\\ansi\\ansicpg" + std::to_string(page.number) + "{}" +
                                 std::string(group.substr(0, kMostTextBytes)) + "}";
    return std::string(Trim(ToUtf8(ReadRtf(document).text)));
}

// Takes the bytes of a \bin at `at` and gives the place behind them.
std::size_t TakeBinary(std::string_view group, std::size_t at, std::string& bytes) {
    const std::size_t past = PastEscape(group, at);
    std::size_t begin = std::min(group.find_first_not_of("0123456789", at + 4), past);
    begin += begin < past && group[begin] == ' ' ? 1U : 0U;
    bytes += group.substr(begin, past - begin);
    return past;
}

// Bytes from their hexadecimal digits.
class HexBytes {
  public:
    void Take(char digit, std::string& bytes) {
        const int value = HexDigit(digit);
        if (value < 0)
            return;
        if (high_ >= 0)
            bytes += static_cast<char>(high_ * 16 + value);
        high_ = high_ >= 0 ? -1 : value;
    }

  private:
    int high_ = -1;
};

// The bytes that a group writes as hexadecimal digits or as they are; groups inside and control
// words are passed over.
std::string BytesOf(std::string_view group) {
    std::string bytes;
    HexBytes digits;
    for (std::size_t at = 0; at < group.size();) {
        if (group[at] == '{')
            at += GroupContent(group.substr(at + 1)).size() + 2;
        else if (group.substr(at, 4) == "\\bin")
            at = TakeBinary(group, at, bytes);
        else if (group[at] == '\\')
            at = std::min(group.find_first_of(" \r\n{}\\", at + 1), group.size());
        else
            digits.Take(group[at++], bytes);
    }
    return bytes;
}

// A formula's letters and the words of its structure, without looks and ids.
std::string FormulaShape(std::string_view group) {
    std::string shape;
    for (std::size_t at = 0; at < group.size() && shape.size() < kMostTextBytes;) {
        if (group[at] != '\\') {
            if (static_cast<unsigned char>(group[at]) > 0x20)
                shape += group[at];
            ++at;
            continue;
        }
        std::size_t end = at + 1;
        while (end < group.size() && IsAsciiLetter(group[end]))
            ++end;
        const std::string_view word = group.substr(at + 1, end - at - 1);
        const bool letter = word.empty() || word == "u";
        end = std::min(group.find_first_not_of("-0123456789", end), group.size());
        if (letter || word.starts_with('m'))
            shape += group.substr(at, std::max(end, at + 2) - at);
        at = std::max(end, at + 2);
    }
    return shape;
}

std::string_view PictureKind(std::string_view group) {
    // The second as the preparation of a load spoils the first.
    constexpr std::array<std::pair<std::string_view, std::string_view>, 6> kKinds = {
        {{"\\pngblip", "PNG picture"},
         {"\\pzngblip", "PNG picture"},
         {"\\jpegblip", "JPEG picture"},
         {"\\emfblip", "EMF picture"},
         {"\\wmetafile", "WMF picture"},
         {"\\dibitmap", "bitmap"}}};
    const std::string_view head = group.substr(0, 4096);
    for (const auto& [word, name] : kKinds) {
        if (head.find(word) != std::string_view::npos)
            return name;
    }
    return "picture";
}

bool IsMargin(std::string_view group) {
    constexpr std::array<std::string_view, 8> kMargins = {
        "header", "headerf", "headerl", "headerr", "footer", "footerf", "footerl", "footerr"};
    return std::find(kMargins.begin(), kMargins.end(), group) != kMargins.end();
}

std::string_view NextWord(std::string_view& rest) {
    rest.remove_prefix(std::min(rest.find_first_not_of(" \t"), rest.size()));
    if (rest.starts_with('"')) {
        rest.remove_prefix(1);
        const std::size_t end = std::min(rest.find('"'), rest.size());
        const std::string_view word = rest.substr(0, end);
        rest.remove_prefix(std::min(end + 1, rest.size()));
        return word;
    }
    const std::size_t end = std::min(rest.find_first_of(" \t"), rest.size());
    const std::string_view word = rest.substr(0, end);
    rest.remove_prefix(end);
    return word;
}

}  // namespace

std::optional<BesideItem> BesideOfFieldCode(std::string_view instruction) {
    std::string_view rest = Trim(instruction);
    std::string_view words = rest;
    const std::string name = ToUpper(NextWord(words));
    if (rest.empty() || name == "PAGEREF" || name == "TOC")
        return std::nullopt;
    if (name != "HYPERLINK")
        return MakeBeside(BesideKind::Field, rest);
    std::string target;
    while (!words.empty()) {
        const std::string_view word = NextWord(words);
        if (word == "\\l")
            target += "#" + std::string(NextWord(words));
        else if (word == "\\o" || word == "\\t")
            NextWord(words);
        else if (!word.starts_with('\\'))
            target.insert(0, word);
    }
    if (target.empty() || target.starts_with("#_Toc"))
        return std::nullopt;
    return MakeBeside(BesideKind::Link, target);
}

void RtfBeside::Add(BesideItem item, std::int32_t paragraph) {
    if (item.paragraph == kBesideHere) {
        item.paragraph = paragraph;
        if (!margin_.empty())
            item.text = BesideText(std::string(margin_) + ": " + item.text);
    }
    list_.Add(std::move(item));
}

void RtfBeside::Group(std::string_view name, std::string_view rest, std::int32_t paragraph,
                      CodePage page) {
    if (items_ == nullptr || Thing(name, rest, paragraph, page))
        return;
    if (name == "fldinst") {
        FieldCode(TextOf(GroupContent(rest), page), paragraph);
    } else if (name == "atnauthor") {
        author_ = TextOf(GroupContent(rest), page);
    } else if (name == "annotation") {
        Comment(TextOf(GroupContent(rest), page), paragraph);
    } else if (name == "info") {
        Info(GroupContent(rest), page);
    } else if (IsMargin(name)) {
        Margin(name.substr(0, std::string_view("header").size()), GroupContent(rest), page);
    }
}

// The things in a head or foot, which is no paragraph of the text.
void RtfBeside::Margin(std::string_view name, std::string_view group, CodePage page) {
    if (auto item = MakeMetadata(name, TextOf(group, page)))
        Add(std::move(*item), 0);
    margin_ = name;
    constexpr std::string_view kBegin = "{\\";
    constexpr std::string_view kOptional = "*\\";
    for (std::size_t at = group.find(kBegin); at != std::string_view::npos;
         at = group.find(kBegin, at)) {
        std::string_view rest = group.substr(at + kBegin.size());
        if (rest.starts_with(kOptional))
            rest.remove_prefix(kOptional.size());
        const auto end = std::find_if_not(rest.begin(), rest.end(), IsAsciiLetter<char>);
        const std::string_view word = rest.substr(0, static_cast<std::size_t>(end - rest.begin()));
        rest.remove_prefix(word.size());
        const bool is_field = word == "fldinst";
        if (is_field)
            FieldCode(TextOf(GroupContent(rest), page), 0);
        // What a thing holds inside is its own; the second form of a picture is no other one.
        const bool whole = is_field || word == "nonshppict" || Thing(word, rest, 0, page);
        at = group.size() - rest.size() + (whole ? GroupContent(rest).size() : 0);
    }
    margin_ = {};
}

// What is no text. False for other groups.
bool RtfBeside::Thing(std::string_view name, std::string_view rest, std::int32_t paragraph,
                      CodePage page) {
    if (name == "zvbeside") {
        if (std::optional<BesideItem> item = DecodeBeside(GroupContent(rest)))
            Add(std::move(*item), paragraph);
    } else if (name == "pict") {
        Picture(GroupContent(rest), paragraph);
    } else if (name == "sv") {
        constexpr std::string_view kPicture = "{\\pict";
        const std::string_view value = GroupContent(rest);
        if (const std::size_t at = value.find(kPicture); at != std::string_view::npos)
            Picture(GroupContent(value.substr(at + kPicture.size())), paragraph);
    } else if (name == "objclass") {
        class_ = TextOf(GroupContent(rest), page);
    } else if (name == "objdata") {
        Object(GroupContent(rest), paragraph);
    } else if (name == "moMath") {
        const std::string_view formula = GroupContent(rest);
        Add(MakeBeside(BesideKind::Formula, TextOf(formula, page), FormulaShape(formula)),
            paragraph);
    } else {
        return false;
    }
    return true;
}

void RtfBeside::Picture(std::string_view group, std::int32_t paragraph) {
    Add(MakeBeside(BesideKind::Picture, PictureKind(group), BytesOf(group)), paragraph);
}

void RtfBeside::Object(std::string_view group, std::int32_t paragraph) {
    const std::string name = std::exchange(class_, {});
    Add(MakeBeside(BesideKind::Object, name.empty() ? "object" : name, BytesOf(group)), paragraph);
}

void RtfBeside::FieldCode(std::string_view code, std::int32_t paragraph) {
    if (std::optional<BesideItem> item = BesideOfFieldCode(code))
        Add(std::move(*item), paragraph);
}

void RtfBeside::Comment(const std::string& text, std::int32_t paragraph) {
    const std::string author = std::exchange(author_, {});
    Add(MakeBeside(BesideKind::Comment, author.empty() ? text : author + ": " + text), paragraph);
}

void RtfBeside::Info(std::string_view group, CodePage page) {
    constexpr std::array<std::pair<std::string_view, std::string_view>, 7> kFields = {
        {{"title", "title"},
         {"subject", "subject"},
         {"author", "author"},
         {"keywords", "keywords"},
         {"category", "category"},
         {"company", "company"},
         {"doccomm", "description"}}};
    for (const auto& [word, name] : kFields) {
        const std::string begin = "{\\" + std::string(word) + " ";
        const std::size_t at = group.find(begin);
        if (at == std::string_view::npos)
            continue;
        const std::string_view value = GroupContent(group.substr(at + begin.size()));
        if (auto item = MakeMetadata(name, TextOf(value, page)))
            Add(std::move(*item), 0);
    }
}

void RtfBeside::Unseen(std::string_view bytes, CodePage page, bool deleted) {
    std::u16string& text = deleted ? deleted_ : hidden_;
    if (items_ != nullptr && text.size() < kMostUnseen)
        text += DecodeCodePage(bytes.substr(0, kMostUnseen), page);
}

void RtfBeside::Unseen(char16_t unit, bool deleted) {
    std::u16string& text = deleted ? deleted_ : hidden_;
    if (items_ != nullptr && text.size() < kMostUnseen)
        text += unit;
}

void RtfBeside::UnseenGroup(std::string_view rest, CodePage page, bool deleted) {
    if (items_ == nullptr)
        return;
    for (const char16_t unit : ToUtf16(TextOf(GroupContent(rest), page)))
        Unseen(unit, deleted);
}

void RtfBeside::EndParagraph(std::int32_t paragraph) {
    if (!hidden_.empty())
        Add(MakeBeside(BesideKind::HiddenText, ToUtf8(hidden_)), paragraph);
    if (!deleted_.empty())
        Add(MakeBeside(BesideKind::TrackedChange, "deleted: " + ToUtf8(deleted_)), paragraph);
    hidden_.clear();
    deleted_.clear();
}

void RtfBeside::EndsTooEarly() {
    Add({BesideKind::DamagedPart, 0, "end: the text is cut off", BesideDigest("end")}, 0);
}

void RtfBeside::Finish(std::int32_t paragraph) {
    EndParagraph(paragraph);
    if (items_ == nullptr)
        return;
    std::vector<BesideItem> items = list_.Take();
    items_->insert(items_->end(), std::make_move_iterator(items.begin()),
                   std::make_move_iterator(items.end()));
}

}  // namespace zorvane
