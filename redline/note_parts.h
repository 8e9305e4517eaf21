// Footnotes and endnotes: which note a reference leads to, and notes that come along with deleted
// references.
#pragma once

#include <string>

#include "redline/word_package.h"

namespace zorvane {

struct NotePlace {
    std::string part;
    std::string id;
    pugi::xml_node note;
    std::string Name() const { return part + "#" + id; }
};

/// `reference` is a footnote's or an endnote's; without a note when it leads nowhere.
NotePlace FindNote(WordPackage& package, const pugi::xml_node& reference);

/// Copies a note to the end of the part of its kind, which is made where there is none.
NotePlace CopyNote(WordPackage& from, const NotePlace& note, const std::string& reference_kind,
                   WordPackage& to);

/// Puts the notes of both kinds in the order of their references and numbers them anew: some
/// readers hand notes out by position.
void OrderNotes(WordPackage& package);

}  // namespace zorvane
