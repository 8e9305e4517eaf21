#include "compare/print/print_job.h"

#include <algorithm>

#include "common/base/number.h"
#include "common/base/surrogates.h"
#include "common/base/text_encoding.h"

namespace zorvane {
namespace {

constexpr double kEdgePoints = 8;
constexpr double kEdgeGap = 100;    // between the text and what stands beside it
constexpr double kLeastOuter = 80;  // of the paper beyond it
constexpr double kBetween = 400;    // between title and date
constexpr Color kEdgeColor{0x606060};

class EdgePainter {
  public:
    EdgePainter(const PrintJob& job, PagePainter& painter, std::int32_t pages)
        : job_(job), painter_(painter), pages_(pages) {
        font_.points = kEdgePoints;
        height_ = painter.Height(font_);
    }

    void Paint(std::int32_t page) {
        const PageSetup& setup = job_.setup;
        if (HasRoom(setup.top))
            Head(setup.top - kEdgeGap - height_.descent);
        if (HasRoom(setup.bottom))
            Foot(setup.height - setup.bottom + kEdgeGap + height_.ascent, page);
    }

  private:
    bool HasRoom(double margin) const {
        return margin >= kEdgeGap + height_.ascent + height_.descent + kLeastOuter;
    }
    void Draw(const std::u16string& text, double left, double baseline, double width) {
        painter_.DrawText({text, font_, kEdgeColor, {left, baseline}, width, false});
    }

    void Head(double baseline) {
        const PageSetup& setup = job_.setup;
        const std::u16string date = ToUtf16(job_.edges.date);
        const double date_width = painter_.Width(date, font_);
        if (!date.empty())
            Draw(date, setup.left + setup.TextWidth() - date_width, baseline, date_width);
        const double room = setup.TextWidth() - date_width - (date.empty() ? 0 : kBetween);
        const std::u16string title = Shortened(ToUtf16(job_.edges.title), room);
        if (!title.empty())
            Draw(title, setup.left, baseline, painter_.Width(title, font_));
    }

    void Foot(double baseline, std::int32_t page) {
        const PageEdges& edges = job_.edges;
        const std::u16string text = ToUtf16(edges.page + " " + std::to_string(page) + " " +
                                            edges.of + " " + std::to_string(pages_));
        const double width = painter_.Width(text, font_);
        Draw(text, job_.setup.left + (job_.setup.TextWidth() - width) / 2, baseline, width);
    }

    // The end of a name tells more than its folders.
    std::u16string Shortened(const std::u16string& text, double room) {
        if (painter_.Width(text, font_) <= room)
            return text;
        std::size_t cut = 0;
        std::size_t end = text.size();
        while (cut < end) {
            const std::size_t middle = cut + (end - cut) / 2;
            if (painter_.Width(u"..." + text.substr(middle), font_) <= room)
                end = middle;
            else
                cut = middle + 1;
        }
        if (cut < text.size() && IsLowSurrogate(text[cut]))
            ++cut;
        return cut >= text.size() ? std::u16string() : u"..." + text.substr(cut);
    }

    const PrintJob& job_;
    PagePainter& painter_;
    std::int32_t pages_;
    PrintFont font_;
    FontHeight height_;
};

}  // namespace

Result<std::int32_t> PrintRTF(const PrintJob& job, PagePainter& painter, RunWatcher* watcher) {
    if (job.setup.TextWidth() < kTwipsPerPoint || job.setup.TextHeight() < kTwipsPerPoint)
        return Failure{"The margins leave no room on the page"};
    constexpr double kCounting = 0.4;  // of the work
    const auto go_on = [watcher](double part) {
        TellProgress(watcher, RunStep::Print, part);
        return KeepGoing(watcher);
    };
    const PageCalls counting{[](std::int32_t) { return Status::Ok(); },
                             [&](double part) { return go_on(part * kCounting); }};
    Result<std::int32_t> pages = PageLayout(job.text, job.setup, painter, nullptr).Run(counting);
    if (!pages.ok())
        return pages;
    EdgePainter edges(job, painter, pages.value());
    const PageCalls drawing{[&](std::int32_t page) {
                                Status begun = painter.NewPage(job.setup.width, job.setup.height);
                                if (begun.ok())
                                    edges.Paint(page);
                                return begun;
                            },
                            [&](double part) { return go_on(kCounting + part * (1 - kCounting)); }};
    Result<std::int32_t> drawn = PageLayout(job.text, job.setup, painter, &painter).Run(drawing);
    if (!drawn.ok())
        return drawn;
    if (const Status finished = painter.Finish(); !finished.ok())
        return finished.failure();
    return drawn;
}

}  // namespace zorvane
