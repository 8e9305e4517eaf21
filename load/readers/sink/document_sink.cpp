#include "load/readers/sink/document_sink.h"

#include <algorithm>
#include <array>
#include <optional>

#include "common/base/text_encoding.h"
#include "compare/document/rtf_body.h"

namespace zorvane {
namespace {

class RtfSink : public DocumentSink {
  public:
    void BeginParagraph(const ParagraphFormat& format) override {
        if (paragraph_ && *paragraph_ == format)
            return;
        body_.ParagraphStart(format);
        paragraph_ = format;
    }
    void Text(std::string_view utf8, const CharFormat& format) override {
        UseChars(format);
        body_.Text(utf8);
    }
    void ListLabel(std::string_view utf8, const CharFormat& format) override {
        body_.ListLabel(utf8, format);
    }
    void EndParagraph() override { body_.Units(u"\r"); }
    void Beside(const BesideItem& item) override {
        if (beside_.Add(item))
            body_.Beside(item);
    }
    std::size_t Size() const override { return body_.Size(); }
    std::string Finish() override {
        for (const BesideItem& item : beside_.TakeOverflow())
            body_.Beside(item);
        return body_.Finish();
    }

  private:
    void UseChars(const CharFormat& format) {
        if (chars_ && *chars_ == format)
            return;
        body_.Chars(format);
        chars_ = format;
    }

    RtfBody body_;
    BesideList beside_;  // counts
    std::optional<ParagraphFormat> paragraph_;
    std::optional<CharFormat> chars_;
};

class PlainSink : public DocumentSink {
  public:
    void BeginParagraph(const ParagraphFormat& /*format*/) override {}
    void Text(std::string_view utf8, const CharFormat& /*format*/) override {
        for (const char character : utf8)
            Put(character);
    }
    void ListLabel(std::string_view utf8, const CharFormat& format) override {
        Text(utf8, format);
        text_ += '\t';
    }
    void EndParagraph() override {
        // The tab behind a row's last cell stands between nothing.
        if (last_cell_end_ == text_.size() && !text_.empty())
            text_.pop_back();
        text_ += "\r\n";
        ++lines_;
    }
    void Beside(const BesideItem& item) override {
        BesideItem placed = item;
        if (placed.paragraph != 0)
            placed.paragraph = lines_ + 1;
        beside_.Add(std::move(placed));
    }
    std::vector<BesideItem> TakeBeside() override { return beside_.Take(); }
    std::size_t Size() const override { return text_.size(); }
    std::string Finish() override { return std::move(text_); }

  private:
    void Put(char character) {
        if (character == kLineInParagraph) {
            text_ += '\n';
            ++lines_;
        } else if (character == kCellEnd) {
            text_ += '\t';
            last_cell_end_ = text_.size();
        } else if (character == '\t' || static_cast<unsigned char>(character) >= 0x20) {
            text_ += character;
        }
    }

    std::string text_;
    BesideList beside_;
    std::int32_t lines_ = 0;
    std::size_t last_cell_end_ = 0;
};

std::string_view HtmlEscape(char character) {
    switch (character) {
        case '&':
            return "&amp;";
        case '<':
            return "&lt;";
        case '>':
            return "&gt;";
        case '"':
            return "&quot;";
        case kLineInParagraph:
            return "<br>";
        case kCellEnd:
            return "&#9;";
        default:
            return {};
    }
}

std::string HtmlColor(Color color) {
    constexpr std::string_view kDigits = "0123456789abcdef";
    std::string text = "#";
    for (const int shift : {4, 0, 12, 8, 20, 16})
        text += kDigits[static_cast<std::size_t>((color.value >> shift) & 0xF)];
    return text;
}

std::string Points(std::int32_t twips) {
    return std::to_string(twips / 20) + "pt";
}

class HtmlSink : public DocumentSink {
  public:
    HtmlSink()
        : text_(
              "<!DOCTYPE html>\n<html>\n<head>\n<meta charset=\"utf-8\">\n<style>p { margin: 0; "
              "white-space: pre-wrap; tab-size: 8; }</style>\n</head>\n<body>\n") {}

