#include "load/trellis_slide.h"

#include "common/log_message.h"
#include "common/process_state.h"

namespace zorvane {

std::int32_t TrellisSlide::Convert() {
    const auto flag = [](bool value) { return std::string(value ? "1" : "0"); };
    const ConversionResult result = service_.Run({{"kind", "slides"},
                                                  {"source", putSourceFile},
                                                  {"target", putTargetFile},
                                                  {"format", std::to_string(putTargetFormat)},
                                                  {"first", std::to_string(putFirstSlide)},
                                                  {"last", std::to_string(putLastSlide)},
                                                  {"numbers", flag(putShowSlideAndShapeNumber)},
                                                  {"notes", flag(putIncludeNotes)},
                                                  {"notesonly", flag(putIncludeNotesOnly)},
                                                  {"password", putPassword}},
                                                 observer_);
    error_ = service_.Explain(result, putSourceFile);
    return static_cast<std::int32_t>(result.error);
}

bool bPreparePowerPointFileForComparing(LoadContext& context, const std::string& sFile,
                                        const std::string& sTempFile, Side side) {
    constexpr std::int32_t kPlainText = 200;
    constexpr std::int32_t kRichText = 6;
    const CompareFilesSettings& settings = context.settings;
    ProcessState& process = context.process;
    const bool original = side == Side::Original;
    TrellisSlide slides(context.service, [&](std::int32_t percent) {
        if (percent >= 0) {
            constexpr double kPercent = 100;
            TellProgress(context.watcher, RunStep::ImportSlides, percent / kPercent);
        }
        return context.KeepGoing();
    });
    slides.putTargetFormat = context.options.bRemoveFormatting.Data() ? kPlainText : kRichText;
    slides.putSourceFile = sFile;
    slides.putTargetFile = sTempFile;
    slides.putShowSlideAndShapeNumber = settings.bShowSlideAndShapeNumber;
    // Notes come with plain text only, as the options dialog says.
    const bool plain = context.options.bRemoveFormatting.Data();
    slides.putIncludeNotes = plain && settings.bIncludeNotes;
    slides.putIncludeNotesOnly = plain && settings.bIncludeNotes && settings.bIncludeNotesOnly;
    if (!settings.bConvertAllSlides) {
        slides.putFirstSlide = original ? settings.lFromSlideOriginal : settings.lFromSlideModified;
        slides.putLastSlide = original ? settings.lToSlideOriginal : settings.lToSlideModified;
    }
    slides.putPassword = original ? context.options.sDOCPassword_TO_Original.Data()
                                  : context.options.sDOCPassword_TO_Modified.Data();
    if (slides.Convert() != 0) {
        LogMessage(context.telling,
                   "LoadFileIntoEditor(): " + process.Translate("Unable to convert PPT file.  ") +
                       "\n\n" + slides.getErrorText() + "\n\n" + sFile);
    }
    return true;
}

}  // namespace zorvane
