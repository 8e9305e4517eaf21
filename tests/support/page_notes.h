// A painter that writes down what it is told. Letters are all as wide as half the font's size.
#pragma once

#include <string>
#include <vector>

#include "common/base/text_encoding.h"
#include "compare/print/page_painter.h"

namespace zorvane {

class PageNotes : public PagePainter {
  public:
    struct Text {
        std::string text;
        double x = 0;
        double y = 0;
        double width = 0;
        bool right_to_left = false;
        PrintFont font{};
        Color color{};
    };
    struct Page {
        std::vector<Text> texts;
        std::vector<Stroke> strokes;
        std::vector<PageBox> boxes;
    };

    double Width(std::u16string_view text, const PrintFont& font) override {
        measured += text.size();
        return static_cast<double>(text.size()) * font.points * 10;
    }
    FontHeight Height(const PrintFont& font) override {
        return {font.points * 16, font.points * 4};
    }
    Status NewPage(double, double) override {
        if (fails_at_page == static_cast<int>(pages.size()) + 1)
            return Failure{"printer: out of paper"};
        pages.emplace_back();
        return Status::Ok();
    }
    void DrawText(const PaintedText& text) override {
        pages.back().texts.push_back({ToUtf8(text.text), text.baseline.x, text.baseline.y,
                                      text.width, text.right_to_left, text.font, text.color});
    }
    void DrawLine(const Stroke& stroke) override { pages.back().strokes.push_back(stroke); }
    void FillBox(const PageBox& box, Color) override { pages.back().boxes.push_back(box); }
    Status Finish() override {
        finished = true;
        return Status::Ok();
    }
    std::string Remark() const override { return remark; }

    /// The lines of a page by their height on it, what stands on one joined by "|".
    std::vector<std::string> Lines(std::size_t page) const {
        std::vector<std::string> lines;
        double y = -1;
        for (const Text& text : pages[page].texts) {
            if (text.y != y || lines.empty())
                lines.push_back(text.text);
            else
                lines.back() += "|" + text.text;
            y = text.y;
        }
        return lines;
    }

    std::vector<Page> pages;
    std::size_t measured = 0;  ///< units, in all
    bool finished = false;
    int fails_at_page = 0;
    std::string remark;
};

}  // namespace zorvane
