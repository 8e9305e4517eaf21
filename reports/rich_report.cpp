#include "reports/rich_report.h"

namespace zorvane {

Status SaveRichReport(const RichReportPieces& pieces, Editor& scratch, const std::string& file) {
    scratch.Clear();
    const TextRange whole_text{};
    scratch.Select(whole_text);
    if (pieces.all_in_one != nullptr) {
        // With the break behind the text, so that the summaries begin on a line of their own.
        scratch.ReplaceSelection(
            pieces.all_in_one->Rich({CharPos{0}, pieces.all_in_one->Length() + 2}));
    }
    for (const Editor* summary : {pieces.additions, pieces.deletions, pieces.changes}) {
        if (summary != nullptr)
            scratch.ReplaceSelection(summary->Rich());
    }
    return scratch.SaveFile(file, FileFormat::RichText);
}

}  // namespace zorvane
