// Commands of the frame: viewers come, go and come back; lines of an automation client; answers.
#include "tools/viewer_driver/driver.h"

namespace zorvane {
namespace {

const char* WordOf(CloseResult result) {
    switch (result) {
        case CloseResult::Closed:
            return "closed";
        case CloseResult::Stopping:
            return "stopping";
        case CloseResult::Refused:
            break;
    }
    return "refused";
}

}  // namespace

Status Driver::New(const Words&) {
    frmCompareFiles* made = session_->Frame().CreateNewCompareFilesForm();
    if (made == nullptr)
        return Failure{"no viewer was made"};
    made->RunInBackground(true);
    return Status::Ok();
}

/// viewer N: gives the focus to the n-th open one.
Status Driver::ViewerNumber(const Words& words) {
    frmCompareFiles* viewer = session_->At(std::stoul(words[0]));
    if (viewer == nullptr)
        return Failure{"so many are not open"};
    session_->Frame().Activate(*viewer);
    return Status::Ok();
}

Status Driver::Close(const Words&) {
    const Result<frmCompareFiles*> viewer = Viewer();
    if (viewer.ok())
        own_["closing"] = WordOf(session_->Frame().CloseViewer(*viewer.value()));
    return viewer.status();
}

Status Driver::CloseFrame(const Words&) {
    own_["closing"] = WordOf(session_->Frame().CloseFrame());
    return Status::Ok();
}

/// The next day: the program ends and is started again.
Status Driver::Restore(const Words&) {
    if (!session_->Window().ended)
        return Failure{"the frame is not closed"};
    session_.reset();
    session_ = std::make_unique<DriverSession>(platform_, answers_);
    return Status::Ok();
}

/// line SLASHLINE: what an automation client hands in.
Status Driver::Automate(const Words& words) {
    std::string line = words[0];
    own_["code"] = std::to_string(session_->Automation().DoCommandLine(line));
    return Status::Ok();
}

/// The automation client is gone.
Status Driver::Release(const Words&) {
    session_->Automation().Release();
    return Status::Ok();
}

/// answer WORD...: to the questions to come, in their order.
Status Driver::Answer(const Words& words) {
    answers_.waiting.insert(answers_.waiting.end(), words.begin(), words.end());
    return Status::Ok();
}

/// ask-before-close yes|no
Status Driver::AskBeforeClose(const Words& words) {
    const Result<frmCompareFiles*> viewer = Viewer();
    if (viewer.ok())
        session_->WindowOf(*viewer.value()).asks_before_close = words[0] == "yes";
    return viewer.status();
}

/// during COMMAND...: at the next yield of a run on this thread, as an automation client's is.
Status Driver::During(const Words& words) {
    during_ = words[0];
    return Status::Ok();
}

/// language NAME
Status Driver::Language(const Words& words) {
    ProcessState& process = session_->Process();
    SetLanguageCode(process, words[0]);
    InitializeTranslator(process);
    return Status::Ok();
}

void Driver::Act(const std::string& act) {
    frmCompareFiles* viewer = session_->Current();
    if (act == "close-frame")
        own_["closing"] = WordOf(session_->Frame().CloseFrame());
    else if (viewer != nullptr && act == "close")
        own_["closing"] = WordOf(session_->Frame().CloseViewer(*viewer));
    else if (viewer != nullptr)
        viewer->Abort();
}

}  // namespace zorvane
