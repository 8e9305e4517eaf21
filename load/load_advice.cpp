// Advice that a loader gives once in a user's life, before a reload.
#include "common/base/text_encoding.h"
#include "common/process_state.h"
#include "load/document_loader.h"

namespace zorvane {
namespace {

bool NamesContain(const PerSide<std::string>& files, std::string_view part) {
    return ToUpper(files.original).find(part) != std::string::npos ||
           ToUpper(files.modified).find(part) != std::string::npos;
}

}  // namespace

void DocumentLoader::Advise(bool& warned, const std::string& question,
                            const std::string& done_text) {
    ProcessState& process = parts_.process;
    warned = true;
    if (!parts_.questions.AskYesNo(process.Translate(question), process.Translate("Compare")))
        return;
    parts_.options.bRemoveFormatting.SetData(true);
    parts_.questions.ShowMessage(process.Translate(done_text),
                                 process.Translate("Compare Options Updated"));
}

void DocumentLoader::WarnIfPPTAndRetainingFormatting(const PerSide<std::string>& files) {
    bool& warned = parts_.settings.bWarnedAboutPPTAlready;
    if (warned || parts_.options.bRemoveFormatting.Data() || !NamesContain(files, ".PPT"))
        return;
    Advise(warned,
           "When comparing PPT, it is best to remove formatting and do a textual compare.  Remove "
           "formatting?",
           "Your compare options have been updated");
}

void DocumentLoader::WarnIfHTMLAndRetainingFormatting(const PerSide<std::string>& files) {
    bool& warned = parts_.settings.bWarnedAboutHTMLAlready;
    // Kept: ".XML" is looked for in the modified name alone.
    const bool fits =
        NamesContain(files, ".HTM") || ToUpper(files.modified).find(".XML") != std::string::npos;
    if (warned || parts_.options.bRemoveFormatting.Data() ||
        parts_.options.bHTMLCompareSource.Data() || !fits)
        return;
    Advise(warned,
           "When comparing HTML/XML, it is best to remove formatting and do a textual compare.  "
           "Remove formatting?",
           "Your compare options have been updated");
}

void DocumentLoader::WarnIfXLSAndWordWrapIsTrue(const PerSide<std::string>& files) {
    bool& warned = parts_.settings.bWarnedAboutXLSWordWrapAlready;
    if (warned || !parts_.settings.mnuWordWrap || !NamesContain(files, ".XLS"))
        return;
    warned = true;
    ProcessState& process = parts_.process;
    if (!parts_.questions.AskYesNo(
            process.Translate("When comparing XLS, it is best to turn the 'Word Wrap' view option "
                              "off.  Turn off 'Word Wrap'?"),
            process.Translate("Compare")))
        return;
    parts_.settings.mnuWordWrap = false;
    const std::string title = process.Translate("View Options Updated");
    parts_.questions.ShowMessage(process.Translate("Your view options have been updated"), title);
    parts_.questions.ShowMessage(
        process.Translate("You can restore 'Word Wrap' from the 'View' menu."), title);
}

void DocumentLoader::WarnIfDOCAndIsBigFile(const PerSide<std::string>& files, bool all_in_one,
                                           const std::function<void()>& switch_to_side_by_side) {
    bool& warned = parts_.settings.bWarnedAboutLargeWordDocAlready;
    if (warned || !all_in_one || !NamesContain(files, ".DOC"))
        return;
    warned = true;
    ProcessState& process = parts_.process;
    const std::string question =
        process.Translate(
            "For extremely large MS Word files you may want to do a 'Side By Side "
            "Comparison'.") +
        "\n\n" + process.Translate("Do a 'Side By Side' compare for faster results?");
    if (parts_.questions.AskYesNo(question, process.Translate("Compare")))
        switch_to_side_by_side();
}

}  // namespace zorvane
