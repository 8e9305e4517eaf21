// What the roads of all file types need of the viewer. Everything is borrowed.
#pragma once

#include <functional>
#include <string>

#include "load/conversion_service.h"
#include "options/compare_file_options.h"
#include "options/compare_files_settings.h"

namespace zorvane {

struct ProcessState;
class RunTelling;

struct LoadContext {
    ProcessState& process;
    RunTelling& telling;
    clsCompareFileOptions& options;
    CompareFilesSettings& settings;
    ConversionService& service;
    std::function<void(const std::string&)> show_detail;  ///< panel 2 of the status bar
    std::function<bool()> keep_going;                     ///< yields; false after an abort
};

}  // namespace zorvane
