#include "app/main_frame.h"

#include <utility>

#include "common/process_state.h"

namespace zorvane {

frmMainMDI::frmMainMDI(ProcessState& process, const CommandLineRequest& request,
                       MakeWindow make_window)
    : process_(process), request_(request), make_window_(std::move(make_window)) {}

frmMainMDI::~frmMainMDI() = default;

frmCompareFiles& frmMainMDI::CreateNewCompareFilesForm() {
    OpenViewer opened;
    opened.window = make_window_();
    opened.viewer = std::make_unique<frmCompareFiles>(process_, request_, *opened.window);
    const std::string number = std::to_string(viewers_.size() + 1);
    viewers_.push_back(std::move(opened));
    frmCompareFiles& viewer = *viewers_.back().viewer;
    viewer.Setup(number + "_CompareFile", true);
    return viewer;
}

frmCompareFiles& frmMainMDI::frmGetCFNumber(std::int32_t number) {
    const std::string name = std::to_string(number) + "_CompareFile";
    for (auto open = viewers_.rbegin(); open != viewers_.rend(); ++open) {
        if (open->viewer->Description().find(name) != std::string::npos)
            return *open->viewer;
    }
    return CreateNewCompareFilesForm();
}

std::int32_t frmMainMDI::NumberOpenScreens() const {
    return static_cast<std::int32_t>(viewers_.size());
}

void frmMainMDI::UnloadAll() {
    while (!viewers_.empty()) {
        viewers_.back().viewer->SaveIniFile();
        viewers_.pop_back();
    }
}

}  // namespace zorvane
