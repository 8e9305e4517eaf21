// Lays a rich text out as a new package of a word processor, for documents that are none or come
// from other formats: tracked changes need one to stand in.
#pragma once

#include <optional>
#include <string>

#include "compare/document/rich_text.h"

namespace zorvane {

/// Paragraphs with their looks; rows, whose cells end in the mark of a cell, become tables. The
/// same text gives the same bytes. Nothing when there is no memory for it.
std::optional<std::string> NewDocument(const RichText& text);
/// The same as an OpenDocument text.
std::optional<std::string> NewOdtDocument(const RichText& text);

}  // namespace zorvane
