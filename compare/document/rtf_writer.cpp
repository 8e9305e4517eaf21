#include "compare/document/rtf_writer.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <string_view>
#include <vector>

#include "common/base/text_encoding.h"

namespace zorvane {
namespace {

// By the numbers of `Underline`.
constexpr std::array<std::string_view, 18> kUnderlines = {
    "\\ulnone",  "\\ul",       "\\ulw",      "\\uldb",      "\\uld",        "\\uldash",
    "\\uldashd", "\\uldashdd", "\\ulwave",   "\\ulth",      "\\ululdbwave", "\\ulldash",
    "\\ulhwave", "\\ulthd",    "\\ulthdash", "\\ulthdashd", "\\ulthdashdd", "\\ulthldash"};
constexpr std::array<std::string_view, 4> kAlignments = {"\\ql", "\\qc", "\\qr", "\\qj"};
constexpr std::array<std::string_view, 4> kTabKinds = {"", "\\tqc", "\\tqr", "\\tqdec"};

class Writer {
  public:
    explicit Writer(const RichText& text) : text_(text) {
        for (const CharRun& run : text.char_runs)
            Enlist(run.format);
    }

    std::string Write() {
        out_.reserve(text_.text.size() + text_.text.size() / 4 + 4096);
        WriteHeader();
        WriteBody();
        out_ += "}\r\n";
        return std::move(out_);
    }

  private:
    void Enlist(const CharFormat& format) {
        if (std::find(fonts_.begin(), fonts_.end(), format.font) == fonts_.end())
            fonts_.push_back(format.font);
        for (const std::optional<Color>& color : {format.fore_color, format.back_color}) {
            if (color && std::find(colors_.begin(), colors_.end(), *color) == colors_.end())
                colors_.push_back(*color);
        }
    }

    void Number(std::string_view word, std::int32_t number) {
        std::array<char, 12> digits{};
        const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
        out_ += word;
        out_.append(digits.data(), static_cast<std::size_t>(end - digits.data()));
    }

    void WriteHeader() {
        out_ += "{\\rtf1\\ansi\\ansicpg1252\\uc1\\deff0{\\fonttbl";
        if (fonts_.empty())
            fonts_.emplace_back(CharFormat{}.font);
        for (std::size_t i = 0; i < fonts_.size(); ++i) {
            Number("{\\f", static_cast<std::int32_t>(i));
            out_ += "\\fnil\\fcharset0 ";
            WriteText(ToUtf16(fonts_[i].view()));
            out_ += ";}";
        }
        out_ += "}{\\colortbl;";
        for (const Color color : colors_) {
            Number("\\red", color.value & 0xFF);
            Number("\\green", (color.value >> 8) & 0xFF);
            Number("\\blue", (color.value >> 16) & 0xFF);
            out_ += ';';
        }
        out_ += "}\r\n";
    }

    // Both lists of runs are walked together; a piece ends where either does.
    void WriteBody() {
        std::size_t paragraph = 0;
        std::int32_t paragraph_end = 0;
        std::int32_t at = 0;
        for (const CharRun& run : text_.char_runs) {
            const std::int32_t end = at + run.length;
            bool format_written = false;
            while (at < end) {
                if (at >= paragraph_end && paragraph < text_.paragraph_runs.size()) {
                    paragraph_end += text_.paragraph_runs[paragraph].length;
                    WriteParagraphFormat(text_.paragraph_runs[paragraph++].format);
                }
                if (!format_written)
                    WriteCharFormat(run.format);
                format_written = true;
                const std::int32_t stop = paragraph_end > at ? std::min(end, paragraph_end) : end;
                WriteText(
                    std::u16string_view(text_.text)
                        .substr(static_cast<std::size_t>(at), static_cast<std::size_t>(stop - at)));
                at = stop;
            }
        }
    }

    void NonZero(std::string_view word, std::int32_t number) {
        if (number != 0)
            Number(word, number);
    }

    void WriteParagraphFormat(const ParagraphFormat& format) {
        out_ += "\\pard";
        out_ += kAlignments[static_cast<std::size_t>(format.alignment)];
        if (format.right_to_left)
            out_ += "\\rtlpar";
        NonZero("\\li", format.left_indent);
        NonZero("\\ri", format.right_indent);
        NonZero("\\fi", format.first_line_indent);
        NonZero("\\sb", format.space_before);
        NonZero("\\sa", format.space_after);
        NonZero("\\sl", format.line_spacing);
        if (format.line_spacing_multiple)
            out_ += "\\slmult1";
        for (const TabStop& tab : format.tabs) {
            if (tab.kind != TabKind::Bar)
                out_ += kTabKinds[static_cast<std::size_t>(tab.kind)];
            Number(tab.kind == TabKind::Bar ? "\\tb" : "\\tx", tab.twips);
        }
        out_ += ' ';
    }

    void WriteColor(std::string_view word, const std::optional<Color>& color) {
        if (!color)
            return;
        const auto place = std::find(colors_.begin(), colors_.end(), *color);
        Number(word, static_cast<std::int32_t>(place - colors_.begin()) + 1);
    }

    void WriteCharFormat(const CharFormat& format) {
        const auto font = std::find(fonts_.begin(), fonts_.end(), format.font);
        Number("\\plain\\f", static_cast<std::int32_t>(font - fonts_.begin()));
        Number("\\fs", format.half_points);
        if (format.bold)
            out_ += "\\b";
        if (format.italic)
            out_ += "\\i";
        if (format.underline != Underline::None)
            out_ += kUnderlines[static_cast<std::size_t>(format.underline)];
        if (format.strikeout)
            out_ += "\\strike";
        if (format.baseline != Baseline::Normal)
            out_ += format.baseline == Baseline::Superscript ? "\\super" : "\\sub";
        WriteColor("\\cf", format.fore_color);
        // One word for each family of readers.
        WriteColor("\\chcbpat", format.back_color);
        WriteColor("\\cb", format.back_color);
        out_ += ' ';
    }

    void WriteText(std::u16string_view text) {
        for (const char16_t unit : text) {
            if (unit >= 0x20 && unit < 0x7F && unit != u'\\' && unit != u'{' && unit != u'}')
                out_ += static_cast<char>(unit);
            else
                WriteSpecial(unit);
        }
    }

    void WriteSpecial(char16_t unit) {
        switch (unit) {
            case u'\\':
            case u'{':
            case u'}':
                out_ += '\\';
                out_ += static_cast<char>(unit);
                return;
            case u'\n':
                return;
            case u'\r':
                out_ += "\\par\r\n";
                return;
            case u'\t':
                out_ += "\\tab ";
                return;
            case 11:
                out_ += "\\line ";
                return;
            case 7:
                // Other readers see a tab; ours knows by the group in front of it what it was.
                out_ += "{\\*\\zvcell}\\tab ";
                return;
            default:
                break;
        }
        if (unit < 0x20)
            return;
        Number("\\u", static_cast<std::int16_t>(unit));
        out_ += '?';
    }

    const RichText& text_;
    std::vector<FontName> fonts_;
    std::vector<Color> colors_;
    std::string out_;
};

}  // namespace

std::string WriteRtf(const RichText& text) {
    return Writer(text).Write();
}

}  // namespace zorvane
