#include "compare/engine/pairing/compare_side.h"

#include "common/base/text_encoding.h"
#include "compare/engine/comparison.h"

namespace zorvane {

void CompareSide::Prepare(const LineText& lines, const LineFilter& filter, bool leave_out_blank,
                          const LineFilter* words) {
    lines_ = &lines;
    words_ = words;
    lines_of_.clear();
    keys_.clear();
    leaves_out_ = leave_out_blank;
    const bool identity = filter.IsIdentity();
    count_ = lines.Count();
    if (identity && !leave_out_blank)
        return;
    std::string buffer;
    std::string utf8;
    std::u16string text;
    StopCheck stop(watcher_);
    for (std::int32_t line = 0; line < lines.Count(); ++line) {
        if (!stop.KeepGoing(lines.Units(line, line + 1)))
            return;  // nothing of it is used
        utf8.clear();
        if (!identity) {
            lines.AppendUtf8(line, utf8);
            const std::string_view key = filter.Key(utf8, buffer);
            text = ToUtf16(key);
            if (leave_out_blank && IsBlankParagraph(text))
                continue;
            keys_.emplace_back(key);
        } else if (IsBlankParagraph(lines.Text(line, text))) {
            continue;
        }
        if (leave_out_blank)
            lines_of_.push_back(line);
    }
    if (leave_out_blank)
        count_ = static_cast<std::int32_t>(lines_of_.size());
}

std::u16string_view CompareSide::KeyText(std::int32_t place, std::u16string& buffer) const {
    if (keys_.empty() || (words_ != nullptr && words_->IsIdentity()))
        return lines_->Text(LineOf(place), buffer);
    if (words_ != nullptr) {
        std::string key;
        buffer = ToUtf16(words_->Key(lines_->Utf8(LineOf(place)), key));
        return buffer;
    }
    buffer = ToUtf16(keys_[static_cast<std::size_t>(place)]);
    return buffer;
}

std::int64_t CompareSide::Units(std::int32_t first, std::int32_t end) const {
    if (keys_.empty() && lines_of_.empty())
        return lines_->Units(first, end);
    std::int64_t units = 0;
    for (std::int32_t place = first; place < end; ++place)
        units += static_cast<std::int64_t>(Key(place).size()) + 1;
    return units;
}

std::vector<bool> CompareSide::LeftOut() const {
    if (!leaves_out_)
        return {};
    std::vector<bool> left_out(static_cast<std::size_t>(lines_->Count()), true);
    for (const std::int32_t line : lines_of_)
        left_out[static_cast<std::size_t>(line)] = false;
    return left_out;
}

}  // namespace zorvane
