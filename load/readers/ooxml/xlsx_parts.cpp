#include "load/readers/ooxml/xlsx_parts.h"

#include <algorithm>
#include <unordered_map>

#include "common/base/ascii.h"
#include "common/base/parse_number.h"
#include "common/base/surrogates.h"
#include "common/base/text_bytes.h"
#include "load/readers/container/xml_part.h"

namespace zorvane {
namespace {

using Token = XmlScanner::Token;

constexpr std::size_t kMostStyles = 1 << 18;
constexpr std::size_t kMostTexts = std::size_t{16} << 20;

// True for what General shows as it is written: "12", "-3.25", but not "1E5", "1.50" or "007".
bool IsPlain(std::string_view number) {
    constexpr std::size_t kWidth = 11;
    if (number == "0")
        return true;
    if (number.starts_with('-'))
        number.remove_prefix(1);
    if (number.empty() || number.size() > kWidth)
        return false;
    const std::size_t whole = std::min(number.find_first_not_of("0123456789"), number.size());
    if (whole == 0 || (number[0] == '0' && (whole > 1 || number.size() == 1)))
        return false;
    if (whole == number.size())
        return true;
    return number[whole] == '.' && whole + 1 < number.size() && number.back() != '0' &&
           number.find_first_not_of("0123456789", whole + 1) == std::string_view::npos;
}

// The unit of an escape "_xHHHH_" that begins here, -1 when none does.
std::int32_t EscapeAt(std::string_view text) {
    if (text.size() < 7 || text[1] != 'x' || text[6] != '_')
        return -1;
    std::int32_t unit = 0;
    for (std::size_t i = 2; i < 6; ++i) {
        const int digit = HexDigit(text[i]);
        if (digit < 0)
            return -1;
        unit = unit * 16 + digit;
    }
    return unit;
}

// UTF-16 units, one at a time; a character beyond the first plane comes in two.
class UnitsToText {
  public:
    explicit UnitsToText(std::string& out) : out_(out) {}
    void Add(char32_t unit) {
        const char32_t lead = lead_;
        lead_ = 0;
        if (IsHighSurrogate(unit))
            lead_ = unit;
        else if (!IsLowSurrogate(unit))
            AppendUtf8(unit, out_);
        else if (lead == 0)
            AppendUtf8(0xFFFD, out_);
        else
            AppendUtf8(OfSurrogates(lead, unit), out_);
    }

  private:
    std::string& out_;
    char32_t lead_ = 0;
};

class TextsReader {
  public:
    TextsReader(PartStream& part, SharedTexts& texts) : scanner_(part), texts_(texts) {}

    ReadEnd Run() {
        const auto take = [&](Token token) {
            if (token != Token::Text)
                return TakeTag(token == Token::Start);
            TakeText();
            return true;
        };
        return scanner_.ForTokens(take, [] {
            return ReadEnd::Fault(ReadError::TooLarge, "the texts of the sheets are too large");
        });
    }

  private:
    void TakeText() {
        if (in_text_ && phonetic_ == 0)
            scanner_.AppendText(texts_.text);
    }

    // False when there are too many.
    bool TakeTag(bool start) {
        const std::string_view name = scanner_.Name();
        const bool empty = scanner_.SelfClosing();
        if (name == "t")
            in_text_ = start && !empty;
        else if (name == "rPh" && !empty)
            phonetic_ += start ? 1 : -1;
        else if (name == "si" && (!start || empty))
            return EndItem();
        return true;
    }

    bool EndItem() {
        ReplaceEscapes(texts_.text, begin_);
        begin_ = texts_.text.size();
        phonetic_ = 0;
        if (texts_.ends.size() >= kMostTexts || begin_ > kMaxPartBytes)
            return false;
        texts_.ends.push_back(static_cast<std::uint32_t>(begin_));
        return true;
    }

