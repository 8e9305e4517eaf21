// How a foot- or endnote stands in the text: at its mark, in brackets of its own with a blank on
// either side, so that no change in a note touches a word of the body.
#pragma once

#include <string_view>

namespace zorvane {

/// Knows what was written last, and tells what belongs in front of the next text. A note's number
/// is not shown: it would differ in every note behind an added one.
class NoteBrackets {
  public:
    /// From here to `Close` comes the text of a note. Notes do not nest.
    void Open() { place_ = Place::NoteWaits; }
    /// What ends the note; empty when it held nothing: then nothing of it is shown.
    std::string_view Close();
    bool InNote() const { return place_ != Place::Body; }
    /// The paragraphs and lines of a note stand behind each other, a blank between them.
    void BreakInNote() { blank_due_ = place_ == Place::Note; }
    /// At the begin of a paragraph.
    void BeginParagraph();
    /// What is to be written in front of `utf8`, of which the blanks go that begin a note.
    std::string_view InFrontOf(std::string_view& utf8);

  private:
    enum class Place { Body, NoteWaits, Note };

    Place place_ = Place::Body;
    bool blank_due_ = false;
    bool ends_in_blank_ = true;
};

}  // namespace zorvane
