#include "compare/document/clipboard.h"

#include <algorithm>

#include "common/base/paragraph_break.h"
#include "compare/document/rtf_output.h"
#include "compare/document/rtf_reader.h"
#include "compare/document/rtf_writer.h"

namespace zorvane {
namespace {

void DropLastBreak(RichText& text) {
    text.text.resize(text.text.size() - kBreak.size());
    auto shorten = [](auto& runs) {
        for (auto left = static_cast<std::int32_t>(kBreak.size()); left > 0 && !runs.empty();) {
            const std::int32_t part = std::min(left, runs.back().length);
            runs.back().length -= part;
            left -= part;
            if (runs.back().length == 0)
                runs.pop_back();
        }
    };
    shorten(text.char_runs);
    shorten(text.paragraph_runs);
}

}  // namespace

std::u16string PlainTextOf(std::u16string_view text) {
    std::u16string plain;
    plain.reserve(text.size());
    for (std::size_t at = 0; at < text.size(); ++at) {
        const bool last = at + 1 == text.size() || text[at + 1] == u'\r';
        if (text[at] == kRtfLine)
            plain += u'\n';
        else if (text[at] != kRtfCell)
            plain += text[at];
        else if (!last)
            plain += u'\t';
    }
    return plain;
}

ClipboardText ClipboardTextOf(const RichText& text) {
    ClipboardText both{WriteRtf(text), {}};
    for (const char16_t unit : PlainTextOf(text.text)) {
        if (unit == u'\n' && (both.plain.empty() || both.plain.back() != u'\r'))
            both.plain += u'\r';
        both.plain += unit;
    }
    return both;
}

RichText RichTextOf(const ClipboardText& text, const CharFormat& format) {
    if (LooksLikeRtf(text.rtf)) {
        RichText rich = ReadRtf(text.rtf);
        const bool plain_ends =
            text.plain.empty() || text.plain.ends_with(u'\n') || text.plain.ends_with(u'\r');
        if (!plain_ends && rich.text.ends_with(kBreak))
            DropLastBreak(rich);
        if (!rich.Empty())
            return rich;
    }
    return RichText::Plain(text.plain, format);
}

}  // namespace zorvane
