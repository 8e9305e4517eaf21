// A page that is already UTF-8, for readers of formats that hold pages.
#pragma once

#include <string_view>

#include "load/readers/reader.h"
#include "load/readers/sink/document_sink.h"
#include "load/readers/web/html_beside.h"
#include "load/readers/web/html_parser.h"

namespace zorvane {

ReadEnd ShowHtml(std::string_view utf8, HtmlSyntax syntax, DocumentSink& sink, ReadMonitor& monitor,
                 HtmlFileDigest digest_of = {});

/// The page as UTF-8: by its byte-order mark, its own words, its look.
std::string HtmlAsUtf8(std::string_view bytes, std::string_view locale_encoding);

/// The name under which the encoding that a document calls `label` is decoded; browsers read some
/// old names as the larger encoding that took their place.
std::string EncodingByLabel(std::string_view label);

}  // namespace zorvane
