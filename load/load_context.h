// What the roads of all file types need of a run. Everything is borrowed.
#pragma once

#include <functional>
#include <string>

#include "common/base/run_watcher.h"
#include "common/run_telling.h"
#include "load/conversion_service.h"
#include "options/compare_file_options.h"
#include "options/compare_files_settings.h"

namespace zorvane {

struct ProcessState;

struct LoadContext {
    ProcessState& process;
    RunTelling& telling;
    clsCompareFileOptions& options;
    CompareFilesSettings& settings;
    ConversionService& service;
    std::function<void(const std::string&)> show_detail;  ///< panel 2 of the status bar
    RunWatcher* watcher = nullptr;

    bool KeepGoing() const { return zorvane::KeepGoing(watcher); }
};

}  // namespace zorvane
