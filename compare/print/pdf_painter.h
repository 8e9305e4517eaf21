// Pages as a PDF file, with the fonts that every reader of PDF brings: for texts in the letters of
// Western Europe. What they cannot show is counted, and whoever prints says so.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "common/platform/files.h"
#include "compare/print/page_painter.h"
#include "compare/print/pdf_fonts.h"

namespace zorvane {

class PdfPainter : public PagePainter {
  public:
    /// The file comes into being at `Finish`; until then, and after a failure, what stood under
    /// that name is as it was. Failures name it.
    static Result<PdfPainter> Begin(const std::string& file, const std::string& title);

    double Width(std::u16string_view text, const PrintFont& font) override;
    FontHeight Height(const PrintFont& font) override;
    Status NewPage(double width, double height) override;
    void DrawText(const PaintedText& text) override;
    void DrawLine(const Stroke& stroke) override;
    void FillBox(const PageBox& box, Color color) override;
    Status Finish() override;
    std::string Remark() const override;

  private:
    PdfPainter(FileReplacement file, std::string title)
        : file_(std::move(file)), title_(std::move(title)) {}
    std::size_t NewObject();  // its number; its place in the file is noted
    void Write(std::string_view bytes);
    void EndPage();
    void WriteFonts();
    void WriteCatalog();
    void SetColor(Color color, const char* operation);

    FileReplacement file_;
    std::string title_;
    Status status_;
    std::size_t written_ = 0;
    std::vector<std::size_t> places_;  // of the objects, in the order of their numbers
    std::vector<std::size_t> pages_;   // numbers of their objects
    std::string content_;              // of the page at hand
    double width_ = 0;
    double height_ = 0;
    PdfEncoder measured_;  // counts nothing that is shown
    PdfEncoder shown_;
};

}  // namespace zorvane
