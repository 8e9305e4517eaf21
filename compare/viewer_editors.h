// The editors that a Compare Files viewer shows, by their names. Only the viewer's thread touches
// them; what a run works in is in run/run_editors.h.
#pragma once

#include <array>

#include "compare/document/rich_document.h"
#include "compare/document/rtb_document.h"
#include "compare/paragraph_follower.h"

namespace zorvane {

class Sound;

/// An editor that is shown, with its numbered paragraphs. The user's edits can be undone; what a
/// load or a run puts there cannot.
struct ShownDocument {
    ShownDocument() { editor.AddObserver(follower); }
    ~ShownDocument() { editor.RemoveObserver(follower); }
    ShownDocument(const ShownDocument&) = delete;
    ShownDocument& operator=(const ShownDocument&) = delete;

    RichDocument editor;
    clsRTBDocument document;
    ParagraphFollower follower{document};
};

struct ViewerEditors {
    explicit ViewerEditors(Sound& sound);

    ShownDocument rtbOriginal;  ///< what the user loaded or typed
    ShownDocument rtbModified;
    ShownDocument rtbOriginalDiffFinal;  ///< the side-by-side result
    ShownDocument rtbModifiedDiffFinal;
    ShownDocument rtbAIODiff;   ///< the all-in-one result
    RichDocument rtbDeletions;  ///< the summaries
    RichDocument rtbAdditions;
    RichDocument rtbChanges;

    /// The documents, which have paragraphs; summaries have none.
    std::array<ShownDocument*, 5> Documents() {
        return {&rtbOriginal, &rtbModified, &rtbOriginalDiffFinal, &rtbModifiedDiffFinal,
                &rtbAIODiff};
    }
};

}  // namespace zorvane
