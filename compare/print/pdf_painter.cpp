#include "compare/print/pdf_painter.h"

#include <fmt/format.h>

#include "common/base/number.h"
#include "common/base/text_encoding.h"

namespace zorvane {
namespace {

// Objects whose numbers are known before anything is written.
enum Known : std::size_t { kCatalog = 1, kPages = 2, kInfo = 3, kFirstFont = 4 };
constexpr std::size_t kFirstFree = kFirstFont + kPdfFontCount;

double Points(double twips) {
    return twips / kTwipsPerPoint;
}

std::string Escaped(std::string_view bytes) {
    std::string text = "(";
    for (const char byte : bytes) {
        if (byte == '(' || byte == ')' || byte == '\\')
            text += '\\';
        text += byte;
    }
    return text + ")";
}

// A title may hold any letter: in UTF-16 with its mark.
std::string TitleString(std::string_view utf8) {
    std::string text = "<FEFF";
    for (const char16_t unit : ToUtf16(utf8))
        text += fmt::format("{:04X}", static_cast<unsigned>(unit));
    return text + ">";
}

const char* DashOf(StrokeStyle style) {
    switch (style) {
        case StrokeStyle::Dotted:
            return "[1 1]";
        case StrokeStyle::Dashed:
            return "[3 2]";
        case StrokeStyle::DashDot:
            return "[3 1 1 1]";
        case StrokeStyle::DashDotDot:
            return "[3 1 1 1 1 1]";
        case StrokeStyle::Solid:
            break;
    }
    return "[]";
}

}  // namespace

Result<PdfPainter> PdfPainter::Begin(const std::string& file, const std::string& title) {
    Result<FileReplacement> target = FileReplacement::Begin(file);
    if (!target.ok())
        return target.failure();
    PdfPainter painter(std::move(target).value(), title);
    painter.places_.resize(kFirstFree - 1);
    painter.Write("%PDF-1.4\n%\xE2\xE3\xCF\xD3\n");
    if (!painter.status_.ok())
        return painter.status_.failure();
    return painter;
}

double PdfPainter::Width(std::u16string_view text, const PrintFont& font) {
    return PdfWidth(measured_.Encode(text), PdfFontFor(font), font.points);
}

FontHeight PdfPainter::Height(const PrintFont& font) {
    return PdfFontHeight(font.points);
}

void PdfPainter::Write(std::string_view bytes) {
    if (status_.ok())
        status_ = file_.Write(bytes);
    written_ += bytes.size();
}

std::size_t PdfPainter::NewObject() {
    places_.push_back(written_);
    return places_.size();
}

Status PdfPainter::NewPage(double width, double height) {
    EndPage();
    width_ = width;
    height_ = height;
    return status_;
}

void PdfPainter::EndPage() {
    if (width_ <= 0)
        return;
    const std::size_t content = NewObject();
    Write(fmt::format("{} 0 obj\n<</Length {}>>\nstream\n{}\nendstream\nendobj\n", content,
                      content_.size(), content_));
    content_.clear();
    pages_.push_back(NewObject());
    std::string fonts;
    for (std::size_t font = 0; font < kPdfFontCount; ++font)
        fonts += fmt::format("/F{} {} 0 R", font, kFirstFont + font);
    Write(
        fmt::format("{} 0 obj\n<</Type/Page/Parent {} 0 R/MediaBox[0 0 {:.2f} {:.2f}]/Contents {} "
                    "0 R/Resources<</Font<<{}>>>>>>\nendobj\n",
                    pages_.back(), static_cast<std::size_t>(kPages), Points(width_),
                    Points(height_), content, fonts));
}

void PdfPainter::SetColor(Color color, const char* operation) {
    const auto part = [&color](int shift) { return ((color.value >> shift) & 0xFF) / 255.0; };
    content_ += fmt::format("{:.3g} {:.3g} {:.3g} {}\n", part(0), part(8), part(16), operation);
}

void PdfPainter::DrawText(const PaintedText& text) {
    const std::string bytes = shown_.Encode(text.text);
    if (bytes.find_first_not_of(' ') == std::string::npos)
        return;
    SetColor(text.color, "rg");
    content_ +=
        fmt::format("BT /F{} {:.2f} Tf {:.2f} {:.2f} Td ", PdfFontFor(text.font), text.font.points,
                    Points(text.baseline.x), Points(height_ - text.baseline.y));
    content_ += Escaped(bytes) + " Tj ET\n";
}

void PdfPainter::DrawLine(const Stroke& stroke) {
    SetColor(stroke.color, "RG");
    content_ +=
        fmt::format("{} 0 d {:.2f} w {:.2f} {:.2f} m {:.2f} {:.2f} l S\n", DashOf(stroke.style),
                    Points(stroke.width), Points(stroke.from.x), Points(height_ - stroke.from.y),
                    Points(stroke.to.x), Points(height_ - stroke.to.y));
}

void PdfPainter::FillBox(const PageBox& box, Color color) {
    SetColor(color, "rg");
    content_ +=
        fmt::format("{:.2f} {:.2f} {:.2f} {:.2f} re f\n", Points(box.left),
                    Points(height_ - box.top - box.height), Points(box.width), Points(box.height));
}

void PdfPainter::WriteFonts() {
    for (std::size_t font = 0; font < kPdfFontCount; ++font) {
        places_[kFirstFont + font - 1] = written_;
        Write(
            fmt::format("{} 0 obj\n<</Type/Font/Subtype/Type1/BaseFont/{}/Encoding/"
                        "WinAnsiEncoding>>\nendobj\n",
                        kFirstFont + font, PdfFontName(font)));
    }
}

void PdfPainter::WriteCatalog() {
    places_[kCatalog - 1] = written_;
    Write(fmt::format("{} 0 obj\n<</Type/Catalog/Pages {} 0 R>>\nendobj\n",
                      static_cast<std::size_t>(kCatalog), static_cast<std::size_t>(kPages)));
    places_[kPages - 1] = written_;
    std::string kids;
    for (const std::size_t page : pages_)
        kids += fmt::format("{} 0 R\n", page);
    Write(fmt::format("{} 0 obj\n<</Type/Pages/Count {}/Kids[{}]>>\nendobj\n",
                      static_cast<std::size_t>(kPages), pages_.size(), kids));
    places_[kInfo - 1] = written_;
    Write(fmt::format("{} 0 obj\n<</Title {}/Producer(Zorvane)>>\nendobj\n",
                      static_cast<std::size_t>(kInfo), TitleString(title_)));
}

Status PdfPainter::Finish() {
    EndPage();
    WriteFonts();
    WriteCatalog();
    const std::size_t table = written_;
    std::string rows = fmt::format("xref\n0 {}\n0000000000 65535 f \n", places_.size() + 1);
    for (const std::size_t place : places_)
        rows += fmt::format("{:010} 00000 n \n", place);
    Write(rows);
    Write(fmt::format("trailer\n<</Size {}/Root {} 0 R/Info {} 0 R>>\nstartxref\n{}\n%%EOF\n",
                      places_.size() + 1, static_cast<std::size_t>(kCatalog),
                      static_cast<std::size_t>(kInfo), table));
    return status_.ok() ? file_.Finish() : status_;
}

std::string PdfPainter::Remark() const {
    if (shown_.UnknownCount() == 0)
        return {};
    return fmt::format(
        "{} characters cannot be shown by the fonts of this PDF and stand as \"?\": {}",
        shown_.UnknownCount(), ToUtf8(shown_.Unknown()));
}

}  // namespace zorvane
