// Small passes between a temporary file and the editor.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "common/base/result.h"
#include "compare/document/editor.h"

namespace zorvane {

class clsMRU;
class clsCompareFileOptions;
struct ProcessState;

/// Puts a blank in front of a text file that opens with "{", so that nothing takes it for rich
/// text. Gives back whether it did; fails as files fail.
Result<bool> AddSpaceToTextFileIfNecessary(const std::string& sFile);
/// Takes the first character of an editor's text away.
void RemoveFirstSpaceOfRichTextBox(Editor& oRichText);
/// Removes lines that are empty but for blanks, in place.
Status DeleteEmptyLinesFromTextFile(const std::string& sFile);

/// Rewrites the raw rich text of a temporary file, so that generated list numbers and, under
/// `bRemoveBlankLines`, paragraph ends at line ends do not take part. `sFile` is the user's file,
/// for its extension. A file that is not rich text stays as it is. Never fails a load.
void RemoveNumberedListAndEmptyLines(ProcessState& process, clsCompareFileOptions& options,
                                     const clsMRU& extensions, const std::string& sTempFile,
                                     const std::string& sFile);

/// Plain replacement of all occurrences.
void ReplaceStringFromText(std::string& sText, std::string_view sFind, std::string_view sReplace);

/// Checks an extension for the user's list and takes its hyphens and underscores out.
bool bIsValidExtension(std::string& sText, const clsMRU& extensions);

}  // namespace zorvane
