#include "load/readers/web/html_reader.h"

#include <algorithm>
#include <array>
#include <utility>

#include "common/base/text_encoding.h"
#include "load/readers/web/html_flow.h"
#include "load/readers/word_readers.h"

namespace zorvane {
namespace {

constexpr std::size_t kLookedAt = 4096;  // a browser looks at the first 1024 bytes for the encoding

// The value behind `name` and "=", with or without quotes, in lower-case text.
std::string_view ValueBehind(std::string_view text, std::string_view name) {
    const std::size_t at = text.find(name);
    if (at == std::string_view::npos)
        return {};
    std::string_view rest = text.substr(at + name.size());
    rest.remove_prefix(std::min(rest.find_first_not_of(" \t\r\n"), rest.size()));
    if (!rest.starts_with('='))
        return {};
    rest.remove_prefix(1);
    rest.remove_prefix(std::min(rest.find_first_not_of(" \t\r\n\"'"), rest.size()));
    return rest.substr(0, rest.find_first_of(" \t\r\n\"';/>?"));
}

std::string_view DeclaredEncoding(std::string_view lower) {
    std::string_view page = lower;
    while (true) {
        const std::size_t meta = page.find("<meta");
        if (meta == std::string_view::npos)
            break;
        page.remove_prefix(meta);
        const std::string_view tag = page.substr(0, page.find('>'));
        const std::string_view name = ValueBehind(tag, "charset");
        if (!name.empty())
            return name;
        page.remove_prefix(tag.size());
    }
    if (lower.starts_with("<?xml"))
        return ValueBehind(lower.substr(0, lower.find("?>")), "encoding");
    return {};
}

}  // namespace

std::string EncodingByLabel(std::string_view label) {
    using Name = std::pair<std::string_view, std::string_view>;
    constexpr std::array<Name, 20> kNames = {{{"utf8", "UTF-8"},
                                              {"utf-16", "UTF-8"},
                                              {"utf-16le", "UTF-8"},
                                              {"utf-16be", "UTF-8"},
                                              {"ascii", "windows-1252"},
                                              {"us-ascii", "windows-1252"},
                                              {"iso-8859-1", "windows-1252"},
                                              {"iso8859-1", "windows-1252"},
                                              {"latin1", "windows-1252"},
                                              {"iso-8859-9", "windows-1254"},
                                              {"latin5", "windows-1254"},
                                              {"tis-620", "windows-874"},
                                              {"iso-8859-11", "windows-874"},
                                              {"gb2312", "gb18030"},
                                              {"gbk", "gb18030"},
                                              {"big5-hkscs", "Big5-HKSCS"},
                                              {"shift_jis", "windows-31j"},
                                              {"x-sjis", "windows-31j"},
                                              {"euc-kr", "windows-949"},
                                              {"ks_c_5601-1987", "windows-949"}}};
    std::string lower = ToLower(Trim(label).substr(0, 64));
    for (const auto& [name, decoded_as] : kNames) {
        if (lower == name)
            return std::string(decoded_as);
    }
    return lower;
}

std::string HtmlAsUtf8(std::string_view bytes, std::string_view locale_encoding) {
    DetectedEncoding encoding = DetectEncoding(bytes, locale_encoding);
    const bool wide = encoding.name.starts_with("UTF-16") || encoding.name.starts_with("UTF-32");
    if (encoding.bom_size == 0 && !wide) {
        const std::string start = ToLower(bytes.substr(0, kLookedAt));
        const std::string_view declared = DeclaredEncoding(start);
        if (!declared.empty())
            encoding.name = EncodingByLabel(declared);
    }
    if (ToUpper(encoding.name) == "UTF-8" && IsValidUtf8(bytes))
        return std::string(bytes.substr(encoding.bom_size));
    return ToUtf8(DecodeText(bytes, encoding));
}

ReadEnd ShowHtml(std::string_view utf8, HtmlSyntax syntax, DocumentSink& sink, ReadMonitor& monitor,
                 HtmlFileDigest digest_of) {
    HtmlFlow flow(sink, monitor, std::move(digest_of));
    HtmlParser parser(utf8, syntax, flow);
    if (!parser.Run())
        return ReadEnd::Fault(flow.Error());
    flow.Finish();
    return ReadEnd::Ok();
}

ReadEnd ReadHtml(std::string_view bytes, std::string_view locale_encoding, DocumentSink& sink,
                 ReadMonitor& monitor) {
    const std::string page = HtmlAsUtf8(bytes, locale_encoding);
    const HtmlSyntax syntax = Trim(std::string_view(page).substr(0, 64)).starts_with("<?xml")
                                  ? HtmlSyntax::Xhtml
                                  : HtmlSyntax::Html;
    return ShowHtml(page, syntax, sink, monitor);
}

}  // namespace zorvane
