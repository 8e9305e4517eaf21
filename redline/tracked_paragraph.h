// Puts together one paragraph out of atoms of both documents, with their marks.
#pragma once

#include <functional>
#include <vector>

#include "redline/atoms.h"
#include "redline/import.h"
#include "redline/marks.h"

namespace zorvane {

/// What the writing of a paragraph needs to know of the two packages.
struct WriterTools {
    RevisionMarks& marks;
    Importer& importer;
    PartPair parts;
    /// A deleted reference to a note is about to be written: gives the note's id in the Modified.
    std::function<std::string(const pugi::xml_node& reference)> import_note;
    /// An inserted one was written.
    std::function<void(const pugi::xml_node& reference)> mark_note;
};

class TrackedParagraph {
  public:
    /// `paragraph` is new, and filled from its begin to its end.
    TrackedParagraph(const WriterTools& tools, pugi::xml_node paragraph, bool moved = false)
        : tools_(tools), paragraph_(paragraph), moved_(moved) {}

    /// What the runs that are written from here on looked like before; an empty node: as they look
    /// now, or nobody wants to know. The node outlives the paragraph.
    void SetFormerLook(const pugi::xml_node& look) { former_ = look; }
    /// The units of `atom` from `begin` to `end`, counted in it. Deleted ones are the Original's.
    void Write(const Atom& atom, std::size_t begin, std::size_t end, TrackMark mark);

  private:
    using Node = pugi::xml_node;

    void WriteMarker(const Atom& atom, TrackMark mark);
    void WritePart(const AtomPart& part, TrackMark mark, const std::u16string* text);
    void WriteSimpleField(const Node& field, TrackMark mark);
    void FieldRun(const char* element, const char* value, TrackMark mark);
    Node Place(const Node& element, TrackMark mark);
    Node Holder(const Node& element, TrackMark mark);
    void OpenWrapper(const Node& wrapper, TrackMark mark);
    Node Innermost() const;
    Node RunFor(const Node& run, TrackMark mark);
    void Adopt(Node copy, TrackMark mark);
    std::vector<Node> WrappersOf(const Node& element, TrackMark mark) const;
    bool SameWrapper(const Node& open, const Node& wanted, TrackMark mark) const;

    const WriterTools& tools_;
    Node paragraph_;
    bool moved_;                        // what is deleted or inserted stands elsewhere, too
    std::vector<Node> wrappers_;        // as they stand in their documents
    std::vector<Node> wrapper_copies_;  // as they stand here
    Node mark_element_;
    TrackMark mark_ = TrackMark::Keep;
    Node run_;  // the one that is being copied
    Node run_copy_;
    Node former_;
    Node run_former_;
    std::vector<Node> written_controls_;
};

}  // namespace zorvane