    XmlScanner scanner_;
    SharedTexts& texts_;
    std::size_t begin_ = 0;
    bool in_text_ = false;
    int phonetic_ = 0;  // depth inside of pronunciation hints, which nobody sees
};

class StylesReader {
  public:
    StylesReader(PartStream& part, SheetStyles& styles) : scanner_(part), styles_(styles) {}

    ReadEnd Run() {
        styles_.by_style.clear();
        bool in_cell_formats = false;
        return scanner_.ForAllTokens([&](Token token) {
            if (token == Token::Text)
                return;
            if (scanner_.Name() == "cellXfs")
                in_cell_formats = token == Token::Start && !scanner_.SelfClosing();
            else if (token == Token::Start && scanner_.Name() == "numFmt")
                AddCode();
            else if (token == Token::Start && in_cell_formats && scanner_.Name() == "xf")
                AddStyle();
        });
    }

  private:
    void AddCode() {
        std::string code;
        AppendDecoded(scanner_.Attribute("formatCode"), code);
        if (codes_.size() < kMostStyles)
            codes_[NumberOf(scanner_.Attribute("numFmtId"), -1)] = std::move(code);
    }

    void AddStyle() {
        const std::int32_t id = NumberOf(scanner_.Attribute("numFmtId"), 0);
        const auto [known, fresh] = by_id_.try_emplace(id, 0);
        if (fresh) {
            const auto own = codes_.find(id);
            known->second = static_cast<std::uint32_t>(styles_.formats.size());
            styles_.formats.emplace_back(own != codes_.end() ? std::string_view(own->second)
                                                             : NumberFormat::BuiltIn(id));
        }
        if (styles_.by_style.size() < kMostStyles)
            styles_.by_style.push_back(known->second);
    }

    XmlScanner scanner_;
    SheetStyles& styles_;
    std::unordered_map<std::int32_t, std::string> codes_;
    std::unordered_map<std::int32_t, std::uint32_t> by_id_;
};

}  // namespace

SheetFormat::SheetFormat(std::string_view code) : format(code) {
    general = code.empty() || code == "General" || code == "GENERAL" || code == "@";
    std::string text;
    format.ApplyText("x", text);
    changes_text = text != "x";
}

SheetStyles SheetStyles::Plain() {
    SheetStyles styles;
    styles.formats.emplace_back("General");
    return styles;
}

const SheetFormat& SheetStyles::Of(std::uint32_t style) const {
    return formats[style < by_style.size() ? by_style[style] : 0];
}

void ReplaceEscapes(std::string& text, std::size_t from) {
    std::size_t at = text.find("_x", from);
    if (at == std::string::npos)
        return;
    std::string replaced;
    std::size_t copied = from;
    UnitsToText units(replaced);
    for (; at != std::string::npos; at = text.find("_x", at)) {
        const std::int32_t unit = EscapeAt(std::string_view(text).substr(at));
        if (unit >= 0) {
            replaced.append(text, copied, at - copied);
            units.Add(static_cast<char32_t>(unit));
            copied = at + 7;
        }
        at = unit >= 0 ? copied : at + 1;
    }
    replaced.append(text, copied);
    text.replace(from, std::string::npos, replaced);
}

bool AppendFormatted(std::string_view number, const SheetFormat& format, bool date_1904,
                     std::string& out) {
    if (format.general && IsPlain(number)) {
        out += number;
        return true;
    }
    number = number.substr(std::min(number.find_first_not_of(" \n\t\r+"), number.size()));
    const auto read = ReadNumber<double>(number);
    if (read.size == 0)
        return false;
    if (read.value)
        format.format.Apply(*read.value, date_1904, out);
    else
        out += number;
    return true;
}

ReadEnd ReadXlsxStyles(PartStream& part, SheetStyles& styles) {
    styles.formats.clear();
    ReadEnd end = StylesReader(part, styles).Run();
    if (styles.formats.empty())
        styles.formats.emplace_back("General");
    return end;
}

ReadEnd ReadXlsxTexts(PartStream& part, SharedTexts& texts) {
    return TextsReader(part, texts).Run();
}

}  // namespace zorvane
