// The readers of word-processor and web documents. Each sends the whole document to a sink.
#pragma once

#include <string_view>

#include "load/readers/container/package.h"
#include "load/readers/reader.h"
#include "load/readers/sink/document_sink.h"

namespace zorvane {

/// The bookmark of a paragraph that our redlines put behind a last table, since word processors
/// want one there: empty, it is none of the text.
inline constexpr const char* kTableEndMark = "_zvTableEnd";

/// DOCX, DOCM, DOTX, DOTM. Visible text in order: the body, with foot- and endnotes as text at
/// their place in brackets, text boxes behind the paragraph that anchors them; then each header and
/// footer once. Tracked changes as accepted; comments and hidden text left out.
ReadEnd ReadWordPackage(Package& package, DocumentSink& sink, ReadMonitor& monitor);

/// ODT, OTT, and the text of ODP and ODS when nothing better fits.
ReadEnd ReadOpenDocument(Package& package, DocumentSink& sink, ReadMonitor& monitor);

/// HTML and XHTML as a browser shows it, without scripts, styles sheets' files and pictures.
/// Nothing is fetched. `locale_encoding` is for bytes that tell no encoding.
ReadEnd ReadHtml(std::string_view bytes, std::string_view locale_encoding, DocumentSink& sink,
                 ReadMonitor& monitor);

/// XML that is no HTML: the text of each element that holds text is a paragraph; elements that mix
/// text and elements are one paragraph.
ReadEnd ReadXml(std::string_view bytes, DocumentSink& sink, ReadMonitor& monitor);

/// The chapters in reading order.
ReadEnd ReadEpub(Package& package, DocumentSink& sink, ReadMonitor& monitor);

/// Markdown as rendered (headings, emphasis, lists, tables, code, links by their text).
ReadEnd ReadMarkdown(std::string_view utf8, DocumentSink& sink, ReadMonitor& monitor);

/// An e-mail message (RFC 5322, MIME): From, To, Cc, Date, Subject, then the text; attachments by
/// name.
ReadEnd ReadMessage(std::string_view bytes, std::string_view locale_encoding, DocumentSink& sink,
                    ReadMonitor& monitor);

}  // namespace zorvane