    void BeginParagraph(const ParagraphFormat& format) override {
        constexpr std::array<std::string_view, 4> kNames = {"left", "center", "right", "justify"};
        text_ += "<p";
        if (format.right_to_left)
            text_ += " dir=\"rtl\"";
        std::string style;
        if (format.alignment != Alignment::Left) {
            style += "text-align: ";
            style += kNames[static_cast<std::size_t>(format.alignment)];
        }
        Declare(style, "margin-left", format.left_indent);
        Declare(style, "margin-right", format.right_indent);
        Declare(style, "text-indent", format.first_line_indent);
        Declare(style, "margin-top", format.space_before);
        Declare(style, "margin-bottom", format.space_after);
        if (!style.empty())
            text_ += " style=\"" + style + "\"";
        text_ += '>';
    }
    void Text(std::string_view utf8, const CharFormat& format) override {
        if (open_ && *open_ != format)
            CloseSpan();
        if (!open_) {
            text_ += SpanOf(format);
            open_ = format;
        }
        for (const char character : utf8)
            Put(character);
    }
    void ListLabel(std::string_view utf8, const CharFormat& format) override {
        Text(utf8, format);
        text_ += "&#9;";
    }
    void EndParagraph() override {
        CloseSpan();
        text_ += "</p>\n";
    }
    std::size_t Size() const override { return text_.size(); }
    std::string Finish() override {
        text_ += "</body>\n</html>\n";
        return std::move(text_);
    }

  private:
    static void Declare(std::string& style, std::string_view property, std::int32_t twips) {
        if (twips == 0)
            return;
        style += style.empty() ? "" : "; ";
        style += std::string(property) + ": " + Points(twips);
    }

    void Put(char character) {
        const std::string_view escaped = HtmlEscape(character);
        if (!escaped.empty())
            text_ += escaped;
        else if (character == '\t' || static_cast<unsigned char>(character) >= 0x20)
            text_ += character;
    }

    // Quotes and backslashes would end the name, or hide its end.
    static std::string FontOf(const CharFormat& format) {
        std::string name;
        for (const char character : format.font.view()) {
            const std::string_view escaped = HtmlEscape(character);
            if (character == '\'' || character == '\\')
                continue;
            if (escaped.empty())
                name += character;
            else
                name += escaped;
        }
        return "font-family: '" + name + "'; font-size: " + std::to_string(format.half_points / 2) +
               (format.half_points % 2 == 0 ? "pt" : ".5pt");
    }

    static std::string SpanOf(const CharFormat& format) {
        std::string style = FontOf(format);
        if (format.bold)
            style += "; font-weight: bold";
        if (format.italic)
            style += "; font-style: italic";
        if (format.underline != Underline::None || format.strikeout) {
            style += "; text-decoration:";
            style += format.underline != Underline::None ? " underline" : "";
            style += format.strikeout ? " line-through" : "";
        }
        if (format.baseline != Baseline::Normal) {
            style += "; vertical-align: ";
            style += format.baseline == Baseline::Superscript ? "super" : "sub";
        }
        if (format.fore_color)
            style += "; color: " + HtmlColor(*format.fore_color);
        if (format.back_color)
            style += "; background: " + HtmlColor(*format.back_color);
        return "<span style=\"" + style + "\">";
    }

    void CloseSpan() {
        if (open_)
            text_ += "</span>";
        open_.reset();
    }

