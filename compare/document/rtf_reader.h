// RTF to rich text.
#pragma once

#include <string_view>
#include <vector>

#include "common/base/run_watcher.h"
#include "compare/document/beside.h"
#include "compare/document/rich_text.h"

namespace zorvane {

/// True when the bytes begin with "{\rtf", a byte-order mark and blanks in front apart.
bool LooksLikeRtf(std::string_view bytes);

/// Reads RTF of any quality: what is broken is passed over, what is cut off ends there, nesting is
/// bounded, and nothing outside the text is touched. Several documents in a row read as one after
/// the other, each beginning a paragraph. Source: the public RTF 1.9.1 format description.
///
/// Kept visible: list numbers from \pntext and \listtext (each with its tab), footnotes as text at
/// their place, fields by their result, table cells ended by character 7 with the row ending the
/// paragraph, \line as character 11. Left out: hidden text, pictures, headers of the document,
/// unknown destinations.
RichText ReadRtf(std::string_view bytes);
/// The same; what the text leaves out is added to `beside`, in its order, with its paragraphs.
/// What a stop left of it is not whole.
RichText ReadRtf(std::string_view bytes, std::vector<BesideItem>& beside,
                 RunWatcher* watcher = nullptr);

}  // namespace zorvane
