// The robust road: characters, lines, paragraphs, and what they look like.
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <map>
#include <new>
#include <string>
#include <utility>
#include <vector>

#include "common/base/text_bytes.h"
#include "load/readers/pdf/pdf_beside.h"
#include "load/readers/pdf/pdf_characters.h"
#include "load/readers/pdf/pdf_document.h"
#include "load/readers/pdf/pdf_fonts.h"
#include "load/readers/pdf/pdf_labels.h"
#include "load/readers/pdf/pdf_letters.h"
#include "load/readers/pdf/pdf_lines.h"
#include "load/readers/pdf/pdf_paragraphs.h"
#include "load/readers/pdf/pdf_reader.h"
#include "load/readers/pdf/pdf_running.h"

namespace zorvane {
namespace {

// Letters of a whole document: some thousands of pages, and within the memory of the process.
constexpr std::size_t kMaxLetters = 12'000'000;

constexpr std::int32_t kScanned = 0;
constexpr std::int32_t kLayout = 1;

constexpr float kTwipsInPoint = 20;

PdfLineOptions LineOptions(const PdfRichOptions& options) {
    PdfLineOptions result;
    if (options.lBCLDocumentType == 2)
        result.document_type = PdfDocumentType::ManyColumns;
    else if (options.lBCLDocumentType == 3)
        result.document_type = PdfDocumentType::Pleading;
    result.by_layout = options.lBCLConversionMethod == kLayout;
    result.connect_hyphens = options.bConnectHyphens;
    result.links = options.bBCLExtractHyperlinks;
    // On a scanned page the invisible text is the text.
    result.hidden.drop_invisible_mode =
        options.bRemoveHiddenText && options.lBCLConversionMethod != kScanned;
    result.hidden.drop_unseen = options.bRemoveHiddenText;
    return result;
}

ParagraphFormat LayoutOf(const PdfParagraph& paragraph) {
    // Differences of a fraction of a point come from the setting, not from the writer.
    constexpr float kStep = 2;  // points
    const auto twips = [](float points) {
        return static_cast<std::int32_t>(std::lround(points / kStep) *
                                         std::lround(kStep * kTwipsInPoint));
    };
    ParagraphFormat format;
    format.alignment = paragraph.alignment;
    format.right_to_left = paragraph.right_to_left;
    format.left_indent = twips(paragraph.left_indent);
    format.first_line_indent = twips(paragraph.first_line_indent);
    return format;
}

/// Puts paragraphs out, each run of equal letters at once.
class ParagraphPrinter {
  public:
    ParagraphPrinter(const PdfStyles& styles, const PdfRichOptions& options, DocumentSink& sink)
        : styles_(styles), options_(options), sink_(sink) {}

    void Print(const PdfParagraph& paragraph) {
        sink_.BeginParagraph(LayoutOf(paragraph));
        const std::vector<PdfLetter>& letters = paragraph.letters;
        std::size_t at = std::min<std::size_t>(paragraph.label, letters.size());
        if (at > 0) {
            Collect(letters, 0, at);
            sink_.ListLabel(text_, FormatOf(letters.front()));
            ++at;  // the blank behind it
        }
        while (at < letters.size()) {
            std::size_t end = at + 1;
            while (end < letters.size() && LooksAlike(letters[at], letters[end]))
                ++end;
            Collect(letters, at, end);
            sink_.Text(text_, FormatOf(letters[at]));
            at = end;
        }
        sink_.EndParagraph();
    }

  private:
    // Font sizes are told in half points; shrunk ones are half a point smaller.
    std::int32_t HalfPoints(float size) const {
        const long half_points = std::lround(size * 2) - (options_.bBCLShrinkFonts ? 1 : 0);
        return static_cast<std::int32_t>(std::clamp(half_points, 1L, 3276L));
    }

    bool LooksAlike(const PdfLetter& a, const PdfLetter& b) const {
        return a.style == b.style && a.baseline == b.baseline && a.underline == b.underline &&
               a.strikeout == b.strikeout && HalfPoints(a.size) == HalfPoints(b.size);
    }

    void Collect(const std::vector<PdfLetter>& letters, std::size_t first, std::size_t end) {
        text_.clear();
        for (std::size_t index = first; index < end; ++index)
            AppendUtf8(letters[index].letter, text_);
    }

