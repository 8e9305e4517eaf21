// The elements that track a change: who, when, and an id that stands nowhere else.
#pragma once

#include <cstdint>
#include <string>

#include "load/readers/container/xml_part.h"
#include "redline/align.h"

namespace zorvane {

struct RedlineCounts {
    std::int32_t insertions = 0;
    std::int32_t deletions = 0;
    std::int32_t paragraph_marks = 0;
    std::int32_t rows = 0;
    std::int32_t notes = 0;
    std::int32_t properties = 0;
    std::int32_t moves = 0;
    friend bool operator==(const RedlineCounts&, const RedlineCounts&) = default;
};

class RevisionMarks {
  public:
    /// `date`: as in the file, "2026-01-31T12:00:00Z". The first id is `first_id`.
    RevisionMarks(std::string author, std::string date, std::int64_t first_id)
        : author_(std::move(author)), date_(std::move(date)), next_id_(first_id) {}

    /// An element that holds inserted or deleted content, at the end of `parent`.
    pugi::xml_node Open(pugi::xml_node parent, TrackMark mark, bool moved = false);
    void MarkEnd(pugi::xml_node paragraph, TrackMark mark, bool moved = false);
    /// Names the move that the paragraph's content is half of; the paragraph has its properties and
    /// nothing else yet. The second call comes behind the content.
    void BeginMove(pugi::xml_node paragraph, TrackMark mark, const std::string& name);
    void EndMove(pugi::xml_node paragraph, TrackMark mark);
    void MarkRow(pugi::xml_node row, TrackMark mark);
    /// Notes what the paragraph's properties were in the Original; `former` may be empty.
    void NoteFormer(pugi::xml_node paragraph, const pugi::xml_node& former);
    /// The same of a run's look; what is there of it stays in front.
    void NoteFormerLook(pugi::xml_node run, const pugi::xml_node& former);
    /// By which readers know that the paragraph is there because no body may end in a table.
    void MarkTableEnd(pugi::xml_node paragraph);
    RedlineCounts& Counts() { return counts_; }
    const RedlineCounts& Counts() const { return counts_; }

  private:
    void Stamp(pugi::xml_node element);

    std::string author_;
    std::string date_;
    std::int64_t next_id_;
    RedlineCounts counts_;
};

/// The properties of a paragraph, in front of all else.
pugi::xml_node PropertiesOf(pugi::xml_node paragraph);

}  // namespace zorvane
