// Keeps the numbered paragraphs of a shown editor where they are in its text while the user edits.
#pragma once

#include <vector>

#include "compare/document/document_observer.h"
#include "compare/document/rtb_document.h"

namespace zorvane {

/// A new paragraph gets no number: the numbers stay those of the comparison. A `Reset` leaves the
/// paragraphs as they are; who puts a whole new text there sets them as well.
class ParagraphFollower : public DocumentObserver {
  public:
    /// Borrowed.
    explicit ParagraphFollower(clsRTBDocument& document) : document_(document) {}

    void Replaced(CharPos first, std::int32_t removed, std::int32_t inserted) override;
    void Reformatted(CharPos, std::int32_t) override {}
    void Reset() override;

    /// From here on edits are remembered, for the paragraphs of the text as it is now.
    void BeginRun();
    /// Those paragraphs, which a run found, take the place of what was there.
    void TakeParagraphs(Paragraphs of_the_begin);

  private:
    struct Edit {
        CharPos first{};
        std::int32_t removed = 0;
        std::int32_t inserted = 0;
    };
    clsRTBDocument& document_;
    std::vector<Edit> edits_;  ///< since the begin of the run
    bool lost_ = false;        ///< what happened since is no list of edits
};

}  // namespace zorvane
