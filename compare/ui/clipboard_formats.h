// Rich text on its way through clipboard and drag: RTF by the core's writer and reader, and plain.
#pragma once

#include <memory>
#include <optional>

#include <QMimeData>

#include "compare/document/rich_text.h"

namespace zorvane {

/// Both forms. Never empty.
std::unique_ptr<QMimeData> MimeOf(const RichText& text);
bool HasText(const QMimeData& data);
/// The RTF, if there is some and it holds a text; bytes of any quality are read.
std::optional<RichText> RichTextOf(const QMimeData& data);
std::u16string PlainTextOf(const QMimeData& data);

}  // namespace zorvane