    CharFormat FormatOf(const PdfLetter& letter) {
        CharFormat format = StyleFormat(letter.style);
        format.half_points = HalfPoints(letter.size);
        format.baseline = letter.baseline;
        format.underline = letter.underline ? Underline::Single : Underline::None;
        format.strikeout = letter.strikeout;
        return format;
    }

    const CharFormat& StyleFormat(std::uint32_t style) {
        const auto [found, added] = formats_.try_emplace(style);
        if (!added || style >= styles_.styles.size())
            return found->second;
        const PdfStyle& look = styles_.styles[style];
        const PdfFont& font = styles_.fonts[look.font];
        CharFormat& format = found->second;
        format.font = FontName(FontFamily(font.name));
        format.bold = font.bold;
        format.italic = font.italic;
        if (look.color != Color{})
            format.fore_color = look.color;
        return format;
    }

    // The standard fonts are known to every reader by their families.
    std::string FontFamily(const std::string& name) const {
        if (name.empty())
            return "Times New Roman";
        for (const std::string_view standard : {"Times-", "Helvetica", "Courier-"}) {
            if (name.starts_with(standard))
                return FamilyOfFont(name);
        }
        return options_.bBCLAdjustFontNames ? FamilyOfFont(name) : name;
    }

    const PdfStyles& styles_;
    const PdfRichOptions& options_;
    DocumentSink& sink_;
    std::map<std::uint32_t, CharFormat> formats_;
    std::string text_;
};

ReadEnd Put(std::vector<PdfLine> lines, const PdfStyles& styles, const PdfRichOptions& options,
            DocumentSink& sink) {
    // Heads and feet never part a paragraph; whether they are shown is the user's choice.
    MarkRunningLines(lines);
    if (options.bBCLDetectHeader)
        std::erase_if(lines, [](const PdfLine& line) { return line.running; });
    SettleLabels(lines);
    PdfParagraphOptions paragraph_options;
    paragraph_options.by_layout = options.lBCLConversionMethod == kLayout;
    paragraph_options.merge = options.bBCLMergeParagraph && !paragraph_options.by_layout;
    paragraph_options.connect_hyphens = options.bConnectHyphens;
    ParagraphPrinter printer(styles, options, sink);
    for (const PdfParagraph& paragraph : ParagraphsOf(lines, paragraph_options)) {
        printer.Print(paragraph);
        if (sink.Size() > kMaxPartBytes)
            return ReadEnd::Fault(ReadError::TooLarge, "the text is too long");
    }
    return ReadEnd::Ok();
}

}  // namespace

ReadEnd ReadPdfRich(std::string_view bytes, const PdfPasswords& passwords, const PdfPages& pages,
                    const PdfRichOptions& options, DocumentSink& sink, ReadMonitor& monitor) {
    ReadEnd end;
    const PdfFile file = OpenPdfForText(bytes, passwords, end);
    if (!file.document)
        return end;
    PdfStyles styles;
    PdfPageClock clock;
    PdfCharacterDevice device(styles, clock);
    std::vector<PdfLine> lines;
    std::size_t letters = 0;
    const PdfLineOptions line_options = LineOptions(options);
    PdfBeside beside(*file.document, sink);
    bool first_page = true;
    end = WalkPages(*file.document, {pages, PageBox::Crop, device, clock}, monitor,
                    [&](std::int32_t page) {
                        if (options.bBCLExtractHyperlinks)
                            device.AddLinks(*file.document, page);
                        if (std::exchange(first_page, false))
                            beside.Document();
                        beside.Page(page, !device.Page().characters.empty());
                        letters += device.Page().characters.size();
                        if (device.Overflow() || letters > kMaxLetters)
                            return false;
                        AppendLines(device.Page(), page, line_options, lines);
                        return true;
                    });
    if (!end.ok())
        return end;
    beside.EndPages();
    try {
        return Put(std::move(lines), styles, options, sink);
    } catch (const std::bad_alloc&) {
        return ReadEnd::Fault(ReadError::TooLarge, "the text needs too much memory");
    }
}

}  // namespace zorvane
