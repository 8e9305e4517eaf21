// Writes the changes of one story of an OpenDocument text into the Modified's tree: containers
// (body, cell, note, text box) one in another.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "common/base/run_watcher.h"
#include "redline/odt_import.h"
#include "redline/odt_regions.h"
#include "redline/odt_story.h"
#include "redline/plan.h"

namespace zorvane {

/// What all stories of a redline share.
struct OdtState {
    WordPackage& original;
    WordPackage& modified;
    OdtImporter& importer;
    OdtStamp stamp;
    RunWatcher* watcher = nullptr;
    ObjectKeys keys{};
    RedlineCounts counts{};
    std::size_t tables_twice = 0;
    std::size_t rows_twice = 0;
    std::size_t markers_left_out = 0;
    bool failed = false;  ///< a container that marks cannot be placed in
};

/// Reads that side's stories; borrows the state.
OdtReader ReaderOf(OdtState& state, Side side);

class OdtWriter {
  public:
    /// `part` holds the story in both packages; `story` is the Modified's, with its list of
    /// changes.
    OdtWriter(OdtState& state, std::string part, pugi::xml_node story)
        : state_(state), part_(std::move(part)), regions_(story, state.stamp) {}

    /// Both hold blocks; the Modified's is changed. `ahead`: their texts, if they were compared
    /// before.
    void Merge(const pugi::xml_node& original, pugi::xml_node modified,
               std::optional<TextsAlone> ahead = std::nullopt);
    bool Changed() const { return !regions_.Empty(); }

  private:
    using Node = pugi::xml_node;
    using Tokens = std::vector<PlanToken>;
    struct Container;
    struct Place {
        std::size_t block = 0;
        std::size_t at = 0;
    };

    struct Planned {
        std::vector<StoryBlock> original{};
        std::vector<StoryBlock> modified{};
        std::optional<Plan> plan{};
    };

    std::vector<BlockGroup> ReadAgain(const PerSide<Node>& containers, TextsAlone ahead,
                                      Planned& planned);
    bool PlanFor(const PerSide<Node>& containers, std::optional<TextsAlone> ahead,
                 Planned& planned);
    void MergeKept(const Plan& plan, const Container& in);
    void MergeAtoms(const Atom& original, const Atom& modified);
    void WriteStream(const Tokens& tokens, Container& in);
    void WriteDeleted(const Tokens& tokens, std::size_t begin, std::size_t end, Container& in);
    void WriteInserted(const Tokens& tokens, std::size_t begin, std::size_t end, Container& in);
    void FillDeletion(const Tokens& tokens, std::size_t begin, std::size_t end, Container& in,
                      Node content);
    Node NewDeletedParagraph(Node content, const Node& like, bool first);
    void Mark(Container& in, Place place, const char* element, const std::string& id);
    void CountEnds(const Tokens& tokens, std::size_t begin, std::size_t end);

    // ---- tables ----

    void MergeTable(const Node& original, Node modified);
    Node PutDeletedTable(const Node& table, Node place, bool in_front);
    Node PutDeletedRow(const Node& row, Node place, bool in_front);
    void MarkRow(Node row, TrackMark mark);
    void MarkTable(const Node& table, TrackMark mark);
    void MarkCellInserted(const Node& cell);
    void MarkCellDeleted(Node cell);

    OdtState& state_;
    std::string part_;
    OdtRegions regions_;
};

}  // namespace zorvane
