#include "load/silent_load.h"

#include "common/process_state.h"

namespace zorvane {

class SilentLoad::Nobody : public LoadQuestions {
  public:
    bool AskYesNo(const std::string&, const std::string&) override { return false; }
    void ShowMessage(const std::string&, const std::string&) override {}
    std::string BrowseFor(Side) override { return {}; }
    void PumpEvents() override {}
    void SetHourglass(bool) override {}
    bool ShowNotice(const std::string&, const std::string&) override { return false; }
};

SilentLoad::SilentLoad(ProcessState& process, Formats formats)
    : process_(process),
      sink_(process.platform),
      telling_(sink_),
      profile_(MakeMemoryIniProfile()),
      questions_(std::make_unique<Nobody>()) {
    sink_.WaitForWindow([] {});
    telling_.manner.bSilent = true;
    telling_.manner.bTellsPlainly = true;
    telling_.manner.bShowMessages = true;
    IgnoreFailure(options_.LoadStateFromFile(*profile_), "there is nothing but defaults in it");
    options_.bRemoveFormatting.SetData(formats == Formats::Dropped);
    options_.sExcelSheetNumberMaster.SetData("*");
    options_.sExcelSheetNumberSource.SetData("*");
    settings_.bDoQuickTextExtraction = true;
    settings_.bShowSlideAndShapeNumber = true;
    settings_.bIncludeNotes = true;
    constexpr std::int32_t kMostExtensions = 15;
    extensions_.Setup(kMostExtensions, *profile_, "x", "txt,log,csv");
    document_.Setup(editor_, *process.platform.sound);
}

SilentLoad::~SilentLoad() = default;

void SilentLoad::UsePassword(const std::string& password) {
    options_.sDOCPassword_TO_Original.SetData(password);
    options_.sExcelPasswordOriginal.SetData(password);
    settings_.sBCLPasswordUser = password;
}

bool SilentLoad::Load(const std::string& path, ConversionService& service, RunWatcher& watcher) {
    DocumentLoader loader({process_,
                           telling_,
                           options_,
                           settings_,
                           *questions_,
                           recent_,
                           extensions_,
                           [this](EditorTarget) -> clsRTBDocument& { return document_; },
                           [](const std::string&) {},
                           {},
                           &watcher,
                           &service});
    return loader.LoadFileIntoEditor(path, EditorTarget::Original) &&
           !loader.Memory().bSlidesFailed.original;
}

std::string SilentLoad::Reason() {
    std::string reason;
    sink_.ShowWaiting([&reason](const std::string& message) {
        if (reason.empty())
            reason = message;
    });
    return reason.empty() ? "its text could not be read" : reason;
}

SideType SilentLoad::Type(const std::string& path) const {
    return TypeOfSide(path, options_, extensions_);
}

}  // namespace zorvane
