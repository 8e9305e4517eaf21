#include "compare/document/rtf_page.h"

#include <algorithm>
#include <string_view>
#include <vector>

#include "compare/document/rtf_output.h"
#include "compare/document/table_columns.h"

namespace zorvane {
namespace {

constexpr std::int32_t kPageWidth = 9000;  // twips, what fits on A4 and on Letter
constexpr std::size_t kMostColumns = 63;   // what word processors take

struct Paragraph {
    std::size_t begin = 0;
    std::size_t end = 0;    // without its break
    std::size_t cells = 0;  // ends of cells in it
};

// Runs that are walked from the beginning on.
template <class Run>
class Walk {
  public:
    explicit Walk(const std::vector<Run>& runs) : runs_(runs) {}
    // The format at `place`, nullptr behind the last; `End` is then where it ends.
    const decltype(Run::format)* At(std::size_t place) {
        while (next_ < runs_.size() && end_ <= place)
            end_ += static_cast<std::size_t>(runs_[next_++].length);
        return next_ == 0 || end_ <= place ? nullptr : &runs_[next_ - 1].format;
    }
    std::size_t End() const { return end_; }

  private:
    const std::vector<Run>& runs_;
    std::size_t next_ = 0;
    std::size_t end_ = 0;
};

constexpr std::size_t kUnitsOfPart = 1 << 16;
constexpr std::size_t kMostBytesOfUnit = 16;     // a tab and what tells that it was a cell
constexpr std::size_t kMostBytesOfMarks = 8192;  // formats, and a row's columns
constexpr std::size_t kMostBytesOfPart = kUnitsOfPart * kMostBytesOfUnit + kMostBytesOfMarks;

std::vector<Paragraph> ParagraphsOf(std::u16string_view text, RunWatcher* watcher) {
    std::vector<Paragraph> paragraphs;
    StopCheck stop(watcher);
    for (std::size_t begin = 0; begin < text.size() && stop.KeepGoing();) {
        const std::size_t end = std::min(text.find(u'\r', begin), text.size());
        const std::u16string_view own = text.substr(begin, end - begin);
        paragraphs.push_back(
            {begin, end, static_cast<std::size_t>(std::count(own.begin(), own.end(), kRtfCell))});
        begin = end + 2;
    }
    return paragraphs;
}

class PageWriter {
  public:
    PageWriter(const RichText& text, TableForm tables, RunWatcher* watcher)
        : text_(text),
          tables_(tables),
          watcher_(watcher),
          chars_(text.char_runs),
          formats_(text.paragraph_runs),
          paragraphs_(ParagraphsOf(text.text, watcher)),
          stop_(watcher) {}

    RtfParts Write() {
        body_.MakeRoom(text_.text.size() + text_.text.size() / 4 + kMostBytesOfPart, stop_);
        std::size_t table_end = 0;
        std::vector<std::int32_t> ends;
        for (std::size_t i = 0; i < paragraphs_.size() && !stop_.Stopped(); ++i) {
            if (!IsRow(paragraphs_[i])) {
                Plain(paragraphs_[i]);
                continue;
            }
            if (i >= table_end) {
                for (table_end = i; table_end < paragraphs_.size();)
                    if (!IsRow(paragraphs_[table_end++])) {
                        --table_end;
                        break;
                    }
                const std::size_t first = paragraphs_[i].begin;
                ends = CellEnds(std::u16string_view(text_.text)
                                    .substr(first, paragraphs_[table_end - 1].end - first),
                                kPageWidth, watcher_);
            }
            Row(paragraphs_[i], ends);
        }
        return body_.FinishInParts();
    }

  private:
    bool IsRow(const Paragraph& paragraph) const {
        return tables_ == TableForm::Cells && paragraph.cells > 0 &&
               paragraph.cells <= kMostColumns;
    }

    void Start(const Paragraph& paragraph) {
        const ParagraphFormat* format = formats_.At(paragraph.begin);
        body_.ParagraphStart(format == nullptr ? ParagraphFormat{} : *format);
    }

    // Up to `end`, which lies in front of the paragraph's break or behind it.
    void Chars(std::size_t begin, std::size_t end) {
        while (begin < end) {
            if (const CharFormat* format = chars_.At(begin))
                body_.Chars(*format);
            // One run may be the whole document.
            const std::size_t most = std::min(end, begin + kUnitsOfPart);
            const std::size_t stop = chars_.End() > begin ? std::min(most, chars_.End()) : most;
            if (!stop_.KeepGoing(static_cast<std::int64_t>(stop - begin)))
                return;
            body_.MakeRoom((stop - begin) * kMostBytesOfUnit + kMostBytesOfMarks, stop_);
            body_.Units(std::u16string_view(text_.text).substr(begin, stop - begin));
            begin = stop;
        }
    }

    void Plain(const Paragraph& paragraph) {
        Start(paragraph);
        Chars(paragraph.begin, std::min(paragraph.end + 2, text_.text.size()));
    }

    // What stands behind the last end of a cell belongs to that cell.
    void Row(const Paragraph& paragraph, const std::vector<std::int32_t>& ends) {
        const auto own = ends.begin() + static_cast<std::ptrdiff_t>(paragraph.cells);
        body_.RowStart({ends.begin(), own});
        Start(paragraph);
        body_.InRow();
        std::size_t begin = paragraph.begin;
        for (std::size_t cell = 1; cell < paragraph.cells; ++cell) {
            const std::size_t end = text_.text.find(kRtfCell, begin);
            Chars(begin, end);
            body_.CellEnd();
            begin = end + 1;
        }
        const std::size_t last = text_.text.find(kRtfCell, begin);
        Chars(begin, last);
        Chars(last + 1, paragraph.end);
        body_.CellEnd();
        body_.RowEnd();
    }

    const RichText& text_;
    TableForm tables_;
    RunWatcher* watcher_;
    Walk<CharRun> chars_;
    Walk<ParagraphRun> formats_;
    std::vector<Paragraph> paragraphs_;
    RtfBody body_;
    StopCheck stop_;
};

}  // namespace

RtfParts WriteRtfPage(const RichText& text, TableForm tables, RunWatcher* watcher) {
    return PageWriter(text, tables, watcher).Write();
}

}  // namespace zorvane
