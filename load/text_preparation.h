// Small passes between a temporary file and the editor.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "common/base/run_watcher.h"
#include "compare/document/beside.h"
#include "compare/document/editor.h"
#include "load/text_stream.h"

namespace zorvane {

class clsMRU;
class clsCompareFileOptions;
class RunTelling;

/// Puts a blank in front of a text that opens with "{", so that nothing takes it for rich text.
/// Gives back whether it did.
bool AddSpaceToTextFileIfNecessary(std::string& sText);
/// Takes the first character of an editor's text away.
void RemoveFirstSpaceOfRichTextBox(Editor& oRichText);
/// Removes the lines that are empty but for blanks, tabs and no-break spaces, each with its end, of
/// whatever kind.
void DeleteEmptyLinesFromText(std::u16string& text);
/// The same with the paragraphs of a document; all others keep their formats.
void RemoveEmptyParagraphs(RichText& rich);
/// The numbers of items as they will be behind that; an item of a line that goes belongs to the
/// next one.
void NumberWithoutEmptyLines(std::u16string_view text, std::vector<BesideItem>& beside);

/// Rich text as it is shown: without empty paragraphs if these go. After a stop it is not whole.
RichText ReadFormatted(std::string_view bytes, bool remove_empty, std::vector<BesideItem>& beside,
                       RunWatcher* watcher);

/// Rewrites the raw rich text of a temporary file, so that generated list numbers do not take part.
/// `sFile` is the user's file, for its extension: those of text and of spreadsheets are left alone.
/// A temporary file that is not rich text stays as it is. Never fails a load.
void RemoveNumberedListAndEmptyLines(const StreamWait& wait, RunTelling& telling,
                                     clsCompareFileOptions& options, const clsMRU& extensions,
                                     const std::string& sTempFile, const std::string& sFile);

/// Whether that would change anything in these bytes.
bool HasNumberedList(std::string_view rtf);

/// Plain replacement of all occurrences.
void ReplaceStringFromText(std::string& sText, std::string_view sFind, std::string_view sReplace);

/// Checks an extension for the user's list and takes its hyphens and underscores out.
bool bIsValidExtension(std::string& sText, const clsMRU& extensions);

}  // namespace zorvane
