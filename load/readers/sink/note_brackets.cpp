#include "load/readers/sink/note_brackets.h"

#include <algorithm>

#include "load/readers/sink/document_sink.h"

namespace zorvane {
namespace {

// What parts words where texts are compared: a tab does not, and behind the end of a
// cell a paragraph begins.
bool PartsWords(char character) {
    return character == ' ' || character == kLineInParagraph;
}

}  // namespace

std::string_view NoteBrackets::Close() {
    const bool shown = place_ == Place::Note;
    place_ = Place::Body;
    if (!shown)
        return {};
    blank_due_ = true;
    ends_in_blank_ = false;
    return "]";
}

void NoteBrackets::BeginParagraph() {
    blank_due_ = false;
    ends_in_blank_ = true;
}

std::string_view NoteBrackets::InFrontOf(std::string_view& utf8) {
    if (place_ == Place::NoteWaits || (place_ == Place::Note && blank_due_))
        utf8.remove_prefix(std::min(utf8.find_first_not_of(" \t"), utf8.size()));
    if (utf8.empty())
        return {};
    const bool blank_stood = ends_in_blank_;
    const bool blank = blank_due_ && !PartsWords(utf8.front());
    blank_due_ = false;
    ends_in_blank_ = PartsWords(utf8.back());
    if (place_ != Place::NoteWaits)
        return blank ? " " : "";
    place_ = Place::Note;
    return blank_stood ? "[note: " : " [note: ";
}

}  // namespace zorvane
