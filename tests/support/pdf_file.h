// Makes small PDF files for tests: nothing is compressed, the fonts are the standard ones, and the
// cross-reference table is right unless a test wants it broken.
#pragma once

#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

namespace zorvane::test_pdf {

struct Page {
    std::string content;      ///< operators
    std::string annotations;  ///< whole dictionaries, one behind the other
    double width = 612;
    double height = 792;
    int rotate = 0;
};

enum class Xref : std::uint8_t { Right, Broken };

/// A font's name in a content stream and the object behind it.
struct FontRow {
    std::string_view name;
    std::string_view base_font;
    std::string_view more;
};

inline constexpr FontRow kFonts[] = {
    {"R", "Times-Roman", ""},
    {"B", "Times-Bold", ""},
    {"I", "Times-Italic", ""},
    {"H", "Helvetica", ""},
    {"C", "Courier", ""},
    // An embedded subset by its name; each character is half an em wide.
    {"S", "ABCDEF+TimesNewRomanPS-BoldMT",
     "/FirstChar 32 /LastChar 126 /Widths [" /* filled in by MakePdf */},
};

inline std::string Number(double value) {
    char text[32];
    std::snprintf(text, sizeof text, "%.2f", value);
    return text;
}

inline std::string Escaped(std::string_view text) {
    std::string escaped;
    for (const char character : text) {
        if (character == '(' || character == ')' || character == '\\')
            escaped += '\\';
        escaped += character;
    }
    return escaped;
}

/// A line of text; `y` is the baseline from the bottom of the page.
inline std::string Line(double x, double y, std::string_view text, double size = 12,
                        std::string_view font = "R") {
    return "BT /" + std::string(font) + " " + Number(size) + " Tf " + Number(x) + " " + Number(y) +
           " Td (" + Escaped(text) + ") Tj ET\n";
}

/// Lines below one another with a distance of `pitch`.
inline std::string Lines(double x, double y, const std::vector<std::string_view>& lines,
                         double size = 12, double pitch = 14) {
    std::string content;
    for (const std::string_view line : lines) {
        content += Line(x, y, line, size);
        y -= pitch;
    }
    return content;
}

inline std::string Link(double x0, double y0, double x1, double y1, std::string_view address) {
    return "<< /Type /Annot /Subtype /Link /Rect [" + Number(x0) + " " + Number(y0) + " " +
           Number(x1) + " " + Number(y1) + "] /Border [0 0 0] /A << /S /URI /URI (" +
           Escaped(address) + ") >> >>";
}

class Writer {
  public:
    void Add(std::string_view body) {
        offsets_.push_back(text_.size());
        text_ += std::to_string(offsets_.size()) + " 0 obj\n" + std::string(body) + "\nendobj\n";
    }
    std::string Finish(Xref xref) {
        const std::size_t shift = xref == Xref::Broken ? 7 : 0;
        const std::size_t start = text_.size() + shift;
        text_ += "xref\n0 " + std::to_string(offsets_.size() + 1) + "\n0000000000 65535 f \n";
        for (const std::size_t offset : offsets_) {
            char row[32];
            std::snprintf(row, sizeof row, "%010zu 00000 n \n", offset + shift);
            text_ += row;
        }
        text_ += "trailer\n<< /Size " + std::to_string(offsets_.size() + 1) +
                 " /Root 1 0 R >>\nstartxref\n" + std::to_string(start) + "\n%%EOF\n";
        return text_;
    }

  private:
    std::string text_ = "%PDF-1.4\n";
    std::vector<std::size_t> offsets_;
};

inline std::string FontObject(const FontRow& row) {
    std::string more(row.more);
    if (!more.empty()) {
        for (int letter = 32; letter <= 126; ++letter)
            more += "500 ";
        more += "]";
    }
    return "<< /Type /Font /Subtype /Type1 /BaseFont /" + std::string(row.base_font) +
           " /Encoding /WinAnsiEncoding " + more + " >>";
}

inline std::string MakePdf(const std::vector<Page>& pages, Xref xref = Xref::Right) {
    Writer writer;
    writer.Add("<< /Type /Catalog /Pages 2 0 R >>");
    constexpr std::size_t kFirstFont = 3;
    constexpr std::size_t kFirstPage = kFirstFont + std::size(kFonts);
    std::string kids;
    for (std::size_t index = 0; index < pages.size(); ++index)
        kids += std::to_string(kFirstPage + 2 * index) + " 0 R ";
    std::string fonts;
    for (std::size_t index = 0; index < std::size(kFonts); ++index)
        fonts += "/" + std::string(kFonts[index].name) + " " + std::to_string(kFirstFont + index) +
                 " 0 R ";
    writer.Add("<< /Type /Pages /Count " + std::to_string(pages.size()) + " /Kids [" + kids +
               "] /Resources << /Font << " + fonts + ">> >> >>");
    for (const FontRow& row : kFonts)
        writer.Add(FontObject(row));
    for (std::size_t index = 0; index < pages.size(); ++index) {
        const Page& page = pages[index];
        writer.Add("<< /Type /Page /Parent 2 0 R /MediaBox [0 0 " + Number(page.width) + " " +
                   Number(page.height) + "] /Rotate " + std::to_string(page.rotate) + " /Annots [" +
                   page.annotations + "] /Contents " + std::to_string(kFirstPage + 2 * index + 1) +
                   " 0 R >>");
        writer.Add("<< /Length " + std::to_string(page.content.size()) + " >>\nstream\n" +
                   page.content + "\nendstream");
    }
    return writer.Finish(xref);
}

inline std::string MakePdf(std::string content, Xref xref = Xref::Right) {
    return MakePdf(std::vector<Page>{Page{std::move(content), {}}}, xref);
}

/// A page that shows a form, which shows the next one `times` times, and so on `depth` times.
inline std::string MakeFormBomb(int depth, int times) {
    Writer writer;
    writer.Add("<< /Type /Catalog /Pages 2 0 R >>");
    writer.Add("<< /Type /Pages /Count 1 /Kids [3 0 R] >>");
    writer.Add(
        "<< /Type /Page /Parent 2 0 R /MediaBox [0 0 612 792] /Resources << /XObject << /F "
        "5 0 R >> >> /Contents 4 0 R >>");
    writer.Add("<< /Length 5 >>\nstream\n/F Do\nendstream");
    for (int level = 0; level < depth; ++level) {
        std::string content;
        for (int time = 0; time < times; ++time)
            content += "/F Do\n";
        writer.Add(
            "<< /Type /XObject /Subtype /Form /BBox [0 0 9 9] /Resources << /XObject << /F " +
            std::to_string(6 + level) + " 0 R >> >> /Length " + std::to_string(content.size()) +
            " >>\nstream\n" + content + "endstream");
    }
    writer.Add(
        "<< /Type /XObject /Subtype /Form /BBox [0 0 9 9] /Length 4 >>\nstream\nq Q\n"
        "endstream");
    return writer.Finish(Xref::Right);
}

}  // namespace zorvane::test_pdf
