#include "common/base/text_encoding.h"
#include "load/readers/markdown/markdown.h"
#include "load/readers/web/html_reader.h"
#include "load/readers/word_readers.h"

namespace zorvane {

ReadEnd ReadMarkdown(std::string_view utf8, DocumentSink& sink, ReadMonitor& monitor) {
    if (utf8.size() > kMaxPartBytes)
        return ReadEnd::Fault(ReadError::TooLarge, "the file is larger than allowed");
    if (utf8.starts_with("\xEF\xBB\xBF"))
        utf8.remove_prefix(3);
    if (!IsValidUtf8(utf8))
        return ReadMarkdown(ToUtf8(ToUtf16(utf8)), sink, monitor);
    return ShowHtml(MarkdownToHtml(utf8), HtmlSyntax::Html, sink, monitor);
}

}  // namespace zorvane
