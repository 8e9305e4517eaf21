#include "compare/print/line_painter.h"

#include <algorithm>

#include "compare/print/text_marks.h"

namespace zorvane {

// What is drawn at once: one span, one direction; a word where words are set apart.
struct LinePainter::Piece {
    std::int32_t begin = 0;
    std::int32_t end = 0;
    std::size_t span = 0;
    bool right_to_left = false;
    double width = 0;
    double gap = 0;  ///< room behind it
};

// The text between two tabs.
struct LinePainter::Segment {
    std::vector<Piece> pieces;  // from left to right
    double begin = 0;           // from the paragraph's edge
    double width = 0;
};

namespace {

constexpr std::u16string_view kTabs = u"\t\a";
constexpr double kStroke = 10;

std::size_t Size(std::int32_t place) {
    return static_cast<std::size_t>(place);
}

std::int32_t WithoutBlanks(std::u16string_view text, std::int32_t begin, std::int32_t end) {
    while (end > begin && text[Size(end - 1)] == u' ')
        --end;
    return end;
}

}  // namespace

// From left to right; spans of a run that reads the other way stand in reverse order.
void LinePainter::AddPieces(std::int32_t begin, std::int32_t end, Segment& segment) const {
    const std::vector<PrintSpan>& spans = measure_.Paragraph().spans;
    for (const DirectedRun& run : directions_.RunsOf(begin, end)) {
        const std::size_t first = segment.pieces.size();
        for (std::size_t at = measure_.SpanAt(run.begin);
             at < spans.size() && spans[at].begin < run.end; ++at) {
            const DirectedRun part{std::max(run.begin, spans[at].begin),
                                   std::min(run.end, spans[at].end), run.right_to_left};
            if (!spans[at].format->hidden)
                AddWords(part, at, segment.pieces);
        }
        if (run.right_to_left)
            std::reverse(segment.pieces.begin() + static_cast<std::ptrdiff_t>(first),
                         segment.pieces.end());
    }
    for (const Piece& piece : segment.pieces)
        segment.width += piece.width;
}

// A justified line is drawn word by word, each with the blanks behind it.
void LinePainter::AddWords(const DirectedRun& run, std::size_t span,
                           std::vector<Piece>& pieces) const {
    const std::u16string_view text = measure_.Paragraph().text;
    const bool by_word = measure_.Paragraph().format->alignment == Alignment::Justify;
    for (std::int32_t begin = run.begin; begin < run.end;) {
        std::int32_t end = run.end;
        if (by_word) {
            const std::size_t blank = text.find(u' ', Size(begin));
            const std::size_t next = text.find_first_not_of(u' ', blank);
            if (blank != std::u16string_view::npos && next < Size(run.end))
                end = static_cast<std::int32_t>(next);
        }
        pieces.push_back({begin, end, span, run.right_to_left, measure_.Width(begin, end), 0});
        begin = end;
    }
}

std::vector<LinePainter::Segment> LinePainter::SegmentsOf(const PrintLine& line) const {
    const std::u16string_view text = measure_.Paragraph().text;
    LinePen pen(*measure_.Paragraph().format, room_, line.first ? room_.First() : room_.Later());
    std::vector<Segment> segments;
    for (std::int32_t begin = line.begin;;) {
        const auto tab = static_cast<std::int32_t>(std::min(
            text.substr(0, Size(line.end)).find_first_of(kTabs, Size(begin)), Size(line.end)));
        const std::int32_t end = tab < line.end ? tab : WithoutBlanks(text, begin, line.end);
        Segment segment;
        AddPieces(begin, end, segment);
        double to_point = -1;
        if (pen.WantsPoint()) {
            const std::size_t point = text.substr(0, Size(end)).find_first_of(u".,", Size(begin));
            if (point != std::u16string_view::npos)
                to_point = measure_.Width(begin, static_cast<std::int32_t>(point));
        }
        pen.Add(segment.width, to_point);
        segment.begin = pen.TextBegin();
        segments.push_back(std::move(segment));
        if (tab >= line.end)
            return segments;
        if (pen.NextStop() <= room_.end)
            pen.Tab();
        begin = tab + 1;
    }
}

// How far the alignment moves the line from the paragraph's edge; tabs place text by themselves.
double LinePainter::Shift(const std::vector<Segment>& segments) const {
    const double free = room_.end - segments.back().begin - segments.back().width;
    if (free <= 0 || segments.size() > 1)
        return 0;
    switch (measure_.Paragraph().format->alignment) {
        case Alignment::Center:
            return free / 2;
        case Alignment::Right:
            return free;
        case Alignment::Left:
        case Alignment::Justify:
            break;
    }
    return 0;
}

void LinePainter::Justify(const PrintLine& line, Segment& segment) const {
    if (measure_.Paragraph().format->alignment != Alignment::Justify || line.whole)
        return;
    const double free = room_.end - segment.begin - segment.width;
    const std::u16string_view text = measure_.Paragraph().text;
    const auto gaps =
        std::count_if(segment.pieces.begin(), segment.pieces.end(),
                      [&](const Piece& piece) { return text[Size(piece.end - 1)] == u' '; });
    if (gaps == 0 || free <= 0)
        return;
    for (Piece& piece : segment.pieces) {
        if (text[Size(piece.end - 1)] == u' ')
            piece.gap = free / static_cast<double>(gaps);
    }
    segment.width += free;
}

void LinePainter::Paint(const PrintLine& line, const LinePlace& place) {
    PaintBars(place);
    std::vector<Segment> segments = SegmentsOf(line);
    const double shift = Shift(segments);
    Justify(line, segments.back());
    for (const Segment& segment : segments) {
        double x = place.left + shift + segment.begin;
        if (directions_.RightToLeft())
            x = place.left + place.width - shift - segment.begin - segment.width;
        for (const Piece& piece : segment.pieces) {
            PaintPiece(piece, x, place);
            x += piece.width + piece.gap;
        }
    }
}

void LinePainter::PaintPiece(const Piece& piece, double x, const LinePlace& place) {
    const PrintParagraph& paragraph = measure_.Paragraph();
    const CharFormat& format = *paragraph.spans[piece.span].format;
    const MarkedPiece marked{
        paragraph.text.substr(Size(piece.begin), Size(piece.end - piece.begin)), format,
        measure_.FontOf(piece.span), x, piece.width + piece.gap};
    if (format.back_color)
        painter_.FillBox({x, place.top, marked.width, place.bottom - place.top},
                         *format.back_color);
    // The blank at the end of a word that runs to the left, and the gap with it, is at its left.
    const double text_x = piece.right_to_left ? x + piece.gap : x;
    painter_.DrawText({marked.text,
                       marked.font,
                       format.fore_color.value_or(Color{}),
                       {text_x, place.baseline - RaiseOf(format)},
                       piece.width,
                       piece.right_to_left});
    DrawMarks(painter_, marked, place.baseline - RaiseOf(format));
}

void LinePainter::PaintBars(const LinePlace& place) {
    for (const TabStop& tab : measure_.Paragraph().format->tabs) {
        if (tab.kind != TabKind::Bar || tab.twips > place.width)
            continue;
        const double x = directions_.RightToLeft() ? place.left + place.width - tab.twips
                                                   : place.left + tab.twips;
        painter_.DrawLine({{x, place.top}, {x, place.bottom}, kStroke, {}, StrokeStyle::Solid});
    }
}

}  // namespace zorvane
