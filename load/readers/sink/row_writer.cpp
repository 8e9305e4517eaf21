#include "load/readers/sink/row_writer.h"

#include "common/base/text_encoding.h"

namespace zorvane {

void RowWriter::BeginParagraph(const ParagraphFormat& format) {
    if (cells_.empty()) {
        sink_.BeginParagraph(format);
        return;
    }
    if (line_waits_)
        sink_.Text(std::string_view(&kLineInParagraph, 1), CharFormat());
}

void RowWriter::Put(std::string_view utf8, const CharFormat& format) {
    if (utf8.empty())
        return;
    if (!IsValidUtf8(utf8)) {  // XML may hold any bytes, and references to half a character
        Put(ToUtf8(ToUtf16(utf8)), format);
        return;
    }
    sink_.Text(utf8, format);
}

void RowWriter::Text(std::string_view utf8, const CharFormat& format) {
    Put(utf8, format);
}

void RowWriter::ListLabel(std::string_view utf8, const CharFormat& format) {
    sink_.ListLabel(utf8, format);
}

void RowWriter::EndParagraph() {
    if (cells_.empty())
        sink_.EndParagraph();
    else
        line_waits_ = true;
}

void RowWriter::BeginRow() {
    if (cells_.empty())
        sink_.BeginRow();
    else if (line_waits_)
        sink_.Text(std::string_view(&kLineInParagraph, 1), CharFormat());
    line_waits_ = false;
    cells_.push_back(0);
}

void RowWriter::BeginCell() {
    if (cells_.size() > 1 && cells_.back() > 0)
        sink_.Text("\t", CharFormat());
    ++cells_.back();
}

void RowWriter::EndCell(const CharFormat& format) {
    line_waits_ = false;
    if (cells_.size() == 1)
        sink_.EndCell(format);
}

void RowWriter::EndRow() {
    cells_.pop_back();
    if (cells_.empty())
        sink_.EndRow();
    line_waits_ = !cells_.empty();
}

}  // namespace zorvane
