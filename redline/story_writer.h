// Merges the stories of two documents: the Modified's tree gets the marks and the Original's
// deleted content.
#pragma once

#include <map>
#include <optional>
#include <set>
#include <string>

#include "common/base/run_watcher.h"
#include "redline/atoms.h"
#include "redline/former_looks.h"
#include "redline/import.h"
#include "redline/marks.h"
#include "redline/plan.h"
#include "redline/tracked_paragraph.h"

namespace zorvane {

/// What all stories of a pair share.
struct RedlineState {
    WordPackage& original;
    WordPackage& modified;
    Importer& importer;
    RevisionMarks& marks;
    RunWatcher* watcher = nullptr;
    FormerLooks* looks = nullptr;  ///< where they are tracked, too
    ObjectKeys keys{};
    std::size_t moves = 0;  ///< numbers that are given away
    std::size_t tables_twice = 0;
    std::size_t rows_twice = 0;  ///< other cells than their partner's: deleted and inserted
    std::set<std::string> notes_marked{};  ///< by part and id, so that none is marked twice
    bool notes_imported = false;
    bool failed = false;  ///< a container that marks cannot be placed in
};

class StoryWriter {
  public:
    StoryWriter(RedlineState& state, PartPair parts);

    /// Both hold blocks; the Modified's is changed. `ahead`: their texts, if they were compared
    /// before.
    void Merge(const pugi::xml_node& original, pugi::xml_node modified,
               std::optional<TextsAlone> ahead = std::nullopt);
    /// The blocks of a container whose tree will be let go of; its text hardly passes `room`
    /// UTF-16 units.
    std::vector<StoryBlock> Texts(const pugi::xml_node& container, Side side,
                                  std::size_t room) const;
    /// All of a container is inserted, or is a copy of deleted content. The last end stays without
    /// a mark unless the container itself goes away.
    void MarkAll(pugi::xml_node container, TrackMark mark, bool last_too);

  private:
    using Node = pugi::xml_node;
    struct Output;

    AtomReader ReaderOf(Side side) const;
    std::vector<StoryBlock> BlocksOf(const Node& container, Side side,
                                     std::optional<TextsAlone>& ahead) const;
    WriterTools Tools();

    void PairLists(const Plan& plan, const std::vector<StoryBlock>& original,
                   const std::vector<StoryBlock>& modified);
    void MergeNested(const Plan& plan, const std::vector<StoryBlock>& original,
                     const std::vector<StoryBlock>& modified);
    void MergeAtoms(const Atom& original, const Atom& modified);
    void MergeNote(const Node& original, const Node& modified);
    void MergeTable(const Node& original, Node modified);
    Node CopyRow(const Node& row, Node place, bool in_front);
    void MarkRowWhole(Node row, TrackMark mark);
    void MarkTable(Node table, TrackMark mark);
    void MarkParagraph(const StoryBlock& block, TrackMark mark, bool end_too);

    void Emit(const Plan& plan, Node container, const std::vector<StoryBlock>& original,
              const std::vector<StoryBlock>& modified);
    void EmitEnd(Output& output, const PlanToken& end);
    Node NewParagraph(Output& output, const PlanToken& end);
    void WriteTokens(Output& output, Node paragraph, const PlanToken& end);
    void WriteText(Output& output, TrackedParagraph& writer, const PlanToken& token);
    void WriteAtom(Output& output, TrackedParagraph& writer, const PlanToken& token,
                   const Atom& atom);
    bool LooksAsBefore(const Output& output, const PlanToken& end);
    void EmitTable(Output& output, const PlanToken& token);
    std::string ImportNote(const Node& reference);
    void MarkNote(const Node& reference);

    RedlineState& state_;
    PartPair parts_;
};

/// Rows of a table and cells of a row, those in controls among them.
std::vector<pugi::xml_node> RowsOf(const pugi::xml_node& table);
std::vector<pugi::xml_node> CellsOf(const pugi::xml_node& row);

}  // namespace zorvane