    std::string text_;
    std::optional<CharFormat> open_;
};

}  // namespace

std::unique_ptr<DocumentSink> MakeRtfSink() {
    return std::make_unique<RtfSink>();
}
std::unique_ptr<DocumentSink> MakePlainSink() {
    return std::make_unique<PlainSink>();
}
std::unique_ptr<DocumentSink> MakeHtmlSink() {
    return std::make_unique<HtmlSink>();
}

namespace {

// Sends the items up to a paragraph, once; they come in the order of their paragraphs.
class BesideReplay {
  public:
    BesideReplay(const std::vector<BesideItem>& items, DocumentSink& sink)
        : items_(items), sink_(sink) {}
    void UpTo(std::int32_t paragraph) {
        while (next_ < items_.size() && items_[next_].paragraph <= paragraph)
            sink_.Beside(items_[next_++]);
    }
    void Rest() {
        while (next_ < items_.size())
            sink_.Beside(items_[next_++]);
    }

  private:
    const std::vector<BesideItem>& items_;
    DocumentSink& sink_;
    std::size_t next_ = 0;
};

// A rich text run by run, cut where paragraphs end and where their format changes.
class RunReplay {
  public:
    RunReplay(const RichText& text, DocumentSink& sink, const std::vector<BesideItem>& beside)
        : text_(text), writer_(sink), items_(beside, sink) {}

    void All() {
        items_.UpTo(number_);
        for (const CharRun& run : text_.char_runs) {
            const std::int32_t end = at_ + run.length;
            while (at_ < end)
                Step(end, run.format);
        }
        items_.Rest();
        writer_.EndIfBegun();
    }

  private:
    void Step(std::int32_t end, const CharFormat& format) {
        if (at_ >= paragraph_end_ && paragraph_ < text_.paragraph_runs.size()) {
            paragraph_end_ += text_.paragraph_runs[paragraph_].length;
            writer_.SetFormat(text_.paragraph_runs[paragraph_++].format);
        }
        const std::int32_t limit = paragraph_end_ > at_ ? std::min(end, paragraph_end_) : end;
        const std::u16string_view rest =
            std::u16string_view(text_.text)
                .substr(static_cast<std::size_t>(at_), static_cast<std::size_t>(limit - at_));
        const std::u16string_view line = rest.substr(0, rest.find(u'\r'));
        if (!line.empty())
            writer_.Text(ToUtf8(line), format);
        const bool ends = line.size() < rest.size();
        at_ = ends ? at_ + static_cast<std::int32_t>(line.size()) : limit;
        if (ends)
            EndParagraph(end);
    }

    // A break may lie in two runs.
    void EndParagraph(std::int32_t end) {
        writer_.End();
        items_.UpTo(++number_);
        const std::int32_t behind = std::min(at_ + 2, end);
        while (at_ < behind && IsBreak(text_.text[static_cast<std::size_t>(at_)]))
            ++at_;
    }

    static bool IsBreak(char16_t unit) { return unit == u'\r' || unit == u'\n'; }

    const RichText& text_;
    ParagraphWriter writer_;
    BesideReplay items_;
    std::int32_t number_ = 1;
    std::size_t paragraph_ = 0;
    std::int32_t paragraph_end_ = 0;
    std::int32_t at_ = 0;
};

}  // namespace

void Replay(const RichText& text, DocumentSink& sink, const std::vector<BesideItem>& beside) {
    RunReplay(text, sink, beside).All();
}

void ParagraphWriter::Open() {
    if (open_)
        return;
    open_ = true;
    sink_.BeginParagraph(format_);
}

void ParagraphWriter::Text(std::string_view utf8, const CharFormat& format) {
    if (utf8.empty())
        return;
    Open();
    sink_.Text(utf8, format);
}

void ParagraphWriter::ListLabel(std::string_view utf8, const CharFormat& format) {
    Open();
    sink_.ListLabel(utf8, format);
}

void ParagraphWriter::End() {
    Open();
    sink_.EndParagraph();
    open_ = false;
}

void ParagraphWriter::EndIfBegun() {
    if (open_)
        End();
}

void ParagraphWriter::EndCell(const CharFormat& format) {
    Open();
    sink_.EndCell(format);
}

}  // namespace zorvane
